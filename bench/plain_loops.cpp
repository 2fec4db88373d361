// SPDX-License-Identifier: MIT
#include "plain_loops.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace qmx::bench {
namespace {

int PivotRow(const Matrix& W, int i) {
  int p = i;
  for (int k = i + 1; k <= W.Rows(); ++k) {
    if (std::abs(W(k, i)) > std::abs(W(p, i))) p = k;
  }
  return p;
}

/// Returns the number of exchanges; `order`, where there is one, follows them.
int Eliminate(Matrix& W, int columns, Matrix* order = nullptr) {
  int exchanges = 0;
  for (int i = 1; i <= columns; ++i) {
    const int p = PivotRow(W, i);
    if (W(p, i) == 0) break;
    if (p != i) ++exchanges;
    if (order != nullptr) std::swap((*order)(i, 1), (*order)(p, 1));
    for (int j = 1; p != i && j <= W.Cols(); ++j) std::swap(W(i, j), W(p, j));
    for (int k = i + 1; k <= W.Rows(); ++k) {
      const double f = W(k, i) / W(i, i);
      W(k, i) = f;
      for (int j = i + 1; j <= W.Cols(); ++j) W(k, j) -= f * W(i, j);
    }
  }
  return exchanges;
}

}  // namespace

Matrix PlainProduct(const Matrix& A, const Matrix& B) {
  Matrix C(A.Rows(), B.Cols());
  for (int i = 1; i <= A.Rows(); ++i) {
    for (int j = 1; j <= B.Cols(); ++j) {
      double sum = 0;
      for (int k = 1; k <= A.Cols(); ++k) sum += A(i, k) * B(k, j);
      C(i, j) = sum;
    }
  }
  return C;
}

double PlainDeterminant(Matrix W) {
  double det = Eliminate(W, W.Rows() - 1) % 2 == 0 ? 1 : -1;
  for (int k = 1; k <= W.Rows(); ++k) det *= W(k, k);
  return det;
}

PlainFactors PlainLu(const Matrix& A) {
  PlainFactors lu{Matrix(A.Rows(), A.Rows()), A, Matrix(A.Rows(), 1)};
  for (int k = 1; k <= A.Rows(); ++k) lu.exchanges(k, 1) = k;
  Eliminate(lu.right, A.Rows(), &lu.exchanges);
  for (int r = 1; r <= A.Rows(); ++r) {
    lu.left(r, r) = 1;
    for (int c = 1; c < r; ++c) {
      lu.left(r, c) = lu.right(r, c);
      lu.right(r, c) = 0;
    }
  }
  return lu;
}

Matrix PlainSolution(Matrix M) {
  const int n = M.Rows();
  Eliminate(M, n - 1);
  Matrix x(n, 1);
  for (int i = n; i >= 1; --i) {
    double sum = 0;
    for (int j = i + 1; j <= n; ++j) sum += M(i, j) * x(j, 1);
    x(i, 1) = (M(i, n + 1) - sum) / M(i, i);
  }
  return x;
}

Matrix PlainLeastSquares(const Matrix& system) {
  const int k = system.Cols() - 1;
  Matrix M(k, k + 1);
  for (int i = 1; i <= k; ++i) {
    for (int j = 1; j <= i; ++j) {
      double sum = 0;
      for (int r = 1; r <= system.Rows(); ++r) sum += system(r, i) * system(r, j);
      M(i, j) = M(j, i) = sum;
    }
    double sum = 0;
    for (int r = 1; r <= system.Rows(); ++r) sum += system(r, i) * system(r, k + 1);
    M(i, k + 1) = sum;
  }
  return PlainSolution(std::move(M));
}

namespace {

/// The exchange steps, the columns in the order of the inverse; `det` becomes the determinant but
/// for its sign.
Matrix Invert(Matrix W, double& det) {
  const int n = W.Rows();
  std::vector<int> pivotRow(n + 1);
  std::vector<int> pivotCol(n + 1);
  for (int i = 1; i <= n; ++i) {
    int p = 0;
    double max = 0;
    for (int k = 1; k <= n; ++k) {
      if (pivotCol[k] == 0 && std::abs(W(k, i)) > max) {
        max = std::abs(W(k, i));
        p = k;
      }
    }
    if (p == 0) break;
    const double pivot = W(p, i);
    det *= pivot;
    pivotCol[p] = i;
    pivotRow[i] = p;
    for (int k = 1; k <= n; ++k) {
      if (k == p) continue;
      const double f = W(k, i) / pivot;
      for (int j = 1; j <= n; ++j) {
        if (j != i) W(k, j) -= f * W(p, j);
      }
      W(k, i) = -f;
    }
    for (int j = 1; j <= n; ++j) W(p, j) /= pivot;
    W(p, i) = 1 / pivot;
  }
  Matrix X(n, n);
  for (int i = 1; i <= n; ++i) {
    for (int j = 1; j <= n; ++j) X(i, j) = W(pivotRow[i], pivotCol[j]);
  }
  return X;
}

}  // namespace

Matrix PlainInverse(Matrix W) {
  double det = 1;
  return Invert(std::move(W), det);
}

Matrix PlainAdjointByInverse(Matrix W) {
  double det = 1;
  Matrix X = Invert(std::move(W), det);
  for (int i = 1; i <= X.Rows(); ++i) {
    for (int j = 1; j <= X.Cols(); ++j) X(i, j) = det * X(i, j);
  }
  return X;
}

Matrix PlainAdjoint(const Matrix& A) {
  const int n = A.Rows();
  Matrix adjoint(n, n);
  Matrix W(n - 1, n - 1);
  for (int i = 1; i <= n; ++i) {
    for (int j = 1; j <= n; ++j) {
      for (int k = 1; k < n; ++k) {
        for (int l = 1; l < n; ++l) W(k, l) = A(k < i ? k : k + 1, l < j ? l : l + 1);
      }
      double det = (Eliminate(W, n - 2) + i + j) % 2 == 0 ? 1 : -1;
      for (int k = 1; k < n; ++k) det *= W(k, k);
      adjoint(j, i) = det;
    }
  }
  return adjoint;
}

PlainFactors PlainQr(const Matrix& A) {
  const int m = A.Rows();
  const int n = A.Cols();
  Matrix V = A;
  Matrix Q(m, n);
  Matrix R(n, n);
  std::vector<double> squared(n + 1);
  for (int j = 1; j <= n; ++j) {
    for (int k = 1; k < j; ++k) {
      double d = 0;
      for (int r = 1; r <= m; ++r) d += V(r, k) * A(r, j);
      const double c = d / squared[k];
      for (int r = 1; r <= m; ++r) V(r, j) -= c * V(r, k);
      R(k, j) = d / R(k, k);
    }
    double sum = 0;
    for (int r = 1; r <= m; ++r) sum += V(r, j) * V(r, j);
    squared[j] = sum;
    R(j, j) = std::sqrt(sum);
    for (int r = 1; r <= m; ++r) Q(r, j) = V(r, j) / R(j, j);
  }
  return {std::move(Q), std::move(R), Matrix()};
}

PlainMinors PlainDefiniteness(Matrix W) {
  const int n = W.Rows();
  PlainMinors found{Matrix(n, 1), Matrix(n, 1)};
  int exchanges = 0;
  for (int k = 1; k <= n; ++k) {
    for (int i = 1; i < k; ++i) {
      if (std::abs(W(k, i)) > std::abs(W(i, i))) {
        ++exchanges;
        for (int j = i; j <= n; ++j) std::swap(W(i, j), W(k, j));
      }
      if (W(i, i) == 0) break;
      const double f = W(k, i) / W(i, i);
      for (int j = i + 1; j <= n; ++j) W(k, j) -= f * W(i, j);
    }
    found.minor(k, 1) = exchanges % 2 == 0 ? 1 : -1;
    found.smallest(k, 1) = std::abs(W(1, 1));
    for (int l = 1; l <= k; ++l) {
      found.minor(k, 1) *= W(l, l);
      found.smallest(k, 1) = std::min(found.smallest(k, 1), std::abs(W(l, l)));
    }
  }
  return found;
}

Matrix PlainHessenberg(Matrix M) {
  const int n = M.Rows();
  for (int k = 1; k <= n - 2; ++k) {
    std::vector<double> u(n + 1);
    double tail = 0;
    for (int i = k + 1; i <= n; ++i) u[i] = M(i, k);
    for (int i = k + 2; i <= n; ++i) tail += u[i] * u[i];
    u[k + 1] += std::sqrt(u[k + 1] * u[k + 1] + tail);
    const double beta = -2 / (u[k + 1] * u[k + 1] + tail);
    Matrix H(n, n);
    for (int i = k + 1; i <= n; ++i) {
      for (int j = k + 1; j <= n; ++j) H(i, j) = beta * u[i] * u[j] + (i == j ? 1 : 0);
    }
    Matrix W = M;
    for (int i = k + 1; i <= n; ++i) {
      for (int j = k; j <= n; ++j) {
        double sum = 0;
        for (int m = k + 1; m <= n; ++m) sum += H(i, m) * M(m, j);
        W(i, j) = sum;
      }
    }
    M = W;
    for (int i = 1; i <= n; ++i) {
      for (int j = k + 1; j <= n; ++j) {
        double sum = 0;
        for (int m = k + 1; m <= n; ++m) sum += W(i, m) * H(m, j);
        M(i, j) = sum;
      }
    }
  }
  return M;
}

Matrix PlainCycles(Matrix M, int cycles) {
  const int n = M.Rows();
  Matrix V(n, n);
  Matrix Q(n, n);
  Matrix R(n, n);
  std::vector<double> squared(n + 1);
  for (int cycle = 0; cycle < cycles; ++cycle) {
    for (int j = 1; j <= n; ++j) {
      const int length = std::min(j + 1, n);
      for (int i = 1; i <= length; ++i) V(i, j) = M(i, j);
      for (int p = 1; p < j; ++p) {
        double d = 0;
        for (int i = 1; i <= p + 1; ++i) d += V(i, p) * M(i, j);
        R(p, j) = squared[p] == 0 ? 0 : d / R(p, p);
        if (squared[p] == 0 || d == 0) continue;
        const double c = d / squared[p];
        for (int i = 1; i <= p + 1; ++i) V(i, j) -= c * V(i, p);
      }
      double sum = 0;
      for (int i = 1; i <= length; ++i) sum += V(i, j) * V(i, j);
      squared[j] = sum;
      R(j, j) = std::sqrt(sum);
      for (int i = 1; i <= length; ++i) Q(i, j) = sum == 0 ? 0 : V(i, j) / R(j, j);
    }
    for (int i = 1; i <= n; ++i) {
      for (int j = std::max(1, i - 1); j <= n; ++j) {
        double sum = 0;
        for (int m = i; m <= std::min(j + 1, n); ++m) sum += R(i, m) * Q(m, j);
        M(i, j) = sum;
      }
    }
  }
  return M;
}

}  // namespace qmx::bench
