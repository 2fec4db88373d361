// SPDX-License-Identifier: MIT
#include <cstdint>

#include "algorithms/elimination_tiles_inl.h"

namespace qmx {
namespace {

/// The columns from `col` on, at most V vectors of them, the last one perhaps in part. Where that
/// is a part that a narrower vector fills, the narrower one is quicker.
template <class Sign, int R, int V>
void RightEdge(const ProductJob& job, int col) {
  const int left = job.cols - col - (V - 1) * Lanes8::kWidth;
  if constexpr (V == 1) {
    if (left == Lanes4::kWidth) return Strip<Sign, R, 1, Lanes4>(job, col);
    if (left == Lanes2::kWidth) return Strip<Sign, R, 1, Lanes2>(job, col);
    if (left == Lanes1::kWidth) return Strip<Sign, R, 1, Lanes1>(job, col);
  }
  if (left > 0) {
    Strip<Sign, R, V, Lanes8>(job, col, FirstLanes(left));
  } else if constexpr (V > 1) {
    RightEdge<Sign, R, V - 1>(job, col);
  }
}

/// Some of 8 lanes. The others are read and written as they are and raise nothing; so a vector
/// comes back as it was stored, and the processor need not wait for its own stores.
struct SomeLanes {
  using Vector = __m512d;
  SomeLanes(int from, int to) : on(static_cast<__mmask8>((1 << to) - (1 << from))) {}
  static Vector Load(const double* p) { return _mm512_loadu_pd(p); }
  static void Store(double* p, Vector v) { _mm512_storeu_pd(p, v); }
  Vector Subtract(Vector x, Vector y) const { return _mm512_mask_sub_pd(x, on, x, y); }
  Vector Multiply(Vector x, Vector y) const { return _mm512_maskz_mul_pd(on, x, y); }
  Vector Divide(Vector x, Vector y) const { return _mm512_mask_div_pd(x, on, x, y); }
  Vector Larger(Vector x, Vector kept) const {
    return _mm512_mask_max_pd(kept, on, _mm512_abs_pd(x), kept);
  }
  __mmask8 on;
};

/// Goes along the vectors that a column begins with at a cache line.
template <int N>
double TakeAlignedStepWith(const PanelStep& step) {
  constexpr int kWidth = Lanes8::kWidth;
  const StepNumbers<N, Lanes8> numbers(step);
  Lanes8::Vector largest = _mm512_setzero_pd();
  const auto address = reinterpret_cast<std::uintptr_t>(step.column);
  const int before = static_cast<int>(address / sizeof(double) % kWidth);
  int k = -before;
  if (before > 0) {
    const int end = before + step.count < kWidth ? before + step.count : kWidth;
    largest = numbers.TakeAt(k, SomeLanes(before, end), largest);
    k += kWidth;
  }
  for (; k + kWidth <= step.count; k += kWidth) largest = numbers.TakeAt(k, Lanes8(), largest);
  if (k < step.count) largest = numbers.TakeAt(k, SomeLanes(0, step.count - k), largest);
  return LargestLane<Lanes8>(largest, 0);
}

double TakeAlignedPanelStep(const PanelStep& step) {
  const double largest = ForCount<0, kPanelColumns - 1>(
      step.others, [&]<int N>() { return TakeAlignedStepWith<N>(step); });
  return WithFirst(largest, step);
}

struct Avx512 {
  using Lanes = Lanes8;
  static constexpr int kTileRows = 16;
  static constexpr int kTileVectors = 1;
  static constexpr ProductSizes kSizes{};

  /// A low panel is done in wider tiles, so that there are always enough sums under way.
  template <class Sign>
  static void Run(const ProductJob& job) {
    Panels<16>(job, [](const ProductJob& panel) {
      if (panel.rows <= 4) {
        RightEdge<Sign, 4, 4>(panel, Strips<Sign, 4, 4, Lanes8>(panel, 0));
      } else if (panel.rows <= 8) {
        RightEdge<Sign, 8, 2>(panel, Strips<Sign, 8, 2, Lanes8>(panel, 0));
      } else {
        RightEdge<Sign, 16, 1>(panel, Strips<Sign, 16, 1, Lanes8>(panel, 0));
      }
    });
  }

  static void Eliminate(const EliminationStep& step) {
    EliminateRows<Lanes8, Lanes1, Lanes2, Lanes4>(step);
  }

  static double TakePanelStep(const PanelStep& step) { return TakeAlignedPanelStep(step); }

  template <bool kExchange>
  static void TakePivotRowSteps(const PivotRowsJob& job) {
    int col = PivotRowStrips<kExchange, 2, Lanes8>(job, 0);
    col = PivotRowStrips<kExchange, 1, Lanes8>(job, col);
    const int left = job.cols - col;
    if (left == 0) return;
    ForCount<1, kPanelColumns>(job.count, [&]<int R>() {
      PivotRows<kExchange, R, 1, Lanes8>(job, col, FirstLanes(left));
    });
  }
};

}  // namespace

const Kernels kAvx512Kernels = TableOf<Avx512>();

}  // namespace qmx
