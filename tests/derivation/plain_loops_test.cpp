// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <optional>

#include "algorithms/definiteness.h"
#include "algorithms/determinant.h"
#include "algorithms/inverse.h"
#include "algorithms/linear_system.h"
#include "algorithms/lu.h"
#include "algorithms/qr.h"
#include "derivation/plain_cofactors.h"
#include "derivation/plain_definiteness.h"
#include "derivation/plain_gauss_jordan.h"
#include "derivation/plain_qr.h"
#include "derivation/plain_systems.h"
#include "support/core_cases.h"

// The loops that derivations tell are what the program did: to the last bit.

namespace qmx::testing {
namespace {

bool AreSame(double one, double two) {
  return std::bit_cast<std::uint64_t>(one) == std::bit_cast<std::uint64_t>(two) ||
         (std::isnan(one) && std::isnan(two));
}

template <class T>
bool AreSame(const Elements<T>& one, const Matrix& two) {
  if (one.Rows() != two.Rows() || one.Cols() != two.Cols()) return false;
  for (int i = 1; i <= one.Rows(); ++i) {
    for (int j = 1; j <= one.Cols(); ++j) {
      if (!AreSame(ValueOf(one(i, j)), two(i, j))) return false;
    }
  }
  return true;
}

/// The same of doubles and of traced numbers.
template <class T>
class PlainLoops : public ::testing::Test {
 protected:
  Progress unheard_;
  plain::NoWatcher watcher_;
};
using Numbers = ::testing::Types<double, Traced>;
TYPED_TEST_SUITE(PlainLoops, Numbers);

// Tracing takes long where elements reach from 1e-300 to 1e300.
constexpr int kRounds = 300;
constexpr int kLargest = 12;

TYPED_TEST(PlainLoops, DeterminantHasTheProgramsBits) {
  CaseSource cases(1, CaseShape::kSquare, kLargest);
  for (int round = 0; round < kRounds; ++round) {
    const Matrix A = cases.Next();
    auto W = ElementsOf<TypeParam>(A);
    int exchanges = 0;
    const double plain = ValueOf(plain::Determinant(W, this->watcher_, exchanges));
    EXPECT_TRUE(AreSame(plain, Determinant(A, this->unheard_)));
  }
}

TYPED_TEST(PlainLoops, LuHasTheProgramsBits) {
  CaseSource cases(2, CaseShape::kAny, kLargest);
  for (int round = 0; round < kRounds; ++round) {
    const Matrix A = cases.Next();
    for (const bool pivoting : {true, false}) {
      plain::LuFactors<TypeParam> plain;
      plain.U = ElementsOf<TypeParam>(A);
      plain::FactorLu(plain, pivoting, this->watcher_);
      const LuFactors lu = FactorLu(A, pivoting, this->unheard_);
      ASSERT_EQ(plain.elimination.refusedColumn == 0, lu.factored);
      EXPECT_TRUE(AreSame(plain.U, lu.U));
      if (!lu.factored) continue;
      EXPECT_TRUE(AreSame(plain.L, lu.L));
      EXPECT_EQ(plain.elimination.exchanges, lu.exchangeCount);
      for (int k = 1; k <= A.Rows(); ++k)
        EXPECT_EQ(plain.elimination.order[k - 1], lu.exchanges(k, 1));
    }
  }
}

TYPED_TEST(PlainLoops, InverseHasTheProgramsBits) {
  CaseSource cases(3, CaseShape::kSquare, kLargest);
  for (int round = 0; round < kRounds; ++round) {
    const Matrix A = cases.Next();
    plain::Jordan<TypeParam> jordan;
    jordan.W = ElementsOf<TypeParam>(A);
    plain::Invert(jordan, this->watcher_);
    const std::optional<Matrix> inverse = Inverse(A, this->unheard_);
    ASSERT_EQ(jordan.invertible, inverse.has_value());
    if (inverse) {
      EXPECT_TRUE(AreSame(plain::Unscrambled(jordan), *inverse));
    }
  }
}

TYPED_TEST(PlainLoops, AdjointByTheInverseHasTheProgramsBits) {
  CaseSource cases(4, CaseShape::kSquare, kLargest);
  for (int round = 0; round < kRounds; ++round) {
    const Matrix A = cases.Next();
    plain::Jordan<TypeParam> jordan;
    jordan.W = ElementsOf<TypeParam>(A);
    plain::InvertExchangingRows(jordan, this->watcher_);
    const std::optional<Matrix> adjoint = AdjointByInverse(A, this->unheard_);
    ASSERT_EQ(jordan.invertible, adjoint.has_value());
    if (adjoint) {
      EXPECT_TRUE(AreSame(plain::AdjointOf(jordan), *adjoint));
    }
  }
}

TYPED_TEST(PlainLoops, CofactorsHaveTheProgramsBits) {
  CaseSource cases(5, CaseShape::kSquare, 6);
  for (int round = 0; round < 100; ++round) {
    const Matrix A = cases.Next();
    const auto elements = ElementsOf<TypeParam>(A);
    Elements<TypeParam> adjoint(A.Rows(), A.Rows());
    for (int i = 1; i <= A.Rows(); ++i) {
      for (int j = 1; j <= A.Rows(); ++j) {
        auto minor = plain::MinorOf(elements, i, j);
        int exchanges = 0;
        const auto value = plain::Determinant(minor, this->watcher_, exchanges);
        adjoint(j, i) = plain::CofactorOf(value, i, j);
      }
    }
    EXPECT_TRUE(AreSame(adjoint, AdjointByCofactors(A, this->unheard_)));
  }
}

TYPED_TEST(PlainLoops, QrHasTheProgramsBits) {
  CaseSource cases(6, CaseShape::kTall, 8);
  for (int round = 0; round < kRounds; ++round) {
    const Matrix A = cases.Next();
    plain::Qr<TypeParam> plain;
    plain::FactorQr(ElementsOf<TypeParam>(A), plain, this->watcher_);
    const QrFactors qr = FactorQr(A, this->unheard_);
    ASSERT_EQ(plain.failedColumn == 0, qr.factored);
    EXPECT_TRUE(AreSame(plain.Q, qr.Q));
    EXPECT_TRUE(AreSame(plain.R, qr.R));
  }
}

TYPED_TEST(PlainLoops, LeadingMinorsHaveTheProgramsBits) {
  CaseSource cases(7, CaseShape::kSymmetric, kLargest);
  for (int round = 0; round < kRounds; ++round) {
    const Matrix A = cases.Next();
    if (A.Rows() == 0) continue;
    auto W = ElementsOf<TypeParam>(A);
    Elements<TypeParam> minors;
    plain::LeadingMinors(W, minors, this->watcher_);
    const DefinitenessReport report = TestDefiniteness(A, this->unheard_);
    for (int k = 1; k <= A.Rows(); ++k) {
      EXPECT_TRUE(AreSame(ValueOf(minors(k, 1)), report.leadingMinor[k - 1]));
    }
  }
}

/// Solves an augmented system as the derivations do.
template <class T>
plain::Substitution Solve(Elements<T>& M, Elements<T>& x) {
  plain::NoWatcher watcher;
  const int n = M.Rows();
  plain::Eliminate(M, {n, n - 1, true, false}, watcher);
  x = Elements<T>(n, 1);
  return plain::SubstituteBack(
      M, n, x, [&](int i) { return M(i, M.Cols()); }, [&](int i) { return M(i, n + 1); },
      [](int /*row*/, const T& /*rest*/) {});
}

template <class T>
void ExpectSame(const plain::Substitution& end, const Elements<T>& x,
                const SystemSolution& solution) {
  ASSERT_EQ(end.failedRow == 0, solution.solved);
  EXPECT_EQ(end.inconsistent, solution.inconsistent);
  if (solution.solved) {
    EXPECT_TRUE(AreSame(x, solution.x));
  }
}

TYPED_TEST(PlainLoops, OneShotSolutionHasTheProgramsBits) {
  CaseSource cases(8, CaseShape::kAny, kLargest);
  for (int round = 0; round < kRounds; ++round) {
    const int n = cases.Randomness().Integer(1, kLargest);
    const Matrix system = cases.Next(n, n + 1);
    auto M = ElementsOf<TypeParam>(system);
    Elements<TypeParam> x;
    const plain::Substitution end = Solve(M, x);
    ExpectSame(end, x, SolveOneShot(system, this->unheard_));
  }
}

TYPED_TEST(PlainLoops, LeastSquaresHaveTheProgramsBits) {
  CaseSource cases(9, CaseShape::kTall, 8);
  for (int round = 0; round < kRounds; ++round) {
    const int unknowns = cases.Randomness().Integer(1, 7);
    const int equations = cases.Randomness().Integer(unknowns, 8);
    const Matrix system = cases.Next(equations, unknowns + 1);
    auto M = plain::NormalEquations(ElementsOf<TypeParam>(system), [] {});
    Elements<TypeParam> x;
    const plain::Substitution end = Solve(M, x);
    ExpectSame(end, x, SolveLeastSquares(system, this->unheard_));
  }
}

TYPED_TEST(PlainLoops, SolutionByFactorsHasTheProgramsBits) {
  CaseSource cases(10, CaseShape::kAny, kLargest);
  for (int round = 0; round < kRounds; ++round) {
    const int n = cases.Randomness().Integer(1, kLargest);
    const Matrix L = cases.Next(n, n);
    const Matrix U = cases.Next(n, n);
    const Matrix b = cases.Next(n, 1);
    auto y = ElementsOf<TypeParam>(b);
    plain::SubstituteForward(ElementsOf<TypeParam>(L), y, [](int /*row*/) {});
    Elements<TypeParam> x(n, 1);
    const auto right = [&](int i) { return y(i, 1); };
    const plain::Substitution end =
        plain::SubstituteBack(ElementsOf<TypeParam>(U), n, x, right, right,
                              [](int /*row*/, const TypeParam& /*rest*/) {});
    ExpectSame(end, x, SolveByFactors(L, U, {}, b, this->unheard_));
  }
}

}  // namespace
}  // namespace qmx::testing
