// SPDX-License-Identifier: MIT
#include "algorithms/elementary.h"
#include "proof/elimination_passes.h"
#include "proof/families.h"
#include "proof/ordered_elimination.h"
#include "proof/residues.h"

namespace qmx {
namespace {

/// Holds an algorithm to the limits of a check.
class WatchedProgress : public Progress {
 public:
  explicit WatchedProgress(const Watch& watch) : watch_(watch) {}
  void Report(double) override { watch_.Look(); }

 private:
  const Watch& watch_;
};

bool IsSymmetric(const Matrix& A, const Watch& watch) {
  WatchedProgress progress(watch);
  return IsSymmetric(A, progress);
}

/// Numbers of positive, negative and zero eigenvalues of a symmetric matrix.
struct Inertia {
  int positive = 0;
  int negative = 0;
  int zero = 0;
};

/// By the signs of the pivots, without exchanges, where all of them differ from zero (Sylvester's
/// law of inertia). False where they do not, or where that needs more bits.
bool InertiaByPivots(const Matrix& A, const Watch& watch, Inertia& inertia) {
  const BallMatrix balls(A);
  const slong bits = 2 * FirstBits(A.Rows());
  watch.Raise(bits);
  const OrderedElimination factors(balls, nullptr, bits, watch);
  if (factors.Known() < A.Rows() || factors.FirstZeroPivot() < A.Rows()) return false;
  for (int k = 0; k < A.Rows(); ++k) {
    const bool isPositive = arb_is_positive(factors.Upper(k, k)) != 0;
    ++(isPositive ? inertia.positive : inertia.negative);
  }
  return true;
}

/// By the signs of the coefficients of the characteristic polynomial, all of whose zeros are real:
/// Descartes' rule tells the number of positive ones exactly.
Inertia InertiaByPolynomial(const Matrix& A, const Watch& watch) {
  const CharacteristicPolynomial polynomial = ExactCharacteristicPolynomial(A, watch);
  const fmpz_poly_struct* const coefficients = polynomial.coefficients.Get();
  Inertia inertia;
  int last = 0;
  for (int k = 0; k <= A.Rows(); ++k) {
    const int sign = fmpz_sgn(fmpz_poly_get_coeff_ptr(coefficients, k));
    if (sign == 0) {
      inertia.zero += last == 0 ? 1 : 0;
      continue;
    }
    inertia.positive += last * sign < 0 ? 1 : 0;
    last = sign;
  }
  inertia.negative = A.Rows() - inertia.positive - inertia.zero;
  return inertia;
}

bool IsTrue(Definiteness verdict, const Inertia& inertia) {
  const bool noneNegative = inertia.negative == 0;
  const bool nonePositive = inertia.positive == 0;
  switch (verdict) {
    case Definiteness::kIndefinite:
      return !noneNegative && !nonePositive;
    case Definiteness::kPositiveDefinite:
      return noneNegative && inertia.zero == 0;
    case Definiteness::kNegativeDefinite:
      return nonePositive && inertia.zero == 0;
    case Definiteness::kSemidefinite:
      return (noneNegative || nonePositive) && inertia.zero > 0;
    case Definiteness::kPositiveSemidefinite:
      return noneNegative && inertia.zero > 0;
    default:
      return nonePositive && inertia.zero > 0;
  }
}

void Judge(bool isTrue, ProofAnswer& answer) {
  answer.verdict = isTrue ? VerdictProof::kProved : VerdictProof::kDisproved;
  answer.outcome = ProofOutcome::kProved;
}

}  // namespace

void ProveSymmetry(const ProofQuestion& question, const Watch& watch, ProofAnswer& answer) {
  watch.Look();
  Judge(IsSymmetric(question.a, watch) == question.symmetric, answer);
}

void ProveDefiniteness(const ProofQuestion& question, const Watch& watch, ProofAnswer& answer) {
  if (!IsSymmetric(question.a, watch)) return Judge(false, answer);
  Inertia inertia;
  if (!InertiaByPivots(question.a, watch, inertia)) {
    inertia = InertiaByPolynomial(question.a, watch);
  }
  Judge(IsTrue(question.definiteness, inertia), answer);
}

}  // namespace qmx
