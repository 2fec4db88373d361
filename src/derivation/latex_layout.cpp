// SPDX-License-Identifier: MIT
#include "derivation/latex_layout.h"

#include <algorithm>

#include "derivation/text_box.h"

namespace qmx {
namespace {

constexpr LatexType kLatexTypes[] = {
    {"", 5.1, 16.5}, {"\\small", 4.7, 15}, {"\\footnotesize", 4.4, 13}, {"\\scriptsize", 4.1, 11}};
constexpr const LatexType& kSmallest = kLatexTypes[std::size(kLatexTypes) - 1];
/// Beside every column of a matrix or a table, and beside a sign.
constexpr double kColumnGap = 11;
constexpr double kTableGap = 13;
constexpr double kSignGap = 9;
/// What an element with a fraction takes of the lines of a matrix.
constexpr double kFractionLines = 1.5;

double CellWidth(const ShownCell& cell, const LatexType& type, NumberForm form) {
  if (cell.isBlank) return type.figure;
  const ShownForms forms = FormsOf(cell.number, form);
  const ExactNumber& exact = cell.number.exact;
  // Fractions are set smaller, and one above the other.
  int figures = 0;
  if (forms.exact) {
    figures = static_cast<int>(std::max(exact.numerator.size(), exact.denominator.size())) +
              (exact.radicand == "1" ? 0 : 2 + static_cast<int>(exact.radicand.size()));
  }
  if (forms.decimal) figures = std::max(figures, static_cast<int>(cell.number.decimal.size()));
  // A minus is wider than a figure, and a frame has a distance from what is in it.
  return (figures + 1 + (cell.mark == CellMark::kPivot ? 2 : 0)) * type.figure;
}

double PieceWidth(const Piece& piece, const LatexType& type, NumberForm form) {
  if (const auto* matrix = std::get_if<ShownMatrix>(&piece)) {
    double width = 2 * kSignGap;
    for (int j = 1; j <= matrix->cols; ++j) {
      double widest = 0;
      for (int i = 1; i <= matrix->rows; ++i) {
        widest = std::max(widest, CellWidth(matrix->At(i, j), type, form));
      }
      width += widest + kColumnGap;
    }
    return width;
  }
  if (const auto* words = std::get_if<Words>(&piece)) {
    return CharacterCount(words->text) * type.figure;
  }
  if (const auto* number = std::get_if<ShownNumber>(&piece)) {
    return CharacterCount(NumberText(*number, form)) * type.figure;
  }
  if (const auto* name = std::get_if<Name>(&piece)) {
    return (CharacterCount(name->letter + name->index + name->power) + 1) * type.figure;
  }
  return type.figure + kSignGap;
}

double PartWidth(const Line& line, LinePart part, const LatexType& type, NumberForm form) {
  double width = 0;
  for (std::size_t i = part.begin; i < part.end; ++i) {
    width += PieceWidth(line.pieces[i], type, form);
  }
  return width;
}

double LineHeight(const Line& line, const LatexType& type, NumberForm form) {
  double height = type.line;
  for (const Piece& piece : line.pieces) {
    const auto* matrix = std::get_if<ShownMatrix>(&piece);
    if (matrix == nullptr) continue;
    const double perRow = form == NumberForm::kDecimals ? 1
                          : form == NumberForm::kBoth   ? 1 + kFractionLines
                                                        : kFractionLines;
    height = std::max(height, matrix->rows * perRow * type.line);
  }
  return height;
}

double TableWidth(const Table& table, const LatexType& type, NumberForm form) {
  double width = 0;
  for (std::size_t j = 0; j < table.headings.size(); ++j) {
    double widest = CharacterCount(table.headings[j]) * type.figure;
    for (const auto& row : table.rows) {
      if (j >= row.size()) continue;
      widest = std::max(widest, PartWidth(row[j], {0, row[j].pieces.size()}, type, form));
    }
    width += widest + kTableGap;
  }
  return width;
}

}  // namespace

const LatexType& LatexTypeFor(const Line& line, NumberForm form) {
  const auto parts = LineParts(line);
  for (const LatexType& type : kLatexTypes) {
    if (LineHeight(line, type, form) > kLatexTextHeight) continue;
    if (std::ranges::all_of(parts, [&](LinePart part) {
          return PartWidth(line, part, type, form) <= kLatexTextWidth - kLatexIndent;
        })) {
      return type;
    }
  }
  return kSmallest;
}

const LatexType& LatexTypeFor(const Table& table, NumberForm form, LatexPaper& paper) {
  const auto* fits = std::ranges::find_if(kLatexTypes, [&](const LatexType& type) {
    return TableWidth(table, type, form) <= kLatexTextWidth;
  });
  const LatexType& type = fits == std::end(kLatexTypes) ? kSmallest : *fits;
  paper.width = std::max(paper.width, TableWidth(table, type, form));
  return type;
}

std::vector<LinePart> LatexRows(const Line& line, const LatexType& type, NumberForm form,
                                LatexPaper& paper) {
  std::vector<LinePart> rows;
  double taken = 0;
  for (const LinePart part : LineParts(line)) {
    const double width = PartWidth(line, part, type, form);
    paper.width = std::max(paper.width, width + kLatexIndent);
    if (!rows.empty() && taken + width <= paper.width - kLatexIndent) {
      rows.back().end = part.end;
      taken += width;
    } else {
      rows.push_back(part);
      taken = width;
    }
  }
  paper.height = std::max(paper.height, LineHeight(line, type, form));
  return rows;
}

}  // namespace qmx
