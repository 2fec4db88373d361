// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cassert>
#include <cmath>
#include <utility>
#include <vector>

#include "algorithms/hessenberg.h"
#include "algorithms/ordered_product.h"
#include "algorithms/product_tiles.h"
#include "algorithms/projection.h"
#include "algorithms/shared_work.h"

// Gram-Schmidt on a Hessenberg matrix goes like that on a full one: once the left half of a block
// of columns is final, all projections on it go over the right half at once. Column k of V ends
// with row k + 1, so a block of V is a full rectangle with a small trapezium below:
//
//        first    last
//       +-------------+
//       |             |            What is triangular is cut into strips of the height of a tile;
//       |             |            within a strip the zeros beyond the triangle are taken along.
//       +--+          | first + 1
//       |  +--+       |
//       +-----+-------+ last + 1
//
// Where a team shares the step, blocks of columns are lanes (base/lanes.h): one that has taken the
// projections on all blocks before it is made final by one member, while the others still project
// those behind it.
//
// Every sum and every element takes its steps in the order of the textbook loop. A zero that takes
// part makes no difference to a sum that started at 0. To an element of V it can, where that is a
// zero itself: its sign. But V, or Q after it, ends in no other place than as a factor in such
// sums.
//
// No column of M is needed any more once that of V is final. Row k of R therefore takes the place
// of column k of M from the diagonal down, and goes out of the way of R·Q a strip at a time.

namespace qmx {
namespace {

class HessenbergStep {
 public:
  HessenbergStep(Matrix& M, int n, HessenbergQr& work, WorkMeter& meter)
      : M_(M),
        meter_(meter),
        work_(work),
        V_(work.V),
        n_(n),
        tile_(work.sizes.tile),
        squaredNorm_(work.squaredNorm),
        norm_(work.norm) {}

  void RunInBlocks();
  void RunShared();
  void RunColumnByColumn();

 private:
  int Length(int j) const { return std::min(j + 1, n_); }

  void FinishAllShared();
  void FinishColumns(int first, int last, WorkMeter& meter);
  void FinishColumn(int j, int last, WorkMeter& meter);
  void TakeNorm(int j, double squared);
  template <int kCount>
  void ProjectNext(int j, int from);
  void Project(int first, int last, int from, int to, WorkMeter& meter);
  void Subtract(int first, int last, int from, const View& C, WorkMeter& meter);
  template <class Work>
  void ForTiles(const Work& work);
  void CopyRows(int first, int rows);
  void FillQ(int first, int rows);
  ConstView TakeRowsOfR(int first, int rows, double* to);
  void MultiplyRows(const ConstView& R, int first, int rows, WorkMeter& meter);
  void MultiplyAll();
  void MultiplyAllShared();
  void MultiplyRow(int i);

  Matrix& M_;
  WorkMeter& meter_;
  HessenbergQr& work_;
  Matrix& V_;
  const int n_;
  const int tile_;
  bool shares_ = false;  ///< Whether members share what is large enough.
  Vector<double>& squaredNorm_;
  Vector<double>& norm_;
};

void HessenbergStep::RunShared() {
  const Attempt attempt(SharedTeam(), "cycle", HessenbergStepWork(n_));
  shares_ = attempt.IsShared();
  RunInBlocks();
}

void HessenbergStep::RunInBlocks() {
  ForTiles([this](int, int first, int rows, WorkMeter&) { CopyRows(first, rows); });
  if (shares_) {
    FinishAllShared();
    MultiplyAllShared();
  } else {
    FinishColumns(1, n_, meter_);
    FillQ(1, n_);
    MultiplyAll();
  }
}

/// Runs work(tile, first, rows, meter) for rows in tiles, side by side where members share the
/// step.
template <class Work>
void HessenbergStep::ForTiles(const Work& work) {
  const int tiles = (n_ + tile_ - 1) / tile_;
  const auto run = [&](int tile, WorkMeter& meter) {
    const int first = tile * tile_ + 1;
    work(tile, first, std::min(tile_, n_ + 1 - first), meter);
  };
  if (shares_) return SharePieces(meter_, tiles, run);
  for (int tile = 0; tile < tiles; ++tile) run(tile, meter_);
}

/// Rows of M become those of V.
void HessenbergStep::CopyRows(int first, int rows) {
  for (int i = first; i < first + rows; ++i) {
    const int from = std::max(1, i - 1);
    std::copy(M_.Row(i) + (from - 1), M_.Row(i) + n_, V_.Row(i) + (from - 1));
  }
}

/// Without the kernel and what it needs.
void HessenbergStep::RunColumnByColumn() {
  for (int j = 1; j <= n_; ++j) {
    for (int i = 1; i <= Length(j); ++i) V_(i, j) = M_(i, j);
  }
  for (int j = 1; j <= n_; ++j) FinishColumn(j, n_, meter_);
  FillQ(1, n_);
  for (int i = 1; i <= n_; ++i) MultiplyRow(i);
}

/// Blocks of columns, each of which any member finishes once it has been projected on all blocks
/// before it.
void HessenbergStep::FinishAllShared() {
  const std::vector<int> firsts = FirstsOfLanes(n_, work_.sizes.sharedBlock, tile_);
  Lanes::Plan plan;
  plan.finished = static_cast<int>(firsts.size()) - 1;
  plan.most = work_.sizes.strip;
  ShareLanes(
      meter_, firsts, plan,
      [&](int step, int from, int to, WorkMeter& meter) {
        Project(firsts[step], firsts[step + 1] - 1, from, to, meter);
      },
      [&](int lane, WorkMeter& meter) {
        FinishColumns(firsts[lane], firsts[lane + 1] - 1, meter);
        return Lanes::Outcome::kGoOn;
      });
}

void HessenbergStep::FinishColumns(int first, int last, WorkMeter& meter) {
  const int columns = last - first + 1;
  if (columns <= kColumnsAtOnce) {
    for (int j = first; j <= last; ++j) FinishColumn(j, last, meter);
    return;
  }
  const int middle = first + LeftHalf(columns, tile_) - 1;
  FinishColumns(first, middle, meter);
  const int strip = work_.sizes.strip;
  for (int from = middle + 1; from <= last; from += strip) {
    Project(first, middle, from, std::min(from + strip - 1, last), meter);
  }
  FinishColumns(middle + 1, last, meter);
}

/// Column j, which nothing is to be subtracted from any more: its norm, and the projections of the
/// columns up to `last` on it.
void HessenbergStep::FinishColumn(int j, int last, WorkMeter& meter) {
  ForColumnsAtOnce(j + 1, last, [&]<int kCount>(int from) { ProjectNext<kCount>(j, from); });
  meter.Add(kStepDownColumn * Length(j));
}

/// The norm of column j. A column whose norm is 0 counts as 0 altogether; the norm of 1 that it
/// gets lets everything that is divided by it be 0 as well.
void HessenbergStep::TakeNorm(int j, double squared) {
  squaredNorm_(j) = squared;
  norm_(j) = M_(j, j) = std::sqrt(squared);
  if (squared != 0) return;
  squaredNorm_(j) = norm_(j) = 1;
  for (int i = 1; i <= Length(j); ++i) V_(i, j) = 0;
}

/// Projects the kCount columns from column `from` on on column j. The first time that takes the
/// norm of column j as well.
template <int kCount>
void HessenbergStep::ProjectNext(int j, int from) {
  const int n = V_.Cols();
  const double* const v = V_.Row(1) + (j - 1);
  double square;
  double d[kCount + 1];
  NormAndDots<kCount>(v, M_.Row(1) + (from - 1), n, Length(j), square, d);
  if (from == j + 1) TakeNorm(j, square);
  if (square == 0) std::fill_n(d, kCount, 0.0);
  const double norm = norm_(j);
  const double squared = squaredNorm_(j);
  for (int t = 0; t < kCount; ++t) {
    M_(from + t, j) = d[t] / norm;
    d[t] /= squared;
  }
  SubtractMultiples<kCount>(v, V_.Row(1) + (from - 1), n, Length(j), d);
}

/// Projects the columns from..to of M on the final columns first..last.
void HessenbergStep::Project(int first, int last, int from, int to, WorkMeter& meter) {
  const int cols = to - from + 1;
  const int all = last - first + 1;
  for (int top = first; top <= last; top += tile_) {
    const int bottom = std::min(top + tile_ - 1, last);
    const int steps = bottom - top + 1;
    SetProduct(Part(std::as_const(M_), 1, from, bottom + 1, cols).Transposed(),
               Part(V_, 1, top, bottom + 1, steps), Part(M_, from, top, cols, steps), meter);
  }
  const View C = work_.Coefficients(all, cols);
  CurrentKernels().transpose({&M_(from, first), M_.Cols(), cols, all, C.first, C.rowStride});
  for (int k = 0; k < all; ++k) DivideBy(squaredNorm_(first + k), &C(k, 0), cols);
  for (int j = from; j <= to; ++j) DivideByEach(norm_.From(first), &M_(j, first), all);
  Subtract(first, last, from, C, meter);
}

/// V(i,j) = V(i,j) - C(k,j)·V(i,k) in the columns from `from` on, as many as C has. Row 0 of C
/// belongs to column `first`.
void HessenbergStep::Subtract(int first, int last, int from, const View& C, WorkMeter& meter) {
  SubtractProduct(Part(V_, 1, first, first + 1, C.rows), C, Part(V_, 1, from, first + 1, C.cols),
                  meter);
  for (int top = first + 2; top <= last + 1; top += tile_) {
    const int rows = std::min(tile_, last + 2 - top);
    const int steps = last - top + 2;
    SubtractProduct(Part(V_, top, top - 1, rows, steps), Part(C, top - first - 1, 0, steps, C.cols),
                    Part(V_, top, from, rows, C.cols), meter);
  }
}

/// Rows of Q take the place of those of V.
void HessenbergStep::FillQ(int first, int rows) {
  for (int i = first; i < first + rows; ++i) {
    const int from = std::max(1, i - 1);
    DivideByEach(norm_.From(from), &V_(i, from), n_ - from + 1);
  }
}

/// M := R·Q, a tile of rows at a time. Those of R go where the coefficients were.
void HessenbergStep::MultiplyAll() {
  ForTiles([this](int, int first, int rows, WorkMeter& meter) {
    MultiplyRows(TakeRowsOfR(first, rows, work_.rooms.Own().From(1)), first, rows, meter);
  });
}

/// The same side by side, and Q is filled as well. What one tile of rows leaves in M may be in the
/// way of the R of another: all of R is taken out first.
void HessenbergStep::MultiplyAllShared() {
  Vector<double>& room = work_.RoomForR();
  std::vector<ConstView> R((n_ + tile_ - 1) / tile_);
  ForTiles([&](int tile, int first, int rows, WorkMeter&) {
    FillQ(first, rows);
    // So many columns have the tiles before.
    const std::ptrdiff_t before =
        std::ptrdiff_t{tile} * n_ - std::ptrdiff_t{tile} * (tile - 1) / 2 * tile_;
    R[tile] = TakeRowsOfR(first, rows, room.From(1) + before * tile_);
  });
  ForTiles([&](int tile, int first, int rows, WorkMeter& meter) {
    MultiplyRows(R[tile], first, rows, meter);
  });
}

/// M := R·Q in some rows, a tile of them at most. Row m of Q begins with column m - 1, row i of M
/// with column i - 1; in front of these there are zeros.
void HessenbergStep::MultiplyRows(const ConstView& R, int first, int rows, WorkMeter& meter) {
  for (int from = std::max(1, first - 1); from <= n_; from += tile_) {
    const int cols = std::min(tile_, n_ + 1 - from);
    const int depth = std::min(from + cols, n_) - first + 1;
    SetProduct({R.first, rows, depth, R.rowStride, R.colStride},
               Part(std::as_const(V_), first, from, depth, cols), Part(M_, first, from, rows, cols),
               meter);
  }
}

/// Moves rows of R from column `first` on, with zeros below the diagonal, to `to`, column by
/// column. They leave zeros.
ConstView HessenbergStep::TakeRowsOfR(int first, int rows, double* to) {
  double* out = to;
  for (int m = first; m <= n_; ++m, out += rows) {
    double* const from = &M_(m, first);
    const int count = std::min(rows, m - first + 1);
    std::copy_n(from, count, out);
    std::fill_n(from, count, 0.0);
    std::fill(out + count, out + rows, 0.0);
  }
  return {to, rows, n_ - first + 1, 1, rows};
}

/// The textbook loop itself, for one row. That of R moves to where the squared norms were.
void HessenbergStep::MultiplyRow(int i) {
  Vector<double>& r = squaredNorm_;
  for (int m = i; m <= n_; ++m) r(m) = std::exchange(M_(m, i), 0.0);
  for (int j = std::max(1, i - 1); j <= n_; ++j) {
    double sum = 0.0;
    for (int m = i; m <= Length(j); ++m) sum += r(m) * V_(m, j);
    M_(i, j) = sum;
  }
}

}  // namespace

HessenbergQr::HessenbergQr(int order, const HessenbergSizes& blockSizes)
    : sizes(blockSizes), V(order, order), squaredNorm(order), norm(order) {
  if (order <= sizes.smallOrder) return;
  const int half = LargestHalf(order, sizes.tile);
  int coefficients = half * std::min(half, sizes.strip);
  const bool shared = order >= sizes.shareCycleFrom;
  if (shared) {
    const int steps = std::max(1, sizes.sharedBlock);
    coefficients = std::max(coefficients,
                            std::min(order, steps) * std::min(order, std::max(steps, sizes.strip)));
  }
  rooms = {shared, Vector<double>(std::max(coefficients, order * sizes.tile))};
}

View HessenbergQr::Coefficients(int steps, int cols) {
  Vector<double>& room = rooms.Own();
  assert(steps * cols <= room.Size());
  return {room.From(1), steps, cols, cols, 1};
}

Vector<double>& HessenbergQr::RoomForR() {
  const int order = V.Rows();
  if (roomForR.IsEmpty()) roomForR = Vector<double>((order + sizes.tile) * order);
  return roomForR;
}

void StepHessenbergQr(Matrix& M, int n, HessenbergQr& work, WorkMeter& meter) {
  HessenbergStep step(M, n, work, meter);
  if (n <= work.sizes.smallOrder) {
    step.RunColumnByColumn();
  } else if (work.Shares(n)) {
    step.RunShared();
  } else {
    step.RunInBlocks();
  }
}

}  // namespace qmx
