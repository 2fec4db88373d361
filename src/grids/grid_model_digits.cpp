// SPDX-License-Identifier: MIT
// What the model of a grid knows of the digits of its cells.

#include "base/number_text.h"
#include "commands/digit_texts.h"
#include "derivation/document_reading.h"
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
  fractions_.reset();
  digits_.cells.reset();
  if (digits_.isWatched) digits_.line = tr("Not checked yet");
}

/// Watched are the elements, and the numbers that were written into the header row.
bool GridModel::IsWatched(int row, int col) const {
  if (!digits_.isWatched || col == 0) return false;
  return IsData(row, col) || WrittenText(row, col).has_value();
}

std::optional<int> GridModel::ProvedDigits(int row, int col) const {
  // Nothing of a fraction is rounded.
  if (!IsWatched(row, col) || !Fraction(row, col).isEmpty()) return std::nullopt;
  if (digits_.cells == nullptr) return 0;
  const int i = row < headerRows_ ? 0 : row - headerRows_ + 1;
  return digits_.cells->Held(i, col, Text(row, col).toStdString(), kWideDigits);
}

void GridModel::SetFractions(std::shared_ptr<const std::vector<ExactNumber>> fractions) {
  const auto cells = static_cast<std::size_t>(all_.rows) * static_cast<std::size_t>(all_.cols);
  if (fractions != nullptr && fractions->size() != cells) fractions.reset();
  if (fractions == fractions_) return;
  fractions_ = std::move(fractions);
  if (cells > 0) Q_EMIT dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1));
}

QString GridModel::Fraction(int row, int col) const {
  if (fractions_ == nullptr || !IsData(row, col) || all_.texts.contains(KeyOf(row, col))) return {};
  const auto place = static_cast<std::size_t>(row - headerRows_) * all_.cols + (col - 1);
  const ExactNumber& exact = (*fractions_)[place];
  // A column without an eigenvector shows none.
  if (row - headerRows_ + 1 > all_.columns[col].filled) return {};
  return ToQString(ExactText(exact));
}

QString GridModel::LongestFraction() const {
  QString longest;
  for (int row = headerRows_; HasFractions() && row < rowCount(); ++row) {
    for (int col = 1; col <= all_.cols; ++col) {
      const QString fraction = Fraction(row, col);
      if (fraction.size() > longest.size()) longest = fraction;
    }
  }
  return longest;
}

QString GridModel::DigitsTip(int row, int col) const {
  if (!Fraction(row, col).isEmpty())
    return tr("Exact; as a decimal %1").arg(QString::fromStdString(CStr(Value(row, col))));
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
