// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <new>
#include <random>
#include <utility>
#include <vector>

#include "base/number_text.h"
#include "commands/dispatcher.h"
#include "commands/file_bench.h"
#include "commands/file_commands.h"
#include "support/core_data.h"

namespace qmx {
namespace {

using test::Rows;
using test::WindowState;

class ProjectCommands : public test::FileBench {};

TEST_F(ProjectCommands, SaveProjectAsksOnceAndAppendsTheEnding) {
  EnterA(Rows({{1, -2.5}, {0.5, 1e-20}}));
  Answer("p");
  SaveProject(context);
  EXPECT_EQ(files.files.at("p.qmx"), test::DataFile("a.qmx"));
  EXPECT_EQ(workspace.currentFileName, "p.qmx");
  files.files.clear();
  SaveProject(context);
  SaveProject(context);
  EXPECT_EQ(files.files.size(), 1U);
  EXPECT_EQ(files.files.count("p.qmx"), 1U);
  EXPECT_EQ(screen.saveDialogs, 1);
}

TEST_F(ProjectCommands, TheEndingIsComparedToTheLetter) {
  for (const auto& [name, written] : std::vector<std::pair<std::string, std::string>>{
           {"p.QMX", "p.QMX.qmx"}, {"p.qmx", "p.qmx"}, {"qmx", "qmx.qmx"}, {".qmx", ".qmx"}}) {
    files.files.clear();
    Answer(name);
    SaveProjectAs(context);
    EXPECT_EQ(files.files.count(written), 1U) << name;
  }
}

TEST_F(ProjectCommands, SaveProjectTakesTheNameOfTheLastFile) {
  Put("m.txt", test::DataFile("matrix.txt"));
  Answer("m.txt");
  RetrieveOperand(context, kSlotA);
  SaveProject(context);
  EXPECT_EQ(screen.saveDialogs, 0);
  EXPECT_EQ(files.files.count("m.txt.qmx"), 1U);
}

TEST_F(ProjectCommands, SaveAsksBeforeANameWithANewEndingReplacesAFile) {
  EnterA(Rows({{1}}));
  workspace.currentFileName = "UP.QMX";
  Put("UP.QMX.qmx", "somebody else's");
  screen.mayReplace = false;
  SaveProject(context);
  EXPECT_EQ(screen.replaced, std::vector<std::string>{"UP.QMX.qmx"});
  EXPECT_EQ(files.files.at("UP.QMX.qmx"), "somebody else's");
  EXPECT_EQ(workspace.currentFileName, "UP.QMX");
  screen.mayReplace = true;
  SaveProject(context);
  EXPECT_NE(files.files.at("UP.QMX.qmx"), "somebody else's");
  EXPECT_EQ(workspace.currentFileName, "UP.QMX.qmx");
  SaveProject(context);
  EXPECT_EQ(screen.replaced.size(), 2U) << "its own file by now";
}

TEST_F(ProjectCommands, OpenProjectAppendsTheEndingAndReadsEverything) {
  Put("everything.qmx", test::DataFile("everything.qmx"));
  Answer("everything");
  OpenProject(context);
  EXPECT_TRUE(NoMessage());
  EXPECT_EQ(workspace.currentFileName, "everything.qmx");
  EXPECT_TRUE(test::SameProject(test::EverythingWorkspace(), workspace));
  EXPECT_TRUE(screen.Enabled(mnuPrint));
  EXPECT_TRUE(screen.Enabled(cmdShowResults));
  EXPECT_EQ(screen.timesBroughtToFront, 1);
  EXPECT_TRUE(screen.lines.empty());
}

TEST_F(ProjectCommands, AnOpenedProjectShowsInTheMainWindow) {
  Put("e.qmx", test::DataFile("everything.qmx"));
  OpenNamedProject(context, "e.qmx");
  EXPECT_EQ(Text(lblDeterminantOfA), "-6.5");
  EXPECT_EQ(Text(lblTraceOfA), "1E+16");
  EXPECT_EQ(Text(lblDefiniteness), "Positive definite");
  EXPECT_EQ(Text(lblSymmetry), "Yes");
  EXPECT_EQ(Text(txtError), "0.001");
  EXPECT_EQ(Text(txtMaxcy), "100");
  EXPECT_EQ(Text(txtErs), "0.1");
  EXPECT_EQ(Text(txtPert), "0.001");
  EXPECT_EQ(Text(txtRowsA), "2");
  EXPECT_EQ(Text(txtRowsCreated), "1");
  EXPECT_EQ(Text(txtColsCreated), "3");
  EXPECT_EQ(Text({"lblRowsInverse"}), "2");
  EXPECT_EQ(Text({"lblColsInverse"}), "2");
  EXPECT_EQ(Text({"lblRowsPermutation"}), "2");
  EXPECT_EQ(Text({"lblColsPermutation"}), "2");
  EXPECT_EQ(Text({"lblRowsExchanges"}), "2");
  EXPECT_EQ(Text({"lblColsExchanges"}), "0");
  EXPECT_EQ(Text({"lblRowsSolution"}), "2");
  EXPECT_EQ(Text({"lblColsSolution"}), "0");
  EXPECT_EQ(Text({"lblRowsEigenvalues"}), "3");
  EXPECT_EQ(Text({"lblRowsEigenvectors"}), "3");
  EXPECT_EQ(Text({"lblColsEigenvectors"}), "1");
  EXPECT_EQ(Text(txtEquations), "2");
  EXPECT_EQ(Text(txtUnknowns), "2");
  EXPECT_TRUE(screen.IsSelected(OptSystem(1)));
  for (const Slot slot : kAllSlots) {
    EXPECT_TRUE(screen.Enabled(cmdShow(slot))) << slot;
    EXPECT_TRUE(screen.frames[slot] || HasPermanentFrame(slot)) << slot;
    EXPECT_EQ(screen.windows[slot], WindowState::kHidden) << slot;
    EXPECT_FALSE(screen.grids[slot].texts.empty()) << slot;
  }
  EXPECT_EQ(screen.grids[kSlotEigenvalues].Text(0, 0), "EVL(3)=");
  EXPECT_EQ(screen.grids[kSlotEigenvectors].Text(0, 1), "4");
  EXPECT_EQ(screen.grids[kSlotEigenvectors].Text(2, 1), "0.8");
  EXPECT_EQ(screen.grids[kSlotPermutation].Text(1, 2), "1");
}

TEST_F(ProjectCommands, AnOpenedProjectSetsTheParametersToTheLastBit) {
  workspace = test::EverythingWorkspace();
  screen.Type(txtError, "0.1234567890123456789");
  screen.Type(txtErs, "0.30000000000000004");
  screen.Type(txtPert, "0.1");
  Answer("p.qmx");
  SaveProjectAs(context);
  const double error = Val(Text(txtError));
  OpenNamedProject(context, "p.qmx");
  EXPECT_EQ(Text(txtError), "0.12345678901234568");
  EXPECT_EQ(Val(Text(txtError)), error);
  EXPECT_EQ(Text(txtErs), "0.30000000000000004");
  EXPECT_EQ(Text(txtPert), "0.1");
  const std::string first = files.files.at("p.qmx");
  SaveProject(context);
  EXPECT_EQ(files.files.at("p.qmx"), first);
}

TEST_F(ProjectCommands, AnOpenedVectorHasACountOfNoColumns) {
  Put("e.qmx", test::DataFile("everything.qmx"));
  OpenNamedProject(context, "e.qmx");
  EXPECT_EQ(workspace.At(kSlotSolution).rows, 2);
  EXPECT_EQ(workspace.At(kSlotSolution).cols, 0);
  EXPECT_EQ(Array(kSlotSolution).Cols(), 1);
  EXPECT_EQ(workspace.At(kSlotExchanges).cols, 0);
  EXPECT_EQ(workspace.At(kSlotEigenvalues).cols, 1);
}

TEST_F(ProjectCommands, WhatAProjectDoesNotHoldStaysWithItsFlagCleared) {
  EnterB(Rows({{1, 2}, {3, 4}}));
  EnterA(Rows({{9}}));
  Press(19);
  Put("a.qmx", test::DataFile("a.qmx"));
  OpenNamedProject(context, "a.qmx");
  EXPECT_EQ(Array(kSlotA), Rows({{1, -2.5}, {0.5, 1e-20}}));
  EXPECT_FALSE(workspace.BCreated);
  EXPECT_EQ(Array(kSlotB), Rows({{1, 2}, {3, 4}}));
  EXPECT_FALSE(workspace.SymmetryComputed);
  EXPECT_EQ(Text(lblSymmetry), "Yes");
}

TEST_F(ProjectCommands, AnOpenEntryBoxGoesWhenItsMatrixIsReplaced) {
  EnterA(Rows({{9}}));
  screen.entryBoxes[kSlotA] = true;
  Put("a.qmx", test::DataFile("a.qmx"));
  OpenNamedProject(context, "a.qmx");
  EXPECT_FALSE(screen.entryBoxes[kSlotA]);
}

TEST_F(ProjectCommands, ACommandLineLosesItsQuotes) {
  const std::string bytes = test::DataFile("a.qmx");
  Put("C:\\a b\\p.qmx", bytes);
  Put("p.txt", bytes);
  Put("cu", bytes);
  OpenNamedProject(context, "\"C:\\a b\\p.qmx\"");
  EXPECT_EQ(workspace.currentFileName, "C:\\a b\\p.qmx");
  OpenNamedProject(context, "p.txt");
  EXPECT_EQ(workspace.currentFileName, "p.txt");
  OpenNamedProject(context, "\"cut");
  EXPECT_EQ(workspace.currentFileName, "cu");
  EXPECT_EQ(screen.timesBroughtToFront, 3);
  EXPECT_TRUE(NoMessage());
  OpenNamedProject(context, "");
  EXPECT_TRUE(NoMessage());
}

TEST_F(ProjectCommands, NothingBetweenQuotesIsTheNameOfNoFile) {
  for (const char* quotes : {"\"", "\"\""}) {
    screen.messages.clear();
    OpenNamedProject(context, quotes);
    ASSERT_EQ(screen.messages.size(), 1U) << quotes;
    EXPECT_TRUE(screen.LastMessage().starts_with("The file \"\" could not be read."));
  }
}

TEST_F(ProjectCommands, AFileThatIsNotThereGivesOneBox) {
  const std::string before = Everything();
  OpenNamedProject(context, "missing.qmx");
  ASSERT_EQ(screen.messages.size(), 1U);
  EXPECT_EQ(screen.LastMessage(),
            "The file \"missing.qmx\" could not be read. Nothing was changed.\n\n"
            "There is no such file.");
  EXPECT_EQ(screen.messages[0].icon, Icon::kCritical);
  EXPECT_EQ(Everything(), before);
}

TEST_F(ProjectCommands, EveryCutOfAProjectLeavesEverythingAsItWas) {
  const std::string bytes = test::DataFile("everything.qmx");
  EnterA(Rows({{1, 2}, {2, 5}}));
  for (const int task : {3, 4, 5, 8, 9, 10, 14, 15, 19}) Press(task);
  screen.messages.clear();
  const std::string before = Everything();
  for (std::size_t length = 0; length < bytes.size(); ++length) {
    Put("cut.qmx", bytes.substr(0, length));
    OpenNamedProject(context, "cut.qmx");
    ASSERT_EQ(screen.messages.size(), length + 1);
    ASSERT_NE(screen.LastMessage().find("\"cut.qmx\""), std::string::npos);
    ASSERT_NE(screen.LastMessage().find("Line "), std::string::npos);
    ASSERT_EQ(Everything(), before) << length;
  }
}

TEST_F(ProjectCommands, ATaskSessionComesBackBitByBit) {
  EnterA(Rows({{4, 1, 0.1}, {1, 3, 1.0 / 3}, {0.1, 1.0 / 3, 1}}));
  EnterB(Rows({{1, 0, 0}, {0, 1, 1e-20}, {0, 0, 7}}));
  for (const int task : {0, 1, 2, 3, 4, 5, 6, 8, 9, 10, 14, 15, 18, 19}) Press(task);
  EnterSystem(Rows({{2, 1, 3}, {1, -1, 0.25}}));
  PressSolve(context);
  screen.messages.clear();
  Answer("all");
  SaveProject(context);
  const Workspace saved = workspace;
  const std::string bytes = files.files.at("all.qmx");
  workspace = Workspace();
  OpenNamedProject(context, "all.qmx");
  EXPECT_TRUE(NoMessage()) << screen.LastMessage();
  EXPECT_TRUE(test::SameProject(saved, workspace));
  EXPECT_EQ(test::FlagLine(saved), "TTTTTTTTTT-TTTTTTTTT");
  SaveProject(context);
  EXPECT_EQ(files.files.at("all.qmx"), bytes);
}

TEST_F(ProjectCommands, AnyWorkspaceComesBackBitByBit) {
  std::mt19937 source(20240);
  for (int round = 0; round < 3000; ++round) {
    workspace = test::RandomWorkspace(source);
    const Workspace saved = workspace;
    workspace.currentFileName = "any.qmx";
    SaveProject(context);
    const std::string bytes = files.files.at("any.qmx");
    workspace = Workspace();
    OpenNamedProject(context, "any.qmx");
    ASSERT_TRUE(NoMessage()) << round << screen.LastMessage() << "\n" << bytes;
    ASSERT_TRUE(test::SameProject(saved, workspace)) << round << test::FlagLine(saved) << bytes;
    SaveProject(context);
    ASSERT_EQ(files.files.at("any.qmx"), bytes) << round;
  }
}

TEST_F(ProjectCommands, AfterAFaultTheProjectIsSavedAndOpensAgain) {
  EnterA(Rows({{1e300, 0}, {0, 1e300}}));
  EXPECT_THROW(Press(3), RuntimeFault);
  Answer("rescued");
  EXPECT_TRUE(SaveProjectAfterFault(context));
  workspace = Workspace();
  OpenNamedProject(context, "rescued.qmx");
  EXPECT_TRUE(NoMessage());
  EXPECT_EQ(Array(kSlotA), Rows({{1e300, 0}, {0, 1e300}}));
}

TEST_F(ProjectCommands, AfterAFaultASaveThatComesToNothingIsTold) {
  EnterA(Rows({{1}}));
  EXPECT_FALSE(SaveProjectAfterFault(context));
  EXPECT_TRUE(NoMessage());
  files.room = 10;
  Answer("one");
  EXPECT_FALSE(SaveProjectAfterFault(context));
  EXPECT_EQ(screen.messages.size(), 1U);
}

class ThrowingFiles : public FileStore {
 public:
  using FileStore::Read;
  using FileStore::Replace;
  FileOutcome Read(const std::string&, std::string&, Progress&) override { throw std::bad_alloc(); }
  FileOutcome Replace(const std::string&, std::string_view, Progress&) override {
    throw std::bad_alloc();
  }
};

TEST_F(ProjectCommands, SavingAfterAFaultNeverThrows) {
  ThrowingFiles throwing;
  Context odd{workspace, screen, {throwing, printer, random, clock, memory}};
  Answer("one");
  EXPECT_FALSE(SaveProjectAfterFault(odd));
}

}  // namespace
}  // namespace qmx
