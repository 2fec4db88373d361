// SPDX-License-Identifier: MIT
#include "algorithms/ordered_product.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <vector>

#include "algorithms/product_tiles.h"
#include "algorithms/work_meter.h"
#include "base/progress.h"
#include "base/team.h"
#include "support/core_cases.h"
#include "support/core_compare.h"
#include "support/core_instruction_sets.h"

namespace qmx {
namespace {

using testing::Record;

enum class Form { kAdd, kSubtract, kSet };

/// What the routines promise, element by element.
void PlainLoop(const ConstView& A, const ConstView& B, const View& C, Form form) {
  const bool subtract = form == Form::kSubtract;
  for (int i = 0; i < C.rows; ++i) {
    const double* const a = A.first + i * A.rowStride;
    for (int j = 0; j < C.cols; ++j) {
      double sum = form == Form::kSet ? 0.0 : C(i, j);
      for (int k = 0; k < A.cols; ++k) {
        const double product = a[k * A.colStride] * B.first[k * B.rowStride + j];
        sum = subtract ? sum - product : sum + product;
      }
      C(i, j) = sum;
    }
  }
}

struct Shape {
  int rows;
  int cols;
  int depth;
  int width = 0;   ///< Of the matrices that A and B are parts of, where it matters.
  int bWidth = 0;  ///< Of that of B, where it is another.
};

/// Operands that lie inside larger matrices, so that a step over an edge is seen.
struct Operands {
  Operands(testing::CaseSource& cases, const Shape& shape, bool transposed)
      : A(cases.Next((transposed ? shape.depth : shape.rows) + 2,
                     std::max((transposed ? shape.rows : shape.depth) + 3, shape.width))),
        B(cases.Next(shape.depth + 2,
                     std::max(shape.cols + 3, shape.bWidth != 0 ? shape.bWidth : shape.width))),
        C(cases.Next(shape.rows + 2, shape.cols + 3)) {
    if (transposed) {
      a = Part(std::as_const(A), 2, 3, shape.depth, shape.rows).Transposed();
    } else {
      a = Part(std::as_const(A), 2, 3, shape.rows, shape.depth);
    }
    b = Part(std::as_const(B), 2, 2, shape.depth, shape.cols);
  }
  Matrix A;
  Matrix B;
  Matrix C;
  ConstView a;
  ConstView b;
};

/// What a routine makes of C, of which it gets a part.
template <class Multiply>
Record Multiplied(Matrix C, const Shape& shape, const Multiply& multiply) {
  multiply(Part(C, 3, 2, shape.rows, shape.cols));
  Record record;
  testing::Append(record, C);
  return record;
}

void CompareShape(testing::Comparison& comparison, testing::CaseSource& cases, const Shape& shape,
                  const ProductSizes* sizes = nullptr) {
  testing::Dice& dice = cases.Randomness();
  const bool transposed = shape.width == 0 && dice.Chance(0.3);
  using Routine = void (*)(ConstView, ConstView, View, const ProductSizes*);
  constexpr std::array<Routine, 3> kRoutines{AddProduct, SubtractProduct, SetProduct};
  const int form = dice.Integer(0, 2);
  const Operands operands(cases, shape, transposed);
  const auto run = [&](auto multiply) { return Multiplied(operands.C, shape, multiply); };
  comparison.Compare(
      [&] {
        return run([&](const View& C) { kRoutines[form](operands.a, operands.b, C, sizes); });
      },
      [&] {
        return run(
            [&](const View& C) { PlainLoop(operands.a, operands.b, C, static_cast<Form>(form)); });
      },
      {},
      std::to_string(shape.rows) + " x " + std::to_string(shape.depth) + " x " +
          std::to_string(shape.cols));
}

TEST(OrderedProductTest, EverySmallShapeHasTheBitsOfThePlainLoopOnEveryInstructionSet) {
  testing::ForEachInstructionSet([&](InstructionSet set) {
    testing::CaseSource cases(1201, testing::CaseShape::kAny, 1);
    testing::Comparison comparison("ordered product, small, instruction set " +
                                   std::to_string(static_cast<int>(set)));
    for (int rows = 0; rows <= 35; ++rows) {
      for (int cols = 0; cols <= 35 && !comparison.HasSeenEnough(); ++cols) {
        for (const int depth : {0, 1, 2, 3, 7}) {
          CompareShape(comparison, cases, {rows, cols, depth});
        }
      }
    }
  });
}

TEST(OrderedProductTest, BlockEdgesHaveTheBitsOfThePlainLoopOnEveryInstructionSet) {
  const std::vector<int> edges{159, 160, 161, 239, 240, 241, 383, 384, 385};
  testing::ForEachInstructionSet([&](InstructionSet set) {
    testing::CaseSource cases(1202, testing::CaseShape::kAny, 1);
    testing::Dice& dice = cases.Randomness();
    testing::Comparison comparison("ordered product, block edges, instruction set " +
                                   std::to_string(static_cast<int>(set)));
    const auto edge = [&] { return edges[dice.Integer(0, static_cast<int>(edges.size()) - 1)]; };
    for (int round = 0; round < 12 && !comparison.HasSeenEnough(); ++round) {
      CompareShape(comparison, cases, {edge(), edge(), edge()});
    }
    for (int round = 0; round < 5 && !comparison.HasSeenEnough(); ++round) {
      CompareShape(comparison, cases, {edge(), edge(), 2 * 384 + dice.Integer(-1, 1)});
      CompareShape(comparison, cases, {2 * 240 + dice.Integer(-1, 1), edge(), edge()});
      CompareShape(comparison, cases, {160, 1024 + dice.Integer(-1, 1), dice.Integer(1, 40)});
      CompareShape(comparison, cases, {dice.Integer(1, 20), edge(), edge()});
      CompareShape(comparison, cases, {edge(), dice.Integer(1, 20), edge()});
    }
  });
}

TEST(OrderedProductTest, RowsThatCompeteInTheCacheHaveTheBitsOfThePlainLoop) {
  testing::ForEachInstructionSet([&](InstructionSet set) {
    testing::CaseSource cases(1204, testing::CaseShape::kAny, 1);
    testing::Comparison comparison("ordered product, competing rows, instruction set " +
                                   std::to_string(static_cast<int>(set)));
    for (const int rows : {3, 8, 9, 16, 17, 40}) {
      for (const int cols : {1, 8, 19}) {
        for (const int depth : {1, 7, 8, 129}) {
          CompareShape(comparison, cases, {rows, cols, depth, 512});
        }
      }
    }
  });
}

TEST(OrderedProductTest, RowsInPagesOfTheirOwnHaveTheBitsOfThePlainLoop) {
  testing::ForEachInstructionSet([&](InstructionSet set) {
    testing::CaseSource cases(1205, testing::CaseShape::kAny, 1);
    testing::Comparison comparison("ordered product, rows in pages, instruction set " +
                                   std::to_string(static_cast<int>(set)));
    for (const int rows : {47, 48, 49, 64}) {
      for (const int cols : {47, 48, 49, 60}) {
        for (const int depth : {1, 30}) CompareShape(comparison, cases, {rows, cols, depth, 515});
      }
    }
  });
}

TEST(OrderedProductTest, BlocksOfAFewNumbersHaveTheBitsOfThePlainLoop) {
  constexpr int kNever = 1000;
  const std::array<ProductSizes, 6> all{{
      {.depth = 1, .rows = 1, .cols = 1, .packFrom = 1, .tiny = 0},
      {.depth = 2, .rows = 3, .cols = 2, .packFrom = 2, .tiny = 0},
      {.depth = 3, .rows = 2, .cols = 5, .packFrom = 3, .tiny = 7},
      {.depth = 4,
       .rows = 16,
       .cols = 8,
       .packFrom = kNever,
       .packPagesFrom = 1,
       .page = 2,
       .tiny = 0},
      {.depth = 2, .packFrom = kNever, .packPagesFrom = kNever, .competingStride = 1, .tiny = 0},
      {.packFrom = kNever, .packPagesFrom = kNever, .tiny = 0},
  }};
  testing::ForEachInstructionSet([&](InstructionSet set) {
    testing::CaseSource cases(1206, testing::CaseShape::kAny, 1);
    testing::Comparison comparison("ordered product, small blocks, instruction set " +
                                   std::to_string(static_cast<int>(set)));
    for (int rows = 1; rows <= 18; ++rows) {
      for (int cols = 1; cols <= 18 && !comparison.HasSeenEnough(); ++cols) {
        for (const int depth : {0, 1, 2, 5, 8}) {
          for (const ProductSizes& sizes : all) {
            CompareShape(comparison, cases, {rows, cols, depth}, &sizes);
          }
        }
      }
    }
  });
}

/// By ShareProduct, which has to take it.
void CompareShared(testing::Comparison& comparison, testing::CaseSource& cases, const Shape& shape,
                   const ProductSizes& sizes) {
  const Operands operands(cases, shape, false);
  const auto run = [&](auto multiply) { return Multiplied(operands.C, shape, multiply); };
  comparison.Compare(
      [&] {
        return run([&](const View& C) {
          Progress unheard;
          WorkMeter meter(unheard, 1);
          EXPECT_TRUE(ShareProduct(operands.a, operands.b, C, meter, &sizes));
        });
      },
      [&] { return run([&](const View& C) { PlainLoop(operands.a, operands.b, C, Form::kSet); }); },
      {},
      std::to_string(shape.rows) + " x " + std::to_string(shape.depth) + " x " +
          std::to_string(shape.cols) + " in a team of " + std::to_string(SharedTeam().Members()));
}

class SharedProductTest : public ::testing::TestWithParam<int> {
 protected:
  Team team{GetParam()};
  UseTeam use{team};
};
INSTANTIATE_TEST_SUITE_P(InTeamsOf, SharedProductTest, ::testing::Values(1, 2, 3, 7, 64));

TEST_P(SharedProductTest, HasTheBitsOfThePlainLoopAroundTheEdgesOfBlocks) {
  const std::array<ProductSizes, 3> all{{
      {.depth = 1, .rows = 1, .cols = 1, .packFrom = 1, .tiny = 0},
      {.depth = 2, .rows = 3, .cols = 2, .packFrom = 1, .tiny = 0},
      {.depth = 3, .rows = 16, .cols = 17, .packFrom = 1, .tiny = 0},
  }};
  testing::ForEachInstructionSet([&](InstructionSet set) {
    testing::CaseSource cases(1208, testing::CaseShape::kAny, 1);
    testing::Comparison comparison("shared product, instruction set " +
                                   std::to_string(static_cast<int>(set)));
    for (const int rows : {1, 2, 15, 17, 33, 50}) {
      for (const int cols : {1, 7, 9, 34}) {
        for (const int depth : {1, 2, 7}) {
          for (const ProductSizes& sizes : all)
            CompareShared(comparison, cases, {rows, cols, depth}, sizes);
        }
      }
    }
  });
}

TEST_P(SharedProductTest, HasTheBitsOfThePlainLoopInItsUsualSizes) {
  testing::CaseSource cases(1209, testing::CaseShape::kAny, 1);
  testing::Comparison comparison("shared product, usual sizes");
  for (const Shape& shape : {Shape{160, 160, 385}, Shape{241, 161, 160}, Shape{499, 163, 29}}) {
    CompareShared(comparison, cases, shape, CurrentKernels().sizes);
  }
}

TEST(OrderedProductTest, OneThatIsNotPackedIsNotShared) {
  testing::Dice dice(1210);
  const Matrix a = testing::RealMatrix(dice, 159, 300);
  const Matrix b = testing::RealMatrix(dice, 300, 300);
  Matrix c = testing::RealMatrix(dice, 159, 300);
  const Matrix before = c;
  Progress unheard;
  WorkMeter meter(unheard, 1);
  EXPECT_FALSE(ShareProduct(Part(a, 1, 1, 159, 300), Part(b, 1, 1, 300, 300),
                            Part(c, 1, 1, 159, 300), meter));
  EXPECT_EQ(c, before);
}

TEST(OrderedProductTest, DeepProductsOfCompetingRowsStayWithinTheirStorage) {
  testing::ForEachInstructionSet([&](InstructionSet set) {
    testing::CaseSource cases(1207, testing::CaseShape::kAny, 1);
    testing::Comparison comparison("ordered product, deep and narrow, instruction set " +
                                   std::to_string(static_cast<int>(set)));
    for (const int rows : {9, 16, 20, 33}) {
      // Three columns more make the rows compete.
      for (const int depth : {512 - 3, 1024 - 3, 12 * 512 - 3}) {
        CompareShape(comparison, cases, {rows, 20, depth, depth + 3, 23});
      }
    }
  });
}

/// What EliminateRows promises, element by element.
void PlainStep(Matrix& W, int column, int first) {
  for (int k = first; k <= W.Rows(); ++k) {
    const double f = W(k, column) / W(1, column);
    for (int j = 1; j <= W.Cols(); ++j) {
      if (j != column) W(k, j) = W(k, j) - f * W(1, j);
    }
    W(k, column) = f;
  }
}

TEST(OrderedProductTest, AStepOfAnEliminationHasTheBitsOfThePlainLoopOnEveryInstructionSet) {
  testing::ForEachInstructionSet([&](InstructionSet set) {
    testing::CaseSource cases(1203, testing::CaseShape::kAny, 1);
    testing::Comparison comparison("elimination step, instruction set " +
                                   std::to_string(static_cast<int>(set)));
    for (int cols = 1; cols <= 40; ++cols) {
      for (int column = 1; column <= cols && !comparison.HasSeenEnough(); ++column) {
        const Matrix A = cases.Next(4, cols);
        const auto run = [&](auto step) {
          Matrix W = A;
          step(W);
          Record record;
          testing::Append(record, W);
          return record;
        };
        comparison.Compare(
            [&] {
              return run([&](Matrix& W) {
                EliminateRows(&W(1, column), &W(2, column), cols, 3, column - 1, cols - column);
              });
            },
            [&] { return run([&](Matrix& W) { PlainStep(W, column, 2); }); }, {&A},
            std::to_string(column));
      }
    }
  });
}

TEST(OrderedProductTest, TheProgramUsesTheWidestInstructionSet) {
  for (const InstructionSet set : testing::kInstructionSets) {
    EXPECT_TRUE(!HasInstructionSet(set) || BestInstructionSet() >= set);
  }
  EXPECT_TRUE(HasInstructionSet(BestInstructionSet()));
}

/// One whose parts are reported while it goes on.
TEST(OrderedProductTest, ALongThinOneIsDoneInParts) {
  testing::Dice dice(1907);
  const Matrix a = testing::RealMatrix(dice, 12000, 129);
  const Matrix b = testing::RealMatrix(dice, 129, 100);
  Matrix together = testing::RealMatrix(dice, 12000, 100);
  Matrix inParts = together;
  struct Counter : Progress {
    int count = 0;
    void Report(double) override { ++count; }
  } counter;
  WorkMeter meter(counter, 12000.0 * 129 * 100);
  AddProduct(Part(a, 1, 1, 12000, 129), Part(b, 1, 1, 129, 100), Part(together, 1, 1, 12000, 100));
  AddProduct(Part(a, 1, 1, 12000, 129), Part(b, 1, 1, 129, 100), Part(inParts, 1, 1, 12000, 100),
             meter);
  EXPECT_EQ(inParts, together);
  EXPECT_GE(counter.count, 2);
}

}  // namespace
}  // namespace qmx
