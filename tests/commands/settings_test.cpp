// SPDX-License-Identifier: MIT
// What is set on the main window without being a step, where a project holds it.

#include "commands/dispatcher.h"
#include "commands/lifecycle.h"
#include "commands/parameters.h"
#include "files/project_file.h"
#include "support/core_walk.h"
#include "workspace/task_numbers.h"

namespace qmx {
namespace {

using test::Rows;

class SettingsTest : public test::RunnerBench {
 protected:
  std::string Bytes() const { return ProjectFile(workspace, ReadEigenTexts(screen)); }
  void Save() {
    runner.Do([this](Context&) { runner.MarkSaved(); });
  }
  void SolveBy(int way) {
    runner.Do([way](Context& c) { SelectSystemMethod(c, way); });
  }
};

TEST_F(SettingsTest, AParameterOfEigenvaluesThatAreThereIsAChange) {
  EnterA(Rows({{2, 1}, {1, 2}}));
  runner.Step("Eigen", [](Context& c) { PressTask(c, kTaskEigen); });
  Save();
  for (const EigenParameter& parameter : kEigenParameters) {
    const std::string before = screen.Text(parameter.field);
    screen.Type(parameter.field, "7");
    EXPECT_TRUE(runner.IsChanged()) << parameter.meaning;
    screen.Type(parameter.field, before + " ");
    EXPECT_FALSE(runner.IsChanged()) << "the file holds the number, not its text";
  }
}

TEST_F(SettingsTest, AParameterWithoutEigenvaluesIsInNoFile) {
  EnterA(Rows({{2, 1}, {1, 2}}));
  Save();
  screen.Type(txtMaxcy, "7");
  EXPECT_FALSE(runner.IsChanged());
}

TEST_F(SettingsTest, TheWayOfSolvingIsAChangeWhereThereIsASystem) {
  SolveBy(kSystemOverdetermined);
  EXPECT_FALSE(runner.IsChanged());
  EnterSystem(Rows({{1, 2}, {3, 4}, {5, 6}}));
  Save();
  SolveBy(kSystemOneShot);
  EXPECT_TRUE(runner.IsChanged());
  SolveBy(kSystemOverdetermined);
  EXPECT_FALSE(runner.IsChanged());
}

TEST_F(SettingsTest, UndoOfACellBringsBackTheBytesOfBefore) {
  EnterA(Rows({{2, 1}, {1, 2}}));
  EnterSystem(Rows({{1, 2}, {3, 4}}));
  runner.Step("Eigen", [](Context& c) { PressTask(c, kTaskEigen); });
  screen.Type(txtUnknowns, "5");
  Save();
  const std::string before = Bytes();
  const std::string shown = Shown();
  runner.WriteCell(kSlotA, 1, 1, "8");
  screen.Type(txtErs, "4");
  SolveBy(kSystemOverdetermined);
  const std::string after = Bytes();
  const std::string shownAfter = Shown();
  runner.Undo();
  EXPECT_EQ(Bytes(), before);
  EXPECT_EQ(Shown(), shown);
  EXPECT_FALSE(runner.IsChanged());
  runner.Redo();
  EXPECT_EQ(Bytes(), after);
  EXPECT_EQ(Shown(), shownAfter);
  EXPECT_TRUE(runner.IsChanged());
}

}  // namespace
}  // namespace qmx
