// SPDX-License-Identifier: MIT
#include "derivation/text_box.h"

#include <algorithm>
#include <string_view>

#include "derivation/document_reading.h"

namespace qmx {
namespace {

std::string Blanks(int count) { return std::string(static_cast<std::size_t>(count), ' '); }

/// A cell's text, divided where it stands level with the others of its column.
struct CellText {
  std::string before;
  std::string after;
};

struct ColumnWidth {
  int before = 0;
  int after = 0;
};

/// True for a number with more than one point, line of a fraction or sign in it.
bool IsComposed(const std::string& number) {
  return number.find_first_of("/(") != std::string::npos || number.find("√") != std::string::npos;
}

/// Where a number that is a decimal has its point, else its end.
std::size_t PointOf(const std::string& number) {
  return std::min({number.find('.'), number.find('E'), number.size()});
}

/// Points stand below each other where the whole column is of decimals.
bool HasPoints(const ShownMatrix& matrix, int col, NumberForm form) {
  for (int i = 1; i <= matrix.rows; ++i) {
    const ShownCell& cell = matrix.At(i, col);
    if (!cell.isBlank && IsComposed(NumberText(cell.number, form))) return false;
  }
  return true;
}

CellText TextOfCell(const ShownCell& cell, bool hasPoints, NumberForm form) {
  if (cell.isBlank) return {"·", ""};
  const std::string number = NumberText(cell.number, form);
  const std::size_t point = hasPoints ? PointOf(number) : number.size();
  CellText text{number.substr(0, point), number.substr(point)};
  if (cell.mark == CellMark::kPivot) {
    text.before.insert(0, "[");
    text.after += "]";
  } else if (cell.mark == CellMark::kFound) {
    text.before.insert(0, "*");
    text.after += "*";
  } else if (cell.mark == CellMark::kAsked) {
    text.before.insert(0, "»");
    text.after += "«";
  }
  return text;
}

/// The signs on either side of a row.
struct Brackets {
  std::string_view left;
  std::string_view right;
};

Brackets BracketsOf(const ShownMatrix& matrix, int row) {
  if (matrix.isDeterminant) return {"│", "│"};
  if (matrix.rows == 1) return {"[", "]"};
  if (row == 1) return {"⎡", "⎤"};
  if (row == matrix.rows) return {"⎣", "⎦"};
  return {"⎢", "⎥"};
}

bool IsChanged(const ShownMatrix& matrix, int row) {
  for (int j = 1; j <= matrix.cols; ++j) {
    if (matrix.At(row, j).mark == CellMark::kChanged) return true;
  }
  return false;
}

bool HasChangedRows(const ShownMatrix& matrix) {
  for (int i = 1; i <= matrix.rows; ++i) {
    if (IsChanged(matrix, i)) return true;
  }
  return false;
}

std::string RowText(const ShownMatrix& matrix, int row, const std::vector<CellText>& texts,
                    const std::vector<ColumnWidth>& widths) {
  const Brackets brackets = BracketsOf(matrix, row);
  std::string line(brackets.left);
  for (int j = 1; j <= matrix.cols; ++j) {
    const CellText& text =
        texts[static_cast<std::size_t>(row - 1) * matrix.cols + static_cast<std::size_t>(j - 1)];
    const ColumnWidth& width = widths[static_cast<std::size_t>(j - 1)];
    line += j == 1 ? " " : "  ";
    line += Blanks(width.before - CharacterCount(text.before)) + text.before + text.after +
            Blanks(width.after - CharacterCount(text.after));
    if (std::ranges::find(matrix.bars, j) != matrix.bars.end()) line += " │";
  }
  line += " ";
  line += brackets.right;
  return line;
}

}  // namespace

TextBox TextBox::Of(const std::string& text) { return {{text}, 0, CharacterCount(text)}; }

void TextBox::Append(const TextBox& right) {
  if (rows.empty()) rows.emplace_back();
  const std::size_t top = std::max(middle, right.middle);
  const std::size_t below = std::max(rows.size() - middle, right.rows.size() - right.middle);
  std::vector<std::string> joined;
  for (std::size_t i = 0; i < top + below; ++i) {
    // Where a box has no line of its own, it is as wide as ever.
    const std::size_t own = i + middle - top;
    const std::size_t other = i + right.middle - top;
    const bool hasOwn = i + middle >= top && own < rows.size();
    const bool hasOther = i + right.middle >= top && other < right.rows.size();
    joined.push_back((hasOwn ? rows[own] : Blanks(width)) +
                     (hasOther ? right.rows[other] : Blanks(right.width)));
  }
  rows = std::move(joined);
  middle = top;
  width += right.width;
}

std::string NumberText(const ShownNumber& number, NumberForm form) {
  const ShownForms forms = FormsOf(number, form);
  if (forms.exact && forms.decimal) return ExactText(number.exact) + " (" + number.decimal + ")";
  if (forms.exact) return ExactText(number.exact);
  return forms.decimal ? number.decimal : std::string(kUnknownNumber);
}

TextBox MatrixBox(const ShownMatrix& matrix, NumberForm form) {
  if (matrix.cells.empty()) return TextBox::Of("[ ]");
  std::vector<CellText> texts;
  std::vector<ColumnWidth> widths(static_cast<std::size_t>(matrix.cols));
  std::vector<bool> hasPoints;
  for (int j = 1; j <= matrix.cols; ++j) hasPoints.push_back(HasPoints(matrix, j, form));
  for (int i = 1; i <= matrix.rows; ++i) {
    for (int j = 1; j <= matrix.cols; ++j) {
      const auto column = static_cast<std::size_t>(j - 1);
      texts.push_back(TextOfCell(matrix.At(i, j), hasPoints[column], form));
      ColumnWidth& width = widths[column];
      width.before = std::max(width.before, CharacterCount(texts.back().before));
      width.after = std::max(width.after, CharacterCount(texts.back().after));
    }
  }
  TextBox box;
  const bool hasChanged = HasChangedRows(matrix);
  for (int i = 1; i <= matrix.rows; ++i) {
    box.rows.push_back(RowText(matrix, i, texts, widths));
    if (hasChanged) box.rows.back() += IsChanged(matrix, i) ? " ←" : "  ";
  }
  box.middle = static_cast<std::size_t>(matrix.rows - 1) / 2;
  box.width = CharacterCount(box.rows.front());
  return box;
}

}  // namespace qmx
