// SPDX-License-Identifier: MIT
#include <algorithm>

#include "proof/elimination_passes.h"
#include "proof/families.h"
#include "proof/ledger.h"
#include "proof/residues.h"

namespace qmx {
namespace {

/// Enters an adjoint; cofactors of the scaled matrix are whole numbers.
class AdjointLedger {
 public:
  AdjointLedger(const ProofQuestion& question, ProofAnswer& answer, const WholeScale& scale)
      : ledger_(question.computed.front(), answer.results.front()), scale_(scale), answer_(answer) {
    for (const slong row : scale.rows) whole_ += row;
    for (const slong col : scale.cols) whole_ += col;
  }

  void BeginPass() { ledger_.BeginPass(); }
  void Enter(int row, int col, Ball adjoint) {
    const slong exponent = whole_ - scale_.cols[row] - scale_.rows[col];
    if (arb_contains_zero(adjoint) && IsZeroQuotient(adjoint, Ball(1.0), exponent)) {
      arb_zero(adjoint);
    }
    ledger_.Enter(row, col, adjoint);
  }
  /// True where more bits would not help.
  bool EndPass() {
    answer_.outcome = OutcomeOf(ledger_);
    return answer_.outcome == ProofOutcome::kProved;
  }

 private:
  Ledger ledger_;
  const WholeScale& scale_;
  ProofAnswer& answer_;
  slong whole_ = 0;
};

/// The sign of the minor of A whose rows were taken in this order, the last one being left out, and
/// whose column `free` was: as a cofactor of A.
bool CofactorIsNegative(const std::vector<int>& rowOrder, int free) {
  int exchanges = free + rowOrder.back();
  for (std::size_t k = 0; k + 1 < rowOrder.size(); ++k) {
    for (std::size_t l = 0; l < k; ++l) exchanges += rowOrder[l] > rowOrder[k] ? 1 : 0;
  }
  return exchanges % 2 != 0;
}

/// The adjoint of a matrix of rank n - 1 has rank 1: it is x·yᵀ times one of its own elements, with
/// A·x = 0, Aᵀ·y = 0, and x and y being 1 where that element stands.
void ProveAdjointOfRankOne(const Matrix& A, const WholeScale& scale, const Watch& watch,
                           AdjointLedger& ledger) {
  const int n = A.Rows();
  const BallMatrix balls(A);
  const BallMatrix transposed = balls.Transposed();
  const WholeScale transposedScale{scale.cols, scale.rows};
  for (slong bits = FirstBits(n);; bits *= 2) {
    watch.Raise(bits);
    const PivotedElimination right(balls, &scale, bits, watch);
    const PivotedElimination left(transposed, &transposedScale, bits, watch);
    if (right.Rank() != n - 1 || left.Rank() != n - 1) continue;
    const BallMatrix x = right.NullVector();
    const BallMatrix y = left.NullVector();
    const int row = right.RowOrder().back();
    if (arb_contains_zero(y(0, row))) continue;
    Ball element = right.PivotProduct();
    if (CofactorIsNegative(right.RowOrder(), right.FreeColumns().front())) {
      arb_neg(element, element);
    }
    arb_div(element, element, y(0, row), bits);
    ledger.BeginPass();
    for (int i = 0; i < n; ++i) {
      Ball scaled;
      arb_mul(scaled, element, x(0, i), bits);
      for (int j = 0; j < n; ++j) {
        Ball adjoint;
        arb_mul(adjoint, scaled, y(0, j), bits);
        ledger.Enter(i, j, std::move(adjoint));
      }
    }
    if (ledger.EndPass()) return;
  }
}

void ProveSingularAdjoint(const Matrix& A, const WholeScale& scale, const Watch& watch,
                          AdjointLedger& ledger) {
  const int n = A.Rows();
  if (n > 1 && ExactRank(A, watch) == n - 1) {
    return ProveAdjointOfRankOne(A, scale, watch, ledger);
  }
  ledger.BeginPass();
  for (int i = 0; i < n; ++i) {
    for (int j = 0; j < n; ++j) ledger.Enter(i, j, Ball(n == 1 ? 1.0 : 0.0));
  }
  ledger.EndPass();
}

}  // namespace

void ProveDeterminant(const ProofQuestion& question, const Watch& watch, ProofAnswer& answer) {
  const BallMatrix A(question.a);
  const WholeScale scale = WholeScaleOf(question.a);
  Ledger ledger(question.computed.front(), answer.results.front());
  EliminationPasses passes(A, scale, RankTest(question.a, watch), watch);
  while (const auto elimination = passes.Next()) {
    ledger.BeginPass();
    ledger.Enter(0, 0, elimination->Determinant());
    answer.outcome = OutcomeOf(ledger);
    if (answer.outcome == ProofOutcome::kProved) return;
  }
  answer.singular = true;
  ledger.BeginPass();
  ledger.Enter(0, 0, Ball(0.0));
  answer.outcome = OutcomeOf(ledger);
}

void ProveAdjoint(const ProofQuestion& question, const Watch& watch, ProofAnswer& answer) {
  const int n = question.a.Rows();
  const BallMatrix A(question.a);
  const WholeScale scale = WholeScaleOf(question.a);
  AdjointLedger ledger(question, answer, scale);
  EliminationPasses passes(A, scale, RankTest(question.a, watch), watch);
  while (const auto elimination = passes.Next()) {
    const Ball determinant = elimination->Determinant();
    const BallMatrix columns = elimination->Solve(IdentityBalls(n));
    ledger.BeginPass();
    for (int j = 0; j < n; ++j) {
      for (int i = 0; i < n; ++i) {
        Ball adjoint;
        arb_mul(adjoint, columns(j, i), determinant, elimination->Bits());
        ledger.Enter(i, j, std::move(adjoint));
      }
    }
    if (ledger.EndPass()) return;
  }
  answer.singular = true;
  ProveSingularAdjoint(question.a, scale, watch, ledger);
}

}  // namespace qmx
