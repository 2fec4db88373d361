// SPDX-License-Identifier: MIT
#include <signal.h>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <functional>
#include <numeric>
#include <string>
#include <thread>
#include <vector>

#include "algorithms/definiteness.h"
#include "algorithms/elementary.h"
#include "algorithms/hessenberg.h"
#include "algorithms/inverse.h"
#include "algorithms/linear_system.h"
#include "algorithms/lu.h"
#include "algorithms/qr.h"
#include "base/arithmetic.h"
#include "base/memory.h"
#include "base/team.h"
#include "files/field_scanner.h"
#include "files/record_writer.h"
#include "operands.h"
#if defined(QMX_BENCH_LIBRARIES)
#include "libraries.h"
#endif

// What all cores give: wall times of a task on one core and on all of them in alternating rounds,
// since the others are not always there, and of the tuned library on as many threads. With --loaded
// as many busy processes run beside as there are cores; --short runs only small orders, --sweep
// every tenth up to 200, --around multiples of 512 beside their neighbours; tasks that are named
// run alone.

namespace qmx::bench {
namespace {

Progress unheard;

struct Task {
  const char* name;
  std::vector<int> orders;
  std::function<std::function<void()>(int n)> make;
  std::function<std::function<void()>(int n)> library;
  int power = 3;  ///< Of n in the steps that it takes.
};

/// Ready to be run again and again on operands of its own.
template <class Run>
std::function<std::function<void()>(int)> On(Run run) {
  return [run](int n) { return [run, A = RandomMatrix(n, n)] { run(A); }; };
}

/// Of a matrix whose diagonal leaves nothing to exchange, as for the Cholesky factors.
Matrix DefiniteMatrix(int n) {
  Matrix A = RandomMatrix(n, n);
  for (int i = 1; i <= n; ++i) {
    A(i, i) += 2 * n;
    for (int j = 1; j < i; ++j) A(i, j) = A(j, i);
  }
  return A;
}

std::function<void()> Definite(int n) {
  return [A = DefiniteMatrix(n)] { TestDefiniteness(A, unheard); };
}

/// Of a matrix that exchanges rows all the time.
std::function<void()> Indefinite(int n) {
  Matrix A = RandomMatrix(n, n);
  for (int i = 1; i <= n; ++i) {
    for (int j = 1; j < i; ++j) A(i, j) = A(j, i);
  }
  return [A] { TestDefiniteness(A, unheard); };
}

std::function<void()> Reduction(int n) {
  return [A = RandomMatrix(n, n)] {
    Matrix M = A;
    WorkMeter meter(unheard, 1);
    ReduceToHessenberg(M, meter);
  };
}

/// Of a reduced matrix, whose first cycle is like all others.
std::function<void()> Cycle(int n) {
  Matrix M = RandomMatrix(n, n);
  WorkMeter meter(unheard, 1);
  ReduceToHessenberg(M, meter);
  return [M, n] {
    Matrix changed = M;
    HessenbergQr work(n);
    WorkMeter own(unheard, 1);
    StepHessenbergQr(changed, n, work, own);
  };
}

std::function<void()> Writing(int n) {
  return [A = RandomMatrix(n, n)] {
    RecordWriter writer(A.Size());
    writer.PrintNumbers(A);
  };
}

std::function<void()> Reading(int n) {
  RecordWriter writer;
  writer.PrintNumbers(RandomMatrix(n, n));
  return [bytes = writer.Take(), values = Matrix(n, n)]() mutable {
    FieldScanner scanner(bytes);
    scanner.ReadNumbers(values.Data(), values.Size());
  };
}

std::vector<Task> Tasks() {
  std::vector<Task> tasks{
      {"product", {100, 200, 300, 500, 1000}, On([](auto& A) { Product(A, A, unheard); }), {}},
      {"LU", {200, 300, 500, 1000}, On([](auto& A) { FactorLu(A, true, unheard); }), {}},
      {"inverse", {200, 300, 500, 1000}, On([](auto& A) { Inverse(A, unheard); }), {}},
      {"QR", {200, 300, 500, 1000}, On([](auto& A) { FactorQr(A, unheard); }), {}},
      {"definiteness", {100, 200, 300, 500, 1000}, Definite, {}},
      {"indefinite", {200, 300, 500, 1000}, Indefinite, {}},
      {"least squares", {300, 500}, On([](auto& A) { SolveLeastSquares(A, unheard); }), {}},
      {"cofactors", {30, 60, 100}, On([](auto& A) { AdjointByCofactors(A, unheard); }), {}},
      {"reduction", {100, 200, 300}, Reduction, {}},
      {"cycle", {200, 300, 500}, Cycle, {}},
      {"writing", {100, 200, 300, 1000}, Writing, {}, 2},
      {"reading", {100, 200, 300, 1000}, Reading, {}, 2},
  };
#if defined(QMX_BENCH_LIBRARIES)
  tasks[0].library = On([](auto& A) { OpenBlasProduct(A, A); });
  tasks[1].library = On([](auto& A) { LapackLu(A); });
  tasks[2].library = On([](auto& A) { LapackInverse(A); });
  tasks[3].library = On([](auto& A) { LapackQr(A); });
  tasks[4].library = [](int n) { return [A = DefiniteMatrix(n)] { LapackCholesky(A); }; };
#endif
  return tasks;
}

// Before each run the faults of those before it are forgotten, as before every task of the program.

double Milliseconds(const std::function<void()>& run) {
  ClearArithmeticFaults();
  const auto begin = std::chrono::steady_clock::now();
  run();
  return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begin)
      .count();
}

/// The same in processor time of this thread, which on a busy machine tells more of one core.
double ProcessorMilliseconds(const std::function<void()>& run) {
  const auto now = [] {
    timespec time;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return 1e3 * static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_nsec);
  };
  ClearArithmeticFaults();
  const double begin = now();
  run();
  return now() - begin;
}

struct Times {
  std::vector<double> all;
  double Best() const { return *std::min_element(all.begin(), all.end()); }
  double Mean() const {
    return std::accumulate(all.begin(), all.end(), 0.0) / static_cast<double>(all.size());
  }
};

void Measure(const Task& task, int n, bool loaded) {
  Team one(1);
  Team& all = SharedTeam();
  const std::function<void()> run = task.make(n);
  const std::function<void()> library = task.library ? task.library(n) : nullptr;
  Times alone;
  Times shared;
  Times others;
  constexpr int kRounds = 50;
  constexpr double kEnough = 1000;
  double spent = 0;
  // The library's threads keep the cores for a while after their last job.
  std::this_thread::sleep_for(std::chrono::milliseconds(200));
  for (int round = 0; round < kRounds && (round < 5 || loaded || spent < kEnough); ++round) {
    {
      const UseTeam use(one);
      alone.all.push_back(Milliseconds(run));
    }
    {
      const UseTeam use(all);
      shared.all.push_back(Milliseconds(run));
    }
    spent += alone.all.back() + shared.all.back();
  }
  for (std::size_t round = 0; library && round < shared.all.size(); ++round) {
    others.all.push_back(Milliseconds(library));
  }
  const auto figure = [loaded](const Times& times) { return loaded ? times.Mean() : times.Best(); };
  std::printf("%-14s %5d %10.3f %10.3f %7.2f", task.name, n, figure(alone), figure(shared),
              figure(alone) / figure(shared));
  if (library) std::printf(" %9.2f", figure(others) / figure(shared));
  std::printf("\n");
  std::fflush(stdout);
}

/// What an order, in turns with its neighbours, takes for each of its steps beside what they
/// take: on one core in processor time, on all in wall time.
void MeasureAround(const Task& task, int n) {
  constexpr int kStep = 8;
  constexpr int kRounds = 15;
  Team one(1);
  Team& all = SharedTeam();
  std::vector<std::function<void()>> runs;
  for (const int order : {n - kStep, n, n + kStep}) runs.push_back(task.make(order));
  double quotient[2];
  Times middle[2];
  for (int team = 0; team < 2; ++team) {
    const UseTeam use(team == 0 ? one : all);
    Times times[3];
    for (int round = 0; round < kRounds; ++round) {
      for (int k = 0; k < 3; ++k) {
        times[k].all.push_back(team == 0 ? ProcessorMilliseconds(runs[k]) : Milliseconds(runs[k]));
      }
    }
    const auto each = [&](int k) {
      return times[k].Best() / std::pow(n + (k - 1) * kStep, task.power);
    };
    quotient[team] = 2 * each(1) / (each(0) + each(2));
    middle[team] = times[1];
  }
  std::printf("%-14s %5d %10.3f %10.3f %7.2f %9.2f\n", task.name, n, middle[0].Best(),
              middle[1].Best(), quotient[0], quotient[1]);
  std::fflush(stdout);
}

/// Processes that do nothing but keep the cores busy, until it goes out of scope.
class Load {
 public:
  explicit Load(unsigned processes) {
    for (unsigned k = 0; k < processes; ++k) {
      const pid_t child = fork();
      if (child == 0) {
        volatile bool goesOn = true;
        while (goesOn) {
        }
      }
      children_.push_back(child);
    }
  }
  ~Load() {
    for (const pid_t child : children_) {
      kill(child, SIGKILL);
      waitpid(child, nullptr, 0);
    }
  }
  Load(const Load&) = delete;
  Load& operator=(const Load&) = delete;

 private:
  std::vector<pid_t> children_;
};

}  // namespace
}  // namespace qmx::bench

int main(int argc, char** argv) {
  using namespace qmx;
  KeepFreedMemory();
  const std::vector<std::string> given(argv + 1, argv + argc);
  const auto take = [&given](const char* what) {
    return std::find(given.begin(), given.end(), what) != given.end();
  };
  const bool loaded = take("--loaded");
  const bool brief = take("--short");
  const bool sweeps = take("--sweep");
  const bool around = take("--around");
  std::vector<int> sweep(20);
  for (int k = 0; k < 20; ++k) sweep[k] = 10 * (k + 1);
  const auto isWanted = [&](const bench::Task& task) {
    return take(task.name) ||
           given.size() == static_cast<std::size_t>(loaded + brief + sweeps + around);
  };
  const bench::Load load(loaded ? std::thread::hardware_concurrency() : 0);
#if defined(QMX_BENCH_LIBRARIES)
  bench::UseThreads(SharedTeam().Members());
#endif
  std::printf("%s of wall times in ms, one core and %d, %s\n", loaded ? "Means" : "Best",
              SharedTeam().Members(), loaded ? "beside as many busy processes" : "nothing beside");
  std::printf("%-14s %5s %10s %10s %7s %9s\n", "task", "n", "one", "all",
              around ? "n/beside" : "one/all", around ? "with all" : "lib/all");
  for (const bench::Task& task : bench::Tasks()) {
    if (!isWanted(task)) continue;
    if (around) {
      if (task.orders.back() < 1000) continue;
      for (const int n : {512, 1024, 1536}) bench::MeasureAround(task, n);
      continue;
    }
    for (const int n : sweeps ? sweep : task.orders) {
      if (!brief || n <= 200) bench::Measure(task, n, loaded);
    }
  }
  return 0;
}
