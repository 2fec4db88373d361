#pragma once

#include <cstddef>

#include "algorithms/product_tiles.h"

#if defined(__SSE2__)
#include <immintrin.h>
#endif

// The tiles of C ± A·B, to be included by the one file of each instruction set and compiled with
// its options there. Everything has internal linkage, so that no copy made for a newer processor
// can take the place of one made for an older. No header with inline code of ours or of the library
// may be included here.
//
// A tile is a block of C that stays in registers while the products run through it:
//
//                  B: depth x one vector or several
//                  |
//   A: R rows  --  C: R x the same vectors
//
// The element of A is broadcast to all lanes, so each lane does what a scalar loop would do. No
// lane ever works on anything but a real column: a stray one might raise a floating-point
// exception. What is left at the right edge is therefore done with narrower vectors, or with the
// other lanes switched off where the processor can do that.

namespace qmx {
namespace {

struct Lanes1 {
  using Vector = double;
  static constexpr int kWidth = 1;
  static Vector Load(const double* p) { return *p; }
  static void Store(double* p, Vector v) { *p = v; }
  static Vector Broadcast(const double* p) { return *p; }
  static Vector Add(Vector x, Vector y) { return x + y; }
  static Vector Subtract(Vector x, Vector y) { return x - y; }
  static Vector Multiply(Vector x, Vector y) { return x * y; }
  static Vector Divide(Vector x, Vector y) { return x / y; }
  static Vector Larger(Vector x, Vector kept) {
    x = __builtin_fabs(x);
    return x > kept ? x : kept;
  }
};

#if defined(__SSE2__)
struct Lanes2 {
  using Vector = __m128d;
  static constexpr int kWidth = 2;
  static Vector Load(const double* p) { return _mm_loadu_pd(p); }
  static void Store(double* p, Vector v) { _mm_storeu_pd(p, v); }
  static Vector Broadcast(const double* p) { return _mm_set1_pd(*p); }
  static Vector Add(Vector x, Vector y) { return _mm_add_pd(x, y); }
  static Vector Subtract(Vector x, Vector y) { return _mm_sub_pd(x, y); }
  static Vector Multiply(Vector x, Vector y) { return _mm_mul_pd(x, y); }
  static Vector Divide(Vector x, Vector y) { return _mm_div_pd(x, y); }
  static Vector Larger(Vector x, Vector kept) {
    return _mm_max_pd(_mm_andnot_pd(_mm_set1_pd(-0.0), x), kept);
  }
};
#endif

#if defined(__AVX__)
struct Lanes4 {
  using Vector = __m256d;
  static constexpr int kWidth = 4;
  static Vector Load(const double* p) { return _mm256_loadu_pd(p); }
  static void Store(double* p, Vector v) { _mm256_storeu_pd(p, v); }
  static Vector Broadcast(const double* p) { return _mm256_broadcast_sd(p); }
  static Vector Add(Vector x, Vector y) { return _mm256_add_pd(x, y); }
  static Vector Subtract(Vector x, Vector y) { return _mm256_sub_pd(x, y); }
  static Vector Multiply(Vector x, Vector y) { return _mm256_mul_pd(x, y); }
  static Vector Divide(Vector x, Vector y) { return _mm256_div_pd(x, y); }
  static Vector Larger(Vector x, Vector kept) {
    return _mm256_max_pd(_mm256_andnot_pd(_mm256_set1_pd(-0.0), x), kept);
  }
};
#endif

#if defined(__AVX512F__)
struct Lanes8 {
  using Vector = __m512d;
  // The maximum without a mask makes g++ 12 warn of its own header.
  static constexpr __mmask8 kAllLanes = 0xFF;
  static constexpr int kWidth = 8;
  static Vector Load(const double* p) { return _mm512_loadu_pd(p); }
  static void Store(double* p, Vector v) { _mm512_storeu_pd(p, v); }
  static Vector Broadcast(const double* p) { return _mm512_set1_pd(*p); }
  static Vector Add(Vector x, Vector y) { return _mm512_add_pd(x, y); }
  static Vector Subtract(Vector x, Vector y) { return _mm512_sub_pd(x, y); }
  static Vector Multiply(Vector x, Vector y) { return _mm512_mul_pd(x, y); }
  static Vector Divide(Vector x, Vector y) { return _mm512_div_pd(x, y); }
  static Vector Larger(Vector x, Vector kept) {
    return _mm512_maskz_max_pd(kAllLanes, _mm512_abs_pd(x), kept);
  }
};

/// The first 1 to 8 lanes. The others are neither read nor written and raise nothing.
struct FirstLanes {
  using Vector = __m512d;
  static constexpr int kWidth = 8;
  explicit FirstLanes(int count) : on(static_cast<__mmask8>((1 << count) - 1)) {}
  Vector Load(const double* p) const { return _mm512_maskz_loadu_pd(on, p); }
  void Store(double* p, Vector v) const { _mm512_mask_storeu_pd(p, on, v); }
  static Vector Broadcast(const double* p) { return _mm512_set1_pd(*p); }
  Vector Add(Vector x, Vector y) const { return _mm512_maskz_add_pd(on, x, y); }
  Vector Subtract(Vector x, Vector y) const { return _mm512_maskz_sub_pd(on, x, y); }
  Vector Multiply(Vector x, Vector y) const { return _mm512_maskz_mul_pd(on, x, y); }
  __mmask8 on;
};
#endif

// In Larger the operand that is kept goes last: the processor's maximum gives that one where the
// other is a NaN, as the comparison of the scalar loop does.

struct Plus {
  template <class Lanes>
  static typename Lanes::Vector Apply(const Lanes& lanes, typename Lanes::Vector sum,
                                      typename Lanes::Vector product) {
    return lanes.Add(sum, product);
  }
};

struct Minus {
  template <class Lanes>
  static typename Lanes::Vector Apply(const Lanes& lanes, typename Lanes::Vector sum,
                                      typename Lanes::Vector product) {
    return lanes.Subtract(sum, product);
  }
};

/// One tile of R rows and V vectors, the last of them with the lanes `last`; a, b and c are its
/// corners in A, B and C.
template <class Sign, int R, int V, class Lanes, class Last>
[[gnu::always_inline]] inline void Tile(const ProductJob& job, const double* a, const double* b,
                                        double* c, const Last& last) {
  using Vector = typename Lanes::Vector;
  constexpr std::ptrdiff_t kWidth = Lanes::kWidth;
  constexpr int kBeforeLast = V - 1;
  constexpr Lanes kLanes;
  Vector sum[R][V];
  for (int i = 0; i < R; ++i) {
    const double* row = c + i * job.cRow;
    for (int v = 0; v < kBeforeLast; ++v) sum[i][v] = kLanes.Load(row + v * kWidth);
    sum[i][kBeforeLast] = last.Load(row + kBeforeLast * kWidth);
  }
  for (int k = 0; k < job.depth; ++k) {
    Vector row[V];
    for (int v = 0; v < kBeforeLast; ++v) row[v] = kLanes.Load(b + v * kWidth);
    row[kBeforeLast] = last.Load(b + kBeforeLast * kWidth);
    for (int i = 0; i < R; ++i) {
      const Vector factor = kLanes.Broadcast(a + i * job.aRow);
      for (int v = 0; v < kBeforeLast; ++v) {
        sum[i][v] = Sign::Apply(kLanes, sum[i][v], kLanes.Multiply(factor, row[v]));
      }
      sum[i][kBeforeLast] =
          Sign::Apply(last, sum[i][kBeforeLast], last.Multiply(factor, row[kBeforeLast]));
    }
    a += job.aCol;
    b += job.bRow;
  }
  for (int i = 0; i < R; ++i) {
    double* row = c + i * job.cRow;
    for (int v = 0; v < kBeforeLast; ++v) kLanes.Store(row + v * kWidth, sum[i][v]);
    last.Store(row + kBeforeLast * kWidth, sum[i][kBeforeLast]);
  }
}

/// The tile of the `left` rows at the lower edge, at most R of them.
template <class Sign, int R, int V, class Lanes, class Last>
inline void LowTile(const ProductJob& job, int left, const double* a, const double* b, double* c,
                    const Last& last) {
  if (left == R) {
    Tile<Sign, R, V, Lanes>(job, a, b, c, last);
  } else if constexpr (R > 1) {
    LowTile<Sign, R - 1, V, Lanes>(job, left, a, b, c, last);
  }
}

/// Tiles of R rows down a strip of V vectors at column `col`, and a lower one for the rest.
template <class Sign, int R, int V, class Lanes, class Last = Lanes>
inline void Strip(const ProductJob& job, int col, const Last& last = Last()) {
  const double* a = job.a;
  double* c = job.c + col;
  int left = job.rows;
  for (; left >= R; left -= R) {
    Tile<Sign, R, V, Lanes>(job, a, job.b + col, c, last);
    a += R * job.aRow;
    c += R * job.cRow;
  }
  if constexpr (R > 1) {
    if (left > 0) LowTile<Sign, R - 1, V, Lanes>(job, left, a, job.b + col, c, last);
  }
}

/// Strips of V vectors from column `col` on; returns the column after the last whole strip.
template <class Sign, int R, int V, class Lanes>
inline int Strips(const ProductJob& job, int col) {
  constexpr int kCols = V * Lanes::kWidth;
  for (; col + kCols <= job.cols; col += kCols) Strip<Sign, R, V, Lanes>(job, col);
  return col;
}

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
inline void Eliminate(const EliminationStep& step) {
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
  double lanes[2 * kWidth];
  Lanes::Store(lanes, even);
  Lanes::Store(lanes + kWidth, odd);
  double largest = first;
  for (const double lane : lanes) largest = Lanes1::Larger(lane, largest);
  for (; k < count; ++k) largest = Lanes1::Larger(x[k], largest);
  return largest;
}

}  // namespace
}  // namespace qmx
