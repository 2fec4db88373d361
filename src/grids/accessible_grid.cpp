// SPDX-License-Identifier: MIT
#include "grids/accessible_grid.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QHash>
#include <limits>

#include "grids/matrix_grid.h"

namespace qmx {
namespace {

class AccessibleCell;

/// The table. Its children are the data cells row by row, then the headers of the columns, then
/// those of the rows; they come about when somebody asks for them.
class AccessibleGrid : public QAccessibleWidget, public QAccessibleTableInterface {
 public:
  explicit AccessibleGrid(MatrixGrid* grid);
  ~AccessibleGrid() override { ForgetCells(); }

  MatrixGrid& Grid() const { return *static_cast<MatrixGrid*>(widget()); }
  const GridModel& Model() const { return Grid().Model(); }
  /// A cell by the model's row and column.
  QAccessibleInterface* CellOf(int row, int col) const;
  /// The place among the children of a cell by the model's row and column; -1 where it is none.
  int PlaceOf(int row, int col) const;

  void* interface_cast(QAccessible::InterfaceType type) override;
  int childCount() const override;
  QAccessibleInterface* child(int place) const override;
  QAccessibleInterface* childAt(int x, int y) const override;
  QAccessibleInterface* focusChild() const override;
  int indexOfChild(const QAccessibleInterface* child) const override;

  QAccessibleInterface* caption() const override { return nullptr; }
  QAccessibleInterface* summary() const override { return nullptr; }
  QAccessibleInterface* cellAt(int row, int column) const override;
  int rowCount() const override { return Model().DataRows(); }
  int columnCount() const override { return Model().DataCols(); }
  QString rowDescription(int row) const override { return Model().Text(row + First(), 0); }
  QString columnDescription(int column) const override;

  int selectedCellCount() const override;
  QList<QAccessibleInterface*> selectedCells() const override;
  int selectedColumnCount() const override { return Numbers(selectedColumns()); }
  int selectedRowCount() const override { return Numbers(selectedRows()); }
  QList<int> selectedColumns() const override;
  QList<int> selectedRows() const override;
  bool isColumnSelected(int column) const override { return selectedColumns().contains(column); }
  bool isRowSelected(int row) const override { return selectedRows().contains(row); }
  bool selectRow(int row) override;
  bool selectColumn(int column) override;
  bool unselectRow(int row) override;
  bool unselectColumn(int column) override;
  void modelChange(QAccessibleTableModelChangeEvent* event) override;

 private:
  static int Numbers(const QList<int>& list) { return static_cast<int>(list.size()); }
  int First() const { return Model().HeaderRows(); }
  qint64 DataCells() const { return qint64{rowCount()} * columnCount(); }
  void ForgetCells();

  mutable QHash<int, QAccessible::Id> cells_;  ///< Those that were asked for, by their place.
};

/// A data cell or a fixed one, by the model's row and column.
class AccessibleCell : public QAccessibleInterface,
                       public QAccessibleTableCellInterface,
                       public QAccessibleActionInterface {
 public:
  AccessibleCell(AccessibleGrid* table, int row, int col) : table_(table), row_(row), col_(col) {}

  int Row() const { return row_; }
  int Col() const { return col_; }

  bool isValid() const override { return table_->isValid() && table_->PlaceOf(row_, col_) >= 0; }
  QObject* object() const override { return nullptr; }
  QWindow* window() const override { return table_->window(); }
  QAccessibleInterface* parent() const override { return table_; }
  QAccessibleInterface* child(int) const override { return nullptr; }
  QAccessibleInterface* childAt(int, int) const override { return nullptr; }
  int childCount() const override { return 0; }
  int indexOfChild(const QAccessibleInterface*) const override { return -1; }
  void setText(QAccessible::Text, const QString&) override {}
  QString text(QAccessible::Text kind) const override;
  QRect rect() const override;
  QAccessible::Role role() const override;
  QAccessible::State state() const override;
  void* interface_cast(QAccessible::InterfaceType type) override;

  int columnExtent() const override { return 1; }
  int rowExtent() const override { return 1; }
  int columnIndex() const override { return col_ - 1; }
  int rowIndex() const override { return row_ - Model().HeaderRows(); }
  QList<QAccessibleInterface*> columnHeaderCells() const override;
  QList<QAccessibleInterface*> rowHeaderCells() const override;
  bool isSelected() const override;
  QAccessibleInterface* table() const override { return table_; }

  QStringList actionNames() const override;
  void doAction(const QString& name) override;
  QStringList keyBindingsForAction(const QString&) const override { return {}; }

 private:
  const GridModel& Model() const { return table_->Model(); }
  bool IsData() const { return Model().IsData(row_, col_); }
  bool HasFocus() const;
  QString HeaderDescription() const;

  AccessibleGrid* table_;
  int row_;
  int col_;
};

AccessibleGrid::AccessibleGrid(MatrixGrid* grid) : QAccessibleWidget(grid, QAccessible::Table) {}

void* AccessibleGrid::interface_cast(QAccessible::InterfaceType type) {
  if (type == QAccessible::TableInterface) return static_cast<QAccessibleTableInterface*>(this);
  return QAccessibleWidget::interface_cast(type);
}

int AccessibleGrid::PlaceOf(int row, int col) const {
  const qint64 cols = columnCount();
  qint64 place = -1;
  if (Model().IsData(row, col)) {
    place = (row - First()) * cols + col - 1;
  } else if (row == 0 && First() == 1 && col >= 1 && col <= cols) {
    place = DataCells() + col - 1;
  } else if (col == 0 && row >= First() && row < First() + rowCount()) {
    place = DataCells() + First() * cols + row - First();
  }
  return place <= std::numeric_limits<int>::max() ? static_cast<int>(place) : -1;
}

int AccessibleGrid::childCount() const {
  const qint64 all = DataCells() + qint64{First()} * columnCount() + rowCount();
  return static_cast<int>(std::min<qint64>(all, std::numeric_limits<int>::max()));
}

QAccessibleInterface* AccessibleGrid::child(int place) const {
  if (place < 0 || place >= childCount()) return nullptr;
  const int cols = columnCount();
  if (place < DataCells()) return CellOf(place / cols + First(), place % cols + 1);
  const int header = static_cast<int>(place - DataCells());
  if (header < First() * cols) return CellOf(0, header + 1);
  return CellOf(header - First() * cols + First(), 0);
}

QAccessibleInterface* AccessibleGrid::CellOf(int row, int col) const {
  const int place = PlaceOf(row, col);
  if (place < 0) return nullptr;
  if (const auto known = cells_.constFind(place); known != cells_.constEnd())
    return QAccessible::accessibleInterface(*known);
  auto* cell = new AccessibleCell(const_cast<AccessibleGrid*>(this), row, col);
  cells_.insert(place, QAccessible::registerAccessibleInterface(cell));
  return cell;
}

void AccessibleGrid::ForgetCells() {
  for (const QAccessible::Id id : std::as_const(cells_)) QAccessible::deleteAccessibleInterface(id);
  cells_.clear();
}

QAccessibleInterface* AccessibleGrid::childAt(int x, int y) const {
  const QModelIndex index = Grid().indexAt(Grid().viewport()->mapFromGlobal(QPoint(x, y)));
  return index.isValid() ? CellOf(index.row(), index.column()) : nullptr;
}

QAccessibleInterface* AccessibleGrid::focusChild() const {
  return Grid().hasFocus() ? CellOf(Grid().Row(), Grid().Col()) : nullptr;
}

int AccessibleGrid::indexOfChild(const QAccessibleInterface* child) const {
  if (child == nullptr || child->parent() != this) return -1;
  const auto* cell = static_cast<const AccessibleCell*>(child);
  return PlaceOf(cell->Row(), cell->Col());
}

QAccessibleInterface* AccessibleGrid::cellAt(int row, int column) const {
  return Model().IsData(row + First(), column + 1) ? CellOf(row + First(), column + 1) : nullptr;
}

QString AccessibleGrid::columnDescription(int column) const {
  return First() == 1 ? Model().Text(0, column + 1) : QString();
}

int AccessibleGrid::selectedCellCount() const {
  const auto block = Grid().Selected();
  if (!block) return 0;
  const qint64 count =
      (qint64{block->bottom} - block->top + 1) * (qint64{block->right} - block->left + 1);
  return static_cast<int>(std::min<qint64>(count, std::numeric_limits<int>::max()));
}

QList<QAccessibleInterface*> AccessibleGrid::selectedCells() const {
  QList<QAccessibleInterface*> cells;
  const auto block = Grid().Selected();
  if (!block) return cells;
  for (int row = block->top; row <= block->bottom; ++row) {
    for (int col = block->left; col <= block->right; ++col) cells.append(CellOf(row, col));
  }
  return cells;
}

QList<int> AccessibleGrid::selectedColumns() const {
  QList<int> columns;
  const auto block = Grid().Selected();
  if (!block || block->bottom - block->top + 1 < rowCount()) return columns;
  for (int col = block->left; col <= block->right; ++col) columns.append(col - 1);
  return columns;
}

QList<int> AccessibleGrid::selectedRows() const {
  QList<int> rows;
  const auto block = Grid().Selected();
  if (!block || block->right - block->left + 1 < columnCount()) return rows;
  for (int row = block->top; row <= block->bottom; ++row) rows.append(row - First());
  return rows;
}

bool AccessibleGrid::selectRow(int row) {
  if (row < 0 || row >= rowCount() || columnCount() == 0) return false;
  Grid().SelectBlock({row + First(), 1, row + First(), columnCount()});
  return true;
}

bool AccessibleGrid::selectColumn(int column) {
  if (column < 0 || column >= columnCount() || rowCount() == 0) return false;
  Grid().SelectBlock({First(), column + 1, First() + rowCount() - 1, column + 1});
  return true;
}

// One block is selected or nothing: without one of its rows it is none.
bool AccessibleGrid::unselectRow(int row) {
  if (isRowSelected(row)) Grid().EndSelection();
  return true;
}

bool AccessibleGrid::unselectColumn(int column) {
  if (isColumnSelected(column)) Grid().EndSelection();
  return true;
}

void AccessibleGrid::modelChange(QAccessibleTableModelChangeEvent* event) {
  if (event->modelChangeType() != QAccessibleTableModelChangeEvent::DataChanged) ForgetCells();
}

bool AccessibleCell::HasFocus() const {
  const MatrixGrid& grid = table_->Grid();
  return grid.hasFocus() && row_ == grid.Row() && col_ == grid.Col();
}

QString AccessibleCell::text(QAccessible::Text kind) const {
  switch (kind) {
    case QAccessible::Name:
      // Where the keyboard arrives all is said at once; who looks around hears numbers alone.
      return HasFocus() ? NameOfCell(table_->Grid(), row_, col_) : Model().Text(row_, col_);
    case QAccessible::Value:
      return Model().Text(row_, col_);
    case QAccessible::Description:
      return IsData() ? Model().Description(row_, col_) : HeaderDescription();
    default:
      return {};
  }
}

/// What the corner says of the cells beside it, such as "Eigenvalues =", and their digits.
QString AccessibleCell::HeaderDescription() const {
  QStringList said;
  if (row_ == 0 && !Model().Text(0, 0).isEmpty()) said << Model().Text(0, 0);
  const QString digits = Model().DigitsTip(row_, col_).section('\n', 0, 0);
  if (!digits.isEmpty()) said << digits;
  return said.join(", ");
}

QRect AccessibleCell::rect() const {
  const MatrixGrid& grid = table_->Grid();
  return grid.CellRect(row_, col_).translated(grid.viewport()->mapToGlobal(QPoint(0, 0)));
}

QAccessible::Role AccessibleCell::role() const {
  if (IsData()) return QAccessible::Cell;
  return col_ == 0 ? QAccessible::RowHeader : QAccessible::ColumnHeader;
}

QAccessible::State AccessibleCell::state() const {
  QAccessible::State state;
  const MatrixGrid& grid = table_->Grid();
  state.invisible = !grid.isVisible();
  state.offscreen = !grid.viewport()->rect().intersects(grid.CellRect(row_, col_));
  if (!IsData()) return state;
  state.selectable = true;
  state.selected = isSelected();
  state.focusable = true;
  state.focused = HasFocus();
  state.active = state.focused;
  return state;
}

void* AccessibleCell::interface_cast(QAccessible::InterfaceType type) {
  if (type == QAccessible::TableCellInterface)
    return static_cast<QAccessibleTableCellInterface*>(this);
  if (type == QAccessible::ActionInterface && IsData())
    return static_cast<QAccessibleActionInterface*>(this);
  return nullptr;
}

QList<QAccessibleInterface*> AccessibleCell::columnHeaderCells() const {
  if (!IsData() || Model().HeaderRows() == 0) return {};
  return {table_->CellOf(0, col_)};
}

QList<QAccessibleInterface*> AccessibleCell::rowHeaderCells() const {
  if (!IsData()) return {};
  return {table_->CellOf(row_, 0)};
}

bool AccessibleCell::isSelected() const {
  const auto block = table_->Grid().Selected();
  return IsData() && block && block->Contains(row_, col_);
}

QStringList AccessibleCell::actionNames() const { return {pressAction()}; }

void AccessibleCell::doAction(const QString& name) {
  if (name != pressAction()) return;
  // The grid takes a single selected cell for a click on it.
  MatrixGrid& grid = table_->Grid();
  grid.selectionModel()->select(grid.Model().index(row_, col_),
                                QItemSelectionModel::ClearAndSelect);
}

QAccessibleInterface* MakeGrid(const QString& kind, QObject* object) {
  if (kind != QLatin1String("qmx::MatrixGrid")) return nullptr;
  return new AccessibleGrid(static_cast<MatrixGrid*>(object));
}

}  // namespace

void UseAccessibleGrids() {
  static const bool isInstalled = [] {
    QAccessible::installFactory(MakeGrid);
    return true;
  }();
  Q_UNUSED(isInstalled);
}

QString NameOfCell(const MatrixGrid& grid, int row, int col) {
  const GridModel& model = grid.Model();
  return QObject::tr("%1, row %2, column %3, %4")
      .arg(grid.accessibleName())
      .arg(row + 1 - model.HeaderRows())
      .arg(col)
      .arg(model.IsBlank(row, col) ? QObject::tr("empty") : model.Text(row, col));
}

void TellFocus(MatrixGrid& grid) {
  if (!QAccessible::isActive() || !grid.hasFocus() || !grid.HasCurrentCell()) return;
  QAccessibleInterface* table = QAccessible::queryAccessibleInterface(&grid);
  if (table == nullptr) return;
  QAccessibleEvent focus(&grid, QAccessible::Focus);
  focus.setChild(table->indexOfChild(table->focusChild()));
  QAccessible::updateAccessibility(&focus);
}

void RenewForScreenReaders(QWidget& widget) {
  if (!QAccessible::isActive()) return;
  QAccessibleInterface* known = QAccessible::queryAccessibleInterface(&widget);
  if (known != nullptr) QAccessible::deleteAccessibleInterface(QAccessible::uniqueId(known));
}

void TellFocus(QWidget& widget) {
  QAccessibleEvent focus(&widget, QAccessible::Focus);
  QAccessible::updateAccessibility(&focus);
}

}  // namespace qmx
