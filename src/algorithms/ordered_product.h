// SPDX-License-Identifier: MIT
#pragma once

#include <cassert>
#include <cstddef>

#include "algorithms/block_sizes.h"
#include "algorithms/work_meter.h"
#include "base/matrix.h"

namespace qmx {

// The routine that does nearly all of the program's work: C ± A·B with every element of C taking
// its products one by one in increasing order, each product and each sum rounded on its own. That
// is what the inner loop of a textbook does, so the algorithms built on it keep the bits of the
// textbook loop while the work on different elements is done side by side. With it what else is
// best done in the widest vectors of the processor.
// It keeps packed operands in storage of its own, for each member of a team: beside these one
// thread at a time may use it.

/// A rectangular part of a matrix, or of its transpose. Counted from 0.
template <class Number>
struct BasicView {
  Number* first = nullptr;
  int rows = 0;
  int cols = 0;
  std::ptrdiff_t rowStride = 0;
  std::ptrdiff_t colStride = 1;

  operator BasicView<const double>() const { return {first, rows, cols, rowStride, colStride}; }
  BasicView Transposed() const { return {first, cols, rows, colStride, rowStride}; }
  Number& operator()(int i, int j) const {
    assert(i >= 0 && i < rows && j >= 0 && j < cols);
    return first[i * rowStride + j * colStride];
  }
};
using View = BasicView<double>;
using ConstView = BasicView<const double>;

/// The rows x cols part of A whose upper left element is (row, col), counted from 1.
inline View Part(Matrix& A, int row, int col, int rows, int cols) {
  return {rows > 0 && cols > 0 ? A.Row(row) + (col - 1) : nullptr, rows, cols, A.Cols(), 1};
}
inline ConstView Part(const Matrix& A, int row, int col, int rows, int cols) {
  return {rows > 0 && cols > 0 ? A.Row(row) + (col - 1) : nullptr, rows, cols, A.Cols(), 1};
}

/// The rows x cols part of a view whose upper left element is (row, col), counted from 0.
template <class Number>
BasicView<Number> Part(const BasicView<Number>& view, int row, int col, int rows, int cols) {
  return {rows > 0 && cols > 0 ? &view(row, col) : nullptr, rows, cols, view.rowStride,
          view.colStride};
}

/// The plain loop of the three routines below, for operands so small that choosing a way or even a
/// call would take longer than the work. C begins as it is or as 0; `sign` adds or subtracts.
template <class Sign>
inline void MultiplyTiny(const ConstView& A, const ConstView& B, const View& C, Sign sign,
                         bool fromZero) {
  for (int i = 0; i < C.rows; ++i) {
    const double* const a = A.first + i * A.rowStride;
    double* const c = C.first + i * C.rowStride;
    for (int j = 0; j < C.cols; ++j) {
      double sum = fromZero ? 0.0 : c[j];
      // The linter cannot see that a matrix with columns has elements.
      for (int k = 0; k < A.cols; ++k)
        sum = sign(sum, a[k * A.colStride] * B(k, j));  // NOLINT(clang-analyzer-core.*)
      c[j] = sum;
    }
  }
}

/// C(i,j) = C(i,j) + A(i,k)·B(k,j) for k = 1, 2, ... in this order. B and C have a column stride of
/// 1 and share no element with each other; A has a row or a column stride of 1 and shares none with
/// C. The sizes are those of the instruction set where none are given; a packed block has
/// kMostPackedA and kMostPackedB elements at most.
void AddProduct(ConstView A, ConstView B, View C, const ProductSizes* sizes = nullptr);
/// The same, adding its multiplications to those of a task while it goes on.
void AddProduct(ConstView A, ConstView B, View C, WorkMeter& meter);

/// The same with C(i,j) - A(i,k)·B(k,j).
void SubtractProduct(ConstView A, ConstView B, View C, const ProductSizes* sizes = nullptr);
void SubtractProduct(ConstView A, ConstView B, View C, WorkMeter& meter);

/// C = A·B: as AddProduct from C(i,j) = 0 on, whatever is in C.
void SetProduct(ConstView A, ConstView B, View C, const ProductSizes* sizes = nullptr);
void SetProduct(ConstView A, ConstView B, View C, WorkMeter& meter);

/// SetProduct of operands so large that they are packed, shared by the members of the team that the
/// caller must not be one of; false where they are smaller, and then nothing is done.
bool ShareProduct(ConstView A, ConstView B, View C, WorkMeter& meter,
                  const ProductSizes* sizes = nullptr);

/// What EliminateRows does, for rows of any length.
void EliminateLongRows(const double* pivot, double* rows, std::ptrdiff_t stride, int count,
                       int left, int right);

/// One step of an elimination with the row of `pivot`, in `count` rows that lie `stride` apart;
/// both pointers are to the elements in the column of the step. In each row f = row[0] / pivot[0]
/// takes the place of row[0], and row[j] = row[j] - f·pivot[j] in `left` columns before and `right`
/// columns behind.
inline void EliminateRows(const double* pivot, double* rows, std::ptrdiff_t stride, int count,
                          int left, int right) {
  if (left + right > kFewNumbers) {
    EliminateLongRows(pivot, rows, stride, count, left, right);
    return;
  }
  // Short rows are done before a call would have chosen its way.
  for (double* row = rows; count > 0; --count, row += stride) {
    const double f = row[0] / pivot[0];
    row[0] = f;
    for (int j = -left; j < 0; ++j) row[j] -= f * pivot[j];
    for (int j = 1; j <= right; ++j) row[j] -= f * pivot[j];
  }
}

/// x[k] = x[k] / divisor for `count` numbers.
void DivideBy(double divisor, double* x, int count);

/// What DivideByEach does, for any count.
void DivideManyByEach(const double* divisors, double* x, int count);

/// x[k] = x[k] / divisors[k] for `count` numbers.
inline void DivideByEach(const double* divisors, double* x, int count) {
  if (count > kFewNumbers) return DivideManyByEach(divisors, x, count);
  for (int k = 0; k < count; ++k) x[k] /= divisors[k];
}

/// The largest magnitude of `count` numbers, at least 1. As in a search that goes from the first to
/// the last and keeps what is strictly larger, a NaN counts only in the first place.
double LargestMagnitude(const double* x, int count);

/// What the routine can be built on. All of them give the same bits.
enum class InstructionSet { kPlain, kSse2, kAvx2, kAvx512 };

/// The widest one that this processor has.
InstructionSet BestInstructionSet();
bool HasInstructionSet(InstructionSet set);

/// For tests and benchmarks only: takes this one from now on. The processor must have it.
void UseInstructionSet(InstructionSet set);

}  // namespace qmx
