// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cmath>

#include "proof/elimination_passes.h"
#include "proof/families.h"
#include "proof/ledger.h"
#include "proof/real_roots.h"

namespace qmx {
namespace {

// An eigenvalue far beyond the digits of a double, and far enough for its vector.
constexpr slong kValueBits = 128;

/// A - lambda·I.
BallMatrix Shifted(const BallMatrix& A, const Ball& lambda) {
  BallMatrix shifted = A;
  for (int i = 0; i < A.Rows(); ++i) {
    arb_sub(shifted(i, i), shifted(i, i), lambda,
            arb_is_exact(lambda) ? ARF_PREC_EXACT : arb_bits(lambda) + kValueBits);
  }
  return shifted;
}

/// The multiple of a vector that has norm 1 and points the way of column `col` of the computed
/// ones.
void Normalise(BallMatrix& x, const Ledger& vectors, int col, slong bits) {
  Ball norm;
  arb_dot(norm, nullptr, 0, x.Row(0), 1, x.Row(0), 1, x.Cols(), bits);
  arb_sqrt(norm, norm, bits);
  Ball product;
  Ball term;
  for (int i = 0; i < x.Cols(); ++i) {
    arb_mul(term, x(0, i), Ball(vectors.Computed(i, col)), kValueBits);
    arb_add(product, product, term, kValueBits);
  }
  if (arf_sgn(arb_midref(arb_srcptr(product))) < 0) arb_neg(norm, norm);
  for (int i = 0; i < x.Cols(); ++i) arb_div(x(0, i), x(0, i), norm, bits);
}

class VectorProof {
 public:
  VectorProof(const Matrix& A, const RealRoots& roots, Ledger& vectors, const Watch& watch)
      : A_(A), balls_(A), roots_(roots), vectors_(vectors), watch_(watch) {}

  /// Column `col` is compared with the eigenvector for the eigenvalue near `start`.
  ProofOutcome Run(double start, int col);

 private:
  bool Pass(const RealRoot& root, slong bits, int col);

  const Matrix& A_;
  const BallMatrix balls_;
  const RealRoots& roots_;
  Ledger& vectors_;
  const Watch& watch_;
};

ProofOutcome VectorProof::Run(double start, int col) {
  for (slong bits = FirstBits(A_.Rows());; bits *= 2) {
    watch_.Raise(bits);
    const auto root = roots_.Near(start, bits);
    if (!root || !root->isSimple) return ProofOutcome::kPartlyProved;
    if (Pass(*root, bits, col)) return OutcomeOf(vectors_);
  }
}

/// True where more bits would not help.
bool VectorProof::Pass(const RealRoot& root, slong bits, int col) {
  const BallMatrix shifted = Shifted(balls_, root.value);
  const bool isExact = arb_is_exact(root.value);
  const WholeScale scale = isExact ? WholeScaleOf(shifted) : WholeScale();
  const PivotedElimination elimination(shifted, isExact ? &scale : nullptr, bits, watch_);
  if (elimination.Rank() != A_.Rows() - 1) return false;
  BallMatrix x = elimination.NullVector();
  if (isExact) {
    const slong exponent = scale.cols[elimination.FreeColumns().front()];
    for (int i = 0; i < x.Cols(); ++i) {
      if (arb_contains_zero(x(0, i)) && elimination.IsZeroUnknown(x(0, i), i, exponent)) {
        arb_zero(x(0, i));
      }
    }
  }
  Normalise(x, vectors_, col, bits);
  vectors_.BeginPass();
  for (int i = 0; i < x.Cols(); ++i) vectors_.Enter(i, col, Ball(x(0, i)));
  // Of an eigenvalue that is not exact no precision tells whether an element of its vector is zero.
  return vectors_.Wide() == 0 && (!isExact || vectors_.MaybeZero() == 0);
}

}  // namespace

void ProveEigen(const ProofQuestion& question, const Watch& watch, ProofAnswer& answer) {
  const Matrix& A = question.a;
  const Matrix& computed = question.computed[0];
  const CharacteristicPolynomial polynomial = ExactCharacteristicPolynomial(A, watch);
  const RealRoots roots(polynomial, watch);
  Ledger values(computed, answer.results[0]);
  for (int t = 0; t < values.Rows(); ++t) {
    if (const auto root = roots.Near(values.Computed(t, 0), kValueBits)) {
      values.Enter(t, 0, root->value);
    } else {
      values.GiveUp();
    }
  }
  ProofOutcome outcome = OutcomeOf(values);
  answer.outcome = ProofOutcome::kPartlyProved;
  if (question.computed[1].Size() != 0) {
    Ledger vectors(question.computed[1], answer.results[1]);
    VectorProof proof(A, roots, vectors, watch);
    for (int t = 0; t < vectors.Cols(); ++t) {
      outcome = std::max(outcome, proof.Run(values.Computed(t, 0), t));
    }
  }
  answer.outcome = outcome;
}

}  // namespace qmx
