// SPDX-License-Identifier: MIT
#include "grids/matrix_grid.h"

#include <QHeaderView>
#include <QItemSelectionModel>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <algorithm>

#include "grids/accessible_grid.h"

namespace qmx {
namespace {

constexpr int kRowPadding = 8;  // What a row is taller than its font.

QColor ToQColor(Colour colour) {
  return colour == Colour::kRed ? QColor(255, 0, 0) : QColor(0, 0, 255);
}

}  // namespace

MatrixGrid::MatrixGrid(bool hasHeaderRow, QWidget* parent)
    : QTableView(parent), model_(new GridModel(hasHeaderRow, this)), own_(model_) {
  UseAccessibleGrids();
  setModel(model_);
  setLayoutDirection(Qt::LeftToRight);
  setSelectionMode(QAbstractItemView::ContiguousSelection);
  setEditTriggers(QAbstractItemView::NoEditTriggers);
  setTabKeyNavigation(false);
  setAutoScroll(false);
  setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  for (QHeaderView* header : {horizontalHeader(), verticalHeader()}) {
    header->hide();
    header->setMinimumSectionSize(1);
    header->setSectionResizeMode(QHeaderView::Fixed);
  }
  ApplyWidths();
}

int MatrixGrid::TextWidthWithMargins(const QString& text) const {
  // One more on each side, for an advance that is not a whole number.
  return fontMetrics().horizontalAdvance(text) + 2 * (kTextMargin + 1);
}

int MatrixGrid::DefaultColumnWidth() const {
  // The longest text that single precision can need; a plus is wider than a minus in most fonts.
  return TextWidthWithMargins(QStringLiteral("-8.888888E+38"));
}

void MatrixGrid::SetUp(int rows, int cols, bool wide) {
  Reshape(wide, [&] { model_->SetUp(rows, cols); });
}

void MatrixGrid::Restore(const GridModel::Contents& contents, bool wide) {
  Reshape(wide, [&] { model_->Restore(contents); });
  WidenHeaderForLabels();
}

/// Labels stand beside every row where there is no header row, else in the first ones only.
int MatrixGrid::LabelledRows() const {
  return model_->HeaderRows() == 0 ? model_->rowCount() : std::min(2, model_->rowCount());
}

void MatrixGrid::WidenHeaderForLabels() {
  for (int row = 0; row < LabelledRows(); ++row) WidenHeaderFor(model_->Text(row, 0));
}

void MatrixGrid::Reshape(bool wide, const std::function<void()>& change) {
  const int row = Row();
  const int col = Col();
  EndSelection();
  change();
  wide_ = wide;
  headerWidth_ = 0;
  ApplyWidths();
  const int rows = model_->DataRows();
  const int cols = model_->DataCols();
  if (rows > 0 && cols > 0) {
    const int first = model_->HeaderRows();
    SetCurrentCell(std::clamp(row, first, first + rows - 1), std::clamp(col, 1, cols));
  }
}

void MatrixGrid::Follow(const MatrixGrid* other) {
  GridModel* followed = other == nullptr ? own_ : other->model_;
  if (followed == model_) return;
  if (model_ != own_) disconnect(model_, nullptr, this, nullptr);
  selection_ = {};
  model_ = followed;
  QItemSelectionModel* before = selectionModel();
  setModel(model_);
  delete before;
  if (other == nullptr) return;
  connect(model_, &QAbstractItemModel::modelReset, this, [this] { TakeOverShape(); });
  // Texts are written into the header column after that, one by one: each is measured once.
  connect(model_, &QAbstractItemModel::dataChanged, this,
          [this](const QModelIndex& first, const QModelIndex& last) {
            if (first.column() != 0) return;
            const int end = std::min(last.row() + 1, LabelledRows());
            for (int row = first.row(); row < end; ++row) WidenHeaderFor(model_->Text(row, 0));
          });
  TakeOverShape();
}

void MatrixGrid::TakeOverShape() {
  headerWidth_ = 0;
  ApplyWidths();
  WidenHeaderForLabels();
  if (!HasCurrentCell()) SetCurrentCell(model_->HeaderRows(), 1);
}

void MatrixGrid::Populate(const Matrix& values, bool wide, const std::vector<bool>* columns) {
  model_->Populate(values, wide, columns);
}

void MatrixGrid::SetTextMatrix(int row, int col, const QString& text) {
  model_->SetText(row, col, text);
  if (col == 0) WidenHeaderFor(text);
}

void MatrixGrid::SetCellColour(int row, int col, Colour colour) {
  model_->SetColour(row, col, ToQColor(colour));
}

void MatrixGrid::SetGridColour(Colour colour) { model_->SetDefaultColour(ToQColor(colour)); }

void MatrixGrid::SetWide(bool wide) {
  wide_ = wide;
  ApplyWidths();
}

void MatrixGrid::SetFractions(std::shared_ptr<const std::vector<ExactNumber>> fractions) {
  model_->SetFractions(std::move(fractions));
  ApplyWidths();
}

void MatrixGrid::WidenHeaderFor(const QString& text) {
  const int width = TextWidthWithMargins(text);
  if (width <= headerWidth_) return;
  headerWidth_ = width;
  setColumnWidth(0, width);
  Q_EMIT HeaderWidened();
  Q_EMIT CellsMoved();
}

void MatrixGrid::ApplyWidths() {
  const int corner = TextWidthWithMargins(model_->Text(0, 0));
  const int numbers = TextWidthWithMargins(QString::number(std::max(model_->DataRows(), 100)));
  headerWidth_ = std::max({headerWidth_, corner, numbers});
  verticalHeader()->setDefaultSectionSize(fontMetrics().height() + kRowPadding);
  int width = DefaultColumnWidth() * (wide_ ? 2 : 1);
  if (model_->HasFractions())
    width = std::max(width, TextWidthWithMargins(model_->LongestFraction()));
  horizontalHeader()->setDefaultSectionSize(width);
  setColumnWidth(0, headerWidth_);
  // The range of the scroll bars follows only later by itself.
  updateGeometries();
  if (Row() >= 0) scrollTo(currentIndex(), EnsureVisible);
  viewport()->update();
  Q_EMIT CellsMoved();
}

void MatrixGrid::PlaceCurrentCell(GridCell cell) {
  // Not the whole view: this happens with every arrow key.
  update(currentIndex());
  const QModelIndex index = model_->index(cell.row, cell.col);
  selectionModel()->setCurrentIndex(index, QItemSelectionModel::NoUpdate);
  update(index);
}

void MatrixGrid::SetCurrentCell(int row, int col) {
  if (!model_->IsData(row, col)) return;
  EndSelection();
  PlaceCurrentCell({row, col});
  scrollTo(currentIndex(), EnsureVisible);
}

void MatrixGrid::SetCellToCover(int row, int col) {
  const QScopedValueRollback<bool> guard(covering_, true);
  SetCurrentCell(row, col);
}

bool MatrixGrid::IsInSight(int row, int col) const {
  const QRect cell = CellRect(row, col);
  const QRect room(HeaderWidth(), HeaderHeight(), viewport()->width() - HeaderWidth(),
                   viewport()->height() - HeaderHeight());
  const bool fitsAcross = cell.right() <= room.right() || cell.left() == room.left();
  const bool fitsDown = cell.bottom() <= room.bottom() || cell.top() == room.top();
  return cell.left() >= room.left() && cell.top() >= room.top() && fitsAcross && fitsDown;
}

QSize MatrixGrid::FullSize() const {
  const int frame = 2 * frameWidth();
  return {horizontalHeader()->length() + frame, verticalHeader()->length() + frame};
}

QRect MatrixGrid::visualRect(const QModelIndex& index) const {
  if (!index.isValid()) return {};
  const bool fixedCol = index.column() == 0;
  const bool fixedRow = index.row() < model_->HeaderRows();
  const int left = fixedCol ? 0 : columnViewportPosition(index.column());
  const int top = fixedRow ? 0 : rowViewportPosition(index.row());
  return {left, top, columnWidth(index.column()), rowHeight(index.row())};
}

QModelIndex MatrixGrid::indexAt(const QPoint& point) const {
  const int row = point.y() < HeaderHeight() ? 0 : rowAt(point.y());
  const int col = point.x() < HeaderWidth() ? 0 : columnAt(point.x());
  return model_->index(row, col);
}

void MatrixGrid::scrollTo(const QModelIndex& index, [[maybe_unused]] ScrollHint hint) {
  if (!index.isValid()) return;
  const QRect cell = visualRect(index);
  // The least way that brings the cell between the fixed cells and the far edge.
  const auto shift = [](int near, int far, int roomNear, int roomFar) {
    if (near < roomNear) return near - roomNear;
    return far > roomFar ? std::min(far - roomFar, near - roomNear) : 0;
  };
  if (index.column() > 0) {
    const int dx = shift(cell.left(), cell.right(), HeaderWidth(), viewport()->width() - 1);
    if (dx != 0) horizontalScrollBar()->setValue(horizontalScrollBar()->value() + dx);
  }
  if (index.row() >= model_->HeaderRows()) {
    const int dy = shift(cell.top(), cell.bottom(), HeaderHeight(), viewport()->height() - 1);
    if (dy != 0) verticalScrollBar()->setValue(verticalScrollBar()->value() + dy);
  }
}

int MatrixGrid::RowsPerPage() const {
  return std::max(1, (viewport()->height() - HeaderHeight()) / std::max(1, rowHeight(0)) - 1);
}

}  // namespace qmx
