// SPDX-License-Identifier: MIT
#pragma once

#include "algorithms/product_tiles_inl.h"

// The steps of an elimination where they are not products of blocks, and what goes with them: in
// rows one by one, in a panel of columns, in the rows of the pivots themselves. To be included and
// compiled like the tiles of the product, and with the same care for lanes and operations.

namespace qmx {
namespace {

template <class Lanes>
[[gnu::always_inline]] inline void SubtractMultiple(double f, const double* x, double* y) {
  const typename Lanes::Vector product = Lanes::Multiply(Lanes::Broadcast(&f), Lanes::Load(x));
  Lanes::Store(y, Lanes::Subtract(Lanes::Load(y), product));
}

/// y[j] = y[j] - f·x[j]. What does not fill the widest lanes goes first, in the narrower ones: in
/// the next step, which is one number shorter, nothing is then loaded in larger pieces than it was
/// stored in, and the processor need not wait for its own stores.
template <class Widest, class... Narrower>
[[gnu::always_inline]] inline void SubtractMultiple(double f, const double* x, double* y,
                                                    int count) {
  [[maybe_unused]] const auto one = [&]<class Lanes>(Lanes) {
    if ((count & Lanes::kWidth) == 0) return;
    SubtractMultiple<Lanes>(f, x, y);
    x += Lanes::kWidth;
    y += Lanes::kWidth;
  };
  (one(Narrower()), ...);
  for (int left = count / Widest::kWidth; left > 0; --left) {
    SubtractMultiple<Widest>(f, x, y);
    x += Widest::kWidth;
    y += Widest::kWidth;
  }
}

template <class... Lanes>
inline void EliminateRows(const EliminationStep& step) {
  const auto [pivot, rows, stride, count, left, right] = step;
  const double divisor = pivot[0];
  double* row = rows;
  for (int k = 0; k < count; ++k, row += stride) {
    const double f = row[0] / divisor;
    row[0] = f;
    SubtractMultiple<Lanes...>(f, pivot - left, row - left, left);
    SubtractMultiple<Lanes...>(f, pivot + 1, row + 1, right);
  }
}

template <class Lanes>
inline void Divide(double* x, int count, double divisor) {
  const typename Lanes::Vector divisors = Lanes::Broadcast(&divisor);
  int k = 0;
  for (; k + Lanes::kWidth <= count; k += Lanes::kWidth) {
    Lanes::Store(x + k, Lanes::Divide(Lanes::Load(x + k), divisors));
  }
  for (; k < count; ++k) x[k] /= divisor;
}

template <class Lanes>
inline void DivideByEach(double* x, int count, const double* divisors) {
  int k = 0;
  for (; k + Lanes::kWidth <= count; k += Lanes::kWidth) {
    Lanes::Store(x + k, Lanes::Divide(Lanes::Load(x + k), Lanes::Load(divisors + k)));
  }
  for (; k < count; ++k) x[k] /= divisors[k];
}

/// The larger one of `largest` and all lanes.
template <class Lanes>
inline double LargestLane(typename Lanes::Vector x, double largest) {
  double lanes[Lanes::kWidth];
  Lanes::Store(lanes, x);
  for (int half = Lanes::kWidth / 2; half > 0; half /= 2) {
    for (int k = 0; k < half; ++k) lanes[k] = Lanes1::Larger(lanes[k + half], lanes[k]);
  }
  return Lanes1::Larger(lanes[0], largest);
}

template <class Lanes>
inline double LargestMagnitude(const double* x, int count) {
  constexpr int kWidth = Lanes::kWidth;
  const double first = __builtin_fabs(x[0]);
  typename Lanes::Vector even = Lanes::Broadcast(&first);
  typename Lanes::Vector odd = even;
  int k = 0;
  for (; k + 2 * kWidth <= count; k += 2 * kWidth) {
    even = Lanes::Larger(Lanes::Load(x + k), even);
    odd = Lanes::Larger(Lanes::Load(x + k + kWidth), odd);
  }
  double largest = LargestLane<Lanes>(Lanes::Larger(odd, even), first);
  for (; k < count; ++k) largest = Lanes1::Larger(x[k], largest);
  return largest;
}

/// The first place of a magnitude that one of `count` numbers has, else `count`.
template <class Lanes>
inline int PlaceOf(double magnitude, const double* x, int count) {
  const typename Lanes::Vector wanted = Lanes::Broadcast(&magnitude);
  int k = 0;
  for (; k + Lanes::kWidth <= count; k += Lanes::kWidth) {
    const unsigned equal = Lanes::EqualMagnitudes(Lanes::Load(x + k), wanted);
    if (equal != 0) return k + __builtin_ctz(equal);
  }
  while (k < count && __builtin_fabs(x[k]) != magnitude) ++k;
  return k;
}

template <class Lanes>
inline void Swap(double* x, double* y, int count) {
  int k = 0;
  for (; k + Lanes::kWidth <= count; k += Lanes::kWidth) {
    const typename Lanes::Vector kept = Lanes::Load(x + k);
    Lanes::Store(x + k, Lanes::Load(y + k));
    Lanes::Store(y + k, kept);
  }
  for (; k < count; ++k) {
    const double kept = x[k];
    x[k] = y[k];
    y[k] = kept;
  }
}

/// A square of numbers after the other, the rest number by number.
template <class Lanes>
inline void Transpose(const TransposeJob& job) {
  constexpr int kWidth = Lanes::kWidth;
  const int rows = job.rows / kWidth * kWidth;
  const int cols = job.cols / kWidth * kWidth;
  const auto one = [&](int i, int j) {
    job.to[j * job.toStride + i] = job.from[i * job.fromStride + j];
  };
  for (int i = 0; i < rows; i += kWidth) {
    for (int j = 0; j < cols; j += kWidth) {
      Lanes::TransposeSquare(job.from + i * job.fromStride + j, job.fromStride,
                             job.to + j * job.toStride + i, job.toStride);
    }
    for (int j = cols; j < job.cols; ++j) {
      for (int k = i; k < i + kWidth; ++k) one(k, j);
    }
  }
  for (int i = rows; i < job.rows; ++i) {
    for (int j = 0; j < job.cols; ++j) one(i, j);
  }
}

/// What a step has at hand in all its rows.
template <int N, class Lanes>
struct StepNumbers {
  using Vector = typename Lanes::Vector;
  explicit StepNumbers(const PanelStep& step)
      : divisor(Lanes::Broadcast(&step.pivot)), column(step.column) {
    for (int r = 0; r < N; ++r) {
      other[r] = step.other[r];
      multiplier[r] = Lanes::Broadcast(&step.multiplier[r]);
    }
  }

  /// Takes the step in the rows from k on. Returns the larger one of `largest` and the magnitudes
  /// that come about in the first other column.
  template <class Last>
  Vector TakeAt(int k, const Last& lanes, Vector largest) const {
    const Vector f = lanes.Divide(lanes.Load(column + k), divisor);
    lanes.Store(column + k, f);
    for (int r = 0; r < N; ++r) {
      const Vector x = lanes.Subtract(lanes.Load(other[r] + k), lanes.Multiply(multiplier[r], f));
      lanes.Store(other[r] + k, x);
      if (r == 0) largest = lanes.Larger(x, largest);
    }
    return largest;
  }

  Vector divisor;
  Vector multiplier[N + 1];
  double* column;
  double* other[N + 1];
};

/// A step in the rows of a panel with N other columns; what does not fill a vector goes number by
/// number.
template <int N, class Lanes>
double TakeStepWith(const PanelStep& step) {
  const StepNumbers<N, Lanes1> single(step);
  const StepNumbers<N, Lanes> several(step);
  double largest = 0;
  typename Lanes::Vector lanes = Lanes::Broadcast(&largest);
  int k = 0;
  for (; k + Lanes::kWidth <= step.count; k += Lanes::kWidth) {
    lanes = several.TakeAt(k, Lanes(), lanes);
  }
  for (; k < step.count; ++k) largest = single.TakeAt(k, Lanes1(), largest);
  return LargestLane<Lanes>(lanes, largest);
}

/// Calls take.template operator()<N>() for the N that is `count`, from kLeast to kMost.
template <int kLeast, int kMost, class Take>
[[gnu::always_inline]] inline auto ForCount(int count, const Take& take) {
  if constexpr (kLeast < kMost) {
    if (count < kMost) return ForCount<kLeast, kMost - 1>(count, take);
  }
  return take.template operator()<kMost>();
}

/// As in a search from the first number on, a NaN counts only in the first place.
inline double WithFirst(double largest, const PanelStep& step) {
  const double first = step.others > 0 ? step.other[0][0] : 0.0;
  return first == first ? largest : first;
}

template <class Lanes>
double TakeStepIn(const PanelStep& step) {
  const double largest = ForCount<0, kPanelColumns - 1>(
      step.others, [&]<int N>() { return TakeStepWith<N, Lanes>(step); });
  return WithFirst(largest, step);
}

/// R rows and R steps in V vectors of columns from `col` on, the last of them with the lanes
/// `last`.
template <bool kExchange, int R, int V, class Lanes, class Last = Lanes>
void PivotRows(const PivotRowsJob& job, int col, const Last& last = Last()) {
  using Vector = typename Lanes::Vector;
  constexpr Lanes kLanes;
  constexpr int kBeforeLast = V - 1;
  const auto load = [&](const double* p, Vector(&x)[V]) {
    for (int v = 0; v < kBeforeLast; ++v) x[v] = kLanes.Load(p + v * Lanes::kWidth);
    x[kBeforeLast] = last.Load(p + kBeforeLast * Lanes::kWidth);
  };
  const auto store = [&](double* p, const Vector(&x)[V]) {
    for (int v = 0; v < kBeforeLast; ++v) kLanes.Store(p + v * Lanes::kWidth, x[v]);
    last.Store(p + kBeforeLast * Lanes::kWidth, x[kBeforeLast]);
  };
  const auto subtract = [&](const double* factor, const Vector(&u)[V], Vector(&x)[V]) {
    const Vector f = kLanes.Broadcast(factor);
    for (int v = 0; v < kBeforeLast; ++v) x[v] = kLanes.Subtract(x[v], kLanes.Multiply(f, u[v]));
    x[kBeforeLast] = last.Subtract(x[kBeforeLast], last.Multiply(f, u[kBeforeLast]));
  };
  Vector x[R][V];
  for (int i = 0; i < R; ++i) load(job.rows + i * job.stride + col, x[i]);
  for (int s = 0; s < R; ++s) {
    const double* const factors = job.factors + s * job.factorCol;
    Vector u[V];
    for (int v = 0; v < V; ++v) u[v] = x[s][v];
    if constexpr (kExchange) {
      store(job.kept + s * job.keptStride + col, u);
      const Vector pivot = kLanes.Broadcast(job.pivots + s);
      for (int v = 0; v < kBeforeLast; ++v) x[s][v] = kLanes.Divide(u[v], pivot);
      x[s][kBeforeLast] = last.Divide(u[kBeforeLast], pivot);
      for (int i = 0; i < s; ++i) subtract(factors + i * job.factorRow, u, x[i]);
    }
    for (int i = s + 1; i < R; ++i) subtract(factors + i * job.factorRow, u, x[i]);
  }
  for (int i = 0; i < R; ++i) store(job.rows + i * job.stride + col, x[i]);
}

/// Strips of V vectors from column `col` on; returns the column after the last whole strip.
template <bool kExchange, int V, class Lanes>
int PivotRowStrips(const PivotRowsJob& job, int col) {
  constexpr int kCols = V * Lanes::kWidth;
  for (; col + kCols <= job.cols; col += kCols) {
    ForCount<1, kPanelColumns>(job.count,
                               [&]<int R>() { PivotRows<kExchange, R, V, Lanes>(job, col); });
  }
  return col;
}

template <class Set, class Sign>
void RunPacked(const ProductJob& block) {
  PackedBlock<Sign, Set::kTileRows, Set::kTileVectors, typename Set::Lanes>(
      block, Set::template Run<Sign>);
}

/// The table of an instruction set. `Set` tells its widest lanes, the rows and vectors of its
/// largest tile, and how it runs through what its lanes do not divide evenly.
template <class Set>
constexpr Kernels TableOf() {
  using Lanes = typename Set::Lanes;
  return {.sizes = Set::kSizes,
          .tileRows = Set::kTileRows,
          .tileCols = Set::kTileVectors * Lanes::kWidth,
          .add = Set::template Run<Plus>,
          .subtract = Set::template Run<Minus>,
          .addPacked = RunPacked<Set, Plus>,
          .subtractPacked = RunPacked<Set, Minus>,
          .eliminate = Set::Eliminate,
          .divide = Divide<Lanes>,
          .divideByEach = DivideByEach<Lanes>,
          .largestMagnitude = LargestMagnitude<Lanes>,
          .placeOf = PlaceOf<Lanes>,
          .swap = Swap<Lanes>,
          .transpose = Transpose<Lanes>,
          .panelStep = Set::TakePanelStep,
          .eliminatePivotRows = Set::template TakePivotRowSteps<false>,
          .exchangePivotRows = Set::template TakePivotRowSteps<true>};
}

}  // namespace
}  // namespace qmx
