// SPDX-License-Identifier: MIT
#include <algorithm>

#include "proof/elimination_passes.h"
#include "proof/families.h"
#include "proof/ledger.h"
#include "proof/ordered_elimination.h"
#include "proof/residues.h"

namespace qmx {
namespace {

Matrix LeadingColumns(const Matrix& A, int columns) {
  Matrix leading(A.Rows(), columns);
  for (int i = 1; i <= A.Rows(); ++i) std::copy(A.Row(i), A.Row(i) + columns, leading.Row(i));
  return leading;
}

/// A = Q·R, from the elimination of AᵀA = Rᵀ·R: its pivots are the squares of the diagonal of R,
/// and its factors the rows of R divided by that diagonal. The columns of V = A·(unit upper
/// factor)^-1 are those of Q before they are normalised.
class QrPass {
 public:
  /// `gram` is AᵀA, `scale` its scale; both are kept by reference.
  QrPass(const BallMatrix& A, const BallMatrix& gram, const WholeScale& scale, slong bits,
         const Watch& watch);

  /// Number of columns of Q and rows of R that are known.
  int Known() const { return factors_.FirstZeroPivot(); }
  /// True if the column after those depends on them.
  bool IsDependent() const { return factors_.FirstZeroPivot() < factors_.Known(); }
  void EnterQ(Ledger& Q) const;
  void EnterR(Ledger& R) const;

 private:
  BallMatrix V_;
  slong bits_;
  OrderedElimination factors_;
  std::vector<Ball> norms_;
};

QrPass::QrPass(const BallMatrix& A, const BallMatrix& gram, const WholeScale& scale, slong bits,
               const Watch& watch)
    : V_(A.Rows(), A.Cols()), bits_(bits), factors_(gram, &scale, bits, watch), norms_(Known()) {
  for (int j = 0; j < Known(); ++j) arb_sqrt(norms_[j], factors_.Upper(j, j), bits);
  for (int r = 0; r < A.Rows(); ++r) {
    for (int j = 0; j < Known(); ++j) {
      watch.Look();
      arb_ptr v = V_(r, j);
      arb_dot(v, A(r, j), 1, factors_.LowerRow(j), 1, V_.Row(r), 1, j, bits);
      if (factors_.IsZeroInColumn(v, j, j)) arb_zero(v);
    }
  }
}

void QrPass::EnterQ(Ledger& Q) const {
  Q.BeginPass();
  for (int r = 0; r < Q.Rows(); ++r) {
    for (int j = 0; j < Q.Cols(); ++j) {
      if (j >= Known()) {
        Q.GiveUp();
        continue;
      }
      Ball q;
      arb_div(q, V_(r, j), norms_[j], bits_);
      Q.Enter(r, j, q);
    }
  }
}

void QrPass::EnterR(Ledger& R) const {
  R.BeginPass();
  for (int k = 0; k < R.Rows(); ++k) {
    for (int j = 0; j < R.Cols(); ++j) {
      if (k > j) {
        R.Enter(k, j, Ball(0.0));
      } else if (k >= Known()) {
        R.GiveUp();
      } else {
        Ball r;
        arb_div(r, factors_.Upper(k, j), norms_[k], bits_);
        R.Enter(k, j, r);
      }
    }
  }
}

}  // namespace

void ProveQr(const ProofQuestion& question, const Watch& watch, ProofAnswer& answer) {
  const Matrix& A = question.a;
  const BallMatrix balls(A);
  const std::vector<slong> columns = WholeColumnScaleOf(A).cols;
  const WholeScale scale{columns, columns};
  const BallMatrix gram = GramMatrix(A, watch);
  Ledger Q(question.computed[0], answer.results[0]);
  Ledger R(question.computed[1], answer.results[1]);
  int independent = 0;  // So many leading columns are known to be.
  for (slong bits = 2 * FirstBits(A.Cols());; bits *= 2) {
    watch.Raise(bits);
    watch.Demand(BytesOfBalls(6, A.Rows(), static_cast<double>(bits)));
    const QrPass pass(balls, gram, scale, bits, watch);
    pass.EnterQ(Q);
    pass.EnterR(R);
    answer.outcome = std::max(OutcomeOf(Q), OutcomeOf(R));
    const int known = pass.Known();
    if (known < A.Cols() && known >= independent) {
      answer.singular =
          pass.IsDependent() || ExactRank(LeadingColumns(A, known + 1), watch) <= known;
      independent = known + 1;
    }
    const int open = Q.Wide() + Q.MaybeZero() + R.Wide() + R.MaybeZero();
    if (open == 0 && (answer.singular || known == A.Cols())) return;
  }
}

}  // namespace qmx
