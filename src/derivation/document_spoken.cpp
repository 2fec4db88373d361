// SPDX-License-Identifier: MIT
#include <algorithm>
#include <string_view>

#include "base/words.h"
#include "derivation/document_reading.h"
#include "derivation/document_text.h"

namespace qmx {
namespace {

struct SpokenSign {
  std::string_view sign;
  std::string_view words;
};
constexpr SpokenSign kSpokenSigns[] = {
    {"+", "plus"},         {"−", "minus"},       {"·", "times"},        {"=", "equals"},
    {"≠", "is not"},       {"≈", "is about"},    {"<", "is less than"}, {">", "is greater than"},
    {"≤", "is at most"},   {"≥", "is at least"}, {"→", "becomes"},      {"√", "the square root of"},
    {"±", "plus or minus"}};

std::string SpokenDecimal(const ShownNumber& number) {
  if (number.held >= number.decimal.size()) return number.decimal;
  const std::string held = number.decimal.substr(0, number.held);
  const bool hasDigit = held.find_first_of("0123456789") != std::string::npos;
  return number.decimal + (hasDigit ? " of which " + held + " holds" : " of which no digit holds");
}

std::string SpokenExact(const ExactNumber& number) {
  std::string text = number.numerator;
  if (number.radicand != "1") {
    if (text == "1") {
      text.clear();
    } else if (text == "-1") {
      text = "minus ";
    } else {
      text += " times ";
    }
    text += "the square root of " + number.radicand;
  }
  if (number.denominator != "1") text += "/" + number.denominator;
  return text;
}

std::string SpokenNumber(const ShownNumber& number, NumberForm form) {
  const ShownForms forms = FormsOf(number, form);
  if (!forms.exact && !forms.decimal) return "a number not told";
  std::string text;
  if (forms.exact) text = SpokenExact(number.exact);
  if (forms.exact && forms.decimal) text += ", as a decimal ";
  if (forms.decimal) text += SpokenDecimal(number);
  return text;
}

std::string SpokenName(const Name& name) {
  std::string text = name.letter;
  if (!name.index.empty()) text += " " + name.index;
  if (name.power == "T") return text + " transposed";
  if (!name.power.empty()) text += " to the power " + name.power;
  return text;
}

std::string SpokenCell(const ShownCell& cell, NumberForm form) {
  if (cell.isBlank) return "left out";
  std::string text = SpokenNumber(cell.number, form);
  if (cell.mark == CellMark::kPivot) text = "pivot " + text;
  if (cell.mark == CellMark::kFound) text = "found " + text;
  if (cell.mark == CellMark::kAsked) text = "asked about " + text;
  return text;
}

std::string SpokenRow(const ShownMatrix& matrix, int row, NumberForm form) {
  bool isChanged = false;
  std::string text;
  for (int j = 1; j <= matrix.cols; ++j) {
    const ShownCell& cell = matrix.At(row, j);
    isChanged = isChanged || cell.mark == CellMark::kChanged;
    text += (j == 1 ? "" : ", ") + SpokenCell(cell, form);
    const bool hasBar = std::ranges::find(matrix.bars, j) != matrix.bars.end();
    if (hasBar && j < matrix.cols) text += ", bar";
  }
  return "row " + std::to_string(row) + (isChanged ? ", changed: " : ": ") + text + ";";
}

std::string SpokenMatrix(const ShownMatrix& matrix, NumberForm form) {
  std::string text = matrix.isDeterminant ? "the determinant of " : "the matrix of ";
  text += CountOf(matrix.rows, "row") + " and " + CountOf(matrix.cols, "column");
  if (matrix.cells.empty()) return text;
  text += ":";
  for (int i = 1; i <= matrix.rows; ++i) text += " " + SpokenRow(matrix, i, form);
  return text;
}

std::string SpokenPiece(const Piece& piece, NumberForm form) {
  if (const auto* words = std::get_if<Words>(&piece)) return words->text;
  if (const auto* name = std::get_if<Name>(&piece)) return SpokenName(*name);
  if (const auto* number = std::get_if<ShownNumber>(&piece)) return SpokenNumber(*number, form);
  if (const auto* matrix = std::get_if<ShownMatrix>(&piece)) return SpokenMatrix(*matrix, form);
  const std::string& sign = std::get<Operator>(piece).sign;
  const auto* found = std::ranges::find(kSpokenSigns, sign, &SpokenSign::sign);
  return found == std::end(kSpokenSigns) ? sign : std::string(found->words);
}

std::string SpokenTable(const Table& table, NumberForm form) {
  std::string text;
  for (const auto& row : table.rows) {
    for (std::size_t j = 0; j < row.size() && j < table.headings.size(); ++j) {
      text += (j == 0 ? "" : "; ") + table.headings[j] + ": " + SpokenLine(row[j], form);
    }
    text += "\n";
  }
  return text;
}

/// True where a piece follows without a blank.
bool IsJoined(char before, const Piece& piece, const std::string& spoken) {
  if (before == ' ' || before == '(') return true;
  if (const auto* sign = std::get_if<Operator>(&piece)) {
    return sign->sign == ")" || sign->sign == ",";
  }
  // Words begin with the blank or the comma that they need, but for those behind a sign.
  return std::holds_alternative<Words>(piece) &&
         (spoken.empty() ||
          std::string_view(" .,;:)").find(spoken.front()) != std::string_view::npos);
}

}  // namespace

std::string SpokenLine(const Line& line, NumberForm form) {
  std::string text;
  for (const Piece& piece : line.pieces) {
    const std::string spoken = SpokenPiece(piece, form);
    if (!text.empty() && !IsJoined(text.back(), piece, spoken)) text += " ";
    text += spoken;
  }
  return text;
}

std::string SpokenText(const Document& document, NumberForm form) {
  std::string text;
  if (LacksTitle(document)) text += document.title + "\n";
  for (const Block& block : document.blocks) {
    if (const auto* heading = std::get_if<Heading>(&block)) {
      text += heading->text + "\n";
    } else if (const auto* line = std::get_if<Line>(&block)) {
      text += SpokenLine(*line, form) + "\n";
    } else {
      text += SpokenTable(std::get<Table>(block), form);
    }
  }
  return text;
}

}  // namespace qmx
