// SPDX-License-Identifier: MIT
// Reading and writing files, stopped at many of their reports.

#include "commands/dispatcher.h"
#include "commands/file_commands.h"
#include "commands/lifecycle.h"
#include "support/core_walk.h"
#include "workspace/task_numbers.h"

namespace qmx {
namespace {

using Command = void (*)(CommandRunner& runner);

struct Trial {
  const char* name;
  const char* doing;
  Command run;
};

void PrintTo(const Trial& trial, std::ostream* out) { *out << trial.name; }

/// Matrices so large that their numbers alone are several reports, in the Workspace and in files.
class StopFiles : public test::RunnerBench, public ::testing::WithParamInterface<Trial> {
 protected:
  static constexpr int kOrder = 190;

  StopFiles() {
    workspace.SystemMethod = kSystemByFactors;
    EnterA(Random(1));
    EnterB(Random(2));
    runner.Step("LU", [](Context& c) { PressTask(c, kTaskLU); });
    EnterSystem(Random(3));
    screen.fileNames = {"project", "factors", "matrix", "system"};
    runner.Do(SaveProjectAs);
    runner.Do(SaveLU);
    runner.Do([](Context& c) { SaveSlot(c, kSlotB); });
    runner.Do([](Context& c) { SaveSlot(c, kSlotSystem); });
    workspace.A().array(1, 1) = 77;
    workspace.System().array(1, 1) = 77;
    workspace.storedFactors.L(kOrder, 1) = 77;
    workspace.currentFileName = "project.qmx";
  }
  static Matrix Random(int seed) {
    Matrix matrix(kOrder, kOrder);
    for (int i = 1; i <= kOrder; ++i) {
      for (int j = 1; j <= kOrder; ++j) matrix(i, j) = (i * 7 + j * seed) % 13 + (i == j ? 99 : 0);
    }
    return matrix;
  }
  std::string All() const {
    return Saved() + Shown() + workspace.currentFileName + std::to_string(runner.IsChanged());
  }
};

constexpr std::string_view kLarge = "large";

const Trial kTrials[] = {
    {"Save", "Writing project.qmx", [](CommandRunner& runner) { runner.Do(SaveProject); }},
    {"SaveAs", "Writing large.qmx", [](CommandRunner& runner) { runner.Do(SaveProjectAs); }},
    {"SaveA", "Writing large",
     [](CommandRunner& runner) { runner.Do([](Context& c) { SaveSlot(c, kSlotA); }); }},
    {"SaveSystem", "Writing large",
     [](CommandRunner& runner) { runner.Do([](Context& c) { SaveSlot(c, kSlotSystem); }); }},
    {"SaveLU", "Writing large", [](CommandRunner& runner) { runner.Do(SaveLU); }},
    {"Open", "Reading project.qmx",
     [](CommandRunner& runner) {
       runner.Step("Open", [](Context& c) { OpenNamedProject(c, "project.qmx"); });
     }},
    {"RetrieveA", "Reading matrix",
     [](CommandRunner& runner) {
       runner.Step("Retrieve", [](Context& c) { RetrieveOperand(c, kSlotA); });
     }},
    {"RetrieveSystem", "Reading system",
     [](CommandRunner& runner) { runner.Step("Retrieve", RetrieveSystem); }},
    {"RetrieveLU", "Reading factors",
     [](CommandRunner& runner) { runner.Step("Retrieve", RetrieveLU); }},
};

INSTANTIATE_TEST_SUITE_P(Files, StopFiles, ::testing::ValuesIn(kTrials),
                         [](const auto& trial) { return trial.param.name; });

TEST_P(StopFiles, LeavesEverythingAsItWasBeforeThePress) {
  const Trial& trial = GetParam();
  const std::string doing = trial.doing;
  const std::string name = doing.starts_with("Writing") ? std::string(kLarge) : doing.substr(8);
  const std::string before = All();
  const auto filesBefore = files.files;
  int stops = 0;
  for (int at = 1;; at += 1 + at / 4) {
    screen.fileNames = {name};
    screen.stopAt = at;
    trial.run(runner);
    EXPECT_EQ(screen.doing, doing);
    if (screen.stopAt > 0) break;
    ++stops;
    ASSERT_EQ(All(), before) << "stopped at report " << at;
    ASSERT_EQ(files.files, filesBefore) << "stopped at report " << at;
    ASSERT_TRUE(screen.status.ends_with(" was stopped. Everything is as it was before."))
        << screen.status;
  }
  EXPECT_GE(stops, 3) << "two of the numbers and one of the disk";
  EXPECT_TRUE(screen.messages.empty());
  EXPECT_TRUE(All() != before || files.files != filesBefore) << "the last run was not stopped";
}

TEST_P(StopFiles, ReportsFromNothingToAllOfIt) {
  screen.fileNames = {std::string(GetParam().doing).substr(8)};
  screen.progress.clear();
  GetParam().run(runner);
  ASSERT_GE(screen.progress.size(), 3U);
  EXPECT_TRUE(std::is_sorted(screen.progress.begin(), screen.progress.end()));
  EXPECT_LE(screen.progress.front(), 0.4);
  EXPECT_GE(screen.progress.back(), 0.7);
  EXPECT_LE(screen.progress.back(), 1);
}

}  // namespace
}  // namespace qmx
