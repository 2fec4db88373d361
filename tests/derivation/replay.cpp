// SPDX-License-Identifier: MIT
#include "derivation/replay.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/number_text.h"
#include "derivation/document_reading.h"
#include "derivation/questions.h"

namespace qmx::testing {
namespace {

std::string Written(const ExactNumber& exact) {
  std::string text = exact.numerator;
  if (exact.radicand != "1") text += "√" + exact.radicand;
  if (exact.denominator != "1") text += "/" + exact.denominator;
  return text;
}

std::string Written(const ShownNumber& number) {
  return number.exact.IsKnown() ? Written(number.exact) : number.decimal;
}

std::string Written(const Name& name) {
  return name.letter + name.index + (name.power.empty() ? "" : "^" + name.power);
}

std::string Written(const ShownMatrix& matrix) {
  std::string text = matrix.isDeterminant ? "|" : "[";
  for (int i = 1; i <= matrix.rows; ++i) {
    if (i > 1) text += "; ";
    for (int j = 1; j <= matrix.cols; ++j) {
      text += (j > 1 ? " " : "") + Written(matrix.At(i, j).number);
    }
  }
  return text + (matrix.isDeterminant ? "|" : "]");
}

std::string Written(const Piece& piece) {
  if (const auto* words = std::get_if<Words>(&piece)) return words->text;
  if (const auto* name = std::get_if<Name>(&piece)) return Written(*name);
  if (const auto* sign = std::get_if<Operator>(&piece)) return sign->sign;
  if (const auto* number = std::get_if<ShownNumber>(&piece)) return Written(*number);
  return Written(std::get<ShownMatrix>(piece));
}

/// Words say "plus" where both forms of the factor lose a sign by it.
bool IsPlus(const RowOperation& operation) {
  return operation.kind == RowOperation::Kind::kSubtract && operation.value < 0 &&
         !operation.factor.decimal.starts_with('-');
}

/// What the words of a subtraction may be.
std::vector<std::string> SubtractionWords(const RowOperation& operation) {
  const std::string whole = operation.isOfColumns ? "Column " : "Row ";
  const std::string part = operation.isOfColumns ? "column " : "row ";
  const std::string factor = Written(operation.factor);
  const std::string sign = IsPlus(operation) ? " plus " : " minus ";
  const std::string begin = whole + CStr(operation.target);
  const std::string end = part + CStr(operation.source) + ".";
  std::vector<std::string> words = {begin + sign + factor + " of " + end};
  if (factor == "1") words.push_back(begin + sign + end);
  if (factor == "0") words = {begin + " stays as it is.", words[0]};
  return words;
}

/// What the words of an operation may be: of a number that is rounded to 1 they may say so.
std::vector<std::string> WordsOf(const RowOperation& operation) {
  const std::string target = CStr(operation.target);
  switch (operation.kind) {
    case RowOperation::Kind::kExchange:
      return {"Rows " + target + " and " + CStr(operation.source) + " change places."};
    case RowOperation::Kind::kSubtract:
      return SubtractionWords(operation);
    case RowOperation::Kind::kDivide:
      return {(operation.isOfColumns ? "Column " : "Row ") + target + " divided by " +
              Written(operation.factor) + "."};
    case RowOperation::Kind::kReorder:
      break;
  }
  std::string text;
  for (std::size_t k = 0; k < operation.order.size(); ++k) {
    text += (k == 0 ? "Row " : ", row ") + CStr(operation.order[k]) +
            (k == 0 ? " becomes row " : " row ") + CStr(static_cast<int>(k) + 1);
  }
  return {text + "."};
}

double& At(Matrix& A, int i, int j) { return A(i, j); }
Rational& At(RationalMatrix& A, int i, int j) { return A(i, j); }

/// Does an operation to rows or, the other way round, to columns.
template <class Table, class Number>
void Apply(const RowOperation& operation, const Number& factor, Table& A) {
  const int count = operation.isOfColumns ? A.Rows() : A.Cols();
  const auto at = [&](Table& table, int line, int k) -> Number& {
    return operation.isOfColumns ? At(table, k, line) : At(table, line, k);
  };
  const Table before = A;
  Table from = before;
  for (int k = 1; k <= count; ++k) {
    switch (operation.kind) {
      case RowOperation::Kind::kExchange:
        at(A, operation.target, k) = at(from, operation.source, k);
        at(A, operation.source, k) = at(from, operation.target, k);
        break;
      case RowOperation::Kind::kSubtract:
        at(A, operation.target, k) =
            at(from, operation.target, k) - factor * at(from, operation.source, k);
        break;
      case RowOperation::Kind::kDivide:
        at(A, operation.target, k) = at(from, operation.target, k) / factor;
        break;
      case RowOperation::Kind::kReorder:
        for (std::size_t r = 0; r < operation.order.size(); ++r) {
          at(A, static_cast<int>(r) + 1, k) = at(from, operation.order[r], k);
        }
        break;
    }
  }
}

bool HasFactor(const RowOperation& operation) {
  return operation.kind == RowOperation::Kind::kSubtract ||
         operation.kind == RowOperation::Kind::kDivide;
}

/// The exact factor with the sign that the words give it.
Rational ExactFactor(const RowOperation& operation) {
  const Rational factor = ValueOf(operation.factor.exact);
  return IsPlus(operation) ? Rational(0.0) - factor : factor;
}

void ReplayOperation(const Line& line, Replayed& replayed) {
  const RowOperation& operation = *line.operation;
  ++replayed.operations;
  const std::vector<std::string> words = WordsOf(operation);
  const std::string said = qmx::testing::TextOf(line);
  if (std::find(words.begin(), words.end(), said) == words.end()) {
    replayed.faults.push_back("words: " + said + " for " + words[0]);
  }
  const ExactNumber& exact = operation.factor.exact;
  if (HasFactor(operation) && (!exact.IsKnown() || exact.radicand != "1")) {
    replayed.isExactToTheEnd = false;
  }
  if (replayed.isExactToTheEnd) {
    Apply(operation, HasFactor(operation) ? ExactFactor(operation) : Rational(), replayed.exact);
  }
  Apply(operation, operation.value, replayed.computed);
}

void Compare(const ShownMatrix& shown, Replayed& replayed) {
  ++replayed.matrices;
  for (int i = 1; i <= shown.rows; ++i) {
    for (int j = 1; j <= shown.cols; ++j) {
      if (shown.At(i, j).isBlank) continue;
      const ShownNumber& number = shown.At(i, j).number;
      const std::string place = " at " + CStr(i) + "," + CStr(j) + " of " + Written(shown);
      // Doing whole rows again meets infinite numbers that the program never forms.
      if (!number.decimal.empty() && std::isfinite(replayed.computed(i, j)) &&
          number.decimal != CStr(replayed.computed(i, j))) {
        replayed.faults.push_back(CStr(replayed.computed(i, j)) + " for " + number.decimal + place);
      }
      if (!number.exact.IsKnown() || !replayed.isExactToTheEnd) continue;
      ++replayed.exactCells;
      if (!(ValueOf(number.exact) == replayed.exact(i, j))) {
        replayed.faults.push_back("exactly not " + Written(number) + place);
      }
    }
  }
}

}  // namespace

RationalMatrix AsShown(const Matrix& A) {
  RationalMatrix shown(A.Rows(), A.Cols());
  for (int i = 1; i <= A.Rows(); ++i) {
    for (int j = 1; j <= A.Cols(); ++j) shown(i, j) = FromText(CStr(A(i, j)));
  }
  return shown;
}

Rational ValueOf(const ExactNumber& number) {
  return FromText(number.numerator) / FromText(number.denominator);
}

std::string TextOf(const Line& line) {
  std::string text;
  for (std::size_t at = 0; at < line.pieces.size(); ++at) {
    const std::string piece = Written(line.pieces[at]);
    text += NeedsParentheses(line, at, NumberForm::kFractions) ? "(" + piece + ")" : piece;
  }
  return text;
}

std::string TextOf(const Document& document) {
  std::string text;
  for (const Block& block : document.blocks) {
    if (const auto* heading = std::get_if<Heading>(&block)) {
      text += std::string(static_cast<std::size_t>(heading->level), '#') + " " + heading->text;
    } else if (const auto* line = std::get_if<Line>(&block)) {
      text += TextOf(*line);
    } else {
      const auto& table = std::get<Table>(block);
      for (const std::string& cell : table.headings) text += "| " + cell + " ";
      for (const auto& row : table.rows) {
        text += "\n";
        for (const Line& cell : row) text += "| " + TextOf(cell) + " ";
      }
    }
    text += "\n";
  }
  return text;
}

ShownNumber LastNumber(const Line& line) {
  ShownNumber last;
  for (const Piece& piece : line.pieces) {
    if (const auto* number = std::get_if<ShownNumber>(&piece)) last = *number;
  }
  return last;
}

const Line* FindFormula(const Document& document, const std::string& beginning) {
  for (const Block& block : document.blocks) {
    const auto* line = std::get_if<Line>(&block);
    if (line != nullptr && line->isFormula && TextOf(*line).starts_with(beginning)) return line;
  }
  return nullptr;
}

ShownNumber ResultOf(const Document& document, const std::string& beginning) {
  const Line* line = FindFormula(document, beginning);
  return line == nullptr ? ShownNumber() : LastNumber(*line);
}

ShownMatrix MatrixOfFormula(const Document& document, const std::string& beginning) {
  ShownMatrix found;
  for (const Block& block : document.blocks) {
    const auto* line = std::get_if<Line>(&block);
    if (line == nullptr || !line->isFormula || !TextOf(*line).starts_with(beginning)) continue;
    for (const Piece& piece : line->pieces) {
      if (const auto* matrix = std::get_if<ShownMatrix>(&piece)) found = *matrix;
    }
  }
  return found;
}

Replayed Replay(const Document& document, const Matrix& start) {
  return Replay(document, AsShown(start), start);
}

Replayed Replay(const Document& document, const RationalMatrix& exact, const Matrix& computed) {
  Replayed replayed;
  replayed.exact = exact;
  replayed.computed = computed;
  for (const Block& block : document.blocks) {
    const auto* line = std::get_if<Line>(&block);
    if (line == nullptr) continue;
    if (line->operation) ReplayOperation(*line, replayed);
    if (!line->isFormula || line->pieces.size() != 1) continue;
    const auto* matrix = std::get_if<ShownMatrix>(line->pieces.data());
    if (matrix != nullptr && matrix->rows == exact.Rows() && matrix->cols == exact.Cols()) {
      Compare(*matrix, replayed);
    }
  }
  return replayed;
}

std::vector<std::string> DecimalDifferences(const ShownMatrix& shown, const Matrix& computed) {
  std::vector<std::string> faults;
  if (shown.rows != computed.Rows() || shown.cols != computed.Cols()) return {"shape"};
  for (int i = 1; i <= shown.rows; ++i) {
    for (int j = 1; j <= shown.cols; ++j) {
      const std::string& decimal = shown.At(i, j).number.decimal;
      if (decimal.empty() || decimal == CStr(computed(i, j))) continue;
      faults.push_back(CStr(computed(i, j)) + " for " + decimal + " at " + CStr(i) + "," + CStr(j));
    }
  }
  return faults;
}

std::vector<std::string> Differences(const ShownMatrix& shown, const Matrix& computed,
                                     const RationalMatrix& exact) {
  std::vector<std::string> faults = DecimalDifferences(shown, computed);
  for (int i = 1; i <= shown.rows; ++i) {
    for (int j = 1; j <= shown.cols; ++j) {
      const ShownNumber& number = shown.At(i, j).number;
      if (!number.exact.IsKnown()) continue;
      if (exact.Rows() == 0 || !(ValueOf(number.exact) == exact(i, j))) {
        faults.push_back("exactly not " + Written(number) + " at " + CStr(i) + "," + CStr(j));
      }
    }
  }
  return faults;
}

std::optional<RationalMatrix> ExactlyShown(const ShownMatrix& shown) {
  RationalMatrix exact(shown.rows, shown.cols);
  for (int i = 1; i <= shown.rows; ++i) {
    for (int j = 1; j <= shown.cols; ++j) {
      if (!shown.At(i, j).number.exact.IsKnown()) return std::nullopt;
      exact(i, j) = ValueOf(shown.At(i, j).number.exact);
    }
  }
  return exact;
}

bool AreEqual(const RationalMatrix& one, const RationalMatrix& two) {
  if (one.Rows() != two.Rows() || one.Cols() != two.Cols()) return false;
  for (int i = 1; i <= one.Rows(); ++i) {
    for (int j = 1; j <= one.Cols(); ++j) {
      if (!(one(i, j) == two(i, j))) return false;
    }
  }
  return true;
}

std::string Joined(const std::vector<std::string>& faults) {
  std::string text;
  for (std::size_t k = 0; k < faults.size() && k < 5; ++k) text += faults[k] + "\n";
  return text;
}

}  // namespace qmx::testing
