// SPDX-License-Identifier: MIT
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
  static unsigned EqualMagnitudes(Vector x, Vector y) { return __builtin_fabs(x) == y; }
  static void TransposeSquare(const double* from, std::ptrdiff_t, double* to, std::ptrdiff_t) {
    *to = *from;
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
  static Vector Larger(Vector x, Vector kept) { return _mm_max_pd(Magnitudes(x), kept); }
  static unsigned EqualMagnitudes(Vector x, Vector y) {
    return static_cast<unsigned>(_mm_movemask_pd(_mm_cmpeq_pd(Magnitudes(x), y)));
  }
  static void TransposeSquare(const double* from, std::ptrdiff_t fromStride, double* to,
                              std::ptrdiff_t toStride) {
    const Vector upper = Load(from);
    const Vector lower = Load(from + fromStride);
    Store(to, _mm_unpacklo_pd(upper, lower));
    Store(to + toStride, _mm_unpackhi_pd(upper, lower));
  }
  static Vector Magnitudes(Vector x) { return _mm_andnot_pd(_mm_set1_pd(-0.0), x); }
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
  static Vector Larger(Vector x, Vector kept) { return _mm256_max_pd(Magnitudes(x), kept); }
  static unsigned EqualMagnitudes(Vector x, Vector y) {
    return static_cast<unsigned>(_mm256_movemask_pd(_mm256_cmp_pd(Magnitudes(x), y, _CMP_EQ_OQ)));
  }
  static void TransposeSquare(const double* from, std::ptrdiff_t fromStride, double* to,
                              std::ptrdiff_t toStride) {
    const Vector row0 = Load(from);
    const Vector row1 = Load(from + fromStride);
    const Vector row2 = Load(from + 2 * fromStride);
    const Vector row3 = Load(from + 3 * fromStride);
    // Columns 0 and 2, and 1 and 3, of two rows.
    const Vector even01 = _mm256_unpacklo_pd(row0, row1);
    const Vector odd01 = _mm256_unpackhi_pd(row0, row1);
    const Vector even23 = _mm256_unpacklo_pd(row2, row3);
    const Vector odd23 = _mm256_unpackhi_pd(row2, row3);
    Store(to, _mm256_permute2f128_pd(even01, even23, 0x20));
    Store(to + toStride, _mm256_permute2f128_pd(odd01, odd23, 0x20));
    Store(to + 2 * toStride, _mm256_permute2f128_pd(even01, even23, 0x31));
    Store(to + 3 * toStride, _mm256_permute2f128_pd(odd01, odd23, 0x31));
  }
  static Vector Magnitudes(Vector x) { return _mm256_andnot_pd(_mm256_set1_pd(-0.0), x); }
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
  static unsigned EqualMagnitudes(Vector x, Vector y) {
    return _mm512_cmp_pd_mask(_mm512_abs_pd(x), y, _CMP_EQ_OQ);
  }
  /// In squares of four, which then change places.
  static void TransposeSquare(const double* from, std::ptrdiff_t fromStride, double* to,
                              std::ptrdiff_t toStride) {
    Vector row[kWidth];
    for (int i = 0; i < kWidth; ++i) row[i] = Load(from + i * fromStride);
    for (int j = 0; j < 2; ++j) {  // Columns j, j + 2, j + 4 and j + 6.
      Vector pair[4];
      for (int i = 0; i < 4; ++i) {
        pair[i] = j == 0 ? _mm512_maskz_unpacklo_pd(kAllLanes, row[2 * i], row[2 * i + 1])
                         : _mm512_maskz_unpackhi_pd(kAllLanes, row[2 * i], row[2 * i + 1]);
      }
      // The first number of each name is that of the columns, the second that of the rows.
      const Vector low04 = Halves<0x88>(pair[0], pair[1]);
      const Vector low26 = Halves<0xDD>(pair[0], pair[1]);
      const Vector high04 = Halves<0x88>(pair[2], pair[3]);
      const Vector high26 = Halves<0xDD>(pair[2], pair[3]);
      Store(to + j * toStride, Halves<0x88>(low04, high04));
      Store(to + (j + 2) * toStride, Halves<0x88>(low26, high26));
      Store(to + (j + 4) * toStride, Halves<0xDD>(low04, high04));
      Store(to + (j + 6) * toStride, Halves<0xDD>(low26, high26));
    }
  }
  /// Two quarters of each, as the parts of kWhich tell.
  template <int kWhich>
  static Vector Halves(Vector x, Vector y) {
    return _mm512_maskz_shuffle_f64x2(kAllLanes, x, y, kWhich);
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
  Vector Divide(Vector x, Vector y) const { return _mm512_maskz_div_pd(on, x, y); }
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
    if (job.fromZero) {
      for (int v = 0; v < V; ++v) sum[i][v] = Vector{};
      continue;
    }
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

/// Tiles of R rows down a strip of V vectors at column `col`, and a lower one for the rest. In a
/// panel that is one tile; written without the loop g++ makes it slower by a tenth.
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

/// Runs through C in panels of R rows, the last one perhaps lower: their rows of A stay in the
/// first cache while the columns of B go past.
template <int R, class RunPanel>
inline void Panels(const ProductJob& job, const RunPanel& run) {
  ProductJob panel = job;
  for (int left = job.rows; left > 0; left -= R) {
    panel.rows = left < R ? left : R;
    run(panel);
    panel.a += R * job.aRow;
    panel.c += R * job.cRow;
  }
}

/// A block of C from packed operands: panels of R rows of A, in each of them column by column, and
/// panels of V vectors of columns of B, in each of them row by row; the last ones may be smaller.
/// From one whole tile to the next only registers change: a job written for each would be read
/// before it has left the processor's store queue, and hold up the tile until the one before is
/// done.
template <class Sign, int R, int V, class Lanes, class RunEdge>
inline void PackedBlock(const ProductJob& block, const RunEdge& runEdge) {
  constexpr int kCols = V * Lanes::kWidth;
  ProductJob tile = block;
  tile.aRow = 1;
  tile.aCol = R;
  tile.bRow = kCols;
  const auto edge = [&](const double* a, const double* b, double* c, int rows, int cols) {
    runEdge(
        ProductJob{a, b, c, rows, cols, block.depth, 1, rows, cols, block.cRow, block.fromZero});
  };
  const double* b = block.b;
  for (int j = 0; j < block.cols;
       j += kCols, b += kCols * static_cast<std::ptrdiff_t>(block.depth)) {
    const int cols = block.cols - j < kCols ? block.cols - j : kCols;
    const double* a = block.a;
    double* c = block.c + j;
    for (int left = block.rows; left > 0; left -= R) {
      const int rows = left < R ? left : R;
      double* const next = c + rows * block.cRow;
      // The rows of C that come next.
      for (int k = 0; k < R && k < left - rows; ++k) __builtin_prefetch(next + k * block.cRow, 1);
      if (rows == R && cols == kCols) {
        Tile<Sign, R, V, Lanes>(tile, a, b, c, Lanes());
      } else {
        edge(a, b, c, rows, cols);
      }
      a += rows * static_cast<std::ptrdiff_t>(block.depth);
      c = next;
    }
  }
}

}  // namespace
}  // namespace qmx
