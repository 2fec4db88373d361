// SPDX-License-Identifier: MIT
#pragma once

#include <cmath>
#include <utility>
#include <vector>

#include "algorithms/elimination.h"
#include "algorithms/ordered_product.h"
#include "algorithms/pivot_search.h"
#include "base/vector.h"

namespace qmx {

// The minors of an adjoint, as far as they take their own way; adjoint.cpp tells of the road that
// they leave.

/// Where an elimination has come to. Rows have the numbers that they have in A, from 1.
struct Road {
  std::vector<int> rows;    ///< Those that have not been a pivot.
  std::vector<int> pivots;  ///< The pivot rows, in order.
  double product = 1.0;     ///< Of the pivots.

  /// Makes rows[p] the next pivot row.
  void TakePivot(int p, double pivot) {
    std::swap(rows[0], rows[p]);
    pivots.push_back(rows[0]);
    rows.erase(rows.begin());
    product *= pivot;
  }
};

/// The place of the largest magnitude of `count` elements; -1 where it is not the only one, where
/// it is zero, or where some element is not a number to compare.
template <class Element>
int OnlyPivot(int count, Element element) {
  bool finite = true;
  const LargestElement found = FindLargest(count, [&](int k) {
    const double x = element(k);
    finite = finite && std::isfinite(x);
    return x;
  });
  return finite && found.only && found.magnitude != 0 ? found.place : -1;
}

/// The cofactor of row i and column j, by itself; its minor is worked out in `minor`, a matrix of
/// its size.
double Cofactor(const Matrix& A, int i, int j, Matrix& minor, WorkMeter& meter,
                const EliminationSizes& sizes);

/// The road of the whole matrix at one of its steps, where two branches leave it.
struct Crossing {
  Road road;
  int column = 0;                  ///< Of the step.
  int pivot = -1;                  ///< The place of its pivot row, -1 where the road ends here.
  Vector<double> numbers;          ///< Of the column, by the row.
  const Matrix* matrix = nullptr;  ///< Has the rows of the road behind the column.

  int PivotRow() const { return road.rows[pivot]; }
  const double* Behind(int row) const { return matrix->Row(row) + column; }
};

/// What leaves the road of the whole matrix, with the work matrices of one member of the team.
class Branches {
 public:
  Branches(const Matrix& A, Matrix& cofactors, const EliminationSizes& sizes)
      : A_(A), cofactors_(cofactors), sizes_(sizes), n_(A.Rows()), order_(n_), placeOf_(n_) {}

  void WithoutColumn(const Crossing& crossing, WorkMeter& meter);
  void WithoutRow(const Crossing& crossing, WorkMeter& meter);
  void TakeOneByOne(const std::vector<int>& rows, int firstColumn, int lastColumn,
                    WorkMeter& meter);

 private:
  int OrderWithout(int i, const std::vector<int>& pivots);
  View NewBranch(int rows, int cols);
  void FinishWithoutRow(int i, int j, const View& block, WorkMeter& meter);
  void Finish(int i, int j, double product, int exchanges, WorkMeter& meter);

  const Matrix& A_;
  Matrix& cofactors_;
  const EliminationSizes& sizes_;
  const int n_;
  Road branch_;  ///< The one without a column.
  Matrix branchRows_;
  Matrix minor_;
  Vector<int> order_;    ///< Of the rows without a certain one.
  Vector<int> placeOf_;  ///< Of each row among them.
};

}  // namespace qmx
