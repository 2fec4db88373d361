// SPDX-License-Identifier: MIT
#include <QElapsedTimer>
#include <cstdio>
#include <random>

#include "support/desktop_digits.h"
#include "workspace/availability.h"
#include "workspace/task_numbers.h"

namespace qmx::test {
namespace {

class DigitsCost : public DigitsDesktop {
 protected:
  void FillA(int order, bool symmetric = false) {
    std::mt19937 any(1);
    std::uniform_real_distribution<double> number(-1, 1);
    Matrix values(order, order);
    for (int i = 1; i <= order; ++i) {
      for (int j = 1; j <= order; ++j)
        values(i, j) = symmetric && j < i ? values(j, i) : number(any);
    }
    program.Runner().Step("A", [&](Context& all) {
      for (const qmx::Slot slot : {kSlotA, kSlotB})
        Publish(all, slot, Publication(Matrix(values)), Showing::kInPlace);
    });
  }

  /// Milliseconds from a press to its result on show, to its marks, and the longest time that no
  /// event was handled in between.
  void Measure(const char* what, int order, Task task) {
    QElapsedTimer time;
    time.start();
    Click(cmdTask(task));
    const double shown = static_cast<double>(time.nsecsElapsed()) * 1e-6;
    double longest = 0;
    QElapsedTimer turn;
    while (!program.Digits().IsIdle()) {
      QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
      turn.start();
      QCoreApplication::processEvents();
      longest = std::max(longest, static_cast<double>(turn.nsecsElapsed()) * 1e-6);
    }
    const double marked = static_cast<double>(time.nsecsElapsed()) * 1e-6;
    std::printf("%-24s %5d  shown %9.1f ms  marks after %9.1f ms  longest turn %7.1f ms\n", what,
                order, shown, marked - shown, longest);
  }
};

/// Not a test: tells how long people wait for marks. qmx_desktop_tests
/// --gtest_also_run_disabled_tests --gtest_filter='DigitsCost.*' on a machine at rest.
TEST_F(DigitsCost, DISABLED_FromThePressToTheMarks) {
  for (const int order : {10, 100, 300}) {
    FillA(order);
    Measure("inverse", order, kTaskInverse);
    Measure("determinant", order, kTaskDeterminant);
    Measure("product", order, kTaskProduct);
    Measure("LU", order, kTaskLU);
  }
  FillA(50, true);
  Measure("eigenvalues and vectors", 50, kTaskEigen);
  FillA(2000);
  Measure("sum", 2000, kTaskSum);
}

}  // namespace
}  // namespace qmx::test
