// SPDX-License-Identifier: MIT
#include "derivation/more_about.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <sstream>
#include <stdexcept>

#include "base/number_text.h"
#include "derivation/more_about_reader.h"
#include "derivation/operands.h"
#include "derivation/replay.h"
#include "derivation/textbook_examples.h"

namespace qmx::testing {
namespace {

Document About(const Matrix& A) { return MoreAboutMatrix(A, {}); }

TEST(MoreAbout, KnowsTheAnswersOfTextbookExamples) {
  ASSERT_GE(TextbookExamples().size(), 40U);
  for (const TextbookExample& example : TextbookExamples()) {
    SCOPED_TRACE(example.name);
    const Document document = About(DoublesOf(example.matrix));
    const ShownMatrix reduced = ReducedOf(document);
    EXPECT_EQ(Written(reduced), example.reduced);
    EXPECT_EQ(PivotsOf(reduced), example.pivots);
    EXPECT_EQ(NullSpaceOf(document), example.nullSpace);
    std::istringstream pivots(example.pivots);
    const auto rank = std::distance(std::istream_iterator<int>(pivots), {});
    EXPECT_EQ(TextOf(*AtAGlance(document, "Rank")), CStr(static_cast<int>(rank)));
    const std::vector<std::string> polynomials = FormulasOf(document, "det(λ·I−A)=");
    if (std::string(example.characteristic).empty()) {
      EXPECT_TRUE(polynomials.empty());
      EXPECT_EQ(EigenvaluesOf(document), "");
      continue;
    }
    ASSERT_FALSE(polynomials.empty());
    EXPECT_EQ(polynomials.front(), example.characteristic);
    // What has one factor alone is not written as a product.
    EXPECT_EQ(polynomials.size() == 1 ? "(" + polynomials[0] + ")" : polynomials[1],
              std::string(example.factors) == "λ" ? "(λ)" : example.factors);
    EXPECT_EQ(EigenvaluesOf(document), example.eigenvalues);
    if (std::string(example.condition).empty()) {
      EXPECT_EQ(TextOf(*AtAGlance(document, "Condition number")), "infinite");
      continue;
    }
    EXPECT_TRUE(ValueOf(LastNumber(*FindFormula(document, "κ1=")).exact) ==
                RationalsOf(example.condition)(1, 1));
    EXPECT_EQ(LastNumber(*FindFormula(document, "κ2=")).decimal, example.spectralCondition);
  }
}

/// The blocks up to the part on the rank, without decimals.
Document StepsOf(const Document& document) {
  Document steps;
  for (Block block : document.blocks) {
    const auto* heading = std::get_if<Heading>(&block);
    if (heading != nullptr && heading->text == "Rank") break;
    if (auto* line = std::get_if<Line>(&block)) {
      for (Piece& piece : line->pieces) {
        auto* matrix = std::get_if<ShownMatrix>(&piece);
        if (matrix == nullptr) continue;
        for (ShownCell& cell : matrix->cells) cell.number.decimal.clear();
      }
    }
    steps.blocks.push_back(std::move(block));
  }
  return steps;
}

/// True if every pivot is the first number other than zero of its row, 1, alone in its column and
/// to the right of the one above it.
bool IsReduced(const RationalMatrix& R) {
  int lastPivot = 0;
  for (int i = 1; i <= R.Rows(); ++i) {
    int pivot = 1;
    while (pivot <= R.Cols() && R(i, pivot).IsZero()) ++pivot;
    if (pivot > R.Cols()) {
      lastPivot = R.Cols() + 1;
      continue;
    }
    if (pivot <= lastPivot || !(R(i, pivot) == Rational(1.0))) return false;
    for (int k = 1; k <= R.Rows(); ++k) {
      if (k != i && !R(k, pivot).IsZero()) return false;
    }
    lastPivot = pivot;
  }
  return true;
}

TEST(MoreAbout, StepsDoneAgainGiveTheReducedForm) {
  OperandSource source(5);
  for (int round = 0; round < 200; ++round) {
    Dice& dice = source.Randomness();
    const Matrix A =
        round % 2 == 0 ? source.Square() : source.Any(dice.Integer(1, 8), dice.Integer(1, 8));
    const Document document = About(A);
    const Replayed replayed = Replay(StepsOf(document), A);
    ASSERT_TRUE(replayed.faults.empty()) << Joined(replayed.faults) << TextOf(document);
    ASSERT_TRUE(replayed.isExactToTheEnd || replayed.operations > 0);
    if (!replayed.isExactToTheEnd) continue;
    EXPECT_TRUE(IsReduced(replayed.exact)) << TextOf(document);
    const ShownMatrix reduced = ReducedOf(document);
    for (int i = 1; i <= A.Rows(); ++i) {
      for (int j = 1; j <= A.Cols(); ++j) {
        const ExactNumber& exact = reduced.At(i, j).number.exact;
        EXPECT_TRUE(!exact.IsKnown() || ValueOf(exact) == replayed.exact(i, j));
      }
    }
  }
}

TEST(MoreAbout, TheNullSpaceIsMappedToZero) {
  OperandSource source(6);
  int vectors = 0;
  for (int round = 0; round < 200; ++round) {
    Dice& dice = source.Randomness();
    const Matrix A = source.Any(dice.Integer(1, 6), dice.Integer(1, 8));
    const Document document = About(A);
    const RationalMatrix exact = AsShown(A);
    const std::vector<ShownMatrix> basis = NullVectorsOf(document);
    EXPECT_EQ(CStr(static_cast<int>(basis.size())),
              TextOf(*AtAGlance(document, "Dimension of the null space")));
    for (const ShownMatrix& vector : basis) {
      RationalMatrix x(A.Cols(), 1);
      bool isKnown = true;
      for (int j = 1; j <= A.Cols(); ++j) {
        const ExactNumber& number = vector.At(j, 1).number.exact;
        isKnown = isKnown && number.IsKnown();
        if (!isKnown) break;
        EXPECT_EQ(number.denominator, "1");
        x(j, 1) = ValueOf(number);
      }
      if (!isKnown) continue;
      ++vectors;
      const RationalMatrix product = ProductOf(exact, x);
      for (int i = 1; i <= A.Rows(); ++i) EXPECT_TRUE(product(i, 1).IsZero()) << TextOf(document);
    }
  }
  EXPECT_GT(vectors, 100);
}

/// The value of a polynomial that a formula writes behind its equals sign.
Rational PolynomialAt(const Line& line, const Rational& x) {
  Rational sum(0.0);
  Rational term(1.0);
  bool isBehind = false;
  const auto power = [&x](const Name& name) {
    Rational value(1.0);
    const int exponent = name.power.empty() ? 1 : std::stoi(name.power);
    for (int k = 0; k < exponent; ++k) value *= x;
    return value;
  };
  Rational sign(1.0);
  bool hasTerm = false;
  for (const Piece& piece : line.pieces) {
    if (const auto* mark = std::get_if<Operator>(&piece)) {
      if (isBehind && (mark->sign == "+" || mark->sign == "−")) {
        if (hasTerm) sum += sign * term;
        sign = Rational(mark->sign == "−" ? -1.0 : 1.0);
        term = Rational(1.0);
      }
      isBehind = isBehind || mark->sign == "=";
    } else if (isBehind) {
      hasTerm = true;
      if (const auto* number = std::get_if<ShownNumber>(&piece)) term *= ValueOf(number->exact);
      if (const auto* name = std::get_if<Name>(&piece)) term *= power(*name);
    }
  }
  return sum + sign * term;
}

TEST(MoreAbout, ThePolynomialIsTheDeterminantItStandsFor) {
  OperandSource source(8, 6);
  int compared = 0;
  for (int round = 0; round < 150; ++round) {
    const Matrix A = source.Square();
    const Document document = About(A);
    const Line* line = FindFormula(document, "det(λ·I−A)=");
    ASSERT_NE(line, nullptr);
    const bool isKnown = std::all_of(line->pieces.begin(), line->pieces.end(), [](const Piece& p) {
      const auto* number = std::get_if<ShownNumber>(&p);
      return number == nullptr || number->exact.IsKnown();
    });
    if (!isKnown) continue;
    ++compared;
    // As many values as it has coefficients.
    for (int x = -1; x < A.Rows(); ++x) {
      RationalMatrix shifted = AsShown(A);
      for (int i = 1; i <= A.Rows(); ++i) {
        for (int j = 1; j <= A.Cols(); ++j) {
          shifted(i, j) = Rational(i == j ? double(x) : 0.0) - shifted(i, j);
        }
      }
      EXPECT_TRUE(PolynomialAt(*line, Rational(double(x))) == DeterminantOf(shifted))
          << TextOf(document);
    }
  }
  EXPECT_GT(compared, 80);
}

/// One unit of the 15th significant digit.
Rational UnitOf(const std::string& decimal) {
  const double magnitude = std::fabs(Val(decimal));
  return PowerOfTen(static_cast<int>(std::floor(std::log10(magnitude))) - 14);
}

TEST(MoreAbout, DecimalsOfRootsHoldToTheLastDigit) {
  OperandSource source(9, 7);
  int roots = 0;
  for (int round = 0; round < 150; ++round) {
    Matrix A = source.Square();
    for (int i = 1; i <= A.Rows(); ++i) {
      for (int j = 1; j <= A.Cols(); ++j) A(i, j) = source.Randomness().Integer(-9, 9);
    }
    const Document document = About(A);
    const Line* polynomial = FindFormula(document, "det(λ·I−A)=");
    if (!MultiplicitiesOf(document).empty()) continue;
    std::istringstream texts(EigenvaluesOf(document));
    for (std::string text; std::getline(texts, text, ';');) {
      if (text.front() == ' ') text.erase(0, 1);
      if (text.find("±") != std::string::npos || text == "0") continue;
      ++roots;
      // A simple root changes the sign.
      const Rational half = UnitOf(text) * Rational(0.5000001);
      const Rational below = PolynomialAt(*polynomial, FromText(text) - half);
      const Rational above = PolynomialAt(*polynomial, FromText(text) + half);
      EXPECT_EQ(below.Sign() * above.Sign(), -1) << text << "\n" << TextOf(document);
    }
  }
  EXPECT_GT(roots, 150);
}

TEST(MoreAbout, RootsOfAnyMagnitudeAreFound) {
  // λ³ = 2·10^900, and the same with 10^-900.
  for (const double unit : {1e300, 1e-300}) {
    const Document document = About(MatrixOf({{0, 0, 2 * unit}, {unit, 0, 0}, {0, unit, 0}}));
    const std::string power = unit > 1 ? "E+300" : "E-300";
    const std::string far = unit > 1 ? "E+299" : "E-301";
    EXPECT_EQ(EigenvaluesOf(document), "-6.29960524947437" + far + "±1.09112363597172" + power +
                                           "; 1.25992104989487" + power);
  }
  // Some of 10^300, some of 10^-300, and none on a circle about 0 alone.
  OperandSource source(11);
  Matrix A(8, 8);
  for (int i = 1; i <= 8; ++i) {
    for (int j = 1; j <= 8; ++j) {
      A(i, j) = source.Randomness().Real(-1, 1) * (i == j || i > 5 ? 1e-300 : 1e300);
    }
  }
  const std::string text = TextOf(About(A));
  EXPECT_NE(text.find("All are different"), std::string::npos) << text;
  EXPECT_EQ(text.find("so close together"), std::string::npos) << text;
}

TEST(MoreAbout, SaysWhereRootsAreTooCloseTogether) {
  OperandSource source(12);
  Matrix A(8, 8);
  for (int i = 1; i <= 8; ++i) {
    for (int j = 1; j <= 8; ++j) A(i, j) = i == j ? 1 : source.Randomness().Real(-1, 1) * 1e-200;
  }
  const std::string text = TextOf(About(A));
  for (const char* part :
       {"Some of them are so close together that their digits would take too long to find: … "
        "stands for these.\n",
        "λ8≈\n", "diagonal, if not with real numbers then with complex ones.\n"}) {
    EXPECT_NE(text.find(part), std::string::npos) << part << text;
  }
}

TEST(MoreAbout, EveryLookMayEndIt) {
  const Matrix A = MatrixOf({{1, 2, 3}, {4, 5, 6}, {7, 8, 10}});
  int looks = 0;
  MoreAboutMatrix(A, [&looks] { ++looks; });
  for (int last = 1; last <= looks; ++last) {
    int left = last;
    EXPECT_THROW(MoreAboutMatrix(A,
                                 [&left] {
                                   if (--left == 0) throw std::runtime_error("stop");
                                 }),
                 std::runtime_error);
  }
}

TEST(MoreAbout, SaysWhatIsLeftOutAndWhy) {
  const std::string large = TextOf(About(Matrix(41, 3)));
  EXPECT_NE(large.find("more than 40 rows or columns"), std::string::npos) << large;
  Matrix wide(20, 20);
  for (int i = 1; i <= 20; ++i) wide(i, i) = i % 2 == 0 ? 1e300 : 1e-300;
  const std::string magnitudes = TextOf(About(wide));
  EXPECT_NE(magnitudes.find("very different magnitudes"), std::string::npos) << magnitudes;
  Matrix endless(2, 2);
  endless(1, 1) = std::numeric_limits<double>::infinity();
  EXPECT_NE(TextOf(About(endless)).find("no finite numbers"), std::string::npos);
}

TEST(MoreAbout, LooksAndLetsThrough) {
  OperandSource source(10);
  Matrix A(30, 30);
  for (int i = 1; i <= 30; ++i) {
    for (int j = 1; j <= 30; ++j) A(i, j) = source.Randomness().Integer(-9, 9);
  }
  int looks = 0;
  MoreAboutMatrix(A, [&looks] { ++looks; });
  EXPECT_GT(looks, 100);
  int left = 50;
  EXPECT_THROW(MoreAboutMatrix(A,
                               [&left] {
                                 if (--left == 0) throw std::runtime_error("stop");
                               }),
               std::runtime_error);
}

TEST(MoreAbout, LargerMatricesAreToldInShort) {
  Matrix A(12, 12);
  for (int i = 1; i <= 12; ++i) {
    for (int j = 1; j <= 12; ++j) A(i, j) = 1.0 / (i + j) + (i == j ? 1 : 0);
  }
  const std::string text = TextOf(About(A));
  EXPECT_NE(text.find("| Row | Column | Pivot"), std::string::npos) << text;
  EXPECT_LT(About(A).blocks.size(), 150U);
}

}  // namespace
}  // namespace qmx::testing
