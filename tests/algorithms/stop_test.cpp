// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <functional>
#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

#include "algorithms/definiteness.h"
#include "algorithms/determinant.h"
#include "algorithms/eigenvalues.h"
#include "algorithms/eigenvectors.h"
#include "algorithms/elementary.h"
#include "algorithms/inverse.h"
#include "algorithms/linear_system.h"
#include "algorithms/lu.h"
#include "algorithms/qr.h"
#include "algorithms/special_matrix.h"
#include "base/arithmetic.h"
#include "base/progress.h"
#include "base/team.h"
#include "support/core_cases.h"

namespace qmx {
namespace {

using Bits = std::vector<double>;

void Append(Bits& bits, const Matrix& A) { bits.insert(bits.end(), A.Data(), A.Data() + A.Size()); }

Bits Of(std::initializer_list<const Matrix*> matrices) {
  Bits bits;
  for (const Matrix* A : matrices) Append(bits, *A);
  return bits;
}

/// What all tasks compute with. No task may change it but by finishing.
struct Operands {
  explicit Operands(int n) {
    testing::Dice dice(1401);
    A = testing::RealMatrix(dice, n, n);
    definite = A;
    indefinite = A;
    for (int i = 1; i <= n; ++i) {
      for (int j = 1; j < i; ++j) {
        definite(i, j) = definite(j, i);
        indefinite(i, j) = indefinite(j, i);
      }
      definite(i, i) += 2 * n;
    }
    system = testing::RealMatrix(dice, n, n + 1);
    dependent = A;
    for (int i = 1; i <= n; ++i) dependent(i, n) = 0;
    start.assign(n, 0.5);
    Progress unheard;
    factors = FactorLu(A, true, unheard);
  }
  Bits All() const {
    Bits bits = Of({&A, &definite, &indefinite, &system, &dependent, &factors.L, &factors.U,
                    &factors.exchanges});
    bits.insert(bits.end(), start.begin(), start.end());
    bits.push_back(shiftIndex);
    return bits;
  }

  Matrix A;
  Matrix definite;
  Matrix indefinite;
  Matrix system;
  Matrix dependent;  ///< Its last column fails to be factored.
  LuFactors factors;
  std::vector<double> start;
  std::int32_t shiftIndex = 1;
};

struct Task {
  const char* name;
  std::function<Bits(Operands&, Progress&)> run;
  int divisor = 1;  ///< Of the order in which gaps are measured.
};

Bits OfLu(const LuFactors& f) { return Of({&f.L, &f.U, &f.exchanges}); }

Bits OfReport(const DefinitenessReport& report) {
  Bits bits = report.leadingMinor;
  bits.insert(bits.end(), report.smallestPivot.begin(), report.smallestPivot.end());
  return bits;
}

Bits OfRandom(int n, Progress& p) {
  Matrix created(n, n);
  float next = 0;
  FillRandom(
      created, {0, 1, false, false}, [&] { return next += 0x1p-20f; }, p);
  return Of({&created});
}

Bits OfOptional(const std::optional<Matrix>& A) { return A ? Of({&*A}) : Bits{}; }

Bits OfOne(const Matrix& A) { return Of({&A}); }

std::vector<Task> ElementaryTasks() {
  return {
      {"sum", [](Operands& o, Progress& p) { return OfOne(Sum(o.A, o.definite, p)); }},
      {"difference",
       [](Operands& o, Progress& p) { return OfOne(Difference(o.A, o.definite, p)); }},
      {"product", [](Operands& o, Progress& p) { return OfOne(Product(o.A, o.definite, p)); }},
      {"transpose", [](Operands& o, Progress& p) { return OfOne(Transpose(o.A, p)); }},
      {"symmetry",
       [](Operands& o, Progress& p) { return Bits{IsSymmetric(o.definite, p) ? 1.0 : 0}; }},
      {"scale",
       [](Operands& o, Progress& p) {
         Matrix changed(o.A);
         ScaleInPlace(changed, 3, p);
         return OfOne(changed);
       }},
      {"random matrix", [](Operands& o, Progress& p) { return OfRandom(o.A.Rows(), p); }},
      {"determinant", [](Operands& o, Progress& p) { return Bits{Determinant(o.A, p)}; }},
      {"inverse", [](Operands& o, Progress& p) { return OfOptional(Inverse(o.A, p)); }},
      {"adjoint by inverse",
       [](Operands& o, Progress& p) { return OfOptional(AdjointByInverse(o.A, p)); }},
  };
}

std::vector<Task> FactorTasks() {
  return {
      {"LU", [](Operands& o, Progress& p) { return OfLu(FactorLu(o.A, true, p)); }},
      {"QR",
       [](Operands& o, Progress& p) {
         const QrFactors f = FactorQr(o.A, p);
         return Of({&f.Q, &f.R});
       }},
      {"failing QR",
       [](Operands& o, Progress& p) {
         const QrFactors f = FactorQr(o.dependent, p);
         return Of({&f.Q, &f.R});
       }},
      {"definiteness",
       [](Operands& o, Progress& p) { return OfReport(TestDefiniteness(o.definite, p)); }},
      {"indefinite",
       [](Operands& o, Progress& p) { return OfReport(TestDefiniteness(o.indefinite, p)); }},
      {"one-shot", [](Operands& o, Progress& p) { return OfOne(SolveOneShot(o.system, p).x); }},
      {"by factors",
       [](Operands& o, Progress& p) {
         return OfOne(SolveByFactors(o.factors.L, o.factors.U, o.factors.exchanges, o.system, p).x);
       }},
      {"least squares",
       [](Operands& o, Progress& p) { return OfOne(SolveLeastSquares(o.dependent, p).x); }},
  };
}

std::vector<Task> EigenTasks() {
  constexpr EigenParameters kParameters{1e-9, 20, 0.1, 0.001};
  return {
      {"eigenvalues",
       [=](Operands& o, Progress& p) {
         return FindEigenvalues(o.A, kParameters, o.shiftIndex, p).eigenvalues;
       },
       7},
      {"eigenvector",
       [=](Operands& o, Progress& p) {
         FindEigenvector(o.A, o.A(1, 1), 1, kParameters, o.start, p);
         return o.start;
       }},
      {"adjoint by cofactors",
       [](Operands& o, Progress& p) { return OfOne(AdjointByCofactors(o.A, p)); }, 10},
  };
}

std::vector<Task> AllTasks() {
  std::vector<Task> all = ElementaryTasks();
  for (const auto& some : {FactorTasks(), EigenTasks()})
    all.insert(all.end(), some.begin(), some.end());
  return all;
}

/// Throws Stopped from the k-th report on; keeps the longest time between two reports.
class Stopper : public Progress {
 public:
  explicit Stopper(int k = 0) : k_(k) {}
  void Report(double fraction) override {
    Look();
    monotone_ = monotone_ && fraction >= last_ && fraction <= 1;
    last_ = fraction;
    if (++count_ == k_) throw Stopped();
  }
  void Look() {
    const auto now = std::chrono::steady_clock::now();
    longest_ = std::max(longest_, std::chrono::duration<double, std::milli>(now - before_).count());
    before_ = now;
  }
  int Count() const { return count_; }
  bool IsMonotone() const { return monotone_; }
  double Longest() const { return longest_; }

 private:
  int k_;
  int count_ = 0;
  double last_ = 0;
  bool monotone_ = true;
  double longest_ = 0;
  std::chrono::steady_clock::time_point before_ = std::chrono::steady_clock::now();
};

bool SameBits(const Bits& one, const Bits& two) {
  return one.size() == two.size() &&
         std::equal(one.begin(), one.end(), two.begin(), [](double x, double y) {
           return std::bit_cast<std::uint64_t>(x) == std::bit_cast<std::uint64_t>(y);
         });
}

/// Stops a task at its k-th report; nothing may have changed, and the next run must give the same.
/// Where a team shares the work, there may be fewer reports this time: then it must end as ever.
void ExpectUnharmed(const Task& task, const Operands& fresh, int k, const Bits& expected) {
  Operands operands = fresh;
  Stopper stopper(k);
  ClearArithmeticFaults();
  try {
    const Bits found = task.run(operands, stopper);
    EXPECT_LT(stopper.Count(), k) << task.name << ", report " << k;
    EXPECT_GT(SharedTeam().Members(), 1) << task.name << ", report " << k;
    EXPECT_TRUE(SameBits(found, expected)) << task.name << ", report " << k;
    return;
  } catch (const Stopped&) {
  }
  EXPECT_TRUE(SameBits(operands.All(), fresh.All())) << task.name << ", report " << k;
  Progress unheard;
  ClearArithmeticFaults();
  EXPECT_TRUE(SameBits(task.run(operands, unheard), expected)) << task.name << ", report " << k;
}

class SharedStopTest : public ::testing::TestWithParam<int> {};
INSTANTIATE_TEST_SUITE_P(InTeamsOf, SharedStopTest, ::testing::Values(1, 3),
                         [](const ::testing::TestParamInfo<int>& team) {
                           return std::string(team.param == 1 ? "OneThread" : "ThreeThreads");
                         });

TEST_P(SharedStopTest, AStoppedTaskHasChangedNothing) {
  Team team(GetParam());
  const UseTeam use(team);
  const Operands large(400);
  const Operands small(120);
  const int stops = GetParam() == 1 ? 12 : 4;
  for (const Task& task : AllTasks()) {
    const Operands& fresh = task.divisor > 1 ? small : large;
    Operands operands = fresh;
    Stopper counter;
    ClearArithmeticFaults();
    const Bits expected = task.run(operands, counter);
    ASSERT_GE(counter.Count(), 1) << task.name;
    EXPECT_TRUE(counter.IsMonotone()) << task.name;
    const int step = std::max(1, counter.Count() / stops);
    for (int k = 1; k <= counter.Count(); k += step) ExpectUnharmed(task, fresh, k, expected);
    ExpectUnharmed(task, fresh, counter.Count(), expected);
  }
}

/// Prints the longest times between two reports; takes some seconds, and an idle processor.
TEST(StopGapTest, DISABLED_LongestGaps) {
  const Operands large(2000);
  for (const Task& task : AllTasks()) {
    const Operands smaller(2000 / task.divisor);
    Operands operands = task.divisor == 1 ? large : smaller;
    double longest = 1e9;
    int reports = 0;
    for (int round = 0; round < 2; ++round) {
      Stopper stopper;
      ClearArithmeticFaults();
      task.run(operands, stopper);
      longest = std::min(longest, stopper.Longest());
      reports = stopper.Count();
    }
    std::printf("%-22s n %5d  longest gap %7.1f ms, %d reports\n", task.name, operands.A.Rows(),
                longest, reports);
  }
}

}  // namespace
}  // namespace qmx
