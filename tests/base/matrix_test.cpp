// SPDX-License-Identifier: MIT
#include "base/matrix.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <thread>
#include <utility>

#include "base/fault.h"

namespace qmx {
namespace {

Matrix Counting(int rows, int cols) {
  Matrix A(rows, cols);
  for (std::size_t k = 0; k < A.Size(); ++k) A.Data()[k] = static_cast<double>(k + 1);
  return A;
}

TEST(MatrixTest, ANewMatrixIsZero) {
  const Matrix A(3, 4);
  EXPECT_EQ(A.Rows(), 3);
  EXPECT_EQ(A.Cols(), 4);
  EXPECT_EQ(A.Size(), 12u);
  for (std::size_t k = 0; k < A.Size(); ++k) EXPECT_EQ(A.Data()[k], 0);
}

TEST(MatrixTest, ElementsLieRowByRowAndAreNumberedFromOne) {
  const Matrix A = Counting(2, 3);
  EXPECT_EQ(A(1, 1), 1);
  EXPECT_EQ(A(1, 3), 3);
  EXPECT_EQ(A(2, 1), 4);
  EXPECT_EQ(A.Row(2)[2], 6);
}

TEST(MatrixTest, AccessOutsideIsAFault) {
  Matrix A(2, 3);
  const std::pair<int, int> outside[] = {{0, 1}, {1, 0}, {3, 1}, {1, 4}, {-1, 1}, {1, -1}};
  for (const auto& [row, col] : outside) {
    EXPECT_FALSE(A.Contains(row, col));
    try {
      A.At(row, col) = 1;
      ADD_FAILURE() << row << ", " << col;
    } catch (const RuntimeFault& fault) {
      EXPECT_EQ(fault.Number(), Fault::kSubscriptOutOfRange);
    }
    EXPECT_THROW(std::as_const(A).At(row, col), RuntimeFault);
  }
  A.At(2, 3) = 5;
  EXPECT_EQ(std::as_const(A).At(2, 3), 5);
}

TEST(MatrixTest, CopiesAreIndependent) {
  Matrix A = Counting(2, 2);
  Matrix B = A;
  B(1, 1) = 9;
  EXPECT_EQ(A(1, 1), 1);
  A = B;
  EXPECT_EQ(A(1, 1), 9);
  A = Counting(3, 1);
  EXPECT_EQ(A, Counting(3, 1));
}

TEST(MatrixTest, AssignmentToItselfKeepsEverything) {
  Matrix A = Counting(2, 2);
  const Matrix& same = A;
  A = same;
  EXPECT_EQ(A, Counting(2, 2));
}

TEST(MatrixTest, MovingLeavesAnEmptyMatrix) {
  Matrix A = Counting(2, 2);
  const Matrix B = std::move(A);
  EXPECT_EQ(B, Counting(2, 2));
  EXPECT_EQ(A, Matrix());  // NOLINT(bugprone-use-after-move): the state after a move is promised.
}

TEST(MatrixTest, SwapRowsStartsAtAColumn) {
  Matrix A = Counting(2, 3);
  A.SwapRows(1, 2, 2);
  EXPECT_EQ(A(1, 1), 1);
  EXPECT_EQ(A(1, 2), 5);
  EXPECT_EQ(A(2, 3), 3);
  A.SwapRows(1, 2, 4);
  EXPECT_EQ(A(1, 2), 5) << "no columns, no change";
  A.SwapRows(2, 2);
  EXPECT_EQ(A(2, 1), 4);
}

TEST(MatrixTest, AViewSeesElementsThatChangeOneByOne) {
  Matrix A = Counting(2, 3);
  const MatrixView view = A.View();
  A(2, 1) = 40;
  EXPECT_EQ(view.Rows(), 2);
  EXPECT_EQ(view.Cols(), 3);
  EXPECT_EQ(view(2, 1), 40);
  EXPECT_EQ(view(1, 3), 3);
}

TEST(MatrixTest, AViewKeepsTheOldElementsWhenItsMatrixGetsOthers) {
  Matrix A = Counting(2, 2);
  const MatrixView copied = A.View();
  const Matrix other(2, 2);
  A = other;
  EXPECT_EQ(copied(2, 2), 4);
  const MatrixView zeros = A.View();
  A = Counting(2, 2);
  EXPECT_EQ(zeros(2, 2), 0) << "assigned by a move";
  MatrixView last;
  {
    const Matrix gone = Counting(3, 1);
    last = gone.View();
  }
  EXPECT_EQ(last(3, 1), 3) << "the matrix is gone";
}

TEST(MatrixTest, CopiesOfAViewedMatrixAreIndependent) {
  const Matrix A = Counting(2, 2);
  const MatrixView view = A.View();
  Matrix B = A;
  B(1, 1) = 9;
  EXPECT_EQ(view(1, 1), 1);
  EXPECT_EQ(A(1, 1), 1);
}

TEST(MatrixTest, ReuseKeepsTheStorageWhereItIsLargeEnough) {
  Matrix A = Counting(3, 4);
  const double* const storage = A.Data();
  A.Reuse(2, 2);
  EXPECT_EQ(A.Rows(), 2);
  EXPECT_EQ(A.Cols(), 2);
  A.Reuse(6, 2);
  EXPECT_EQ(A.Data(), storage) << "there was room for twelve";
  A.Reuse(0, 5);
  EXPECT_EQ(A.Size(), 0u);
  EXPECT_EQ(A.Cols(), 5);
  A.Reuse(13, 1);
  EXPECT_EQ(A.Rows(), 13);
  A(13, 1) = 13;
  A = Matrix();
  A.Reuse(2, 1);
  A(2, 1) = 2;
  EXPECT_EQ(A(2, 1), 2);
}

TEST(MatrixTest, ReuseLeavesAViewItsElements) {
  Matrix A = Counting(2, 2);
  const MatrixView view = A.View();
  A.Reuse(1, 2);
  A(1, 1) = 9;
  EXPECT_EQ(view(1, 1), 1);
  EXPECT_EQ(view(2, 2), 4);
}

TEST(MatrixTest, OfTwoOwnersOneTakesACopyBeforeItWrites) {
  Matrix A = Counting(2, 2);
  Matrix B = A.Shared();
  EXPECT_TRUE(A.SharesWith(B));
  B.MakeOwn();
  EXPECT_FALSE(A.SharesWith(B));
  B(1, 1) = 9;
  EXPECT_EQ(A(1, 1), 1);
  const double* const storage = A.Data();
  A.MakeOwn();
  EXPECT_EQ(A.Data(), storage) << "the other owner has gone";
}

TEST(MatrixTest, AViewIsNoOwner) {
  Matrix A = Counting(2, 2);
  const MatrixView view = A.View();
  const MatrixView copied = view;
  const double* const storage = A.Data();
  A.MakeOwn();
  EXPECT_EQ(A.Data(), storage);
  {
    const Matrix B = A.Shared();
    A.MakeOwn();
    EXPECT_NE(A.Data(), storage);
    EXPECT_TRUE(B.SharesWith(B));
  }
  EXPECT_EQ(copied(2, 2), 4) << "all owners have gone";
}

TEST(MatrixTest, OwnersAndViewsComeAndGoInSeveralThreads) {
  constexpr int kRounds = 10000;
  Matrix A = Counting(2, 2);
  const auto work = [&A] {
    for (int k = 0; k < kRounds; ++k) {
      const Matrix owner = A.Shared();
      const MatrixView view = owner.View();
      if (view(2, 2) != 4) ADD_FAILURE();
    }
  };
  std::thread one(work);
  std::thread two(work);
  one.join();
  two.join();
  const double* const storage = A.Data();
  A.MakeOwn();
  EXPECT_EQ(A.Data(), storage) << "all others have gone";
}

TEST(MatrixTest, MatricesWithoutRowsOrColumnsHoldNothing) {
  EXPECT_EQ(Matrix(0, 5).Size(), 0u);
  EXPECT_EQ(Matrix(5, 0).Size(), 0u);
  const Matrix wide(0, 5);
  Matrix copy = wide;
  copy = Matrix(copy);
  EXPECT_EQ(copy.Cols(), 5);
  EXPECT_FALSE(Matrix(0, 5) == Matrix(5, 0)) << "shapes differ";
}

TEST(MatrixTest, EqualityComparesNumbers) {
  Matrix A(1, 2);
  Matrix B(1, 2);
  B(1, 1) = -0.0;
  EXPECT_TRUE(A == B);
  A(1, 2) = B(1, 2) = std::numeric_limits<double>::quiet_NaN();
  EXPECT_FALSE(A == B);
}

TEST(MatrixTest, StorageThatCannotBeHadIsAFault) {
#if defined(QMX_SANITIZED)
  GTEST_SKIP() << "the sanitizer's allocator ends the program instead of failing";
#endif
  constexpr int kTooMany = std::numeric_limits<int>::max();
  try {
    const Matrix never(kTooMany, kTooMany);
    FAIL();
  } catch (const RuntimeFault& fault) {
    EXPECT_EQ(fault.Number(), Fault::kOutOfMemory);
  }
}

TEST(MatrixTest, CanAllocateTellsWhatFits) {
  EXPECT_TRUE(CanAllocate(0, 0, SystemMemory()));
  EXPECT_TRUE(CanAllocate(1000, 0, SystemMemory()));
  EXPECT_TRUE(CanAllocate(100, 100, SystemMemory()));
  EXPECT_FALSE(CanAllocate(std::numeric_limits<int>::max(), std::numeric_limits<int>::max(),
                           SystemMemory()));
}

}  // namespace
}  // namespace qmx
