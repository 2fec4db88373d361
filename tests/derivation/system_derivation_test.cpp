// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "algorithms/linear_system.h"
#include "algorithms/lu.h"
#include "derivation/operands.h"
#include "derivation/questions.h"
#include "derivation/replay.h"

namespace qmx::testing {
namespace {

Progress unheard;

/// The first n columns, and the last one.
RationalMatrix Coefficients(const RationalMatrix& system) {
  RationalMatrix A(system.Rows(), system.Cols() - 1);
  for (int i = 1; i <= A.Rows(); ++i) {
    for (int j = 1; j <= A.Cols(); ++j) A(i, j) = system(i, j);
  }
  return A;
}

RationalMatrix RightSide(const RationalMatrix& system) {
  RationalMatrix b(system.Rows(), 1);
  for (int i = 1; i <= b.Rows(); ++i) b(i, 1) = system(i, system.Cols());
  return b;
}

/// Empty where the exact system has no single solution.
RationalMatrix ExactSolution(const RationalMatrix& A, const RationalMatrix& b) {
  if (DeterminantOf(A).IsZero()) return {0, 0};
  return SolutionOf(A, b);
}

void ExpectVerdict(const Document& document, const SystemSolution& solution) {
  const std::string text = TextOf(document);
  EXPECT_EQ(text.find("the system has no solution.") != std::string::npos,
            !solution.solved && solution.inconsistent)
      << text;
  EXPECT_EQ(text.find("infinitely many solutions.") != std::string::npos,
            !solution.solved && !solution.inconsistent)
      << text;
  EXPECT_EQ(MatrixOfFormula(document, "x=").rows > 0, solution.solved) << text;
}

TEST(SystemDerivation, StepsDoneAgainGiveTheSolution) {
  OperandSource source(41);
  int exact = 0;
  for (int round = 0; round < 250; ++round) {
    const int n = source.Order();
    const Matrix system = source.Any(n, n + 1);
    const Document document = Derive(Ask(DerivationTask::kSolution, system));
    const Replayed replayed = Replay(document, system);
    ASSERT_TRUE(replayed.faults.empty()) << Joined(replayed.faults) << TextOf(document);
    const SystemSolution solution = SolveOneShot(system, unheard);
    ExpectVerdict(document, solution);
    if (!solution.solved) continue;
    const ShownMatrix x = MatrixOfFormula(document, "x=");
    const RationalMatrix shown = AsShown(system);
    EXPECT_EQ(
        Joined(Differences(x, solution.x, ExactSolution(Coefficients(shown), RightSide(shown)))),
        "")
        << TextOf(document);
    if (!replayed.isExactToTheEnd || !ExactlyShown(x)) continue;
    ++exact;
    // What the steps have left is solved by the same x.
    EXPECT_TRUE(AreEqual(ProductOf(Coefficients(replayed.exact), *ExactlyShown(x)),
                         RightSide(replayed.exact)))
        << TextOf(document);
  }
  EXPECT_GE(exact, 100);
}

TEST(SystemDerivation, LeastSquaresSolveTheNormalEquations) {
  OperandSource source(42);
  int exact = 0;
  for (int round = 0; round < 200; ++round) {
    const int unknowns = source.Randomness().Integer(1, 7);
    const int equations = source.Randomness().Integer(unknowns + 1, 8);
    const Matrix system = source.Any(equations, unknowns + 1);
    const Document document = Derive(Ask(DerivationTask::kLeastSquares, system));
    const RationalMatrix shown = AsShown(system);
    const RationalMatrix transposed = TransposeOf(Coefficients(shown));
    const RationalMatrix normal = ProductOf(transposed, shown);
    Matrix computed(unknowns, unknowns + 1);
    for (int i = 1; i <= unknowns; ++i) {
      for (int j = 1; j <= unknowns + 1; ++j) {
        double sum = 0.0;
        for (int r = 1; r <= equations; ++r) sum = sum + system(r, i) * system(r, j);
        computed(i, j) = sum;
      }
    }
    const Replayed replayed = Replay(document, normal, computed);
    ASSERT_TRUE(replayed.faults.empty()) << Joined(replayed.faults) << TextOf(document);
    const SystemSolution solution = SolveLeastSquares(system, unheard);
    ExpectVerdict(document, solution);
    if (!solution.solved) continue;
    const ShownMatrix x = MatrixOfFormula(document, "x=");
    EXPECT_EQ(
        Joined(Differences(x, solution.x, ExactSolution(Coefficients(normal), RightSide(normal)))),
        "")
        << TextOf(document);
    if (ExactlyShown(x)) ++exact;
  }
  EXPECT_GE(exact, 50);
}

TEST(SystemDerivation, EachElementOfTheNormalEquationsIsWrittenOut) {
  // x = 1, y = 1, x + y = 3
  const Matrix system = MatrixOf({{1, 0, 1}, {0, 1, 1}, {1, 1, 3}});
  const Document document = Derive(Ask(DerivationTask::kLeastSquares, system));
  const std::string text = TextOf(document);
  for (const char* line :
       {"m1,1=1·1+0·0+1·1=2\n", "m1,3=1·1+0·1+1·3=4\n", "m2,1=0·1+1·0+1·1=1\n",
        "m2,2=0·0+1·1+1·1=2\n", "m2,3=0·1+1·1+1·3=4\n", "[2 1 4; 1 2 4]\n", "x=[4/3; 4/3]\n"}) {
    EXPECT_NE(text.find(line), std::string::npos) << line << text;
  }
}

TEST(SystemDerivation, FactorsSolveTheSystem) {
  OperandSource source(43);
  int exact = 0;
  for (int round = 0; round < 200; ++round) {
    const Matrix A = source.Square();
    const int n = A.Rows();
    const LuFactors lu = FactorLu(A, true, unheard);
    DerivationQuestion question = Ask(DerivationTask::kSolutionByFactors, lu.L);
    question.b = lu.U;
    question.exchanges = lu.exchanges;
    question.system = source.Any(n, 1);
    const Document document = Derive(question);
    const SystemSolution solution =
        SolveByFactors(lu.L, lu.U, lu.exchanges, question.system, unheard);
    ExpectVerdict(document, solution);
    if (!solution.solved) continue;
    RationalMatrix b(n, 1);
    for (int i = 1; i <= n; ++i) {
      b(i, 1) = AsShown(question.system)(static_cast<int>(lu.exchanges(i, 1)), 1);
    }
    const RationalMatrix product = ProductOf(AsShown(lu.L), AsShown(lu.U));
    const ShownMatrix x = MatrixOfFormula(document, "x=");
    EXPECT_EQ(Joined(Differences(x, solution.x, ExactSolution(product, b))), "")
        << TextOf(document);
    if (ExactlyShown(x)) ++exact;
  }
  EXPECT_GE(exact, 30);
}

TEST(SystemDerivation, SaysEachStep) {
  EXPECT_EQ(TextOf(Derive(Ask(DerivationTask::kSolution, MatrixOf({{1, 2, 3}, {3, 4, 5}})))),
            R"(# Solution of the system
The equations, with the right-hand side behind the line:
[1 2 3; 3 4 5]
Subtracting multiples of equations makes the coefficients below the diagonal 0, column by column; the solutions stay the same.
### Column 1
From row 1 down, 3 in row 2 has the largest magnitude: it is the pivot.
Rows 1 and 2 change places.
[3 4 5; 1 2 3]
Row 2 minus 1/3 of row 1.
[3 4 5; 0 2/3 4/3]
### Back substitution
From the last row up, each row gives one more unknown.
2/3·x2=4/3
x2=2
3·x1+4·x2=5
3·x1=5−4·2=-3
x1=-1
### The solution
x=[-1; 2]
)");
}

}  // namespace
}  // namespace qmx::testing
