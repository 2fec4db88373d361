// SPDX-License-Identifier: MIT
#include "proof/oracle.h"

#include <arb_fmpz_poly.h>
#include <flint/fmpz_mat.h>
#include <flint/fmpz_poly.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "base/number_text.h"

namespace qmx::testing {
namespace {

constexpr slong kEigenBits = 1600;

Truth ElementsOf(const RationalMatrix& A) {
  Truth truth;
  for (int i = 1; i <= A.Rows(); ++i) {
    for (int j = 1; j <= A.Cols(); ++j) truth.emplace_back(A(i, j));
  }
  return truth;
}

RationalMatrix Transposed(const RationalMatrix& A) {
  RationalMatrix transposed(A.Cols(), A.Rows());
  for (int i = 1; i <= A.Rows(); ++i) {
    for (int j = 1; j <= A.Cols(); ++j) transposed(j, i) = A(i, j);
  }
  return transposed;
}

RationalMatrix Times(const RationalMatrix& A, const RationalMatrix& B) {
  RationalMatrix product(A.Rows(), B.Cols());
  for (int i = 1; i <= A.Rows(); ++i) {
    for (int j = 1; j <= B.Cols(); ++j) {
      for (int k = 1; k <= A.Cols(); ++k) product(i, j) += A(i, k) * B(k, j);
    }
  }
  return product;
}

RationalMatrix Block(const RationalMatrix& A, int rows, int firstCol, int lastCol) {
  RationalMatrix block(rows, lastCol - firstCol + 1);
  for (int i = 1; i <= rows; ++i) {
    for (int j = firstCol; j <= lastCol; ++j) block(i, j - firstCol + 1) = A(i, j);
  }
  return block;
}

/// Reduces [A | B] to [I | X]; false for a singular A. The determinant is built on the way.
bool GaussJordan(RationalMatrix& A, RationalMatrix& B, Rational& determinant) {
  const int n = A.Rows();
  determinant = Rational(1);
  for (int c = 1; c <= n; ++c) {
    int p = c;
    while (p <= n && A(p, c).IsZero()) ++p;
    if (p > n) {
      determinant = Rational(0);
      return false;
    }
    if (p != c) determinant *= Rational(-1);
    for (int j = 1; j <= n && p != c; ++j) std::swap(A(p, j), A(c, j));
    for (int j = 1; j <= B.Cols() && p != c; ++j) std::swap(B(p, j), B(c, j));
    const Rational pivot = A(c, c);
    determinant *= pivot;
    for (int j = 1; j <= n; ++j) A(c, j) /= pivot;
    for (int j = 1; j <= B.Cols(); ++j) B(c, j) /= pivot;
    for (int i = 1; i <= n; ++i) {
      const Rational factor = A(i, c);
      if (i == c || factor.IsZero()) continue;
      for (int j = c; j <= n; ++j) A(i, j) -= factor * A(c, j);
      for (int j = 1; j <= B.Cols(); ++j) B(i, j) -= factor * B(c, j);
    }
  }
  return true;
}

std::optional<RationalMatrix> SolutionOf(RationalMatrix A, RationalMatrix B) {
  Rational determinant;
  if (!GaussJordan(A, B, determinant)) return std::nullopt;
  return B;
}

Truth ElementsOf(const std::optional<RationalMatrix>& A, std::size_t count) {
  return A ? ElementsOf(*A) : Truth(count);
}

RationalMatrix AdjointOf(const RationalMatrix& A) {
  const int n = A.Rows();
  RationalMatrix adjoint(n, n);
  for (int i = 1; i <= n; ++i) {
    for (int j = 1; j <= n; ++j) {
      RationalMatrix minor(n - 1, n - 1);
      for (int k = 1; k < n; ++k) {
        for (int l = 1; l < n; ++l) minor(k, l) = A(k < i ? k : k + 1, l < j ? l : l + 1);
      }
      adjoint(j, i) = ExactDeterminantOf(minor) * Rational((i + j) % 2 == 0 ? 1 : -1);
    }
  }
  return adjoint;
}

/// L and U by elimination with the rows as they stand; what comes after a zero pivot with something
/// else below it is unknown.
std::vector<Truth> LuOf(const RationalMatrix& A) {
  const int m = A.Rows();
  const int n = A.Cols();
  RationalMatrix U = A;
  RationalMatrix L(m, m);
  int known = std::min(m, n);
  for (int c = 1; c <= std::min(m, n) && known == std::min(m, n); ++c) {
    if (U(c, c).IsZero()) {
      for (int i = c + 1; i <= m; ++i) {
        if (!U(i, c).IsZero()) known = c - 1;
      }
      continue;
    }
    for (int i = c + 1; i <= m; ++i) {
      L(i, c) = U(i, c) / U(c, c);
      for (int j = c; j <= n; ++j) U(i, j) -= L(i, c) * U(c, j);
    }
  }
  Truth lower;
  Truth upper;
  for (int i = 1; i <= m; ++i) {
    L(i, i) = Rational(1);
    for (int j = 1; j <= m; ++j) {
      const bool isUnknown = j < i && j > known && j <= std::min(m, n);
      lower.push_back(isUnknown ? std::nullopt : std::optional<Rational>(L(i, j)));
    }
    for (int j = 1; j <= n; ++j) {
      const bool isUnknown = i <= j && i > known + 1;
      upper.push_back(i > j       ? std::optional<Rational>(Rational(0))
                      : isUnknown ? std::nullopt
                                  : std::optional<Rational>(U(i, j)));
    }
  }
  return {lower, upper};
}

/// Q and R by Gram-Schmidt; what comes from a dependent column on is unknown.
std::vector<Truth> QrOf(const RationalMatrix& A) {
  const int m = A.Rows();
  const int n = A.Cols();
  RationalMatrix V = A;
  Truth Q(m * n);
  Truth R(n * n);
  for (int k = 2; k <= n; ++k) {
    for (int j = 1; j < k; ++j) R[(k - 1) * n + (j - 1)] = Rational(0);
  }
  std::vector<Rational> squares;
  for (int j = 1; j <= n; ++j) {
    for (int k = 1; k <= static_cast<int>(squares.size()) && k < j; ++k) {
      Rational dot;
      for (int r = 1; r <= m; ++r) dot += V(r, k) * A(r, j);
      const Rational root = RootOf(dot * dot / squares[k - 1]);
      R[(k - 1) * n + (j - 1)] = dot.Sign() < 0 ? Rational(0) - root : root;
      for (int r = 1; r <= m; ++r) V(r, j) -= dot / squares[k - 1] * V(r, k);
    }
    if (static_cast<int>(squares.size()) < j - 1) continue;
    Rational square;
    for (int r = 1; r <= m; ++r) square += V(r, j) * V(r, j);
    if (square.IsZero()) continue;
    squares.push_back(square);
    R[(j - 1) * n + (j - 1)] = RootOf(square);
    for (int r = 1; r <= m; ++r) {
      const Rational root = RootOf(V(r, j) * V(r, j) / square);
      Q[(r - 1) * n + (j - 1)] = V(r, j).Sign() < 0 ? Rational(0) - root : root;
    }
  }
  return {Q, R};
}

/// The zero of a polynomial that a ball encloses: exactly where it is whole.
Rational ValueOf(arb_srcptr ball, const fmpz_poly_struct* polynomial) {
  Rational value;
  fmpz* const whole = fmpq_numref(value.Get());
  if (arb_get_unique_fmpz(whole, ball) != 0) {
    fmpz_t atWhole;
    fmpz_init(atWhole);
    fmpz_poly_evaluate_fmpz(atWhole, polynomial, whole);
    const bool isZero = fmpz_is_zero(atWhole) != 0;
    fmpz_clear(atWhole);
    if (isZero) return value;
  }
  arf_get_fmpq(value.Get(), arb_midref(ball));
  return value;
}

/// To kEigenBits bits.
std::vector<Eigenvalue> EigenvaluesOf(const RationalMatrix& A) {
  const int n = A.Rows();
  Rational common(1);
  for (int i = 1; i <= n; ++i) {
    for (int j = 1; j <= n; ++j) {
      fmpz_lcm(fmpq_numref(common.Get()), fmpq_numref(common.Get()), fmpq_denref(A(i, j).Get()));
    }
  }
  fmpz_mat_t whole;
  fmpz_mat_init(whole, n, n);
  for (int i = 0; i < n; ++i) {
    for (int j = 0; j < n; ++j) {
      fmpz_set(fmpz_mat_entry(whole, i, j), fmpq_numref((A(i + 1, j + 1) * common).Get()));
    }
  }
  fmpz_poly_t polynomial;
  fmpz_poly_init(polynomial);
  fmpz_mat_charpoly_berkowitz(polynomial, whole);
  fmpz_mat_clear(whole);
  fmpz_poly_factor_t factors;
  fmpz_poly_factor_init(factors);
  fmpz_poly_factor_squarefree(factors, polynomial);
  std::vector<Eigenvalue> eigenvalues;
  for (slong f = 0; f < factors->num; ++f) {
    const slong degree = fmpz_poly_degree(factors->p + f);
    if (degree < 1) continue;
    acb_ptr roots = _acb_vec_init(degree);
    arb_fmpz_poly_complex_roots(roots, factors->p + f, 0, kEigenBits);
    for (slong k = 0; k < degree; ++k) {
      if (!acb_is_real(roots + k)) continue;
      const Rational value = ValueOf(acb_realref(roots + k), factors->p + f);
      eigenvalues.push_back({value / common, factors->exp[f] == 1});
    }
    _acb_vec_clear(roots, degree);
  }
  fmpz_poly_factor_clear(factors);
  fmpz_poly_clear(polynomial);
  return eigenvalues;
}

/// A vector of the null space of A - lambda·I, of norm 1 and pointing as column `col` of computed.
/// lambda is not quite the eigenvalue, so of the n equations the last one is left over: which one
/// and which unknown is 1, complete pivoting decides.
Truth EigenvectorOf(const RationalMatrix& A, const Rational& lambda, const Matrix& computed,
                    int col) {
  const int n = A.Rows();
  RationalMatrix W = A;
  for (int i = 1; i <= n; ++i) W(i, i) -= lambda;
  std::vector<int> columns(n);
  for (int j = 0; j < n; ++j) columns[j] = j + 1;
  for (int c = 1; c < n; ++c) {
    int row = c;
    int place = c;
    for (int i = c; i <= n; ++i) {
      for (int j = c; j <= n; ++j) {
        if (W(row, columns[place - 1]).Magnitude() < W(i, columns[j - 1]).Magnitude()) {
          row = i;
          place = j;
        }
      }
    }
    std::swap(columns[c - 1], columns[place - 1]);
    for (int j = 1; j <= n && row != c; ++j) std::swap(W(row, j), W(c, j));
    for (int i = 1; i <= n; ++i) {
      const Rational factor = W(i, columns[c - 1]) / W(c, columns[c - 1]);
      if (i == c || factor.IsZero()) continue;
      for (int j = 1; j <= n; ++j) W(i, j) -= factor * W(c, j);
    }
  }
  std::vector<Rational> x(n);
  Rational square(1);
  Rational dot;
  x[columns[n - 1] - 1] = Rational(1);
  for (int c = 1; c < n; ++c) {
    x[columns[c - 1] - 1] = Rational(0) - W(c, columns[n - 1]) / W(c, columns[c - 1]);
    square += x[columns[c - 1] - 1] * x[columns[c - 1] - 1];
  }
  for (int i = 1; i <= n; ++i) dot += x[i - 1] * Rational(computed(i, col));
  Truth vector;
  Rational nothing(1);
  fmpq_div_2exp(nothing.Get(), nothing.Get(), kEigenBits / 2);
  for (const Rational& element : x) {
    if (element.Magnitude() < nothing) {
      vector.emplace_back(Rational(0));
      continue;
    }
    const Rational root = RootOf(element * element / square);
    vector.emplace_back(element.Sign() * dot.Sign() < 0 ? Rational(0) - root : root);
  }
  return vector;
}

const Eigenvalue& Nearest(const std::vector<Eigenvalue>& eigenvalues, const Rational& computed) {
  return *std::min_element(
      eigenvalues.begin(), eigenvalues.end(), [&](const Eigenvalue& a, const Eigenvalue& b) {
        return (a.value - computed).Magnitude() < (b.value - computed).Magnitude();
      });
}

/// `proofs` may be null.
std::vector<Truth> EigenOf(const ProofQuestion& question, const ResultProof* proofs) {
  const RationalMatrix A(question.a);
  const Matrix& values = question.computed[0];
  const Matrix& vectors = question.computed[1];
  const std::vector<Eigenvalue> eigenvalues = EigenvaluesOf(A);
  Truth exact(values.Size());
  Truth exactVectors(vectors.Size());
  for (int t = 1; t <= values.Rows() && !eigenvalues.empty(); ++t) {
    const Eigenvalue* meant = &Nearest(eigenvalues, Rational(values(t, 1)));
    exact[t - 1] = meant->value;
    if (vectors.Size() == 0) continue;
    if (proofs != nullptr && proofs->At(t, 1).IsEnclosed()) {
      meant = &Nearest(eigenvalues, Rational(proofs->At(t, 1).lower));
    }
    if (!meant->isSimple) continue;
    const Truth vector = EigenvectorOf(A, meant->value, vectors, t);
    for (int i = 1; i <= A.Rows(); ++i) {
      exactVectors[(i - 1) * vectors.Cols() + (t - 1)] = vector[i - 1];
    }
  }
  return {exact, exactVectors};
}

Truth SolutionByFactorsOf(const ProofQuestion& question) {
  const int n = question.system.Rows();
  RationalMatrix L(n, n);
  RationalMatrix U(n, n);
  RationalMatrix b(n, 1);
  for (int i = 1; i <= n; ++i) {
    L(i, i) = Rational(1);
    for (int j = 1; j < i; ++j) L(i, j) = Rational(question.a(i, j));
    for (int j = i; j <= n; ++j) U(i, j) = Rational(question.b(i, j));
    const int row = question.exchanges.Rows() == 0 ? i : RoundToInteger(question.exchanges(i, 1));
    b(i, 1) = Rational(question.system(row, 1));
  }
  return ElementsOf(SolutionOf(Times(L, U), b), n);
}

Truth SolutionOfSystem(const Matrix& system) {
  const RationalMatrix all(system);
  const int n = all.Rows();
  return ElementsOf(SolutionOf(Block(all, n, 1, n), Block(all, n, all.Cols(), all.Cols())), n);
}

Truth LeastSquaresOf(const Matrix& system) {
  const RationalMatrix all(system);
  const int k = all.Cols() - 1;
  const RationalMatrix A = Block(all, all.Rows(), 1, k);
  const RationalMatrix transposed = Transposed(A);
  const RationalMatrix b = Block(all, all.Rows(), k + 1, k + 1);
  return ElementsOf(SolutionOf(Times(transposed, A), Times(transposed, b)), k);
}

RationalMatrix Reordered(const ProofQuestion& question) {
  const RationalMatrix A(question.a);
  RationalMatrix ordered(A.Rows(), A.Cols());
  for (int i = 1; i <= A.Rows(); ++i) {
    const int row = question.exchanges.Rows() == 0 ? i : RoundToInteger(question.exchanges(i, 1));
    for (int j = 1; j <= A.Cols(); ++j) ordered(i, j) = A(row, j);
  }
  return ordered;
}

Truth ElementwiseOf(const ProofQuestion& question) {
  const RationalMatrix A(question.a);
  const RationalMatrix B(question.b);
  RationalMatrix result = A;
  for (int i = 1; i <= A.Rows(); ++i) {
    for (int j = 1; j <= A.Cols(); ++j) {
      if (question.task == ProofTask::kSum) result(i, j) += B(i, j);
      if (question.task == ProofTask::kDifference) result(i, j) -= B(i, j);
      if (question.task == ProofTask::kScaled) result(i, j) *= Rational(question.scalar);
      if (question.task == ProofTask::kShifted && i == j) result(i, j) += Rational(question.scalar);
    }
  }
  return ElementsOf(result);
}

Truth TraceOf(const RationalMatrix& A) {
  Rational trace;
  for (int k = 1; k <= A.Rows(); ++k) trace += A(k, k);
  return {trace};
}

}  // namespace

Rational ExactDeterminantOf(RationalMatrix A) {
  RationalMatrix nothing(A.Rows(), 0);
  Rational determinant;
  GaussJordan(A, nothing, determinant);
  return determinant;
}

std::optional<RationalMatrix> ExactInverseOf(RationalMatrix A) {
  RationalMatrix identity(A.Rows(), A.Rows());
  for (int i = 1; i <= A.Rows(); ++i) identity(i, i) = Rational(1);
  return SolutionOf(std::move(A), std::move(identity));
}

std::vector<Eigenvalue> RealEigenvaluesOf(const Matrix& A) {
  return EigenvaluesOf(RationalMatrix(A));
}

std::vector<Truth> TruthOf(const ProofQuestion& question, const ProofAnswer& answer) {
  return question.task == ProofTask::kEigen ? EigenOf(question, &answer.results[0])
                                            : TruthOf(question);
}

std::vector<Truth> TruthOf(const ProofQuestion& question) {
  const RationalMatrix A(question.a);
  switch (question.task) {
    case ProofTask::kProduct:
      return {ElementsOf(Times(A, RationalMatrix(question.b)))};
    case ProofTask::kTranspose:
      return {ElementsOf(Transposed(A))};
    case ProofTask::kTrace:
      return {TraceOf(A)};
    case ProofTask::kDeterminant:
      return {{ExactDeterminantOf(A)}};
    case ProofTask::kInverse:
      return {ElementsOf(ExactInverseOf(A), question.a.Size())};
    case ProofTask::kAdjoint:
      return {ElementsOf(AdjointOf(A))};
    case ProofTask::kLu:
      return LuOf(Reordered(question));
    case ProofTask::kQr:
      return QrOf(A);
    case ProofTask::kEigen:
      return EigenOf(question, nullptr);
    case ProofTask::kSolution:
      return {SolutionOfSystem(question.a)};
    case ProofTask::kSolutionByFactors:
      return {SolutionByFactorsOf(question)};
    case ProofTask::kLeastSquares:
      return {LeastSquaresOf(question.a)};
    case ProofTask::kSymmetry:
    case ProofTask::kDefiniteness:
      return {};
    default:
      return {ElementwiseOf(question)};
  }
}

}  // namespace qmx::testing
