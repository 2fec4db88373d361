// SPDX-License-Identifier: MIT
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

/// Iterates from x with what is left of M, whose rows have come into this order, once it has been
/// eliminated.
VectorOutcome Iterate(const Matrix& M, const std::vector<double>& order,
                      const EigenParameters& parameters, std::vector<double>& x, WorkMeter& meter) {
  const int n = M.Rows();
  std::vector<double> previous(n);
  for (std::int32_t cycle = 1;; ++cycle) {
    meter.Expect(2 * SubstitutionWork(n));
    previous = x;
    for (int i = 0; i < n; ++i) x[i] = previous[static_cast<int>(order[i]) - 1];
    SubstituteForward(M, n, x, meter);
    SubstituteBack(M, 1, x, meter);
    Normalise(x);
    CheckArithmetic();
    if (AgreeInMagnitude(x, previous, parameters.tolerance)) return VectorOutcome::kConverged;
    if (cycle >= parameters.maxCycles) return VectorOutcome::kNotConverged;
  }
}

}  // namespace

VectorOutcome FindEigenvector(const Matrix& A, double lambda, int origin,
                              const EigenParameters& parameters, std::vector<double>& x,
                              Progress& progress, const BlockSizes& sizes) {
  const int n = A.Rows();
  Matrix M = ShiftedMatrix(A, lambda, origin, parameters.additionalShift);
  WorkMeter meter(progress, EliminationWork(n, n, n));
  std::vector<double> order(n);
  const Elimination factors =
      Eliminate(M, n, PivotRule::kStopAtZeroColumn, meter, order.data(), sizes.elimination);
  CheckArithmetic();
  if (!factors.complete) return VectorOutcome::kSingular;
  return UnchangedIfStopped(x, [&] {
    const VectorOutcome outcome = Iterate(M, order, parameters, x, meter);
    meter.End();
    return outcome;
  });
}

}  // namespace qmx
