// SPDX-License-Identifier: MIT
#include "base/progress.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <vector>

#include "algorithms/definiteness.h"
#include "algorithms/determinant.h"
#include "algorithms/eigenvalues.h"
#include "algorithms/elementary.h"
#include "algorithms/inverse.h"
#include "algorithms/linear_system.h"
#include "algorithms/lu.h"
#include "algorithms/qr.h"
#include "base/arithmetic.h"
#include "base/team.h"
#include "support/core_cases.h"

namespace qmx {
namespace {

class Recorder : public Progress {
 public:
  void Report(double fraction) override { reports_.push_back(fraction); }

  /// The bar never runs back and never leaves its frame, and it does move.
  void ExpectSteadyGrowth(const char* task) const {
    EXPECT_FALSE(reports_.empty()) << task;
    double last = 0;
    for (const double fraction : reports_) {
      EXPECT_GE(fraction, last) << task;
      EXPECT_LE(fraction, 1) << task;
      last = fraction;
    }
    EXPECT_GT(last, 0.5) << task;
  }

  /// As much was expected as was done: the bar neither jumps to its end nor waits there.
  void ExpectTrueForecast(const char* task) const {
    ASSERT_GE(reports_.size(), 5U) << task;
    EXPECT_GE(reports_[reports_.size() - 2], 0.8) << task;
    EXPECT_LE(std::count(reports_.begin(), reports_.end(), 1.0), 2) << task;
  }

  double Last() const { return reports_.empty() ? -1 : reports_.back(); }

 private:
  std::vector<double> reports_;
};

template <class Task>
void Expect(const char* name, Task task) {
  Recorder recorder;
  task(recorder);
  recorder.ExpectSteadyGrowth(name);
}

TEST(ProgressTest, EveryLongTaskReportsASteadyGrowth) {
  testing::Dice dice(1101);
  const int n = 40;
  Matrix A = testing::RealMatrix(dice, n, n);
  for (int i = 1; i <= n; ++i) {
    A(i, i) += 2 * i;
    for (int j = 1; j < i; ++j) A(i, j) = A(j, i);
  }
  const Matrix system = testing::RealMatrix(dice, n, n + 1);
  Expect("product", [&](Progress& p) { Product(A, A, p); });
  Expect("determinant", [&](Progress& p) { Determinant(A, p); });
  Expect("inverse", [&](Progress& p) { Inverse(A, p); });
  Expect("adjoint by cofactors", [&](Progress& p) { AdjointByCofactors(A, p); });
  Expect("adjoint by inverse", [&](Progress& p) { AdjointByInverse(A, p); });
  Expect("LU", [&](Progress& p) { FactorLu(A, true, p); });
  Expect("QR", [&](Progress& p) { FactorQr(A, p); });
  Expect("definiteness", [&](Progress& p) { TestDefiniteness(A, p); });
  Expect("one-shot solution", [&](Progress& p) { SolveOneShot(system, p); });
  Expect("eigenvalues", [&](Progress& p) {
    ClearArithmeticFaults();
    std::int32_t shiftIndex = 0;
    FindEigenvalues(A, {1e-9, 1000, 0.1, 0.001}, shiftIndex, p);
  });
}

template <class Task>
void ExpectForecast(const char* name, Task task) {
  Recorder recorder;
  task(recorder);
  recorder.ExpectTrueForecast(name);
}

TEST(ProgressTest, EveryLongTaskKnowsHowMuchIsToBeDone) {
  Team alone(1);
  const UseTeam use(alone);
  testing::Dice dice(1104);
  const int n = 700;
  Matrix A = testing::RealMatrix(dice, n, n);
  for (int i = 1; i <= n; ++i) {
    A(i, i) += 2 * n;
    for (int j = 1; j < i; ++j) A(i, j) = A(j, i);
  }
  const Matrix system = testing::RealMatrix(dice, n, n + 1);
  const Matrix tall = testing::RealMatrix(dice, n, 500);
  const Matrix longer = testing::RealMatrix(dice, 2000, 400);
  const Matrix few = testing::RealMatrix(dice, 90, 90);
  ExpectForecast("product", [&](Progress& p) { Product(A, A, p); });
  ExpectForecast("determinant", [&](Progress& p) { Determinant(A, p); });
  ExpectForecast("inverse", [&](Progress& p) { Inverse(A, p); });
  ExpectForecast("adjoint by cofactors", [&](Progress& p) { AdjointByCofactors(few, p); });
  ExpectForecast("adjoint by inverse", [&](Progress& p) { AdjointByInverse(A, p); });
  ExpectForecast("LU", [&](Progress& p) { FactorLu(A, true, p); });
  ExpectForecast("QR", [&](Progress& p) { FactorQr(tall, p); });
  ExpectForecast("definiteness", [&](Progress& p) { TestDefiniteness(A, p); });
  ExpectForecast("one-shot solution", [&](Progress& p) { SolveOneShot(system, p); });
  ExpectForecast("least squares", [&](Progress& p) { SolveLeastSquares(longer, p); });
}

TEST(ProgressTest, AnEliminationOfASmallMatrixReportsItsEnd) {
  testing::Dice dice(1103);
  const Matrix A = testing::RealMatrix(dice, 5, 5);
  const auto expectEnd = [](auto task) {
    Recorder recorder;
    task(recorder);
    EXPECT_EQ(recorder.Last(), 1);
  };
  expectEnd([&](Progress& p) { Determinant(A, p); });
  expectEnd([&](Progress& p) { Inverse(A, p); });
  expectEnd([&](Progress& p) { FactorQr(A, p); });
}

TEST(ProgressTest, LeastSquaresReportsItsTwoStages) {
  testing::Dice dice(1102);
  Recorder recorder;
  SolveLeastSquares(testing::RealMatrix(dice, 60, 21), recorder);
  recorder.ExpectSteadyGrowth("least squares");
}

}  // namespace
}  // namespace qmx
