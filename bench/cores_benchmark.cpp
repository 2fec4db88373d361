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
#include <random>
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
#include "base/machine_load.h"
#include "base/memory.h"
#include "base/team.h"
#include "files/field_scanner.h"
#include "files/record_writer.h"
#include "operands.h"
#if defined(QMX_BENCH_LIBRARIES)
#include "libraries.h"
#endif

// What all cores give: wall times of a task on one core and on all of them in alternating rounds,
// and of the tuned library on as many threads. Rounds count in which nothing else ran, as far as
// the system says: the best of them, and for one core against all the medians, too. With --loaded
// as many busy processes run beside as there are cores, and means count. --short runs only small
// orders, --sweep every tenth up to 200, --steps from 200 to 400, --around multiples of 512 beside
// their neighbours; --ceiling tells what the machine gives to two processes that run the task on a
// core each. Tasks that are named run alone.

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
  double Median() const {
    std::vector<double> sorted = all;
    std::sort(sorted.begin(), sorted.end());
    return sorted[sorted.size() / 2];
  }
};

/// Whether nothing but this thread runs on the machine, once the team has gone to sleep.
bool IsQuiet() {
  std::this_thread::sleep_for(std::chrono::microseconds(300));
  return SystemLoad().Running().value_or(1) == 1;
}

/// Rounds on one core and on all of them.
struct Rounds {
  Times alone;
  Times shared;
  bool quiet = true;  ///< Whether nothing else ran.
};

/// At least so many, and for at least so many milliseconds; while the machine is quiet where that
/// is asked for and ever happens.
Rounds RunRounds(const std::function<void()>& run, int least, int enough, bool quietly) {
  Team one(1);
  Team& all = SharedTeam();
  Rounds counted;
  Rounds disturbed;
  disturbed.quiet = false;
  std::minstd_rand order(1601);
  const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(enough);
  for (int round = 0; round < least || std::chrono::steady_clock::now() < end; ++round) {
    const bool before = !quietly || IsQuiet();
    double times[2];
    // In turns one of them would always be the one that the system interrupts.
    const bool beginsShared = (order() >> 8) % 2 == 0;
    for (const bool second : {false, true}) {
      const bool shares = second != beginsShared;
      const UseTeam use(shares ? all : one);
      times[shares] = Milliseconds(run);
    }
    Rounds& rounds = before && (!quietly || IsQuiet()) ? counted : disturbed;
    rounds.alone.all.push_back(times[0]);
    rounds.shared.all.push_back(times[1]);
  }
  return counted.alone.all.empty() ? disturbed : counted;
}

void Measure(const Task& task, int n, bool loaded) {
  const std::function<void()> run = task.make(n);
  const std::function<void()> library = task.library ? task.library(n) : nullptr;
  // The library's threads keep the cores for a while after their last job.
  std::this_thread::sleep_for(std::chrono::milliseconds(200));
  const Rounds rounds = RunRounds(run, loaded ? 50 : 5, loaded ? 2000 : 800, !loaded);
  Times others;
  // Beside busy processes it may need a second for what takes a millisecond.
  const std::size_t most = std::min<std::size_t>(rounds.shared.all.size(), 50);
  const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(1500);
  while (library && others.all.size() < most &&
         (others.all.empty() || std::chrono::steady_clock::now() < end)) {
    others.all.push_back(Milliseconds(library));
  }
  const auto figure = [loaded](const Times& times) { return loaded ? times.Mean() : times.Best(); };
  std::printf("%-14s %5d %10.3f %10.3f %7.2f %7.2f", task.name, n, figure(rounds.alone),
              figure(rounds.shared), figure(rounds.alone) / figure(rounds.shared),
              rounds.alone.Median() / rounds.shared.Median());
  if (library) std::printf(" %9.2f", figure(others) / figure(rounds.shared));
  std::printf("%s\n", rounds.quiet ? "" : " (never quiet)");
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
  std::printf("%-14s %5d %10.3f %10.3f %7.2f %7.2f\n", task.name, n, middle[0].Best(),
              middle[1].Best(), quotient[0], quotient[1]);
  std::fflush(stdout);
}

/// Processes that do something for ever, until it goes out of scope.
class Beside {
 public:
  Beside(int processes, const std::function<void()>& something) {
    for (int k = 0; k < processes; ++k) {
      const pid_t child = fork();
      if (child == 0) {
        for (;;) something();
      }
      children_.push_back(child);
    }
  }
  ~Beside() {
    for (const pid_t child : children_) {
      kill(child, SIGKILL);
      waitpid(child, nullptr, 0);
    }
  }
  Beside(const Beside&) = delete;
  Beside& operator=(const Beside&) = delete;

 private:
  std::vector<pid_t> children_;
};

void KeepBusy() {
  volatile bool goesOn = true;
  while (goesOn) {
  }
}

/// What one core takes alone, and while other processes do the same on the other cores.
void MeasureCeiling(const Task& task, int n) {
  Team one(1);
  const UseTeam use(one);
  const std::function<void()> run = task.make(n);
  const auto times = [&run] {
    Times found;
    const auto end = std::chrono::steady_clock::now() + std::chrono::milliseconds(400);
    do {
      found.all.push_back(Milliseconds(run));
    } while (std::chrono::steady_clock::now() < end);
    return found;
  };
  const Times alone = times();
  const int cores = SystemLoad().Cores();
  const Beside others(cores - 1, run);
  const Times beside = times();
  std::printf("%-14s %5d %10.3f %10.3f %7.2f %7.2f\n", task.name, n, alone.Best(), beside.Best(),
              cores * alone.Best() / beside.Best(), cores * alone.Median() / beside.Median());
  std::fflush(stdout);
}

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
  const bool steps = take("--steps");
  const bool around = take("--around");
  const bool ceiling = take("--ceiling");
  std::vector<int> sweep;
  for (int k = 1; k <= 20; ++k) sweep.push_back(sweeps ? 10 * k : 200 + 10 * k);
  const auto isWanted = [&](const bench::Task& task) {
    return take(task.name) ||
           static_cast<long>(given.size()) ==
               std::count_if(given.begin(), given.end(),
                             [](const std::string& what) { return what.starts_with("--"); });
  };
  const bench::Beside load(loaded ? SystemLoad().Cores() : 0, bench::KeepBusy);
#if defined(QMX_BENCH_LIBRARIES)
  bench::UseThreads(SharedTeam().Members());
#endif
  std::printf("%s of wall times in ms, one core and %d, %s\n", loaded ? "Means" : "Best",
              SharedTeam().Members(), loaded ? "beside as many busy processes" : "nothing beside");
  const char* const gain = around ? "n/beside" : ceiling ? "gives" : "one/all";
  std::printf("%-14s %5s %10s %10s %7s %7s %9s\n", "task", "n", "one", ceiling ? "beside" : "all",
              gain, around ? "all" : "median", around ? "" : "lib/all");
  for (const bench::Task& task : bench::Tasks()) {
    if (!isWanted(task)) continue;
    if (around) {
      if (task.orders.back() < 1000) continue;
      for (const int n : {512, 1024, 1536}) bench::MeasureAround(task, n);
      continue;
    }
    for (const int n : sweeps || steps ? sweep : task.orders) {
      if (brief && n > 200) continue;
      if (ceiling) {
        bench::MeasureCeiling(task, n);
      } else {
        bench::Measure(task, n, loaded);
      }
    }
  }
  return 0;
}
