#include "algorithms/inverse.h"

#include <cmath>
#include <utility>
#include <vector>

#include "algorithms/elimination.h"

namespace qmx {
namespace {

// Both numbered from 1; element 0 is not used.
using IndexVector = std::vector<int>;

/// W(k,j) = W(k,j) - f·W(p,j) for all columns but i, with f = W(k,i) / W(p,i); then W(k,i) = -f.
void SubtractPivotRow(Matrix& W, int k, int p, int i) {
  const double f = W(k, i) / W(p, i);
  for (int j = 1; j < i; ++j) W(k, j) -= f * W(p, j);
  for (int j = i + 1; j <= W.Cols(); ++j) W(k, j) -= f * W(p, j);
  W(k, i) = -f;
}

/// The Jordan exchange step at (p, i): the variable of column i changes places with row p.
void ExchangeStep(Matrix& W, int p, int i) {
  const double pivot = W(p, i);
  for (int k = 1; k <= W.Rows(); ++k) {
    if (k != p) SubtractPivotRow(W, k, p, i);
  }
  for (int j = 1; j <= W.Cols(); ++j) W(p, j) /= pivot;
  W(p, i) = 1.0 / pivot;
}

/// The element that a column is solved for.
struct Pivot {
  int row = 0;
  double magnitude = 0;
};

/// The largest magnitude of column i at and below the diagonal, the upper one of equals.
Pivot FindPivot(const Matrix& W, int i) {
  Pivot pivot{i, std::abs(W(i, i))};
  for (int k = i + 1; k <= W.Rows(); ++k) {
    const double magnitude = std::abs(W(k, i));
    if (magnitude > pivot.magnitude) pivot = {k, magnitude};
  }
  return pivot;
}

/// The largest magnitude of column i among the rows that no column pivoted in yet.
Pivot FindFreePivot(const Matrix& W, int i, const IndexVector& pivotCol) {
  Pivot pivot;
  for (int k = 1; k <= W.Rows(); ++k) {
    const double magnitude = std::abs(W(k, i));
    if (pivotCol[k] == 0 && magnitude > pivot.magnitude) pivot = {k, magnitude};
  }
  return pivot;
}

/// A without row `row` and column `col`, into `minor`.
void FillMinor(const Matrix& A, int row, int col, Matrix& minor) {
  for (int k = 1; k <= minor.Rows(); ++k) {
    for (int l = 1; l <= minor.Cols(); ++l) {
      minor(k, l) = A(k < row ? k : k + 1, l < col ? l : l + 1);
    }
  }
}

}  // namespace

std::optional<Matrix> Inverse(Matrix W, Progress& progress) {
  const int n = W.Rows();
  IndexVector pivotRow(n + 1);
  IndexVector pivotCol(n + 1);
  for (int i = 1; i <= n; ++i) {
    const Pivot pivot = FindFreePivot(W, i, pivotCol);
    if (pivot.magnitude == 0) return std::nullopt;
    pivotRow[i] = pivot.row;
    pivotCol[pivot.row] = i;
    ExchangeStep(W, pivot.row, i);
    progress.Report(static_cast<double>(i) / n);
  }
  if (n > 0 && W(pivotRow[n], n) == 0) return std::nullopt;

  Matrix inverse(n, n);
  for (int i = 1; i <= n; ++i) {
    for (int j = 1; j <= n; ++j) inverse(i, j) = W(pivotRow[i], pivotCol[j]);
  }
  return inverse;
}

Matrix AdjointByCofactors(const Matrix& A, Progress& progress) {
  const int n = A.Rows();
  Matrix adjoint(n, n);
  if (n == 0) return adjoint;
  Matrix minor(n - 1, n - 1);
  Progress unheard;
  for (int i = 1; i <= n; ++i) {
    for (int j = 1; j <= n; ++j) {
      FillMinor(A, i, j, minor);
      adjoint(j, i) = AlternatingSign(i + j) * ReduceToDeterminant(minor, unheard);
    }
    progress.Report(static_cast<double>(i) / n);
  }
  return adjoint;
}

std::optional<Matrix> AdjointByInverse(Matrix W, Progress& progress) {
  const int n = W.Rows();
  double det = 1.0;
  int exchanges = 0;
  IndexVector pivotRow(n + 1);
  for (int k = 1; k <= n; ++k) pivotRow[k] = k;
  for (int i = 1; i <= n; ++i) {
    const Pivot pivot = FindPivot(W, i);
    if (pivot.magnitude == 0) return std::nullopt;
    if (pivot.row != i) {
      W.SwapRows(i, pivot.row);
      std::swap(pivotRow[i], pivotRow[pivot.row]);
      ++exchanges;
    }
    det *= W(i, i);
    ExchangeStep(W, i, i);
    progress.Report(static_cast<double>(i) / n);
  }
  if (n > 0 && W(n, n) == 0) return std::nullopt;

  IndexVector pivotCol(n + 1);
  for (int k = 1; k <= n; ++k) pivotCol[pivotRow[k]] = k;
  Matrix adjoint(n, n);
  for (int i = 1; i <= n; ++i) {
    for (int j = 1; j <= n; ++j) {
      adjoint(i, j) = AlternatingSign(exchanges) * (det * W(i, pivotCol[j]));
    }
  }
  return adjoint;
}

}  // namespace qmx
