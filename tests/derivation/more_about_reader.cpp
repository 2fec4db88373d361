// SPDX-License-Identifier: MIT
#include "derivation/more_about_reader.h"

#include <algorithm>

#include "base/number_text.h"
#include "derivation/replay.h"

namespace qmx::testing {

std::string Written(const ShownMatrix& matrix) {
  std::string text;
  for (int i = 1; i <= matrix.rows; ++i) {
    if (i > 1) text += "; ";
    for (int j = 1; j <= matrix.cols; ++j) {
      const ExactNumber& exact = matrix.At(i, j).number.exact;
      text += (j > 1 ? " " : "") + exact.numerator +
              (exact.denominator == "1" ? "" : "/" + exact.denominator);
    }
  }
  return text;
}

namespace {

/// The matrices of formulas name = matrix.
std::vector<ShownMatrix> MatricesNamed(const Document& document, const std::string& name) {
  std::vector<ShownMatrix> matrices;
  for (const Block& block : document.blocks) {
    const auto* line = std::get_if<Line>(&block);
    if (line == nullptr || !line->isFormula || line->pieces.size() != 3) continue;
    const auto* letter = std::get_if<Name>(line->pieces.data());
    const auto* matrix = std::get_if<ShownMatrix>(line->pieces.data() + 2);
    if (letter == nullptr || matrix == nullptr) continue;
    if (letter->letter + letter->index == name && letter->power.empty()) {
      matrices.push_back(*matrix);
    }
  }
  return matrices;
}

}  // namespace

ShownMatrix ReducedOf(const Document& document) {
  const std::vector<ShownMatrix> found = MatricesNamed(document, "R");
  return found.empty() ? ShownMatrix() : found.back();
}

std::string PivotsOf(const ShownMatrix& reduced) {
  std::string text;
  for (int i = 1; i <= reduced.rows; ++i) {
    for (int j = 1; j <= reduced.cols; ++j) {
      if (reduced.At(i, j).mark == CellMark::kFound) text += (text.empty() ? "" : " ") + CStr(j);
    }
  }
  return text;
}

std::vector<ShownMatrix> NullVectorsOf(const Document& document) {
  std::vector<ShownMatrix> vectors = MatricesNamed(document, "n");
  for (int k = 1; k <= 12; ++k) {
    for (ShownMatrix& vector : MatricesNamed(document, "n" + CStr(k))) vectors.push_back(vector);
  }
  return vectors;
}

std::string NullSpaceOf(const Document& document) {
  std::string text;
  for (const ShownMatrix& vector : NullVectorsOf(document)) {
    std::string row = Written(vector);
    std::erase(row, ';');
    text += (text.empty() ? "" : "; ") + row;
  }
  return text;
}

std::vector<std::string> FormulasOf(const Document& document, const std::string& beginning) {
  std::vector<std::string> texts;
  for (const Block& block : document.blocks) {
    const auto* line = std::get_if<Line>(&block);
    if (line == nullptr || !line->isFormula || !TextOf(*line).starts_with(beginning)) continue;
    texts.push_back(TextOf(*line).substr(beginning.size()));
  }
  return texts;
}

const Line* AtAGlance(const Document& document, const std::string& what) {
  for (const Block& block : document.blocks) {
    const auto* table = std::get_if<Table>(&block);
    if (table == nullptr) continue;
    for (const auto& row : table->rows) {
      if (TextOf(row[0]) == what) return row.data() + 1;
    }
  }
  return nullptr;
}

namespace {

/// "2", "1±2": the decimals of an eigenvalue's formula.
std::string EigenvalueIn(const Line& line) {
  std::vector<std::string> decimals;
  bool isPair = false;
  for (const Piece& piece : line.pieces) {
    if (const auto* number = std::get_if<ShownNumber>(&piece)) decimals.push_back(number->decimal);
    const auto* sign = std::get_if<Operator>(&piece);
    isPair = isPair || (sign != nullptr && sign->sign == "±");
  }
  if (!isPair) return decimals.empty() ? "" : decimals.back();
  const auto* last = std::get_if<Operator>(&line.pieces[line.pieces.size() - 2]);
  // Of ±i the number is left out.
  const bool isUnit = last != nullptr && last->sign == "±";
  const std::string imaginary = isUnit ? "1" : decimals.back();
  if (!isUnit) decimals.pop_back();
  return (decimals.empty() ? "" : decimals.back()) + "±" + imaginary;
}

}  // namespace

std::vector<std::string> MultiplicitiesOf(const Document& document) {
  std::vector<std::string> multiplicities;
  for (const Block& block : document.blocks) {
    const auto* table = std::get_if<Table>(&block);
    if (table == nullptr || table->headings[0] != "Eigenvalue") continue;
    for (const auto& row : table->rows) multiplicities.push_back(TextOf(row[1]));
  }
  return multiplicities;
}

std::string EigenvaluesOf(const Document& document) {
  std::vector<std::string> texts;
  for (const Block& block : document.blocks) {
    const auto* line = std::get_if<Line>(&block);
    if (line == nullptr || !line->isFormula || line->pieces.empty()) continue;
    const auto* name = std::get_if<Name>(line->pieces.data());
    if (name == nullptr || name->letter != "λ" || name->index.empty()) continue;
    texts.push_back(EigenvalueIn(*line));
  }
  const std::vector<std::string> multiplicities = MultiplicitiesOf(document);
  for (std::size_t k = 0; k < multiplicities.size(); ++k) {
    if (multiplicities[k] != "1") texts[k] += " x" + multiplicities[k];
  }
  std::sort(texts.begin(), texts.end());
  std::string text;
  for (const std::string& one : texts) text += (text.empty() ? "" : "; ") + one;
  return text;
}

}  // namespace qmx::testing
