// SPDX-License-Identifier: MIT
#include "support/core_exact.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

namespace qmx::testing {

Exact ExactDeterminant(const Matrix& A) {
  const int n = A.Rows();
  std::vector<std::vector<Exact>> W(n, std::vector<Exact>(n));
  for (int i = 0; i < n; ++i) {
    for (int j = 0; j < n; ++j) W[i][j] = static_cast<Exact>(A(i + 1, j + 1));
  }
  Exact sign = 1;
  Exact previous = 1;
  for (int k = 0; k < n - 1; ++k) {
    int p = k;
    while (p < n && W[p][k] == 0) ++p;
    if (p == n) return 0;
    if (p != k) {
      std::swap(W[p], W[k]);
      sign = -sign;
    }
    for (int i = k + 1; i < n; ++i) {
      for (int j = k + 1; j < n; ++j) {
        W[i][j] = (W[i][j] * W[k][k] - W[i][k] * W[k][j]) / previous;
      }
    }
    previous = W[k][k];
  }
  return n == 0 ? 1 : sign * W[n - 1][n - 1];
}

Matrix WithoutLines(const Matrix& A, int row, int col) {
  Matrix B(A.Rows() - 1, A.Cols() - 1);
  for (int i = 1; i <= A.Rows(); ++i) {
    for (int j = 1; j <= A.Cols(); ++j) {
      if (i != row && j != col) B(i < row ? i : i - 1, j < col ? j : j - 1) = A(i, j);
    }
  }
  return B;
}

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

double LargestDifference(const Matrix& A, const Matrix& B) {
  double largest = 0;
  for (std::size_t k = 0; k < A.Size(); ++k) {
    largest = std::max(largest, std::abs(A.Data()[k] - B.Data()[k]));
  }
  return largest;
}

Matrix Magnitudes(const Matrix& A) {
  Matrix B = A;
  for (std::size_t k = 0; k < B.Size(); ++k) B.Data()[k] = std::abs(B.Data()[k]);
  return B;
}

Matrix Rows(std::initializer_list<std::initializer_list<double>> rows) {
  Matrix A(static_cast<int>(rows.size()),
           rows.size() == 0 ? 0 : static_cast<int>(rows.begin()->size()));
  double* next = A.Data();
  for (const auto& row : rows) next = std::copy(row.begin(), row.end(), next);
  return A;
}

}  // namespace qmx::testing
