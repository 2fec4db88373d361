// SPDX-License-Identifier: MIT
#include "proof/shapes.h"

#include <algorithm>
#include <cmath>

#include "base/number_text.h"

namespace qmx {
namespace {

bool HasShape(const Matrix& A, int rows, int cols) { return A.Rows() == rows && A.Cols() == cols; }

bool HasShapeOf(const Matrix& A, const Matrix& other) {
  return HasShape(A, other.Rows(), other.Cols());
}

/// Empty, or every row once.
bool NamesEveryRow(const Matrix& exchanges, int rows) {
  if (exchanges.Rows() == 0) return true;
  if (!HasShape(exchanges, rows, 1)) return false;
  std::vector<bool> seen(rows + 1);
  for (int k = 1; k <= rows; ++k) {
    const double row = exchanges(k, 1);
    if (!(row >= 1 && row <= rows) || row != std::floor(row)) return false;
    if (seen[static_cast<int>(row)]) return false;
    seen[static_cast<int>(row)] = true;
  }
  return true;
}

/// Empty, or rows of a system, each of them once or more often.
bool NamesRows(const Matrix& exchanges, int rows) {
  if (exchanges.Rows() == 0) return true;
  if (!HasShape(exchanges, rows, 1)) return false;
  for (int k = 1; k <= rows; ++k) {
    const int row = RoundToInteger(exchanges(k, 1));
    if (row < 1 || row > rows) return false;
  }
  return true;
}

bool FactorsFit(const ProofQuestion& question) {
  const int n = question.system.Rows();
  const auto isLargeEnough = [n](const Matrix& A) { return A.Rows() >= n && A.Cols() >= n; };
  return n >= 1 && question.system.Cols() >= 1 && isLargeEnough(question.a) &&
         isLargeEnough(question.b) && NamesRows(question.exchanges, n) &&
         HasShape(question.computed[0], n, 1);
}

bool EigenFits(const ProofQuestion& question) {
  const Matrix& A = question.a;
  const Matrix& values = question.computed[0];
  const Matrix& vectors = question.computed[1];
  return A.IsSquare() && A.Rows() >= 1 && values.Cols() == 1 && values.Rows() >= 1 &&
         (vectors.Size() == 0 || HasShape(vectors, A.Rows(), values.Rows()));
}

std::size_t ResultsOf(ProofTask task) {
  switch (task) {
    case ProofTask::kSymmetry:
    case ProofTask::kDefiniteness:
      return 0;
    case ProofTask::kLu:
    case ProofTask::kQr:
    case ProofTask::kEigen:
      return 2;
    default:
      return 1;
  }
}

}  // namespace

bool Fits(const ProofQuestion& question) {
  const Matrix& A = question.a;
  const Matrix& B = question.b;
  const std::vector<Matrix>& computed = question.computed;
  if (computed.size() != ResultsOf(question.task)) return false;
  switch (question.task) {
    case ProofTask::kSum:
    case ProofTask::kDifference:
      return HasShapeOf(B, A) && HasShapeOf(computed[0], A);
    case ProofTask::kProduct:
      return A.Cols() == B.Rows() && HasShape(computed[0], A.Rows(), B.Cols());
    case ProofTask::kTranspose:
      return HasShape(computed[0], A.Cols(), A.Rows());
    case ProofTask::kScaled:
    case ProofTask::kShifted:
      return HasShapeOf(computed[0], A);
    case ProofTask::kTrace:
    case ProofTask::kDeterminant:
      return A.IsSquare() && HasShape(computed[0], 1, 1);
    case ProofTask::kInverse:
    case ProofTask::kAdjoint:
      return A.IsSquare() && HasShapeOf(computed[0], A);
    case ProofTask::kLu:
      return NamesEveryRow(question.exchanges, A.Rows()) &&
             HasShape(computed[0], A.Rows(), A.Rows()) && HasShapeOf(computed[1], A);
    case ProofTask::kQr:
      return A.Rows() >= A.Cols() && HasShapeOf(computed[0], A) &&
             HasShape(computed[1], A.Cols(), A.Cols());
    case ProofTask::kEigen:
      return EigenFits(question);
    case ProofTask::kSolution:
      return A.Rows() >= 1 && A.Cols() > A.Rows() && HasShape(computed[0], A.Rows(), 1);
    case ProofTask::kSolutionByFactors:
      return FactorsFit(question);
    case ProofTask::kLeastSquares:
      return A.Cols() >= 2 && A.Rows() >= A.Cols() - 1 && HasShape(computed[0], A.Cols() - 1, 1);
    case ProofTask::kSymmetry:
    case ProofTask::kDefiniteness:
      return A.IsSquare() && A.Rows() >= 1;
  }
  return false;
}

}  // namespace qmx
