// SPDX-License-Identifier: MIT
#include "app/result_frame.h"

#include <QEvent>
#include <QGuiApplication>
#include <QVBoxLayout>
#include <algorithm>

#include "app/muted_text.h"
#include "app/panel_kit.h"
#include "grids/qt_text.h"
#include "workspace/slot_table.h"

namespace qmx {
namespace {

constexpr int kGap = 3;

/// The width that every title has, and every pair of counts of four digits with its mark, so that
/// nothing moves when they change.
int WidthOfTexts(const QWidget& parent) {
  const QFontMetrics metrics = parent.fontMetrics();
  int width = metrics.horizontalAdvance("0000 x 0000 @") + 4 * kGap;
  for (const SlotInfo& info : kSlots) {
    if (!HasPermanentFrame(info.slot))
      width = std::max(width, metrics.horizontalAdvance(ToQString(info.title)));
  }
  return width + kGap;
}

}  // namespace

ResultTitle::ResultTitle(const QString& text, QWidget* parent) : QLabel(text, parent) {
  setTextFormat(Qt::PlainText);
  Mute();
}

void ResultTitle::changeEvent(QEvent* event) {
  QLabel::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) Mute();
}

void ResultTitle::Mute() {
  const QPalette now = QGuiApplication::palette();
  const QColor muted = MutedText(now);
  if (palette().color(QPalette::Disabled, QPalette::WindowText) == muted) return;
  QPalette own;
  own.setColor(QPalette::Disabled, QPalette::WindowText, muted);
  setPalette(own);
}

ResultFrame::ResultFrame(Slot slot, QLabel* title, QWidget* parent)
    : QFrame(parent), title_(title) {
  const SlotInfo& info = InfoOf(slot);
  setObjectName(QString::fromStdString(fraFrame(slot).ObjectName()));
  setAccessibleName(ToQString(info.title));
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(kGap);
  auto* left = new QVBoxLayout;
  left->setSpacing(0);
  left->addStrut(WidthOfTexts(*this));
  // The title lies over this.
  left->addSpacing(title->sizeHint().height());
  auto* counts = new QHBoxLayout;
  counts->setSpacing(kGap);
  left->addLayout(counts);
  row->addLayout(left);
  QLabel* rows = MakeResultLabel(info.rows, tr("Rows"), this);
  times_ = new QLabel(QString(QChar(0x00d7)), this);
  cols_ = MakeResultLabel(info.cols, tr("Columns"), this);
  for (QWidget* part : {rows, times_, cols_}) counts->addWidget(part);
  counts->addWidget(MakeStaleMark({"lblStale", slot}, this));
  counts->addStretch(1);
  auto* buttons = new ButtonRow(nullptr);
  row->addLayout(buttons, 1);
  AddSlotButtons(buttons, slot, this);
  QSizePolicy keepsPlace(QSizePolicy::Preferred, QSizePolicy::Fixed);
  keepsPlace.setRetainSizeWhenHidden(true);
  setSizePolicy(keepsPlace);
  setVisible(false);
}

void ResultFrame::setVisible(bool visible) {
  QFrame::setVisible(visible);
  title_->setEnabled(visible);
  ShowTimesIfNeeded();
}

void ResultFrame::ShowTimesIfNeeded() {
  // A column vector may show its rows alone.
  times_->setVisible(!cols_->text().isEmpty());
}

bool ResultFrame::event(QEvent* event) {
  // A label asks for a new layout when its text changes.
  if (event->type() == QEvent::LayoutRequest) ShowTimesIfNeeded();
  return QFrame::event(event);
}

}  // namespace qmx
