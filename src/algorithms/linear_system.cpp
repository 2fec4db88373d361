#include "algorithms/linear_system.h"

#include <algorithm>
#include <cstddef>

#include "algorithms/elimination.h"
#include "algorithms/ordered_product.h"
#include "base/number_text.h"

namespace qmx {
namespace {

/// Reports the part from..to of a longer task.
class Stage : public Progress {
 public:
  Stage(Progress& whole, double from, double to) : whole_(whole), from_(from), to_(to) {}
  void Report(double fraction) override { whole_.Report(from_ + (to_ - from_) * fraction); }

 private:
  Progress& whole_;
  double from_;
  double to_;
};

/// Elimination with partial pivoting of the augmented matrix M; a zero column is skipped.
void EliminateSystem(Matrix& M, Progress& progress) {
  const int columns = std::max(0, M.Rows() - 1);
  Eliminate(M, std::min(columns, M.Cols()), PivotRule::kSkipZeroColumns, progress);
  RequireElement(columns <= M.Cols());
}

/// The sum over j = first..last of T(i,j)·x(j), from 0.
double RowTimesVector(const Matrix& T, int i, int first, int last, const Matrix& x) {
  if (first > last) return 0.0;
  const double* const row = T.Row(i) - 1;
  const double* const element = x.Data() - 1;
  double sum = 0.0;
  for (int j = first; j <= last; ++j) sum += row[j] * element[j];
  return sum;
}

/// Back substitution in the eliminated augmented matrix M, whose last column is the right-hand
/// side. There is room for the first `room` unknowns.
SystemSolution SubstituteBack(const Matrix& M, int room) {
  const int n = M.Rows();
  SystemSolution solution{false, Matrix(n, 1), false};
  Matrix& x = solution.x;
  RequireElement(n == 0 || M.Contains(n, n));
  for (int i = n; i >= 1; --i) {
    const double* const row = M.Row(i) - 1;
    const double solved = RowTimesVector(M, i, i + 1, n, x);
    if (row[i] == 0) {
      RequireElement(i <= room && M.Contains(i, n + 1));
      solution.inconsistent = RowTimesVector(M, i, i, n, x) != M(i, n + 1);
      return solution;
    }
    x(i, 1) = (row[M.Cols()] - solved) / row[i];
    RequireElement(i <= room);
  }
  solution.solved = true;
  return solution;
}

/// What NormalEquations gives by the textbook's loop, for systems for which the kernel would take
/// longer to choose its way than to do the work.
Matrix FewNormalEquations(const Matrix& system) {
  const int unknowns = system.Cols() - 1;
  Matrix M = Matrix::Unset(unknowns, unknowns + 1);
  const auto columnTimesColumn = [&system](int i, int j) {
    double sum = 0.0;
    for (int r = 1; r <= system.Rows(); ++r) sum += system(r, i) * system(r, j);
    return sum;
  };
  for (int i = 1; i <= unknowns; ++i) {
    for (int j = 1; j <= i; ++j) M(i, j) = M(j, i) = columnTimesColumn(i, j);
    M(i, unknowns + 1) = columnTimesColumn(i, unknowns + 1);
  }
  return M;
}

/// [AᵀA | Aᵀb] of a system [A | b]. Strips of rows are formed up to the diagonal, the rest is their
/// mirror image.
Matrix NormalEquations(const Matrix& system, Progress& progress) {
  const int m = system.Rows();
  const int unknowns = system.Cols() - 1;
  // Low strips form less of what the mirror gives; high ones suit the kernel better.
  const int stripRows = unknowns < 500 ? 64 : 192;
  Matrix M(unknowns, unknowns + 1);
  for (int first = 1; first <= unknowns; first += stripRows) {
    const int last = std::min(first + stripRows - 1, unknowns);
    const int rows = last - first + 1;
    const ConstView strip = Part(system, 1, first, m, rows).Transposed();
    const int cols = last == unknowns ? unknowns + 1 : last;
    AddProduct(strip, Part(system, 1, 1, m, cols), Part(M, first, 1, rows, cols));
    if (last < unknowns) {
      AddProduct(strip, Part(system, 1, unknowns + 1, m, 1), Part(M, first, unknowns + 1, rows, 1));
    }
    const double part = static_cast<double>(last) / unknowns;
    progress.Report(part * part);
  }
  for (int i = 1; i <= unknowns; ++i) {
    for (int j = 1; j < i; ++j) M(j, i) = M(i, j);
  }
  return M;
}

/// Column 1 of `system` in the row order of the factors.
Matrix PermutedRightHandSide(const Matrix& system, const Matrix& exchanges) {
  const int n = system.Rows();
  const bool identity = exchanges.Size() == 0;
  Matrix x(n, 1);
  for (int i = 1; i <= n; ++i) {
    x(i, 1) = system.At(identity ? i : RoundToInteger(exchanges.At(i, 1)), 1);
  }
  return x;
}

}  // namespace

SystemSolution SolveOneShot(Matrix M, Progress& progress) {
  EliminateSystem(M, progress);
  return SubstituteBack(M, M.Rows());
}

SystemSolution SolveByFactors(const Matrix& L, const Matrix& U, const Matrix& exchanges,
                              const Matrix& system) {
  const int n = system.Rows();
  SystemSolution solution;
  Matrix& x = solution.x = PermutedRightHandSide(system, exchanges);
  for (int i = 1; i <= n; ++i) {
    // The diagonal of L is not read.
    RequireElement(i == 1 || L.Contains(i, i - 1));
    x(i, 1) -= RowTimesVector(L, i, 1, i - 1, x);
  }
  RequireElement(n == 0 || U.Contains(n, n));
  for (int i = n; i >= 1; --i) {
    const double solved = RowTimesVector(U, i, i + 1, n, x);
    if (U(i, i) == 0) {
      solution.inconsistent = RowTimesVector(U, i, i, n, x) != x(i, 1);
      return solution;
    }
    x(i, 1) = (x(i, 1) - solved) / U(i, i);
  }
  solution.solved = true;
  return solution;
}

SystemSolution SolveLeastSquares(const Matrix& system, Progress& progress) {
  RequireElement(system.Cols() >= 1);
  // With m equations in k unknowns: m·k²/2 products to form the normal equations, k³/3 to solve.
  const double forming = 3.0 * system.Rows();
  const double solving = 2.0 * system.Cols();
  const double between = forming / (forming + solving);
  Stage first(progress, 0, between);
  Stage second(progress, between, 1);
  constexpr std::size_t kFewElements = 40;
  Matrix M =
      system.Size() <= kFewElements ? FewNormalEquations(system) : NormalEquations(system, first);
  EliminateSystem(M, second);
  // There is room for one unknown per equation.
  return SubstituteBack(M, system.Rows());
}

}  // namespace qmx
