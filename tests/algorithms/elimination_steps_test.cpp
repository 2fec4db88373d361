// SPDX-License-Identifier: MIT
#include "algorithms/elimination_steps.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <utility>
#include <vector>

#include "support/core_cases.h"
#include "support/core_compare.h"
#include "support/core_instruction_sets.h"

namespace qmx {
namespace {

using testing::Record;

constexpr double kNan = std::numeric_limits<double>::quiet_NaN();

/// A panel with the numbers of a matrix in its columns, and no zero in the column of the step.
struct FilledPanel {
  FilledPanel(const Matrix& numbers, int pivotRow) : panel(numbers.Rows()) {
    Matrix filled = numbers;
    if (filled(pivotRow + 1, 1) == 0) filled(pivotRow + 1, 1) = 3;
    view = panel.Read(Part(std::as_const(filled), 1, 1, filled.Rows(), filled.Cols()));
  }
  Record Content() const {
    Record record;
    for (int c = 0; c < view.rows; ++c) {
      for (int k = 0; k < view.cols; ++k) record.push_back(view(c, k));
    }
    return record;
  }
  ColumnPanel panel;
  View view;
};

/// Row r of `panel` is column r: the step of column 0 with the pivot in `row`, in `count` rows
/// below.
double TakeStep(const View& panel, int row, int count) {
  PanelStep step;
  step.column = &panel(0, row + 1);
  step.pivot = panel(0, row);
  step.count = count;
  step.others = panel.rows - 1;
  for (int r = 0; r < step.others; ++r) {
    step.other[r] = &panel(r + 1, row + 1);
    step.multiplier[r] = panel(r + 1, row);
  }
  return TakePanelStep(step);
}

double TakePlainStep(const View& panel, int row, int count) {
  double largest = 0;
  for (int k = row + 1; k <= row + count; ++k) {
    panel(0, k) /= panel(0, row);
    for (int r = 1; r < panel.rows; ++r) panel(r, k) -= panel(r, row) * panel(0, k);
    if (panel.rows == 1) continue;
    const double magnitude = std::abs(panel(1, k));
    if (k == row + 1 || magnitude > largest) largest = magnitude;
  }
  return largest;
}

TEST(EliminationStepsTest, AStepInAPanelHasTheBitsOfThePlainLoopAndLeavesTheOtherRowsAlone) {
  testing::ForEachInstructionSet([&](InstructionSet) {
    testing::CaseSource cases(511, testing::CaseShape::kAny, 1);
    testing::Comparison comparison("steps in panels");
    for (int columns = 1; columns <= kPanelColumns; ++columns) {
      for (const int rows : {2, 7, 8, 9, 16, 17, 31, 40}) {
        const Matrix numbers = cases.Next(rows, columns);
        for (int row = 0; row < std::min(rows - 1, 17); ++row) {
          const int count = cases.Randomness().Integer(1, rows - row - 1);
          const auto run = [&](auto take) {
            FilledPanel filled(numbers, row);
            const double largest = take(filled.view, row, count);
            Record record = filled.Content();
            record.push_back(largest);
            return record;
          };
          comparison.Compare([&] { return run(TakeStep); }, [&] { return run(TakePlainStep); }, {},
                             std::to_string(rows) + " x " + std::to_string(columns));
        }
      }
    }
  });
}

TEST(EliminationStepsTest, ANumberThatIsNoneIsTheLargestInTheFirstPlaceOnly) {
  testing::ForEachInstructionSet([&](InstructionSet) {
    for (const int count : {1, 2, 9, 20}) {
      for (int place = 0; place < count; ++place) {
        Matrix numbers(count + 1, 2);
        for (int k = 1; k <= count; ++k) numbers(k + 1, 2) = k;
        numbers(1, 1) = 1;
        numbers(place + 2, 2) = kNan;
        const FilledPanel filled(numbers, 0);
        const double largest = TakeStep(filled.view, 0, count);
        const int last = place == count - 1 ? count - 1 : count;
        EXPECT_TRUE(place == 0 ? std::isnan(largest) : largest == last) << count << " " << place;
      }
    }
  });
}

TEST(EliminationStepsTest, FindsTheFirstOfTheLargestMagnitudes) {
  testing::ForEachInstructionSet([&](InstructionSet) {
    for (int count = 1; count <= 40; ++count) {
      std::vector<double> x(count, 1.5);
      for (int place = count - 1; place >= 0; --place) {
        x[place] = place % 2 == 0 ? -2.5 : 2.5;
        EXPECT_EQ(PlaceOfLargest(x.data(), count), place);
        EXPECT_EQ(PlaceOf(2.5, x.data(), count), place);
      }
      EXPECT_EQ(PlaceOf(1.5, x.data(), count), count);
      x[count / 2] = kNan;
      EXPECT_EQ(PlaceOfLargest(x.data(), count), 0);
    }
  });
}

TEST(EliminationStepsTest, APanelHoldsEveryColumnAndGivesItBack) {
  testing::ForEachInstructionSet([&](InstructionSet) {
    testing::CaseSource cases(512, testing::CaseShape::kAny, 1);
    for (int columns = 1; columns <= kPanelColumns; ++columns) {
      for (int rows = 1; rows <= 20; ++rows) {
        const Matrix A = cases.Next(rows + 2, columns + 2);
        ColumnPanel panel(rows);
        const View view = panel.Read(Part(A, 2, 2, rows, columns));
        for (int c = 0; c < columns; ++c) {
          for (int k = 0; k < rows; ++k) ASSERT_EQ(view(c, k), A(k + 2, c + 2));
        }
        Matrix B = A;
        for (int c = 0; c < columns; ++c) {
          for (int k = 0; k < rows; ++k) B(k + 2, c + 2) = 0;
        }
        ColumnPanel::Write(view, Part(B, 2, 2, rows, columns));
        ASSERT_EQ(A, B) << rows << " x " << columns;
      }
    }
  });
}

TEST(EliminationStepsTest, ExchangesAndNegatesRowsOfEveryLength) {
  testing::ForEachInstructionSet([&](InstructionSet) {
    for (int count = 0; count <= 33; ++count) {
      std::vector<double> x(count + 1, 1.0);
      std::vector<double> y(count + 1, 2.0);
      SwapNumbers(x.data(), y.data(), count);
      MoveNegated(y.data(), count, x.data());
      for (int k = 0; k < count; ++k) {
        EXPECT_EQ(x[k], 1.0);
        EXPECT_EQ(y[k], -1.0);
      }
      EXPECT_EQ(x[count], 1.0);
      EXPECT_EQ(y[count], 2.0);
    }
  });
}

/// Rows of pivots inside a larger matrix, with factors and pivots.
struct PivotRows {
  PivotRows(testing::CaseSource& cases, int rows, int cols)
      : F(cases.Next(rows + 1, rows + 1)),
        X(cases.Next(rows + 2, cols + 3)),
        U(rows + 2, cols + 3) {
    for (int i = 0; i < rows; ++i) pivots.push_back(cases.Randomness().Integer(1, 9) / 7.0);
    factors = Part(std::as_const(F), 2, 1, rows, rows);
    if (cases.Randomness().Chance(0.5)) factors = factors.Transposed();
  }
  View Rows(Matrix& M) const {
    return Part(M, 2, 3, static_cast<int>(pivots.size()), X.Cols() - 3);
  }
  Matrix F;
  Matrix X;
  Matrix U;
  ConstView factors;
  std::vector<double> pivots;
};

void Subtract(const View& X, int i, double factor, const View& U, int s) {
  for (int j = 0; j < X.cols; ++j) X(i, j) -= factor * U(s, j);
}

void EliminatePlainly(const PivotRows& rows, const View& X) {
  for (int i = 0; i < X.rows; ++i) {
    for (int s = 0; s < i; ++s) Subtract(X, i, rows.factors(i, s), X, s);
  }
}

void ExchangePlainly(const PivotRows& rows, const View& X, const View& U) {
  EliminatePlainly(rows, X);
  for (int i = 0; i < X.rows; ++i) {
    for (int j = 0; j < X.cols; ++j) {
      U(i, j) = X(i, j);
      X(i, j) /= rows.pivots[i];
    }
  }
  for (int i = 0; i < X.rows; ++i) {
    for (int s = i + 1; s < X.rows; ++s) Subtract(X, i, rows.factors(i, s), U, s);
  }
}

TEST(EliminationStepsTest, PivotRowsHaveTheBitsOfThePlainLoop) {
  testing::ForEachInstructionSet([&](InstructionSet) {
    testing::CaseSource cases(513, testing::CaseShape::kAny, 1);
    testing::Comparison comparison("pivot rows");
    for (int rows = 1; rows <= kPanelColumns; ++rows) {
      for (int cols = 1; cols <= 35; ++cols) {
        const PivotRows given(cases, rows, cols);
        const auto run = [&](auto take) {
          Matrix X = given.X;
          Matrix U = given.U;
          take(given.Rows(X), given.Rows(U));
          Record record;
          testing::Append(record, X);
          testing::Append(record, U);
          return record;
        };
        const std::string shape = std::to_string(rows) + " x " + std::to_string(cols);
        comparison.Compare(
            [&] { return run([&](View X, View) { EliminatePivotRows(given.factors, X); }); },
            [&] { return run([&](View X, View) { EliminatePlainly(given, X); }); }, {}, shape);
        comparison.Compare(
            [&] {
              return run([&](View X, View U) {
                ExchangePivotRows(given.factors, given.pivots.data(), X, U);
              });
            },
            [&] { return run([&](View X, View U) { ExchangePlainly(given, X, U); }); }, {}, shape);
      }
    }
  });
}

}  // namespace
}  // namespace qmx
