// SPDX-License-Identifier: MIT
#include "grids/grid_model.h"

#include <algorithm>

#include "base/number_text.h"
#include "grids/qt_text.h"

namespace qmx {
namespace {

/// Blocks with more cells than this are kept as they are.
constexpr std::size_t kSmallBlock = 4096;

constexpr int RowOf(quint64 key) { return static_cast<int>(key >> 32); }
constexpr int ColOf(quint64 key) { return static_cast<int>(key & 0xffffffffU); }

}  // namespace

GridModel::GridModel(bool hasHeaderRow, QObject* parent)
    : QAbstractTableModel(parent), headerRows_(hasHeaderRow ? 1 : 0) {}

void GridModel::SetUp(int rows, int cols) {
  beginResetModel();
  all_.rows = rows;
  all_.cols = cols;
  all_.columns.resize(cols + 1);
  for (Column& column : all_.columns) column.filled = std::min(column.filled, rows);
  DropCellsOutside();
  endResetModel();
}

void GridModel::DropCellsOutside() {
  const auto isOutside = [this](quint64 key) {
    return RowOf(key) >= headerRows_ + all_.rows || ColOf(key) > all_.cols;
  };
  const auto isHeading = [this](quint64 key) {
    return headerRows_ == 1 && (RowOf(key) == 0) != (ColOf(key) == 0);
  };
  all_.texts.removeIf([&](auto entry) { return isOutside(entry.key()) || isHeading(entry.key()); });
  all_.colours.removeIf([&](auto entry) { return isOutside(entry.key()); });
  all_.blocks.Clip(rowCount(), columnCount());
}

bool GridModel::FillsAll(const Matrix& values, const std::vector<bool>* columns) const {
  return columns == nullptr && values.Rows() == all_.rows && values.Cols() == all_.cols;
}

void GridModel::Populate(const Matrix& values, bool wide, const std::vector<bool>* columns) {
  DropProofs();
  if (all_.rows == 0 || all_.cols == 0) return;
  if (FillsAll(values, columns)) {
    all_.values = values.View();
    std::fill(all_.columns.begin(), all_.columns.end(), Column{all_.rows, wide});
    all_.texts.removeIf(
        [this](auto entry) { return IsData(RowOf(entry.key()), ColOf(entry.key())); });
    all_.blocks.Clear();
  } else {
    KeepBlocksAsTexts();
    Merge(values, wide, columns);
  }
  Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

void GridModel::Merge(const Matrix& values, bool wide, const std::vector<bool>* columns) {
  Matrix merged(all_.rows, all_.cols);
  for (int j = 1; j <= all_.cols; ++j) {
    for (int i = 1; i <= all_.columns[j].filled; ++i) merged(i, j) = all_.values(i, j);
  }
  const int last = std::min(all_.cols, values.Cols());
  for (int j = 1; j <= last; ++j) {
    const auto position = static_cast<std::size_t>(j - 1);
    if (columns != nullptr && (position >= columns->size() || !(*columns)[position])) continue;
    FillColumn(j, values, wide, merged);
  }
  all_.values = merged.View();
}

void GridModel::FillColumn(int col, const Matrix& values, bool wide, Matrix& merged) {
  const int filled = std::min(all_.rows, values.Rows());
  // What stays below the new elements was written in the old precision: keep it as text.
  for (int i = filled + 1; i <= all_.columns[col].filled; ++i) {
    const int row = i - 1 + headerRows_;
    all_.texts.insert(KeyOf(row, col), Text(row, col));
  }
  for (int i = 1; i <= filled; ++i) {
    merged(i, col) = values(i, col);
    all_.texts.remove(KeyOf(i - 1 + headerRows_, col));
  }
  all_.columns[col] = {filled, wide};
}

QString GridModel::Text(int row, int col) const {
  if (row < 0 || row >= rowCount() || col < 0 || col >= columnCount()) return {};
  const auto written = all_.texts.constFind(KeyOf(row, col));
  if (written != all_.texts.constEnd()) return *written;
  if (const auto inBlock = all_.blocks.Find(row, col)) return ToQString(*inBlock);
  return ElementText(row, col);
}

double GridModel::Value(int row, int col) const {
  if (!IsData(row, col)) return 0;
  const auto written = all_.texts.constFind(KeyOf(row, col));
  if (written != all_.texts.constEnd()) return Val(written->toStdString());
  if (const auto inBlock = all_.blocks.Find(row, col)) return Val(*inBlock);
  const int i = row - headerRows_ + 1;
  return i > all_.columns[col].filled ? 0 : all_.values(i, col);
}

bool GridModel::IsBlank(int row, int col) const {
  const auto written = all_.texts.constFind(KeyOf(row, col));
  if (written != all_.texts.constEnd()) return written->isEmpty();
  if (const auto inBlock = all_.blocks.Find(row, col)) return inBlock->empty();
  if (IsData(row, col)) return row - headerRows_ + 1 > all_.columns[col].filled;
  return Text(row, col).isEmpty();
}

QString GridModel::ElementText(int row, int col) const {
  if (IsData(row, col)) {
    const int i = row - headerRows_ + 1;
    const Column& column = all_.columns[col];
    if (i > column.filled) return {};
    QString fraction = Fraction(row, col);
    if (!fraction.isEmpty()) return fraction;
    const double value = all_.values(i, col);
    return QString::fromStdString(column.wide ? CStr(value) : CStrSingle(value));
  }
  if (headerRows_ == 0 || (row == 0 && col == 0)) return {};
  return QString::number(row == 0 ? col : row);
}

void GridModel::SetText(int row, int col, const QString& text) {
  if (row < 0 || row >= rowCount() || col < 0 || col >= columnCount()) return;
  all_.texts.insert(KeyOf(row, col), text);
  Q_EMIT dataChanged(index(row, col), index(row, col));
}

void GridModel::SetTexts(int row, int col, TextBlock texts) {
  const int lastRow = row + texts.rows - 1;
  const int lastCol = col + texts.cols - 1;
  if (texts.Size() > kSmallBlock) {
    all_.texts.removeIf([&](auto entry) {
      const int atRow = RowOf(entry.key());
      const int atCol = ColOf(entry.key());
      return atRow >= row && atRow <= lastRow && atCol >= col && atCol <= lastCol;
    });
    all_.blocks.Add(row, col, std::move(texts));
  } else {
    for (int i = 0; i < texts.rows; ++i) {
      for (int j = 0; j < texts.cols; ++j) {
        all_.texts.insert(KeyOf(row + i, col + j), ToQString(texts.At(i, j)));
      }
    }
  }
  Q_EMIT dataChanged(index(row, col), index(lastRow, lastCol));
}

/// Columns are filled one by one: the cells of the others keep what was written.
void GridModel::KeepBlocksAsTexts() {
  if (all_.blocks.IsEmpty()) return;
  for (int row = headerRows_; row < rowCount(); ++row) {
    for (int col = 1; col <= all_.cols; ++col) {
      const auto text = all_.blocks.Find(row, col);
      const quint64 key = KeyOf(row, col);
      if (text && !all_.texts.contains(key)) all_.texts.insert(key, ToQString(*text));
    }
  }
  all_.blocks.Clear();
}

QColor GridModel::ColourOf(int row, int col) const {
  return all_.colours.value(KeyOf(row, col), all_.defaultColour);
}

void GridModel::SetColour(int row, int col, const QColor& colour) {
  if (row < 0 || row >= rowCount() || col < 0 || col >= columnCount()) return;
  all_.colours.insert(KeyOf(row, col), colour);
  Q_EMIT dataChanged(index(row, col), index(row, col));
}

void GridModel::SetDefaultColour(const QColor& colour) {
  all_.defaultColour = colour;
  Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

void GridModel::Restore(const Contents& contents) {
  beginResetModel();
  DropProofs();
  all_ = contents;
  endResetModel();
}

std::optional<QString> GridModel::WrittenText(int row, int col) const {
  const auto written = all_.texts.constFind(KeyOf(row, col));
  if (written == all_.texts.constEnd()) return std::nullopt;
  return *written;
}

void GridModel::RestoreText(int row, int col, const std::optional<QString>& text) {
  if (text) return SetText(row, col, *text);
  all_.texts.remove(KeyOf(row, col));
  Q_EMIT dataChanged(index(row, col), index(row, col));
}

void GridModel::ShowElements(const Matrix& values) {
  if (values.Rows() != all_.values.Rows() || values.Cols() != all_.values.Cols()) return;
  all_.values = values.View();
  if (values.Size() > 0) Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

bool GridModel::IsEmpty() const {
  if (!all_.blocks.IsEmpty()) return false;
  for (int j = 1; j <= all_.cols; ++j) {
    if (all_.columns[j].filled > 0) return false;
  }
  for (auto entry = all_.texts.keyBegin(); entry != all_.texts.keyEnd(); ++entry) {
    if (IsData(RowOf(*entry), ColOf(*entry))) return false;
  }
  return true;
}

int GridModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : all_.rows + headerRows_;
}

int GridModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : all_.cols + 1;
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  switch (role) {
    case Qt::DisplayRole:
      return Text(index.row(), index.column());
    case Qt::AccessibleDescriptionRole:
      return Description(index.row(), index.column());
    case Qt::ToolTipRole: {
      const QString tip = DigitsTip(index.row(), index.column());
      return tip.isEmpty() ? QVariant() : QVariant(tip);
    }
    case Qt::ForegroundRole: {
      const QColor colour = ColourOf(index.row(), index.column());
      return colour.isValid() ? QVariant(colour) : QVariant();
    }
    case Qt::TextAlignmentRole:
      return QVariant(IsData(index.row(), index.column()) ? Qt::AlignRight | Qt::AlignVCenter
                                                          : Qt::AlignCenter);
    default:
      return {};
  }
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
  // Screen readers ask the view's own headers, which are hidden: they read our fixed cells.
  if (role != Qt::DisplayRole) return {};
  if (orientation == Qt::Vertical) return Text(section, 0);
  return headerRows_ == 1 ? Text(0, section) : QString();
}

}  // namespace qmx
