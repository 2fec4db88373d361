// SPDX-License-Identifier: MIT
#include "grids/document_view.h"

#include <QAccessible>
#include <QPainter>
#include <QScrollBar>
#include <QtMath>
#include <algorithm>
#include <utility>

#include "derivation/document_text.h"
#include "grids/accessible_document.h"
#include "grids/contrast.h"
#include "grids/qt_text.h"

namespace qmx {
namespace {

/// As much of the colour of the selection as leaves every text readable.
constexpr double kSelectionShare = 0.3;

}  // namespace

DocumentView::DocumentView(QWidget* parent)
    : QAbstractScrollArea(parent), setter_(font(), form_, PageColours(palette())) {
  UseAccessibleDocuments();
  setFocusPolicy(Qt::StrongFocus);
  viewport()->setCursor(Qt::IBeamCursor);
  viewport()->setBackgroundRole(QPalette::Base);
  viewport()->setAutoFillBackground(true);
}

void DocumentView::Show(std::shared_ptr<const Document> document) {
  const QString before = HeardText();
  document_ = std::move(document);
  anchor_ = caret_ = pressed_ = -1;
  block_ = 0;
  layout_ = {};
  verticalScrollBar()->setValue(0);
  horizontalScrollBar()->setValue(0);
  SetAnew();
  TellChange(before);
}

void DocumentView::SetForm(NumberForm form) {
  if (form == form_) return;
  const QString before = HeardText();
  form_ = form;
  SetAnew();
  TellChange(before);
}

QString DocumentView::HeardText() const {
  return QAccessible::isActive() ? AccessibleText(*this) : QString();
}

void DocumentView::TellChange(const QString& before) {
  if (!QAccessible::isActive()) return;
  QAccessibleTextUpdateEvent told(this, 0, before, AccessibleText(*this));
  QAccessible::updateAccessibility(&told);
}

qreal DocumentView::Margin() const { return setter_.Em() * 0.8; }

void DocumentView::SetAnew() {
  const int top = layout_.BlockAt(verticalScrollBar()->value());
  const qreal above = top < 0 ? 0 : verticalScrollBar()->value() - layout_.Blocks()[top].top;
  setter_ = Typesetter(font(), form_, PageColours(palette()));
  spoken_.clear();
  layout_ = document_ == nullptr
                ? DocumentLayout()
                : DocumentLayout(document_, setter_, viewport()->width() - 2 * Margin());
  UpdateBars();
  const bool wasAtStart = verticalScrollBar()->value() == 0;
  if (top >= 0 && !wasAtStart) {
    const DocumentLayout::PlacedBlock& block = layout_.Blocks()[top];
    const qreal within = std::clamp(above, 0.0, block.bottom - block.top);
    verticalScrollBar()->setValue(qCeil(block.top + within));
  }
  viewport()->update();
}

void DocumentView::UpdateBars() {
  const qreal height = layout_.Height() + 2 * Margin();
  const qreal width = layout_.Width() + 2 * Margin();
  const int line = qRound(setter_.Em() * 1.6);
  verticalScrollBar()->setRange(0, std::max(0, qRound(height) - viewport()->height()));
  verticalScrollBar()->setPageStep(std::max(line, viewport()->height() - line));
  verticalScrollBar()->setSingleStep(line);
  horizontalScrollBar()->setRange(0, std::max(0, qRound(width) - viewport()->width()));
  horizontalScrollBar()->setPageStep(viewport()->width());
  horizontalScrollBar()->setSingleStep(line);
}

QPointF DocumentView::Offset() const {
  return {Margin() - horizontalScrollBar()->value(), Margin() - verticalScrollBar()->value()};
}

QSize DocumentView::sizeHint() const {
  const int em = qRound(setter_.Em());
  return {em * 52, em * 40};
}

QRect DocumentView::BlockRect(int block) const {
  return layout_.BlockRect(block).translated(Offset()).toAlignedRect();
}

int DocumentView::BlockNear(QPoint point) const {
  return layout_.BlockAt((QPointF(point) - Offset()).y());
}

const std::vector<QString>& DocumentView::Spoken() const {
  if (document_ == nullptr || !spoken_.empty()) return spoken_;
  spoken_.reserve(document_->blocks.size());
  for (const Block& block : document_->blocks) {
    spoken_.push_back(ToQString(SpokenText({{}, {block}}, form_)).trimmed());
  }
  return spoken_;
}

std::optional<PieceRange> DocumentView::Selection() const {
  if (!HasSelection()) return std::nullopt;
  return PieceRange{std::min(anchor_, caret_), std::max(anchor_, caret_)};
}

void DocumentView::Select(int from, int to) {
  anchor_ = from;
  caret_ = to;
  viewport()->update();
}

void DocumentView::SelectAll() {
  if (!layout_.Pieces().empty()) Select(0, static_cast<int>(layout_.Pieces().size()) - 1);
}

void DocumentView::EndSelection() { Select(-1, caret_); }

Document DocumentView::Selected() const {
  if (document_ == nullptr) return {};
  const auto selection = Selection();
  return selection ? layout_.Part(*selection) : *document_;
}

void DocumentView::paintEvent(QPaintEvent* event) {
  if (document_ == nullptr) return;
  QPainter painter(viewport());
  painter.setRenderHint(QPainter::Antialiasing);
  const QPointF offset = Offset();
  painter.translate(offset);
  const QColor selected =
      Mixed(setter_.Colours().ground, palette().color(QPalette::Highlight), kSelectionShare);
  layout_.Paint(painter, setter_, QRectF(event->rect()).translated(-offset), Selection(), selected);
}

void DocumentView::resizeEvent(QResizeEvent* event) {
  if (event->size().width() != event->oldSize().width()) {
    SetAnew();
  } else {
    UpdateBars();
  }
}

void DocumentView::changeEvent(QEvent* event) {
  QAbstractScrollArea::changeEvent(event);
  const bool isNew = event->type() == QEvent::FontChange || event->type() == QEvent::PaletteChange;
  if (isNew && document_ != nullptr) SetAnew();
}

void DocumentView::scrollContentsBy(int dx, int dy) {
  viewport()->scroll(dx, dy);
  if (dy == 0) return;
  MoveCaret(layout_.BlockAt(verticalScrollBar()->value()));
}

void DocumentView::MoveCaret(int block) {
  if (block == block_ || block < 0) return;
  block_ = block;
  if (!hasFocus() || !QAccessible::isActive()) return;
  QAccessibleTextCursorEvent told(this, AccessibleOffset(*this, block));
  QAccessible::updateAccessibility(&told);
}

void DocumentView::GoToBlock(int block) {
  if (block < 0 || block >= BlockCount()) return;
  verticalScrollBar()->setValue(qCeil(layout_.Blocks()[block].top));
  MoveCaret(block);
}

void DocumentView::GoToHeading(bool next) {
  for (int block = block_ + (next ? 1 : -1); block >= 0 && block < BlockCount();
       block += next ? 1 : -1) {
    if (std::holds_alternative<Heading>(document_->blocks[block])) return GoToBlock(block);
  }
  verticalScrollBar()->setValue(next ? verticalScrollBar()->maximum() : 0);
  MoveCaret(next ? BlockCount() - 1 : 0);
}

}  // namespace qmx
