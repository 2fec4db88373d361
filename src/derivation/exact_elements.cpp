// SPDX-License-Identifier: MIT
#include "derivation/exact_elements.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "derivation/exact_matrix.h"
#include "derivation/families.h"
#include "derivation/plain_elimination.h"
#include "derivation/plain_qr.h"
#include "derivation/shown.h"

namespace qmx {
namespace {

using Answer = std::vector<std::vector<ExactNumber>>;

// Numerators and denominators of elements that grids show have no more digits.
constexpr int kMostElementDigits = 9;
// What is expected to take longer is not begun.
constexpr double kMostSeconds = 1;
// Measured on one core: a step of an elimination by the library, for each bit that a number has in
// the end, and one of a traced loop on top of that.
constexpr double kSecondsPerBit = 5e-10;
constexpr double kSecondsPerTracedBit = 4e-10;
constexpr double kSecondsPerTracedStep = 3e-7;
constexpr double kSecondsPerElement = 3e-6;
// A sum of products may have the numerator of one and the denominator of another.
constexpr double kBitsOfSum = 2;
// The adjoint of a singular matrix is made of so many rows of cofactors.
constexpr int kMostCofactorOrder = 12;

void Look(const DerivationLook& look) {
  if (look) look();
}

/// The leading block as its grid shows it; nothing where an element is not finite.
std::optional<Elements<Traced>> Read(const Matrix& A, int rows, int cols,
                                     const DerivationLook& look) {
  Elements<Traced> elements(rows, cols);
  for (int i = 1; i <= rows; ++i) {
    Look(look);
    for (int j = 1; j <= cols; ++j) {
      elements(i, j) = TracedElement(A(i, j));
      if (!elements(i, j).isKnown) return std::nullopt;
    }
  }
  return elements;
}

std::optional<Elements<Traced>> Read(const Matrix& A, const DerivationLook& look) {
  return Read(A, A.Rows(), A.Cols(), look);
}

bool ReadExact(const Matrix& A, ExactMatrix& exact, const DerivationLook& look) {
  const auto block = Read(A, exact.Rows(), exact.Cols(), look);
  return block && TakeExact(*block, exact);
}

/// The most bits of an element of some.
double BitsOf(const Matrix& A, const DerivationLook& look) {
  // To read them all would take too long already.
  if (static_cast<double>(A.Size()) * kSecondsPerElement > kMostSeconds) return HUGE_VAL;
  slong most = 1;
  for (int i = 1; i <= A.Rows(); ++i) {
    Look(look);
    for (int j = 1; j <= A.Cols(); ++j) most = std::max(most, TracedElement(A(i, j)).exact.Bits());
  }
  return static_cast<double>(most);
}

std::vector<ExactNumber> ShownElements(const ExactMatrix& A) {
  std::vector<ExactNumber> shown;
  for (int i = 1; i <= A.Rows(); ++i) {
    for (int j = 1; j <= A.Cols(); ++j) {
      Rational element;
      fmpq_set(element.Get(), A.At(i, j));
      shown.push_back(ExactOf(element, kMostElementDigits));
    }
  }
  return shown;
}

std::vector<ExactNumber> ShownElements(const Elements<Traced>& A) {
  std::vector<ExactNumber> shown;
  for (const Traced& element : A) {
    shown.push_back(element.isKnown ? ExactOf(element.exact, kMostElementDigits) : ExactNumber());
  }
  return shown;
}

/// Those that are rational.
std::vector<ExactNumber> ShownElements(const Elements<TracedRoot>& A) {
  std::vector<ExactNumber> shown;
  for (const TracedRoot& element : A) {
    ExactNumber number = element.isKnown ? ExactOf(element, kMostElementDigits) : ExactNumber();
    if (number.radicand != "1") number = {};
    shown.push_back(std::move(number));
  }
  return shown;
}

/// Sum, difference and transpose: each element for itself.
Answer OfElements(const DerivationQuestion& question, const DerivationLook& look) {
  const Matrix& A = question.a;
  if (static_cast<double>(A.Size()) * kSecondsPerElement > kMostSeconds) return {};
  const bool isTransposed = question.task == DerivationTask::kTranspose;
  const int rows = isTransposed ? A.Cols() : A.Rows();
  const int cols = isTransposed ? A.Rows() : A.Cols();
  std::vector<ExactNumber> shown;
  for (int i = 1; i <= rows; ++i) {
    Look(look);
    for (int j = 1; j <= cols; ++j) {
      Traced element = isTransposed ? TracedElement(A(j, i)) : TracedElement(A(i, j));
      if (question.task == DerivationTask::kSum) {
        element = element + TracedElement(question.b(i, j));
      } else if (question.task == DerivationTask::kDifference) {
        element = element - TracedElement(question.b(i, j));
      }
      shown.push_back(element.isKnown ? ExactOf(element.exact, kMostElementDigits) : ExactNumber());
    }
  }
  return {shown};
}

/// Whether an elimination of n columns of numbers of so many bits by the library is done in time.
bool IsQuick(double n, double bits) {
  return n * n * n * n * bits * kSecondsPerBit <= kMostSeconds;
}

/// The same of a traced loop that makes so many steps.
bool IsQuickTraced(double steps, double bits) {
  return steps * (kSecondsPerTracedStep + bits * kSecondsPerTracedBit) <= kMostSeconds;
}

Answer OfProduct(const DerivationQuestion& question, const DerivationLook& look) {
  const double products = static_cast<double>(question.a.Size()) * question.b.Cols();
  const double bits = BitsOf(question.a, look) + BitsOf(question.b, look);
  if (!IsQuickTraced(products, kBitsOfSum * bits)) return {};
  const auto A = Read(question.a, look);
  const auto B = Read(question.b, look);
  if (!A || !B) return {};
  Elements<Traced> product(A->Rows(), B->Cols());
  for (int i = 1; i <= product.Rows(); ++i) {
    for (int j = 1; j <= product.Cols(); ++j) {
      Look(look);
      for (int k = 1; k <= A->Cols(); ++k) {
        product(i, j) = (*A)(i, k) * (*B)(k, j) + product(i, j);
      }
    }
  }
  return {ShownElements(product)};
}

/// Cofactor by cofactor, for a matrix without an inverse.
Answer OfSingularAdjoint(const ExactMatrix& A, const DerivationLook& look) {
  const int n = A.Rows();
  if (n > kMostCofactorOrder) return {};
  ExactMatrix adjoint(n, n);
  ExactMatrix minor(n - 1, n - 1);
  for (int i = 1; i <= n; ++i) {
    Look(look);
    for (int j = 1; j <= n; ++j) {
      for (int k = 1; k < n; ++k) {
        for (int l = 1; l < n; ++l) {
          fmpq_set(minor.At(k, l), A.At(k < i ? k : k + 1, l < j ? l : l + 1));
        }
      }
      fmpq_mat_det(adjoint.At(j, i), minor.Get());
      if ((i + j) % 2 != 0) fmpq_neg(adjoint.At(j, i), adjoint.At(j, i));
    }
  }
  return {ShownElements(adjoint)};
}

Answer OfInverse(const DerivationQuestion& question, const DerivationLook& look) {
  const int n = question.a.Rows();
  if (!IsQuick(n, BitsOf(question.a, look))) return {};
  ExactMatrix A(n, n);
  ExactMatrix result(n, n);
  if (!ReadExact(question.a, A, look)) return {};
  const bool isAdjoint = question.task == DerivationTask::kAdjoint;
  if (fmpq_mat_inv(result.Get(), A.Get()) == 0) {
    return isAdjoint && question.byCofactors ? OfSingularAdjoint(A, look) : Answer();
  }
  if (isAdjoint) {
    Rational determinant;
    fmpq_mat_det(determinant.Get(), A.Get());
    fmpq_mat_scalar_mul_fmpq(result.Get(), result.Get(), determinant.Get());
  }
  return {ShownElements(result)};
}

Answer OfLu(const DerivationQuestion& question, const DerivationLook& look) {
  const Matrix& A = question.a;
  const double least = std::min(A.Rows(), A.Cols());
  if (!IsQuickTraced(static_cast<double>(A.Size()) * least / 2, least * BitsOf(A, look))) return {};
  auto elements = Read(A, look);
  if (!elements) return {};
  plain::LuFactors<Traced> lu;
  lu.U = std::move(*elements);
  plain::LookingWatcher watcher([&look] { Look(look); });
  plain::FactorLu(lu, question.pivoting, watcher);
  if (lu.elimination.refusedColumn != 0) return {};
  // A pivot that rounding alone makes a number, or 0, leaves nothing exact.
  for (int k = 1; k <= static_cast<int>(least); ++k) {
    if (PartsAtZero(lu.U(k, k))) return {};
  }
  return {ShownElements(lu.L), ShownElements(lu.U)};
}

Answer OfQr(const DerivationQuestion& question, const DerivationLook& look) {
  const Matrix& A = question.a;
  const double steps = 2 * static_cast<double>(A.Size()) * A.Cols();
  if (!IsQuickTraced(steps, 3.0 * A.Cols() * BitsOf(A, look))) return {};
  const auto elements = Read(A, look);
  if (!elements) return {};
  plain::Qr<Traced> qr;
  plain::LookingWatcher watcher([&look] { Look(look); });
  plain::FactorQr(*elements, qr, watcher);
  if (qr.failedColumn != 0) return {};
  return {ShownElements(qr.Q), ShownElements(qr.R)};
}

/// The unknowns of A·x = b; empty for a singular A.
Answer Solve(const ExactMatrix& A, const ExactMatrix& b) {
  ExactMatrix x(A.Rows(), 1);
  if (fmpq_mat_solve(x.Get(), A.Get(), b.Get()) == 0) return {};
  return {ShownElements(x)};
}

Answer OfSystem(const DerivationQuestion& question, const DerivationLook& look) {
  const int rows = question.a.Rows();
  const int unknowns = question.task == DerivationTask::kSolution ? rows : question.a.Cols() - 1;
  const bool isLeastSquares = question.task == DerivationTask::kLeastSquares;
  const double bits = BitsOf(question.a, look) * (isLeastSquares ? 2 : 1);
  const double products = isLeastSquares ? static_cast<double>(question.a.Size()) * unknowns : 0;
  if (!IsQuick(unknowns, bits) || !IsQuickTraced(products, kBitsOfSum * bits)) return {};
  ExactMatrix A(rows, unknowns);
  ExactMatrix b(rows, 1);
  if (!ReadExact(question.a, A, look)) return {};
  for (int i = 1; i <= rows; ++i) {
    const Traced right = TracedElement(question.a(i, question.a.Cols()));
    if (!right.isKnown) return {};
    fmpq_set(b.At(i, 1), right.exact.Get());
  }
  if (!isLeastSquares) return Solve(A, b);
  ExactMatrix transposed(unknowns, rows);
  fmpq_mat_transpose(transposed.Get(), A.Get());
  ExactMatrix normal(unknowns, unknowns);
  ExactMatrix right(unknowns, 1);
  fmpq_mat_mul(normal.Get(), transposed.Get(), A.Get());
  fmpq_mat_mul(right.Get(), transposed.Get(), b.Get());
  return Solve(normal, right);
}

Answer OfFactors(const DerivationQuestion& question, const DerivationLook& look) {
  const int n = question.system.Rows();
  const double bits = std::max(BitsOf(question.a, look), BitsOf(question.b, look));
  if (!IsQuick(n, bits)) return {};
  ExactMatrix L(n, n);
  ExactMatrix U(n, n);
  ExactMatrix x(n, 1);
  if (!ReadExact(question.a, L, look) || !ReadExact(question.b, U, look)) return {};
  for (int i = 1; i <= n; ++i) {
    const Traced right = TracedElement(question.system(RowOfSystem(question, i), 1));
    if (!right.isKnown) return {};
    fmpq_set(x.At(i, 1), right.exact.Get());
    // What the program reads of the factors.
    for (int j = i; j <= n; ++j) fmpq_set_si(L.At(i, j), i == j ? 1 : 0, 1);
    for (int j = 1; j < i; ++j) fmpq_zero(U.At(i, j));
  }
  if (fmpq_mat_solve(x.Get(), L.Get(), x.Get()) == 0) return {};
  return Solve(U, x);
}

}  // namespace

Answer ExactElementsOf(const DerivationQuestion& question, const DerivationLook& look) {
  switch (question.task) {
    case DerivationTask::kSum:
    case DerivationTask::kDifference:
    case DerivationTask::kTranspose:
      return OfElements(question, look);
    case DerivationTask::kProduct:
      return OfProduct(question, look);
    case DerivationTask::kInverse:
    case DerivationTask::kAdjoint:
      return OfInverse(question, look);
    case DerivationTask::kLu:
      return OfLu(question, look);
    case DerivationTask::kQr:
      return OfQr(question, look);
    case DerivationTask::kSolution:
    case DerivationTask::kLeastSquares:
      return OfSystem(question, look);
    case DerivationTask::kSolutionByFactors:
      return OfFactors(question, look);
    case DerivationTask::kTrace:
    case DerivationTask::kSymmetry:
    case DerivationTask::kDeterminant:
    case DerivationTask::kDefiniteness:
    case DerivationTask::kEigenvalues:
    case DerivationTask::kEigenvectors:
      return {};
  }
  return {};
}

}  // namespace qmx
