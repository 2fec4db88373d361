// SPDX-License-Identifier: MIT
#include "algorithms/eigenvalues.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

#include "algorithms/elimination.h"
#include "algorithms/hessenberg.h"
#include "base/arithmetic.h"
#include "base/vector.h"

namespace qmx {
namespace {

/// The iteration on one matrix.
class EigenvalueIteration {
 public:
  EigenvalueIteration(const Matrix& A, const EigenParameters& parameters, std::int32_t& shiftIndex,
                      const HessenbergSizes& sizes, EigenvalueObserver* observer);
  EigenvalueRun Run(Progress& progress);

 private:
  void Cycle(HessenbergQr& work, Progress& progress);
  void Deflate();
  void DeflateBottom();
  void DeflateMiddle();
  void DeflateTop();
  void TakeLast();
  void Shift();

  bool HasSettled(int i) const { return change_(i) <= parameters_.tolerance; }
  bool IsCutOffAbove(int i) const;
  void TakeEigenvalue(int i);
  void RemoveActive(int i);
  void TellCycle() const;

  const EigenParameters& parameters_;
  const HessenbergSizes& sizes_;
  std::int32_t& shiftIndex_;
  EigenvalueObserver* const observer_;
  const int order_;
  int active_;  ///< Order of the leading block of M_ that still holds unknown eigenvalues.
  Matrix M_;    ///< Keeps its full size: a carried shift index may point behind the active block.
  Vector<int> position_;   ///< For each active row its row in the given matrix.
  Vector<double> change_;  ///< What the last cycle changed each active diagonal entry by.
  Vector<double> value_;   ///< Eigenvalues found; the shifts so far in the other places.
  Vector<double> origin_;
};

EigenvalueIteration::EigenvalueIteration(const Matrix& A, const EigenParameters& parameters,
                                         std::int32_t& shiftIndex, const HessenbergSizes& sizes,
                                         EigenvalueObserver* observer)
    : parameters_(parameters),
      sizes_(sizes),
      shiftIndex_(shiftIndex),
      observer_(observer),
      order_(A.Rows()),
      active_(order_),
      M_(A),
      position_(order_),
      change_(order_),
      value_(order_),
      origin_(order_) {
  for (int i = 1; i <= order_; ++i) position_(i) = i;
}

/// The part of a run that the reduction takes. How many cycles there will be nobody knows: about
/// three for each eigenvalue where all are found, on blocks that get ever smaller.
double ReductionPart(int order, std::int32_t maxCycles) {
  const double cycles = std::clamp<double>(maxCycles, 1, 3.0 * order);
  const double reduction = ReductionWork(order);
  return reduction / (reduction + cycles * HessenbergStepWork(order) / 2);
}

EigenvalueRun EigenvalueIteration::Run(Progress& progress) {
  const double reductionPart = ReductionPart(order_, parameters_.maxCycles);
  Stage reduction(progress, 0, reductionPart);
  WorkMeter meter(reduction, ReductionWork(order_));
  ReduceToHessenberg(M_, meter, sizes_);
  Stage iteration(progress, reductionPart, 1);
  HessenbergQr work(order_, sizes_);
  double done = 0;
  for (std::int32_t cycle = 1;; ++cycle) {
    const bool last = cycle >= parameters_.maxCycles;
    const double used = last ? 1 : static_cast<double>(cycle) / parameters_.maxCycles;
    Stage stage(iteration, done, std::max(done, used));
    Cycle(work, stage);
    // Before the tests: a NaN would fail them all and go round until the limit.
    CheckArithmetic();
    if (observer_ != nullptr) TellCycle();
    Deflate();
    if (active_ == 1) TakeLast();
    if (active_ <= 1 || cycle > parameters_.maxCycles) break;
    Shift();
    if (last) break;
    done = std::max({done, used, static_cast<double>(order_ - active_) / order_});
    iteration.Report(done);
  }
  return {order_ - active_, {value_.begin(), value_.end()}, {origin_.begin(), origin_.end()}};
}

void EigenvalueIteration::Cycle(HessenbergQr& work, Progress& progress) {
  WorkMeter meter(progress, HessenbergStepWork(active_));
  for (int i = 1; i <= active_; ++i) change_(i) = M_(i, i);
  StepHessenbergQr(M_, active_, work, meter);
  for (int i = 1; i <= active_; ++i) change_(i) = std::abs(M_(i, i) - change_(i));
}

void EigenvalueIteration::Deflate() {
  DeflateBottom();
  if (active_ == 1) return;
  DeflateMiddle();
  DeflateTop();
}

/// True if the entry left of diagonal entry i is negligible. Above the first row there is a row 0
/// of zeros; beyond that there is nothing, which a matrix of order 1 runs into once its value is
/// taken.
bool EigenvalueIteration::IsCutOffAbove(int i) const {
  RequireElement(i >= 1);
  return (i == 1 ? 0.0 : std::abs(M_(i, i - 1))) <= parameters_.tolerance;
}

void EigenvalueIteration::DeflateBottom() {
  while (IsCutOffAbove(active_) && HasSettled(active_)) {
    TakeEigenvalue(active_);
    --active_;
    if (active_ == 1) return;
  }
}

void EigenvalueIteration::DeflateMiddle() {
  for (int i = active_ - 1; i >= 2; --i) {
    if (!HasSettled(i) || !IsCutOffAbove(i + 1) || !IsCutOffAbove(i)) continue;
    TakeEigenvalue(i);
    RemoveActive(i);
  }
}

void EigenvalueIteration::DeflateTop() {
  if (active_ == 1 || !HasSettled(1) || !IsCutOffAbove(2)) return;
  TakeEigenvalue(1);
  RemoveActive(1);
}

void EigenvalueIteration::TakeLast() {
  if (!HasSettled(1)) return;
  TakeEigenvalue(1);
  active_ = 0;
}

/// Moves by the diagonal entry that changed least, the lowest of equals, all places not yet filled
/// remembering the move. Where the first entry changed strictly least the index stays as it was.
void EigenvalueIteration::Shift() {
  double least = change_(1);
  for (int i = 2; i <= active_; ++i) {
    if (change_(i) <= least) {
      least = change_(i);
      shiftIndex_ = i;
    }
  }
  if (least > parameters_.shiftReference) return;
  RequireElement(shiftIndex_ <= order_);
  const double shift = shiftIndex_ == 0 ? 0.0 : M_(shiftIndex_, shiftIndex_);
  if (observer_ != nullptr) observer_->OnShift(shiftIndex_, shift);
  for (int i = 1; i <= active_; ++i) {
    value_(order_ - i + 1) += shift;
    M_(i, i) -= shift;
  }
}

void EigenvalueIteration::TakeEigenvalue(int i) {
  const int slot = order_ - active_ + 1;
  value_(slot) = M_(i, i) + value_(slot);
  origin_(slot) = position_(i);
  if (observer_ != nullptr) observer_->OnFound(position_(i), value_(slot));
}

void EigenvalueIteration::TellCycle() const {
  std::vector<double> diagonal;
  for (int i = 1; i <= active_; ++i) diagonal.push_back(M_(i, i));
  observer_->OnCycle(diagonal, {change_.From(1), static_cast<std::size_t>(active_)});
}

/// Closes the gap that row and column i leave in the active block.
void EigenvalueIteration::RemoveActive(int i) {
  for (int r = i; r < active_; ++r) {
    std::copy(M_.Row(r + 1), M_.Row(r + 1) + active_, M_.Row(r));
    position_(r) = position_(r + 1);
    change_(r) = change_(r + 1);
  }
  for (int r = 1; r < active_; ++r) {
    std::copy(M_.Row(r) + i, M_.Row(r) + active_, M_.Row(r) + (i - 1));
  }
  --active_;
}

}  // namespace

EigenvalueRun FindEigenvalues(const Matrix& A, const EigenParameters& parameters,
                              std::int32_t& shiftIndex, Progress& progress, const BlockSizes& sizes,
                              EigenvalueObserver* observer) {
  RequireElement(A.Rows() >= 1);
  return UnchangedIfStopped(shiftIndex, [&] {
    return EigenvalueIteration(A, parameters, shiftIndex, sizes.hessenberg, observer).Run(progress);
  });
}

}  // namespace qmx
