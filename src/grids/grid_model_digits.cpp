// SPDX-License-Identifier: MIT
// What the model of a grid knows of the digits of its cells.

#include "commands/digit_texts.h"
#include "grids/grid_model.h"
#include "grids/qt_text.h"

namespace qmx {

void GridModel::SetDigits(const ShownDigits& digits) {
  if (digits == digits_) return;
  digits_ = digits;
  if (rowCount() == 0 || columnCount() == 0) return;
  Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

/// Numbers that come in are not those that something has been proved of.
void GridModel::DropProofs() {
  digits_.cells.reset();
  if (digits_.isWatched) digits_.line = tr("Not checked yet");
}

/// Watched are the elements, and the numbers that were written into the header row.
bool GridModel::IsWatched(int row, int col) const {
  if (!digits_.isWatched || col == 0) return false;
  return IsData(row, col) || WrittenText(row, col).has_value();
}

std::optional<int> GridModel::ProvedDigits(int row, int col) const {
  if (!IsWatched(row, col)) return std::nullopt;
  if (digits_.cells == nullptr) return 0;
  const int i = row < headerRows_ ? 0 : row - headerRows_ + 1;
  return digits_.cells->Held(i, col, Text(row, col).toStdString(), kWideDigits);
}

QString GridModel::DigitsTip(int row, int col) const {
  if (!IsWatched(row, col) || IsBlank(row, col)) return {};
  if (digits_.cells == nullptr) return digits_.line;
  const int i = row < headerRows_ ? 0 : row - headerRows_ + 1;
  const int most = all_.columns[col].wide ? kWideDigits : kNarrowDigits;
  return ToQString(CellDigitTip(*digits_.cells, i, col, Text(row, col).toStdString(), most));
}

QString GridModel::Description(int row, int col) const {
  const QString place = tr("Row %1, column %2").arg(row + 1 - headerRows_).arg(col);
  const QString digits = DigitsTip(row, col).section(QChar('\n'), 0, 0);
  return digits.isEmpty() ? place : digits + ". " + place;
}

}  // namespace qmx
