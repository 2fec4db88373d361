// SPDX-License-Identifier: MIT
#include "app/panel_style.h"

#include <QGroupBox>
#include <QPainter>
#include <QStyleOptionGroupBox>

namespace qmx {
namespace {

constexpr int kEdge = 4;  // Between the edge of a frame and what is in it.
constexpr double kRoundness = 3;

/// True for the frames that stand in no other one.
bool IsOuter(const QWidget* frame) {
  return frame == nullptr || qobject_cast<const QGroupBox*>(frame->parentWidget()) == nullptr;
}

QFont TitleFont(const QWidget* frame) {
  QFont font = frame == nullptr ? QFont() : frame->font();
  font.setBold(IsOuter(frame));
  return font;
}

QRect TitleRect(const QRect& frame, const QWidget* widget) {
  const int edge = IsOuter(widget) ? kEdge : 0;
  const QFontMetrics metrics(TitleFont(widget));
  return {frame.left() + edge, frame.top() + edge / 2, frame.width() - 2 * edge,
          metrics.height() + 2};
}

}  // namespace

PanelStyle::PanelStyle() : QProxyStyle("Fusion") {}

void PanelStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                    QPainter* painter, const QWidget* widget) const {
  const auto* frame = qstyleoption_cast<const QStyleOptionGroupBox*>(option);
  if (control != CC_GroupBox || frame == nullptr)
    return QProxyStyle::drawComplexControl(control, option, painter, widget);
  painter->save();
  if (IsOuter(widget)) {
    painter->setRenderHint(QPainter::Antialiasing);
    painter->setPen(frame->palette.color(QPalette::Mid));
    painter->setBrush(Qt::NoBrush);
    painter->drawRoundedRect(QRectF(frame->rect).adjusted(0.5, 0.5, -0.5, -0.5), kRoundness,
                             kRoundness);
  }
  painter->setFont(TitleFont(widget));
  painter->setPen(frame->palette.color(QPalette::WindowText));
  painter->drawText(TitleRect(frame->rect, widget), Qt::AlignLeft | Qt::AlignVCenter, frame->text);
  painter->restore();
}

QRect PanelStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                                 SubControl part, const QWidget* widget) const {
  if (control != CC_GroupBox) return QProxyStyle::subControlRect(control, option, part, widget);
  const QRect title = TitleRect(option->rect, widget);
  if (part == SC_GroupBoxLabel) return title;
  if (part == SC_GroupBoxFrame) return option->rect;
  const int edge = IsOuter(widget) ? kEdge : 0;
  return option->rect.adjusted(edge, title.bottom() + 1 - option->rect.top(), -edge, -edge);
}

QSize PanelStyle::sizeFromContents(ContentsType type, const QStyleOption* option,
                                   const QSize& contents, const QWidget* widget) const {
  const auto* frame = qstyleoption_cast<const QStyleOptionGroupBox*>(option);
  if (type != CT_GroupBox || frame == nullptr)
    return QProxyStyle::sizeFromContents(type, option, contents, widget);
  const QFontMetrics metrics(TitleFont(widget));
  const int edge = IsOuter(widget) ? kEdge : 0;
  return contents.expandedTo({metrics.horizontalAdvance(frame->text) + 2 * edge, 0});
}

}  // namespace qmx
