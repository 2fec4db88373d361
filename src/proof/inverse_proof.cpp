// SPDX-License-Identifier: MIT
#include <algorithm>

#include "proof/elimination_passes.h"
#include "proof/families.h"
#include "proof/ledger.h"
#include "proof/residues.h"

// Up to some order the inverse comes from the elimination itself, whose radii grow with the order.
// Larger ones are enclosed around an approximate inverse R, which takes fewer bits: with E = I -
// A·R and the norm of E below 1, A^-1 - R = R·E·(I - E)^-1 (Rump, Verification methods: rigorous
// results using floating-point arithmetic, Acta Numerica 19, 2010, 10.1).

namespace qmx {
namespace {

constexpr slong kApproximateBits = 128;
constexpr slong kBoundBits = 64;

class Bound {
 public:
  Bound() { mag_init(value_); }
  Bound(const Bound&) = delete;
  Bound& operator=(const Bound&) = delete;
  ~Bound() { mag_clear(value_); }
  mag_ptr Get() { return value_; }

 private:
  mag_t value_;
};

/// Upper bounds of the sums of magnitudes in the columns of E = I - A·R; row k of `columns` is
/// column k of R.
std::vector<Ball> ColumnSumsOfResidual(const BallMatrix& A, const BallMatrix& columns, slong bits,
                                       const Watch& watch) {
  const int n = A.Rows();
  std::vector<Ball> sums(n);
  Ball one(1.0);
  Ball zero;
  Ball residual;
  for (int k = 0; k < n; ++k) {
    for (int i = 0; i < n; ++i) {
      watch.Look();
      arb_dot(residual, i == k ? one : zero, 1, A.Row(i), 1, columns.Row(k), 1, n, bits);
      arb_abs(residual, residual);
      arb_add(sums[k], sums[k], residual, kBoundBits);
    }
  }
  return sums;
}

/// Gives the midpoints R the radii within which the inverse lies. False where R is too far off.
bool Encompass(const BallMatrix& A, BallMatrix& columns, slong bits, const Watch& watch) {
  const int n = A.Rows();
  const std::vector<Ball> sums = ColumnSumsOfResidual(A, columns, bits, watch);
  Bound norm;
  Bound bound;
  for (const Ball& sum : sums) {
    arb_get_mag(bound.Get(), sum);
    mag_max(norm.Get(), norm.Get(), bound.Get());
  }
  if (mag_cmp_2exp_si(norm.Get(), -1) >= 0) return false;
  Bound largest;
  for (int j = 0; j < n; ++j) {
    watch.Look();
    mag_zero(largest.Get());
    for (int k = 0; k < n; ++k) {
      arb_get_mag(bound.Get(), columns(k, j));
      mag_max(largest.Get(), largest.Get(), bound.Get());
    }
    for (int k = 0; k < n; ++k) {
      // 1 / (1 - norm) is at most 2.
      arb_get_mag(bound.Get(), sums[k]);
      mag_mul(bound.Get(), bound.Get(), largest.Get());
      mag_mul_2exp_si(bound.Get(), bound.Get(), 1);
      mag_set(arb_radref(columns(k, j)), bound.Get());
    }
  }
  return true;
}

class InverseProof {
 public:
  InverseProof(const ProofQuestion& question, const Watch& watch, ProofAnswer& answer)
      : A_(question.a),
        balls_(question.a),
        scale_(WholeScaleOf(question.a)),
        watch_(watch),
        answer_(answer),
        ledger_(question.computed.front(), answer.results.front()) {}

  void Run() {
    if (A_.Rows() <= kLargestDirectInverse || !RunAround()) RunDirectly();
  }

 private:
  bool RunAround();
  void RunDirectly();
  void Enter(const BallMatrix& columns);

  const Matrix& A_;
  const BallMatrix balls_;
  const WholeScale scale_;
  const Watch& watch_;
  ProofAnswer& answer_;
  Ledger ledger_;
  bool isRegular_ = false;
};

void InverseProof::Enter(const BallMatrix& columns) {
  ledger_.BeginPass();
  for (int k = 0; k < columns.Rows(); ++k) {
    watch_.Look();
    for (int j = 0; j < columns.Cols(); ++j) ledger_.Enter(j, k, Ball(columns(k, j)));
  }
  answer_.outcome = OutcomeOf(ledger_);
  answer_.conditionExponent = ConditionExponent(balls_, columns);
}

/// False where the elimination itself has to be asked: A is singular, or there are zeros to tell.
bool InverseProof::RunAround() {
  const int n = A_.Rows();
  for (slong bits = kApproximateBits;; bits *= 2) {
    watch_.Raise(bits);
    watch_.Demand(BytesOfBalls(6, n, static_cast<double>(bits)));
    const PivotedElimination elimination(balls_, nullptr, bits, watch_,
                                         PivotedElimination::Numbers::kApproximate);
    if (elimination.IsRegular()) {
      BallMatrix columns = elimination.Solve(IdentityBalls(n));
      if (Encompass(balls_, columns, bits, watch_)) {
        Enter(columns);
        if (ledger_.Wide() == 0) return ledger_.MaybeZero() == 0;
        isRegular_ = true;
      }
    }
    if (!isRegular_ && ExactRank(A_, watch_) < n) return false;
    isRegular_ = true;
  }
}

void InverseProof::RunDirectly() {
  EliminationPasses passes(balls_, scale_, RankTest(A_, watch_), watch_);
  while (const auto elimination = passes.Next()) {
    BallMatrix columns = elimination->Solve(IdentityBalls(A_.Rows()));
    for (int k = 0; k < columns.Rows(); ++k) {
      for (int j = 0; j < columns.Cols(); ++j) {
        if (!arb_contains_zero(columns(k, j))) continue;
        if (elimination->IsZeroUnknown(columns(k, j), j, -scale_.rows[k])) {
          arb_zero(columns(k, j));
        }
      }
    }
    Enter(columns);
    if (answer_.outcome == ProofOutcome::kProved) return;
  }
  answer_.singular = true;
  answer_.outcome = ProofOutcome::kNoExactAnswer;
}

}  // namespace

void ProveInverse(const ProofQuestion& question, const Watch& watch, ProofAnswer& answer) {
  InverseProof(question, watch, answer).Run();
}

}  // namespace qmx
