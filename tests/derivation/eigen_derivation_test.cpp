// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstdint>
#include <exception>
#include <utility>

#include "algorithms/eigenvalues.h"
#include "base/arithmetic.h"
#include "base/number_text.h"
#include "derivation/operands.h"
#include "derivation/questions.h"
#include "derivation/replay.h"

namespace qmx::testing {
namespace {

Progress unheard;

DerivationQuestion AskEigen(const Matrix& A) {
  DerivationQuestion question = Ask(DerivationTask::kEigenvalues, A);
  question.eigen = {0.0005, 100, 0.1, 0.001};
  return question;
}

/// The table whose first column is headed so.
const Table* FindTable(const Document& document, const std::string& heading) {
  for (const Block& block : document.blocks) {
    const auto* table = std::get_if<Table>(&block);
    if (table != nullptr && table->headings[0] == heading) return table;
  }
  return nullptr;
}

/// det(λ·I − A) as the formula has it, for a number λ. Knows terms c·λ^k with signs, and factors.
class FormulaReader {
 public:
  FormulaReader(const Line& line, Rational lambda) : lambda_(std::move(lambda)) {
    // Behind "det(λ·I−A)=".
    pieces_ = {line.pieces.begin() + 9, line.pieces.end()};
  }
  Rational Value() { return Sum(); }

 private:
  bool At(const char* sign) const {
    if (at_ >= pieces_.size()) return false;
    const auto* found = std::get_if<Operator>(&pieces_[at_]);
    return found != nullptr && found->sign == sign;
  }
  bool Take(const char* sign) {
    if (!At(sign)) return false;
    ++at_;
    return true;
  }
  Rational Sum() {
    Rational sum;
    bool isNegative = Take("−");
    for (;;) {
      const Rational product = Product();
      if (isNegative) {
        sum -= product;
      } else {
        sum += product;
      }
      isNegative = At("−");
      if (!Take("−") && !Take("+")) return sum;
    }
  }
  Rational Product() {
    Rational product = Factor();
    while (Take("·")) product *= Factor();
    return product;
  }
  Rational Factor() {
    if (Take("(")) {
      const Rational inner = Sum();
      EXPECT_TRUE(Take(")"));
      return Raised(inner, at_ < pieces_.size() ? std::get_if<Name>(&pieces_[at_]) : nullptr);
    }
    const Piece& piece = pieces_.at(at_++);
    if (const auto* number = std::get_if<ShownNumber>(&piece)) return ValueOf(number->exact);
    const auto& name = std::get<Name>(piece);
    EXPECT_EQ(name.letter, "λ");
    return PowerOf(lambda_, name.power);
  }
  /// A name without a letter behind a parenthesis is its power.
  Rational Raised(const Rational& inner, const Name* power) {
    if (power == nullptr || !power->letter.empty()) return inner;
    ++at_;
    return PowerOf(inner, power->power);
  }
  static Rational PowerOf(const Rational& base, const std::string& exponent) {
    Rational power(1.0);
    for (int k = 0; k < (exponent.empty() ? 1 : std::stoi(exponent)); ++k) power *= base;
    return power;
  }

  Rational lambda_;
  std::vector<Piece> pieces_;
  std::size_t at_ = 0;
};

/// Every formula det(λ·I − A) = ... of a document.
std::vector<const Line*> Polynomials(const Document& document) {
  std::vector<const Line*> lines;
  for (const Block& block : document.blocks) {
    const auto* line = std::get_if<Line>(&block);
    if (line != nullptr && line->isFormula && TextOf(*line).starts_with("det(λ·I−A)=")) {
      lines.push_back(line);
    }
  }
  return lines;
}

bool IsWritten(const Line& line) {
  for (const Piece& piece : line.pieces) {
    const auto* number = std::get_if<ShownNumber>(&piece);
    if (number != nullptr && !number->exact.IsKnown()) return false;
  }
  return true;
}

TEST(EigenDerivation, PolynomialAndFactorsAreTheDeterminant) {
  OperandSource source(81, 6);
  int compared = 0;
  for (int round = 0; round < 80; ++round) {
    const Matrix A = source.Square();
    const Document document = Derive(AskEigen(A));
    for (const Line* line : Polynomials(document)) {
      if (!IsWritten(*line)) continue;
      // A polynomial of this degree is known by its values at so many places.
      for (int place = 0; place <= A.Rows(); ++place) {
        const Rational lambda(place - 3.0);
        RationalMatrix shifted = AsShown(A);
        for (int i = 1; i <= A.Rows(); ++i) {
          for (int j = 1; j <= A.Rows(); ++j) {
            shifted(i, j) = Rational(i == j ? lambda : Rational(0.0)) - shifted(i, j);
          }
        }
        ++compared;
        ASSERT_TRUE(FormulaReader(*line, lambda).Value() == DeterminantOf(shifted))
            << TextOf(document);
      }
    }
  }
  EXPECT_GE(compared, 200);
}

TEST(EigenDerivation, CyclesAreThoseOfTheRun) {
  OperandSource source(82);
  int found = 0;
  for (int round = 0; round < 60; ++round) {
    const Matrix A = source.Square();
    const DerivationQuestion question = AskEigen(A);
    const Document document = Derive(question);
    std::int32_t shiftIndex = 0;
    EigenvalueRun run;
    ClearArithmeticFaults();
    try {
      run = FindEigenvalues(A, question.eigen, shiftIndex, unheard);
    } catch (const std::exception&) {
      EXPECT_NE(TextOf(document).find("The iteration ends with a fault"), std::string::npos);
      continue;
    }
    // All that was found, in its order, stands in the table; and again in the list.
    std::string told;
    const Table* table = FindTable(document, "Cycle");
    ASSERT_NE(table, nullptr);
    for (const auto& row : table->rows) {
      for (const Piece& piece : row[3].pieces) {
        if (const auto* number = std::get_if<ShownNumber>(&piece)) told += number->decimal + " ";
      }
    }
    std::string expected;
    for (int t = 0; t < run.count; ++t) {
      ++found;
      expected += CStr(run.eigenvalues[t]) + " ";
      const auto& row = FindTable(document, "Row of A")->rows.at(t);
      EXPECT_EQ(TextOf(row[0]), CStr(run.origin[t]));
      EXPECT_EQ(LastNumber(row[1]).decimal, CStr(run.eigenvalues[t]));
    }
    EXPECT_EQ(told, expected) << TextOf(document);
  }
  EXPECT_GE(found, 50);
}

TEST(EigenDerivation, RootsAreSaid) {
  // (λ - 2)²·(λ² + 1)·(λ² - 2)
  const Matrix A = MatrixOf({{2, 1, 0, 0, 0, 0},
                             {0, 2, 0, 0, 0, 0},
                             {0, 0, 0, -1, 0, 0},
                             {0, 0, 1, 0, 0, 0},
                             {0, 0, 0, 0, 0, 2},
                             {0, 0, 0, 0, 1, 0}});
  const std::string text = TextOf(Derive(AskEigen(A)));
  for (const char* line : {"det(λ·I−A)=(λ−2)^2·(λ^2+1)·(λ^2−2)\n", "λ1=2\n"}) {
    EXPECT_NE(text.find(line), std::string::npos) << line << text;
  }
}

TEST(EigenDerivation, OfSeveralRationalRootsTheClosestIsTold) {
  // Each of the two is within the error bound of the other.
  const Document document = Derive(AskEigen(MatrixOf({{1, 0}, {0, 1.0005}})));
  const Table* found = FindTable(document, "Row of A");
  ASSERT_NE(found, nullptr);
  ASSERT_EQ(found->rows.size(), 2U);
  for (const auto& row : found->rows) {
    EXPECT_EQ(TextOf(row[2]), TextOf(row[1]) == "1" ? "1" : "2001/2000") << TextOf(document);
  }
}

TEST(EigenDerivation, PairsOfComplexRootsAreToldAndNeverSettle) {
  DerivationQuestion question =
      AskEigen(MatrixOf({{1, -2, 0, 0}, {2, 1, 0, 0}, {0, 0, 3, -1}, {0, 0, 1, 3}}));
  question.task = DerivationTask::kEigenvectors;
  const std::string text = TextOf(Derive(question));
  for (const char* line : {"det(λ·I−A)=(λ^2−2·λ+5)·(λ^2−6·λ+10)\n", "λ1,2=1±2·i\n", "λ3,4=3±i\n",
                           "All are different: A can be made diagonal with complex numbers.\n",
                           "No diagonal entry has settled within the cycles allowed.\n",
                           "There are none without an eigenvalue found.\n"}) {
    EXPECT_NE(text.find(line), std::string::npos) << line << text;
  }
}

TEST(EigenDerivation, TheFaultComesBehindTheCyclesThatLedToIt) {
  const std::string text = TextOf(Derive(AskEigen(MatrixOf({{2}}))));
  const std::size_t cycles = text.find("| Cycle ");
  const std::size_t fault = text.find("The iteration ends with a fault: Subscript out of range.\n");
  ASSERT_NE(cycles, std::string::npos) << text;
  ASSERT_NE(fault, std::string::npos) << text;
  EXPECT_LT(cycles, fault) << text;
}

TEST(EigenDerivation, DigitsOfARationalEigenvalueThatDoNotHoldAreTold) {
  const Document document = Derive(AskEigen(MatrixOf({{1, 2, 0}, {3, 2, 0}, {0, 0, 0.5}})));
  const Table* found = FindTable(document, "Row of A");
  ASSERT_NE(found, nullptr);
  ASSERT_EQ(found->rows.size(), 3U);
  bool isOff = false;
  for (const auto& row : found->rows) {
    const ShownNumber shown = LastNumber(row[1]);
    const Rational exact = ValueOf(LastNumber(row[2]).exact);
    EXPECT_TRUE(exact == Rational(-1.0) || exact == Rational(4.0) || exact == Rational(0.5));
    isOff = isOff || shown.held < shown.decimal.size();
  }
  EXPECT_TRUE(isOff) << TextOf(document);
}

TEST(EigenDerivation, ManyCyclesAreLeftOutInTheMiddle) {
  DerivationQuestion question = AskEigen(MatrixOf({{0, -1}, {1, 0}}));
  question.eigen.maxCycles = 100000;
  const Document document = Derive(question);
  const Table* table = FindTable(document, "Cycle");
  ASSERT_NE(table, nullptr);
  EXPECT_LE(table->rows.size(), 60U);
  EXPECT_EQ(TextOf(table->rows.front()[0]), "1");
  EXPECT_EQ(TextOf(table->rows.back()[0]), "100000");
  EXPECT_NE(TextOf(document).find("99950 cycles left out"), std::string::npos);
}

TEST(EigenDerivation, VectorsOfRationalEigenvaluesSolveTheirSystem) {
  DerivationQuestion question = AskEigen(MatrixOf({{2, 1, 0}, {1, 2, 0}, {0, 0, 3}}));
  question.task = DerivationTask::kEigenvectors;
  const std::string text = TextOf(Derive(question));
  for (const char* line : {"A−λ·I=[1 1 0; 1 1 0; 0 0 2]\n", "x=[-1; 1; 0]\n",
                           "A−λ·I=[-1 1 0; 1 -1 0; 0 0 0]\n", "x1=[1; 1; 0]\n", "x2=[0; 0; 1]\n"}) {
    EXPECT_NE(text.find(line), std::string::npos) << line << text;
  }
}

}  // namespace
}  // namespace qmx::testing
