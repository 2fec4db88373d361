// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>

#include "algorithms/determinant.h"
#include "algorithms/lu.h"
#include "derivation/plain_elimination.h"
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
  NoWatcher watcher_;
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
    const double plain = ValueOf(PlainDeterminant(W, this->watcher_, exchanges));
    EXPECT_TRUE(AreSame(plain, Determinant(A, this->unheard_)));
  }
}

TYPED_TEST(PlainLoops, LuHasTheProgramsBits) {
  CaseSource cases(2, CaseShape::kAny, kLargest);
  for (int round = 0; round < kRounds; ++round) {
    const Matrix A = cases.Next();
    for (const bool pivoting : {true, false}) {
      const auto plain = FactorPlainLu(ElementsOf<TypeParam>(A), pivoting, this->watcher_);
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

}  // namespace
}  // namespace qmx::testing
