// SPDX-License-Identifier: MIT
#include "algorithms/elementary.h"

#include <gtest/gtest.h>

#include <cmath>

#include "reference/reference.h"
#include "support/core_cases.h"
#include "support/core_compare.h"
#include "support/core_exact.h"

namespace qmx {
namespace {

using testing::Append;
using testing::CaseShape;
using testing::CaseSource;
using testing::Comparison;
using testing::kCases;
using testing::Record;
using testing::Rows;
using testing::ToTable;

Progress unheard;

template <class Result>
Record Of(const Result& result) {
  Record record;
  Append(record, result);
  return record;
}

TEST(ElementaryTest, SumAndDifferenceHaveTheBitsOfThePlainLoop) {
  CaseSource cases(101, CaseShape::kAny, 12);
  CaseSource partners(111, CaseShape::kAny, 12);  // Of the same kind each time.
  Comparison sums("sum");
  Comparison differences("difference");
  while (sums.Count() < kCases && !sums.HasSeenEnough() && !differences.HasSeenEnough()) {
    const Matrix A = cases.Next();
    const Matrix B = partners.Next(A.Rows(), A.Cols());
    sums.Compare([&] { return Of(Sum(A, B, unheard)); },
                 [&] { return Of(reference::Sum(ToTable(A), ToTable(B))); }, {&A, &B});
    differences.Compare([&] { return Of(Difference(A, B, unheard)); },
                        [&] { return Of(reference::Difference(ToTable(A), ToTable(B))); },
                        {&A, &B});
  }
}

TEST(ElementaryTest, ProductHasTheBitsOfThePlainLoop) {
  CaseSource cases(102, CaseShape::kAny, 14);
  Comparison products("product");
  while (products.Count() < kCases && !products.HasSeenEnough()) {
    const Matrix A = cases.Next();
    const Matrix B = cases.Next(A.Cols(), cases.Randomness().Integer(0, 14));
    products.Compare([&] { return Of(Product(A, B, unheard)); },
                     [&] { return Of(reference::Product(ToTable(A), ToTable(B))); }, {&A, &B});
  }
}

TEST(ElementaryTest, TraceAndSymmetryAgreeWithThePlainLoop) {
  CaseSource squares(103, CaseShape::kSquare, 12);
  CaseSource symmetric(104, CaseShape::kSymmetric, 12);
  Comparison traces("trace");
  Comparison symmetries("symmetry");
  while (traces.Count() < kCases && !traces.HasSeenEnough() && !symmetries.HasSeenEnough()) {
    Matrix A = traces.Count() % 2 == 0 ? squares.Next() : symmetric.Next();
    if (A.Size() > 1 && squares.Randomness().Chance(0.2)) A(A.Rows(), 1) += 1e-3;
    traces.Compare([&] { return Record{Trace(A)}; },
                   [&] { return Record{reference::Trace(ToTable(A))}; }, {&A});
    symmetries.Compare([&] { return Record{IsSymmetric(A, unheard) ? 1.0 : 0.0}; },
                       [&] { return Record{reference::IsSymmetric(ToTable(A)) ? 1.0 : 0.0}; },
                       {&A});
  }
}

TEST(ElementaryTest, TransposeScaleAndShiftHaveTheBitsOfThePlainLoop) {
  CaseSource cases(105, CaseShape::kAny, 12);
  Comparison transposes("transpose");
  Comparison scales("multiplication by a scalar");
  Comparison shifts("shift of the diagonal");
  while (scales.Count() < kCases && !scales.HasSeenEnough() && !shifts.HasSeenEnough()) {
    const Matrix A = cases.Next();
    const double c = cases.Randomness().Real(-1, 1) * std::pow(10, scales.Count() % 30 - 15);
    transposes.Compare([&] { return Of(Transpose(A, unheard)); },
                       [&] { return Of(reference::Transpose(ToTable(A))); }, {&A});
    scales.Compare(
        [&] {
          Matrix B = A;
          ScaleInPlace(B, c, unheard);
          return Of(B);
        },
        [&] { return Of(reference::Scaled(ToTable(A), c)); }, {&A}, std::to_string(c));
    shifts.Compare(
        [&] {
          Matrix B = A;
          ShiftInPlace(B, c);
          return Of(B);
        },
        [&] { return Of(reference::Shifted(ToTable(A), c)); }, {&A}, std::to_string(c));
  }
}

TEST(ElementaryTest, ShiftOfAWideMatrixChangesTheLeadingDiagonalOnly) {
  Matrix A = Rows({{1, 2, 3}, {4, 5, 6}});
  ShiftInPlace(A, 1);
  EXPECT_EQ(A, Rows({{2, 2, 3}, {4, 6, 6}}));
}

TEST(ElementaryTest, MultiplicationByZeroClearsAndKeepsTheSigns) {
  Matrix A = Rows({{1, -2}});
  ScaleInPlace(A, 0, unheard);
  EXPECT_EQ(A, Rows({{0, 0}}));
  EXPECT_TRUE(std::signbit(A(1, 2)));
}

TEST(ElementaryTest, AMatrixOfOrderOneIsSymmetric) {
  EXPECT_TRUE(IsSymmetric(Rows({{7}}), unheard));
}

TEST(ElementaryTest, TheSmallestDifferenceBreaksSymmetry) {
  EXPECT_FALSE(IsSymmetric(Rows({{1, 1e-300}, {0, 1}}), unheard));
  EXPECT_TRUE(IsSymmetric(Rows({{1, 1e-300}, {1e-300, 1}}), unheard));
}

TEST(ElementaryTest, TransposeOfARowIsAColumn) {
  EXPECT_EQ(Transpose(Rows({{1, 2, 3}}), unheard), Rows({{1}, {2}, {3}}));
}

TEST(ElementaryTest, TraceAddsTheDiagonal) { EXPECT_EQ(Trace(Rows({{1, 9}, {9, -4}})), -3); }

TEST(ElementaryTest, ProductGrowsFromTheFirstProductOnwards) {
  // 1e16 + 1 is 1e16 again; the other order would give 1.
  EXPECT_EQ(Product(Rows({{1, 1, 1}}), Rows({{1e16}, {1}, {-1e16}}), unheard), Rows({{0}}));
}

TEST(ElementaryTest, ProductOverAnEmptyDimensionIsZero) {
  EXPECT_EQ(Product(Matrix(2, 0), Matrix(0, 3), unheard), Matrix(2, 3));
  EXPECT_EQ(Product(Matrix(0, 2), Matrix(2, 3), unheard), Matrix(0, 3));
  EXPECT_EQ(Product(Matrix(3, 2), Matrix(2, 0), unheard), Matrix(3, 0));
}

TEST(ElementaryTest, ProductsOfIntegersAreExact) {
  testing::Dice dice(106);
  const Matrix A = testing::IntegerMatrix(dice, 30, 40, 1000);
  const Matrix B = testing::IntegerMatrix(dice, 40, 20, 1000);
  const Matrix C = Product(A, B, unheard);
  for (int i = 1; i <= 30; ++i) {
    for (int j = 1; j <= 20; ++j) {
      long sum = 0;
      for (int k = 1; k <= 40; ++k) sum += static_cast<long>(A(i, k)) * static_cast<long>(B(k, j));
      EXPECT_EQ(C(i, j), static_cast<double>(sum));
    }
  }
}

}  // namespace
}  // namespace qmx
