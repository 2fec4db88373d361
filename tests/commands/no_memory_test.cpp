// SPDX-License-Identifier: MIT
// Every command with every one of its allocations failing.

#include <cstdlib>

#if defined(__GLIBC__) && !defined(QMX_SANITIZED)

#include <gtest/gtest.h>

#include <cerrno>
#include <utility>

#include "commands/dispatcher.h"
#include "commands/export_commands.h"
#include "commands/file_commands.h"
#include "commands/grid_commands.h"
#include "commands/import_commands.h"
#include "commands/lifecycle.h"
#include "commands/parameters.h"
#include "commands/system_columns.h"
#include "support/core_walk.h"
#include "workspace/task_numbers.h"

namespace {

/// Counts down to the allocation that fails; 0 while none does.
thread_local long untilFailure = 0;

bool FailsNow() { return untilFailure > 0 && --untilFailure == 0; }

}  // namespace

// The C library's own, which ours stand before.
extern "C" void* __libc_malloc(std::size_t size);
extern "C" void* __libc_calloc(std::size_t count, std::size_t size);

extern "C" void* malloc(std::size_t size) {
  if (!FailsNow()) return __libc_malloc(size);
  errno = ENOMEM;
  return nullptr;
}

extern "C" void* calloc(std::size_t count, std::size_t size) {
  if (!FailsNow()) return __libc_calloc(count, size);
  errno = ENOMEM;
  return nullptr;
}

namespace qmx {
namespace {

using test::Rows;

/// A command, and what it needs to find.
struct Trial {
  const char* name;
  void (*prepare)(test::RunnerBench& bench);
  void (*run)(test::RunnerBench& bench);
};

void EnterBoth(test::RunnerBench& bench) {
  bench.EnterA(Rows({{4, 1, 2}, {1, 5, 3}, {2, 3, 6}}));
  bench.EnterB(Rows({{1, 2, 3}, {4, 5, 6}, {7, 8, 10}}));
}

template <int kTask>
void PressIt(test::RunnerBench& bench) {
  bench.runner.Step("task", [](Context& c) { PressTask(c, kTask); });
}

/// Accepts whatever is proposed, once, and takes no memory for that.
class AcceptOnce : public ForeignDialogs {
 public:
  bool AskImport(ImportQuestion&) override { return std::exchange(willing_, false); }
  bool AskExport(Slot, ForeignChoice&) override { return std::exchange(willing_, false); }
  std::optional<int> AskRightSide(int) override { return 1; }

 private:
  bool willing_ = true;
};

template <Slot kTarget>
void ImportIt(test::RunnerBench& bench) {
  AcceptOnce dialogs;
  bench.runner.Step("Import", [&](Context& c) { ImportFile(c, dialogs, kTarget); });
}

void FillEverything(test::RunnerBench& bench) {
  EnterBoth(bench);
  for (const int task : {0, 1, 2, 3, 4, 5, 6, 8, 9, 10, 14, 15, 18, 19}) bench.Press(task);
  bench.EnterSystem(Rows({{2, 1, 3}, {1, 3, 5}}));
  PressSolve(bench.context);
}

void SaveEverything(test::RunnerBench& bench) {
  FillEverything(bench);
  bench.screen.fileNames = {"p"};
  SaveProjectAs(bench.context);
  bench.Reset(kSlotA);
  bench.screen.fileNames = {"p"};
}

constexpr Trial kTrials[] = {
    {"Sum", EnterBoth, PressIt<kTaskSum>},
    {"Product", EnterBoth, PressIt<kTaskProduct>},
    {"Determinant", EnterBoth, PressIt<kTaskDeterminant>},
    {"Inverse", EnterBoth, PressIt<kTaskInverse>},
    {"Adjoint", EnterBoth, PressIt<kTaskAdjoint>},
    {"AdjointByInverse", EnterBoth, PressIt<kTaskAdjointByInverse>},
    {"LU", EnterBoth, PressIt<kTaskLU>},
    {"QR", EnterBoth, PressIt<kTaskQR>},
    {"Definiteness", EnterBoth, PressIt<kTaskDefiniteness>},
    {"Eigen", EnterBoth, PressIt<kTaskEigen>},
    {"Transpose", EnterBoth, PressIt<kTaskTranspose>},
    {"Scale", EnterBoth, PressIt<kTaskScale>},
    {"Shift", EnterBoth, PressIt<kTaskShift>},
    {"SpecialMatrix", EnterBoth, PressIt<kTaskSpecialMatrix>},
    {"Symmetry", EnterBoth, PressIt<kTaskSymmetry>},
    {"Create", [](test::RunnerBench&) {},
     [](test::RunnerBench& bench) {
       bench.runner.Step("Create", [](Context& c) { CreateOperand(c, kSlotA); });
     }},
    {"Clear", EnterBoth,
     [](test::RunnerBench& bench) {
       bench.runner.Step("Clear", [](Context& c) { ClearOperand(c, kSlotA); });
     }},
    {"Reset",
     [](test::RunnerBench& bench) {
       FillEverything(bench);
       bench.screen.answers = {Answer::kYes};
     },
     [](test::RunnerBench& bench) {
       bench.runner.Step("Reset", [](Context& c) { ResetOperand(c, kSlotA); });
     }},
    {"Exchange", EnterBoth,
     [](test::RunnerBench& bench) { bench.runner.Step("Exchange", ExchangeAandB); }},
    {"IntoA", EnterBoth,
     [](test::RunnerBench& bench) {
       bench.runner.Step("Into", [](Context& c) { CopyInto(c, kSlotA, kSlotB); });
     }},
    {"Solve",
     [](test::RunnerBench& bench) {
       bench.EnterSystem(Rows({{2, 1, 3}, {1, 3, 5}}));
     },
     [](test::RunnerBench& bench) { bench.runner.Step("Solve", PressSolve); }},
    {"Cell", EnterBoth,
     [](test::RunnerBench& bench) { bench.runner.WriteCell(kSlotA, 1, 2, "7"); }},
    {"Paste", EnterBoth,
     [](test::RunnerBench& bench) { bench.runner.Paste(kSlotA, 1, 1, "5\t6\n7\t8\n"); }},
    {"PasteAs", EnterBoth,
     [](test::RunnerBench& bench) {
       bench.runner.Step("Paste", [](Context& c) { PasteAs(c, kSlotB, "5\t6,5\n7\t8\n"); });
     }},
    {"ImportTable",
     [](test::RunnerBench& bench) {
       EnterBoth(bench);
       bench.files.files["f"] = "1;2,5\n3;4\n";
       bench.screen.fileNames = {"f"};
     },
     ImportIt<kSlotA>},
    {"ImportOctaveText",
     [](test::RunnerBench& bench) {
       bench.files.files["f"] = "# name: M\n# type: matrix\n# rows: 1\n# columns: 2\n 1 2\n";
       bench.screen.fileNames = {"f"};
     },
     ImportIt<kSlotCreated>},
    {"ImportSystem",
     [](test::RunnerBench& bench) {
       FillEverything(bench);
       bench.files.files["f"] = "1,2\n3,4\n5,7\n";
       bench.screen.fileNames = {"f"};
     },
     ImportIt<kSlotSystem>},
    {"IntoSystem",
     [](test::RunnerBench& bench) {
       FillEverything(bench);
       bench.Reset(kSlotB);
       bench.EnterB(Rows({{1}, {2}, {3}}));
     },
     [](test::RunnerBench& bench) {
       AcceptOnce dialogs;
       bench.runner.Step("Into", [&](Context& c) { IntoSystem(c, dialogs); });
     }},
    {"Export",
     [](test::RunnerBench& bench) {
       EnterBoth(bench);
       bench.screen.fileNames = {"f"};
     },
     [](test::RunnerBench& bench) {
       AcceptOnce dialogs;
       bench.runner.Do([&](Context& c) { ExportSlot(c, dialogs, kSlotA); });
     }},
    {"Open", SaveEverything,
     [](test::RunnerBench& bench) { bench.runner.Step("Open", OpenProject); }},
    {"Save", SaveEverything, [](test::RunnerBench& bench) { bench.runner.Do(SaveProjectAs); }},
    {"Undo",
     [](test::RunnerBench& bench) {
       EnterBoth(bench);
       PressIt<kTaskScale>(bench);
     },
     [](test::RunnerBench& bench) { bench.runner.Undo(); }},
};

class NoMemory : public ::testing::TestWithParam<Trial> {};

INSTANTIATE_TEST_SUITE_P(Commands, NoMemory, ::testing::ValuesIn(kTrials),
                         [](const auto& trial) { return trial.param.name; });

class Bench : public test::RunnerBench {
  void TestBody() override {}
};

/// What the Workspace holds, the name of the file that a dialog gave aside.
std::string Held(Bench& bench) {
  bench.workspace.currentFileName.clear();
  return bench.Saved();
}

TEST_P(NoMemory, LeavesTheWorkspaceOfBeforeOrAfter) {
  const Trial& trial = GetParam();
  std::string before;
  std::string after;
  {
    Bench bench;
    trial.prepare(bench);
    before = Held(bench);
    trial.run(bench);
    after = Held(bench);
    ASSERT_TRUE(bench.faults.empty());
  }
  for (long n = 1;; ++n) {
    Bench bench;
    trial.prepare(bench);
    bench.faults.reserve(4);
    untilFailure = n;
    trial.run(bench);
    const bool failed = untilFailure == 0;
    untilFailure = 0;
    if (!failed) break;
    const std::string held = Held(bench);
    ASSERT_TRUE(held == before || held == after) << "allocation " << n << "\n" << held;
    if (!bench.faults.empty()) {
      ASSERT_EQ(bench.faults, std::vector<Fault>{Fault::kOutOfMemory}) << "allocation " << n;
    } else {
      // Where the lack of memory is no fault, the user was told in a box, or nothing needed it.
      ASSERT_TRUE(held == after || !bench.screen.messages.empty()) << "allocation " << n;
    }
    ASSERT_LT(n, 20000) << "no end in sight";
  }
}

}  // namespace
}  // namespace qmx

#endif
