// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <new>
#include <span>
#include <vector>

#include "algorithms/ordered_product.h"
#include "algorithms/product_tiles.h"

namespace qmx {

// What an elimination by blocks does where it is not a product of blocks, in the widest vectors of
// the processor.

/// Gives memory that begins at a line of the cache.
template <class T>
struct LineAllocator {
  using value_type = T;
  static constexpr std::align_val_t kLine{kCacheLine * sizeof(double)};
  LineAllocator() = default;
  template <class Other>
  explicit LineAllocator(const LineAllocator<Other>&) {}
  T* allocate(std::size_t count) {
    return static_cast<T*>(::operator new(count * sizeof(T), kLine));
  }
  void deallocate(T* memory, std::size_t) { ::operator delete(memory, kLine); }
  friend bool operator==(const LineAllocator&, const LineAllocator&) { return true; }
};

/// Some columns of a matrix in storage of their own, with the columns as rows, so that what belongs
/// together lies together. Every row of the panel begins at a cache line, as a PanelStep needs it.
class ColumnPanel {
 public:
  /// For up to kPanelColumns columns of up to `rows` numbers.
  explicit ColumnPanel(int rows = 0);

  /// `columns` columns of `rows` numbers, whatever is in them.
  View Empty(int columns, int rows);
  /// The columns of `from`, element (i, j) as (j, i).
  View Read(ConstView from);
  /// Writes a panel back.
  static void Write(ConstView panel, View to);

 private:
  static int WholeLines(int numbers) {
    return (numbers + kCacheLine - 1) / kCacheLine * kCacheLine;
  }

  std::vector<double, LineAllocator<double>> numbers_;
};

/// Takes the step, as told there. Returns the largest magnitude that comes about in the first of
/// the other columns; as with LargestMagnitude a NaN counts only in the first place. 0 without
/// other columns.
inline double TakePanelStep(const PanelStep& step) { return CurrentKernels().panelStep(step); }

/// The place of the largest magnitude of `count` numbers, the first of equals. A NaN in the first
/// place is the largest, and is none elsewhere.
int PlaceOfLargest(const double* x, int count);

/// The same where the largest magnitude is known already.
int PlaceOfLargest(double largest, const double* x, int count);

/// The first place of a magnitude that one of `count` numbers has, else `count`.
inline int PlaceOf(double magnitude, const double* x, int count) {
  return CurrentKernels().placeOf(magnitude, x, count);
}

/// Exchanges `count` numbers of x and y.
inline void SwapNumbers(double* x, double* y, int count) { CurrentKernels().swap(x, y, count); }

/// Two rows that changed places.
struct RowExchange {
  int upper;
  int lower;
};

/// Exchanges these rows of W, one pair after the other, in the columns from..to alone.
void ExchangeRows(Matrix& W, std::span<const RowExchange> exchanges, int from, int to);

/// Copies x[k] to kept[k] and puts -x[k] in its place, for `count` numbers.
void MoveNegated(double* x, int count, double* kept);

/// The steps of some pivot rows in these rows themselves: row i takes step s, X(i,j) = X(i,j) -
/// F(i,s)·X(s,j), for all s < i in increasing order. At most kPanelColumns rows.
void EliminatePivotRows(ConstView F, View X);

/// Exchange steps in kPanelColumns rows at most: row i takes the steps above it as in
/// EliminatePivotRows, is copied to row i of U, is divided by pivots[i], and takes the steps below
/// it, X(i,j) = X(i,j) - F(i,s)·U(s,j), in increasing order.
void ExchangePivotRows(ConstView F, const double* pivots, View X, View U);

}  // namespace qmx
