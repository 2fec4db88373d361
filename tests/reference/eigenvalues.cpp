// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cmath>

#include "reference/reference.h"

namespace qmx::reference {
namespace {

void ReduceToHessenberg(Table& M, int n) {
  for (int k = 1; k <= n - 2; ++k) {
    bool reduced = true;
    for (int i = k + 2; i <= n; ++i) {
      if (M(i, k) != 0.0) reduced = false;
    }
    if (reduced) continue;

    const double alpha = M(k + 1, k);
    Table H(n, n);
    for (int i = 1; i <= k; ++i) H(i, i) = 1.0;
    double s = 0.0;
    for (int i = k + 2; i <= n; ++i) s = s + M(i, k) * M(i, k);
    const double sigma = M(k + 1, k) * M(k + 1, k) + s;
    M(k + 1, k) = std::sqrt(sigma) + M(k + 1, k);
    const double beta = -2.0 / (M(k + 1, k) * M(k + 1, k) + s);
    for (int i = k + 1; i <= n; ++i) {
      H(i, i) = beta * (M(i, k) * M(i, k)) + 1.0;
      for (int j = i + 1; j <= n; ++j) {
        H(i, j) = beta * M(i, k) * M(j, k);
        H(j, i) = H(i, j);
      }
    }
    M(k + 1, k) = alpha;

    Table W(n, n);
    for (int i = 1; i <= k; ++i) {
      for (int j = k; j <= n; ++j) W(i, j) = M(i, j);
    }
    for (int i = k + 1; i <= n; ++i) W(i, k) = 0.0;
    for (int m = 1; m <= n; ++m) W(k + 1, k) = W(k + 1, k) + M(m, k) * H(k + 1, m);
    for (int i = k + 1; i <= n; ++i) {
      for (int j = k + 1; j <= n; ++j) {
        for (int m = k + 1; m <= n; ++m) W(i, j) = W(i, j) + H(i, m) * M(m, j);
      }
    }
    for (int i = 1; i <= n; ++i) M(i, k) = W(i, k);
    for (int i = 1; i <= n; ++i) {
      for (int j = k + 1; j <= n; ++j) {
        double sum = 0.0;
        for (int m = k + 1; m <= n; ++m) sum = sum + W(i, m) * H(m, j);
        M(i, j) = sum;
      }
    }
    CheckFlags();
  }
}

void Factor(const Table& M, int n, Table& Q, Table& Qn, Table& R) {
  for (int j = 1; j <= n; ++j) {
    const int L = j < n ? j + 1 : n;
    for (int i = 1; i <= L; ++i) Q(i, j) = M(i, j);
    for (int p = 1; p <= j - 1; ++p) {
      double a = 0.0;
      double d = 0.0;
      for (int i = 1; i <= p + 1; ++i) {
        a = a + Q(i, p) * Q(i, p);
        d = d + Q(i, p) * M(i, j);
      }
      if (a != 0.0 && d != 0.0) {
        for (int i = 1; i <= p + 1; ++i) Q(i, j) = Q(i, j) - (d / a) * Q(i, p);
      }
    }
    for (int p = 1; p <= j - 1; ++p) {
      double a = 0.0;
      double d = 0.0;
      for (int i = 1; i <= p + 1; ++i) {
        a = a + Q(i, p) * Q(i, p);
        d = d + Q(i, p) * M(i, j);
      }
      if (a == 0.0) {
        R(p, j) = 0.0;
      } else {
        R(p, j) = d / std::sqrt(a);
      }
    }
    double sum = 0.0;
    for (int i = 1; i <= L; ++i) sum = sum + Q(i, j) * Q(i, j);
    const double nu = std::sqrt(sum);
    for (int i = 1; i <= L; ++i) {
      if (nu == 0.0) {
        Qn(i, j) = 0.0;
      } else {
        Qn(i, j) = Q(i, j) / nu;
      }
    }
    R(j, j) = nu;
  }
}

/// Everything that a run works on; numbered from 1, with an element 0 that is never written.
struct Run {
  explicit Run(const Table& A)
      : N(A.Rows()),
        n(N),
        M(A),
        Q(N, N),
        Qn(N, N),
        R(N, N),
        eigenvalues(N),
        eigenOrigin(N),
        activePos(N),
        diagChange(N),
        D(N) {
    for (int i = 1; i <= N; ++i) activePos(i) = i;
  }

  void Cycle() {
    Factor(M, n, Q, Qn, R);
    for (int i = 1; i <= n; ++i) D(i) = M(i, i);
    for (int i = 1; i <= n; ++i) {
      for (int j = std::max(1, i - 1); j <= n; ++j) {
        double sum = 0.0;
        for (int m = i; m <= std::min(j + 1, n); ++m) sum = sum + R(i, m) * Qn(m, j);
        M(i, j) = sum;
      }
    }
    for (int i = 1; i <= n; ++i) diagChange(i) = std::fabs(M(i, i) - D(i));
  }

  void Take(int i) {
    const int t = N - n + 1;
    eigenvalues(t) = M(i, i) + eigenvalues(t);
    eigenOrigin(t) = activePos(i);
  }

  void Delete(int i) {
    for (int r = i; r <= n - 1; ++r) {
      for (int j = 1; j <= n; ++j) M(r, j) = M(r + 1, j);
    }
    for (int c = i; c <= n - 1; ++c) {
      for (int r = 1; r <= n - 1; ++r) M(r, c) = M(r, c + 1);
    }
    for (int r = i; r <= n - 1; ++r) {
      activePos(r) = activePos(r + 1);
      diagChange(r) = diagChange(r + 1);
    }
    n = n - 1;
  }

  /// True if only one entry is left.
  bool Deflate(double e) {
    while (diagChange(n) <= e && std::fabs(M(n, n - 1)) <= e) {
      Take(n);
      n = n - 1;
      if (n == 1) return true;
    }
    for (int i = n - 1; i >= 2; --i) {
      if (diagChange(i) <= e && std::fabs(M(i + 1, i)) <= e && std::fabs(M(i, i - 1)) <= e) {
        Take(i);
        Delete(i);
      }
    }
    if (n == 1) return true;
    if (diagChange(1) <= e && std::fabs(M(2, 1)) <= e) {
      Take(1);
      Delete(1);
    }
    return n == 1;
  }

  void Shift(double shiftReference, int& shiftIndex) {
    double mn = diagChange(1);
    for (int i = 2; i <= n; ++i) {
      if (diagChange(i) <= mn) {
        mn = diagChange(i);
        shiftIndex = i;
      }
    }
    if (mn <= shiftReference) {
      const double s = M(shiftIndex, shiftIndex);
      for (int i = 1; i <= n; ++i) {
        eigenvalues(N - i + 1) = eigenvalues(N - i + 1) + s;
        M(i, i) = M(i, i) - s;
      }
    }
  }

  int N;
  int n;
  Table M;
  Table Q;
  Table Qn;
  Table R;
  Row<double> eigenvalues;
  Row<double> eigenOrigin;
  Row<int> activePos;
  Row<double> diagChange;
  Row<double> D;
};

}  // namespace

Eigen FindEigenvalues(const Table& A, const EigenLimits& limits, int& shiftIndex) {
  const double e = limits.tolerance;
  Run run(A);
  ReduceToHessenberg(run.M, run.n);
  int cycleCount = 0;
  for (;;) {
    cycleCount = cycleCount + 1;
    run.Cycle();
    CheckFlags();
    if (run.Deflate(e)) {
      if (run.diagChange(1) <= e) {
        run.Take(1);
        run.n = 0;
      }
      break;
    }
    if (cycleCount > limits.maxCycles) break;
    run.Shift(limits.shiftReference, shiftIndex);
    if (cycleCount >= limits.maxCycles) break;
  }
  CheckFlags();
  Eigen eigen;
  eigen.count = run.N - run.n;
  eigen.values = Table(run.N, 1);
  eigen.origin = Table(run.N, 1);
  for (int t = 1; t <= run.N; ++t) {
    eigen.values(t, 1) = run.eigenvalues(t);
    eigen.origin(t, 1) = run.eigenOrigin(t);
  }
  return eigen;
}

}  // namespace qmx::reference
