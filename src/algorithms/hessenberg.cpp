// SPDX-License-Identifier: MIT
#include "algorithms/hessenberg.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>

#include "algorithms/ordered_product.h"
#include "algorithms/shared_work.h"
#include "base/arithmetic.h"

namespace qmx {
namespace {

bool IsReduced(const Matrix& M, int k) {
  for (int i = k + 2; i <= M.Rows(); ++i) {
    if (M(i, k) != 0) return false;
  }
  return true;
}

/// What all reflections of one matrix work with.
struct Reflection {
  Reflection(int order, WorkMeter& workMeter, const HessenbergSizes& blockSizes)
      : sizes(blockSizes),
        meter(workMeter),
        H(Matrix::Unset(order, order)),
        u(order),
        strips(order >= sizes.shareFrom,
               Vector<double>(std::min(order, sizes.reflectionStrip) * order)) {}

  const HessenbergSizes& sizes;
  WorkMeter& meter;
  Matrix H;                          ///< The reflector.
  Vector<double> u;                  ///< Its vector, from 0 as the reflector sees it.
  PerMember<Vector<double>> strips;  ///< Of a product.
  bool shares = false;               ///< Whether members share large reflections.
};

/// Forms H = I + β·u·uᵀ of column k; only rows and columns from k + 1 on are filled, the rest is
/// the identity. u is column k of M below the diagonal with the norm added to its first element.
void FormReflector(const Matrix& M, int k, Reflection& work) {
  const int n = M.Rows();
  double* const u = work.u.From(1);
  for (int i = k; i < n; ++i) u[i] = M(i + 1, k);
  double tail = 0.0;
  for (int i = k + 1; i < n; ++i) tail += u[i] * u[i];
  u[k] = std::sqrt(u[k] * u[k] + tail) + u[k];
  const double beta = -2.0 / (u[k] * u[k] + tail);

  Matrix& H = work.H;
  for (int i = k; i < n; ++i) {
    H(i + 1, i + 1) = beta * (u[i] * u[i]) + 1.0;
    for (int j = i + 1; j < n; ++j) H(j + 1, i + 1) = H(i + 1, j + 1) = beta * u[i] * u[j];
    work.meter.Add(kMovedNumber * (n - i - 1));
  }
}

/// `to` becomes A·B, which is formed in the strip, since it may take the place of A or B.
void FormInPlace(const ConstView& A, const ConstView& B, Reflection& work, const View& to,
                 WorkMeter& meter) {
  const View product{work.strips.Own().From(1), to.rows, to.cols, to.cols, 1};
  if (A.cols <= std::min(work.sizes.tinyReflector, kMostTinyReflector)) {
    MultiplyTiny(A, B, product, std::plus<>(), true);
  } else {
    SetProduct(A, B, product, meter);
  }
  for (int i = 0; i < to.rows; ++i) std::copy_n(&product(i, 0), to.cols, &to(i, 0));
}

/// Calls form(from, count, meter) for strips of the columns or rows from..to, side by side where
/// the members share a reflection of an order of `rest`.
template <class Form>
void InStrips(int from, int to, int rest, Reflection& work, const Form& form) {
  const int most = work.sizes.reflectionStrip;
  const int all = to - from + 1;
  if (work.shares && rest >= work.sizes.shareFrom) {
    const Strips strips = StripsOf(from, to, std::min(most, (all + 1) / 2), work.sizes.tile);
    SharePieces(work.meter, strips.count, [&](int piece, WorkMeter& meter) {
      form(strips.First(piece), strips.Last(piece) - strips.First(piece) + 1, meter);
    });
    return;
  }
  for (int first = from; first <= to; first += most) {
    form(first, std::min(most, to + 1 - first), work.meter);
  }
}

/// M := H·M, of which column k is formed only down to its subdiagonal element, the others being
/// zero. The columns before it are left out.
void ReflectRows(int k, Reflection& work, Matrix& M) {
  const int n = M.Rows();
  const int rest = n - k;
  const Matrix& H = work.H;
  double subdiagonal = 0.0;
  for (int m = k + 1; m <= n; ++m) {
    subdiagonal += M(m, k) * H(k + 1, m);
    M(m, k) = 0.0;
  }
  M(k + 1, k) = subdiagonal;
  InStrips(k + 1, n, rest, work, [&](int from, int count, WorkMeter& meter) {
    const View columns = Part(M, k + 1, from, rest, count);
    FormInPlace(Part(H, k + 1, k + 1, rest, rest), columns, work, columns, meter);
  });
}

/// M := M·H in the columns from k + 1 on; the others stay as they are.
void ReflectColumns(int k, Reflection& work, Matrix& M) {
  const int n = M.Rows();
  const int rest = n - k;
  const ConstView H = Part(std::as_const(work.H), k + 1, k + 1, rest, rest);
  InStrips(1, n, rest, work, [&](int from, int count, WorkMeter& meter) {
    const View rows = Part(M, from, k + 1, count, rest);
    FormInPlace(rows, H, work, rows, meter);
  });
}

void ReflectAllColumns(Reflection& work, Matrix& M) {
  for (int k = 1; k <= M.Rows() - 2; ++k) {
    if (IsReduced(M, k)) {
      const double rest = M.Rows() - k;
      work.meter.Add(rest * rest * (rest + M.Rows()));
      continue;
    }
    FormReflector(M, k, work);
    ReflectRows(k, work, M);
    ReflectColumns(k, work, M);
    CheckArithmetic();
  }
}

}  // namespace

void ReduceToHessenberg(Matrix& M, WorkMeter& meter, const HessenbergSizes& sizes) {
  if (M.Rows() <= 2) return;
  Reflection work(M.Rows(), meter, sizes);
  if (!work.strips.IsShared()) return ReflectAllColumns(work, M);
  const Attempt attempt(SharedTeam(), "reduction", ReductionWork(M.Rows()));
  work.shares = attempt.IsShared();
  ReflectAllColumns(work, M);
}

}  // namespace qmx
