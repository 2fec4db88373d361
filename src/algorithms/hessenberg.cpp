// SPDX-License-Identifier: MIT
#include "algorithms/hessenberg.h"

#include <algorithm>
#include <functional>

#include "algorithms/ordered_product.h"
#include "algorithms/packed_reflections.h"
#include "algorithms/product_packing.h"
#include "algorithms/reflector.h"
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

/// Small reflections M := H·M·H of one matrix.
class SmallReflections {
 public:
  /// Of up to an order of `largest`.
  SmallReflections(Matrix& M, int largest, const HessenbergSizes& sizes, WorkMeter& meter)
      : M_(M),
        sizes_(sizes),
        meter_(meter),
        H_(Matrix::Unset(largest, largest)),
        reflector_(largest),
        strip_(std::max(largest, std::min(M.Rows(), sizes.reflectionStrip)) * largest) {}

  void Reflect(int k);

 private:
  void FormInPlace(const ConstView& A, const ConstView& B, const View& to);

  Matrix& M_;
  const HessenbergSizes& sizes_;
  WorkMeter& meter_;
  Matrix H_;
  Reflector reflector_;
  Vector<double> strip_;  ///< Of a product.
};

/// Column k comes to end with its subdiagonal element. The columns before it are left out.
void SmallReflections::Reflect(int k) {
  const int n = M_.Rows();
  const int order = n - k;
  reflector_.Become(&M_(k + 1, k), M_.Cols(), order);
  const View H = Part(H_, 1, 1, order, order);
  reflector_.Write(0, 0, H);
  M_(k + 1, k) = reflector_.FirstOfProduct();
  for (int i = k + 2; i <= n; ++i) M_(i, k) = 0.0;
  const View part = Part(M_, k + 1, k + 1, order, order);
  FormInPlace(H, part, part);
  for (int first = 1; first <= n; first += sizes_.reflectionStrip) {
    const int count = std::min(sizes_.reflectionStrip, n + 1 - first);
    const View rows = Part(M_, first, k + 1, count, order);
    FormInPlace(rows, H, rows);
  }
}

/// `to` becomes A·B, which is formed in the strip, since it takes the place of A or B.
void SmallReflections::FormInPlace(const ConstView& A, const ConstView& B, const View& to) {
  const View product{strip_.From(1), to.rows, to.cols, to.cols, 1};
  if (A.cols <= std::min(sizes_.tinyReflector, kMostTinyReflector)) {
    MultiplyTiny(A, B, product, std::plus<>(), true);
  } else {
    SetProduct(A, B, product, meter_);
  }
  for (int i = 0; i < to.rows; ++i) std::copy_n(&product(i, 0), to.cols, &to(i, 0));
}

/// Runs reflect(k) for the columns first..last that are not reduced.
template <class Reflect>
void ReflectColumns(Matrix& M, int first, int last, WorkMeter& meter, const Reflect& reflect) {
  for (int k = first; k <= last; ++k) {
    if (IsReduced(M, k)) {
      const double order = M.Rows() - k;
      meter.Add(order * order * (order + M.Rows()));
      continue;
    }
    reflect(k);
    CheckArithmetic();
  }
}

/// The columns 1..last by large reflections.
void ReflectLarge(Matrix& M, int last, WorkMeter& meter, const HessenbergSizes& sizes) {
  const auto run = [&](bool shared) {
    PackedReflections reflections(M, sizes, meter, shared);
    ReflectColumns(M, 1, last, meter, [&](int k) { reflections.Reflect(k); });
  };
  Team& team = SharedTeam();
  if (M.Rows() < sizes.shareFrom || !team.CanShare()) return run(false);
  const Attempt attempt(team, "reduction", ReductionWork(M.Rows()));
  run(attempt.IsShared() && HavePacked(team.Members()));
}

}  // namespace

void ReduceToHessenberg(Matrix& M, WorkMeter& meter, const HessenbergSizes& sizes) {
  const int n = M.Rows();
  if (n <= 2) return;
  const int least = std::max(sizes.packedFrom, PackedReflections::kLeastOrder);
  const int large = std::max(0, n - least);
  if (large > 0) ReflectLarge(M, large, meter, sizes);
  if (large >= n - 2) return;
  SmallReflections reflections(M, n - 1 - large, sizes, meter);
  ReflectColumns(M, large + 1, n - 2, meter, [&](int k) { reflections.Reflect(k); });
}

}  // namespace qmx
