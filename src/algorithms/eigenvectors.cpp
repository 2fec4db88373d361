#include "algorithms/eigenvectors.h"

#include <cmath>

#include "algorithms/elimination.h"
#include "algorithms/substitution.h"
#include "base/arithmetic.h"

namespace qmx {
namespace {

/// A - mu·I, with mu a little off lambda on the side away from the diagonal entry of its origin.
Matrix ShiftedMatrix(const Matrix& A, double lambda, int origin, double additionalShift) {
  const bool below = A.At(origin, origin) - lambda >= 0;
  const double mu = below ? lambda - additionalShift : additionalShift + lambda;
  Matrix M = A;
  for (int i = 1; i <= M.Rows(); ++i) M(i, i) -= mu;
  return M;
}

void Normalise(std::vector<double>& x) {
  double sum = 0.0;
  for (const double component : x) sum += component * component;
  const double norm = std::sqrt(sum);
  for (double& component : x) component /= norm;
}

bool AgreeInMagnitude(const std::vector<double>& x, const std::vector<double>& y,
                      double tolerance) {
  for (std::size_t i = 0; i < x.size(); ++i) {
    if (std::abs(std::abs(x[i]) - std::abs(y[i])) > tolerance) return false;
  }
  return true;
}

}  // namespace

VectorOutcome FindEigenvector(const Matrix& A, double lambda, int origin,
                              const EigenParameters& parameters, std::vector<double>& x,
                              const BlockSizes& sizes) {
  const int n = A.Rows();
  Matrix M = ShiftedMatrix(A, lambda, origin, parameters.additionalShift);
  Progress unheard;
  std::vector<double> order(n);
  const Elimination factors =
      Eliminate(M, n, PivotRule::kStopAtZeroColumn, unheard, order.data(), sizes.elimination);
  CheckArithmetic();
  if (!factors.complete) return VectorOutcome::kSingular;

  std::vector<double> previous(n);
  for (std::int32_t cycle = 1;; ++cycle) {
    previous = x;
    for (int i = 0; i < n; ++i) x[i] = previous[static_cast<int>(order[i]) - 1];
    SubstituteForward(M, n, x);
    SubstituteBack(M, 1, x);
    Normalise(x);
    CheckArithmetic();
    if (AgreeInMagnitude(x, previous, parameters.tolerance)) return VectorOutcome::kConverged;
    if (cycle >= parameters.maxCycles) return VectorOutcome::kNotConverged;
  }
}

}  // namespace qmx
