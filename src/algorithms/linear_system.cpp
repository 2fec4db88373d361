// SPDX-License-Identifier: MIT
#include "algorithms/linear_system.h"

#include <algorithm>
#include <cstddef>

#include "algorithms/elimination.h"
#include "algorithms/ordered_product.h"
#include "algorithms/shared_work.h"
#include "algorithms/substitution.h"
#include "base/number_text.h"

namespace qmx {
namespace {

/// Elimination with partial pivoting of the augmented matrix M; a zero column is skipped.
void EliminateSystem(Matrix& M, WorkMeter& meter, const BlockSizes& sizes) {
  const int columns = std::max(0, M.Rows() - 1);
  Eliminate(M, std::min(columns, M.Cols()), PivotRule::kSkipZeroColumns, meter, nullptr,
            sizes.elimination);
  RequireElement(columns <= M.Cols());
}

/// What EliminateSystem and SolveEliminated do for so many equations.
double SolvingWork(int equations) {
  return EliminationWork(equations, equations + 1, equations) + SubstitutionWork(equations);
}

/// True where row i of T with the unknowns x, of which those before row i are not known, does not
/// give the right-hand side.
bool Contradicts(const Matrix& T, int i, const Matrix& x, double rightHandSide) {
  return RowTimesVector(T, i, i, x.Rows(), {x.Data(), x.Size()}) != rightHandSide;
}

/// Back substitution in the eliminated augmented matrix M, whose last column is the right-hand
/// side. There is room for the first `room` unknowns.
SystemSolution SolveEliminated(const Matrix& M, int room, WorkMeter& meter) {
  const int n = M.Rows();
  SystemSolution solution{true, Matrix::Unset(n, 1), false};
  Matrix& x = solution.x;
  RequireElement(n == 0 || M.Contains(n, n));
  for (int i = 1; i <= n; ++i) x(i, 1) = M(i, M.Cols());
  // The last unknown is the first to be worked out; what went wrong with it goes before the lack of
  // room.
  const int stopped = SubstituteBack(M, room < n ? n : 1, Unknowns(x), meter);
  RequireElement(n <= room);
  if (stopped == 0) return solution;
  RequireElement(M.Contains(stopped, n + 1));
  std::fill_n(x.Data(), stopped, 0.0);
  solution.solved = false;
  solution.inconsistent = Contradicts(M, stopped, x, M(stopped, n + 1));
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
Matrix NormalEquations(const Matrix& system, const LeastSquaresSizes& sizes, WorkMeter& meter) {
  const int m = system.Rows();
  const int unknowns = system.Cols() - 1;
  const int stripRows = unknowns < sizes.highFrom ? sizes.lowStrip : sizes.highStrip;
  Matrix M(unknowns, unknowns + 1);
  const auto form = [&](int strip, WorkMeter& own) {
    const int first = strip * stripRows + 1;
    const int last = std::min(first + stripRows - 1, unknowns);
    const int rows = last - first + 1;
    const ConstView upper = Part(system, 1, first, m, rows).Transposed();
    const int cols = last == unknowns ? unknowns + 1 : last;
    AddProduct(upper, Part(system, 1, 1, m, cols), Part(M, first, 1, rows, cols), own);
    if (last < unknowns) {
      AddProduct(upper, Part(system, 1, unknowns + 1, m, 1), Part(M, first, unknowns + 1, rows, 1),
                 own);
    }
  };
  const int strips = (unknowns + stripRows - 1) / stripRows;
  if (unknowns >= sizes.shareFrom) {
    SharePieces(meter, strips, form);
  } else {
    for (int strip = 0; strip < strips; ++strip) form(strip, meter);
  }
  for (int i = 1; i <= unknowns; ++i) {
    for (int j = 1; j < i; ++j) M(j, i) = M(i, j);
    meter.Add(kStepDownColumn * i);
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

SystemSolution SolveOneShot(Matrix M, Progress& progress, const BlockSizes& sizes) {
  WorkMeter meter(progress, SolvingWork(M.Rows()));
  EliminateSystem(M, meter, sizes);
  SystemSolution solution = SolveEliminated(M, M.Rows(), meter);
  meter.End();
  return solution;
}

SystemSolution SolveByFactors(const Matrix& L, const Matrix& U, const Matrix& exchanges,
                              const Matrix& system, Progress& progress) {
  const int n = system.Rows();
  WorkMeter meter(progress, 2 * SubstitutionWork(n));
  SystemSolution solution{true, PermutedRightHandSide(system, exchanges), false};
  Matrix& x = solution.x;
  // Row 1 reads nothing of L, and every other row nothing from its diagonal on.
  const int rows = std::min(n, std::max(1, std::min(L.Rows(), L.Cols() + 1)));
  SubstituteForward(L, rows, Unknowns(x), meter);
  RequireElement(rows == n);
  RequireElement(n == 0 || U.Contains(n, n));
  const int stopped = SubstituteBack(U, 1, Unknowns(x), meter);
  meter.End();
  if (stopped == 0) return solution;
  solution.solved = false;
  solution.inconsistent = Contradicts(U, stopped, x, x(stopped, 1));
  return solution;
}

SystemSolution SolveLeastSquares(const Matrix& system, Progress& progress,
                                 const BlockSizes& sizes) {
  RequireElement(system.Cols() >= 1);
  const double k = system.Cols() - 1;
  WorkMeter meter(progress,
                  k * k / 2 * (system.Rows() + kStepDownColumn) + SolvingWork(system.Cols() - 1));
  const auto few = static_cast<std::size_t>(sizes.leastSquares.fewElements);
  Matrix M = system.Size() <= few ? FewNormalEquations(system)
                                  : NormalEquations(system, sizes.leastSquares, meter);
  EliminateSystem(M, meter, sizes);
  // There is room for one unknown per equation.
  SystemSolution solution = SolveEliminated(M, system.Rows(), meter);
  meter.End();
  return solution;
}

}  // namespace qmx
