// SPDX-License-Identifier: MIT
#include "commands/file_commands.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

#include "commands/dispatcher.h"
#include "commands/file_bench.h"
#include "support/core_data.h"

namespace qmx {
namespace {

using test::Rows;
using test::WindowState;

class FileCommands : public test::FileBench {};

TEST_F(FileCommands, SaveSlotWritesTheNamedFile) {
  EnterA(Rows({{2, -1.5, 0.5}, {1e20, 0, 1.0 / 3}}));
  Answer("a.txt");
  SaveSlot(context, kSlotA);
  EXPECT_EQ(files.files.at("a.txt"), test::DataFile("matrix.txt"));
  EXPECT_EQ(workspace.currentFileName, "a.txt");
  EXPECT_TRUE(NoMessage());
}

TEST_F(FileCommands, SaveSlotGoesByTheArrayWhereTheCountsDiffer) {
  EnterA(Rows({{1, 2}}));
  workspace.A().rows = 9;
  Answer("a.txt");
  SaveSlot(context, kSlotA);
  EXPECT_EQ(files.files.at("a.txt"), "1,2\r\n 1 \r\n 2 \r\n");
}

TEST_F(FileCommands, ACancelledDialogWritesAndReadsNothing) {
  EnterA(Rows({{1, 2}}));
  workspace.currentFileName = "before";
  const std::string before = Everything();
  SaveSlot(context, kSlotA);
  EXPECT_EQ(workspace.currentFileName, "");
  SaveLU(context);
  SaveProjectAs(context);
  SaveProject(context);
  OpenProject(context);
  RetrieveSystem(context);
  RetrieveLU(context);
  RetrieveOperand(context, kSlotA);
  EXPECT_TRUE(files.files.empty());
  EXPECT_EQ(Everything(), before);
  EXPECT_TRUE(NoMessage());
}

TEST_F(FileCommands, AFileThatCannotBeWrittenIsToldAndKept) {
  EnterA(Rows({{1, 2}}));
  Put("a.txt", "old");
  files.room = 5;
  Answer("a.txt");
  SaveSlot(context, kSlotA);
  ASSERT_EQ(screen.messages.size(), 1U);
  EXPECT_EQ(screen.LastMessage(),
            "The file \"a.txt\" could not be written. It is as it was before.\n\n"
            "There is no space left.");
  EXPECT_EQ(screen.messages[0].icon, Icon::kCritical);
  EXPECT_EQ(screen.messages[0].title, "Orvane");
  EXPECT_EQ(files.files.at("a.txt"), "old");
}

TEST_F(FileCommands, AFileThatWasDamagedInWritingIsToldWithItsCopy) {
  EnterA(Rows({{1, 2}}));
  files.room = 5;
  files.copy = "/state/a.txt";
  Answer("a.txt");
  SaveSlot(context, kSlotA);
  EXPECT_EQ(screen.LastMessage(),
            "The file \"a.txt\" could not be written whole. What was to be written is in "
            "\"/state/a.txt\".\n\nThere is no space left.");
}

TEST_F(FileCommands, RetrieveOperandReadsAndShowsIt) {
  Put("m.txt", test::DataFile("matrix.txt"));
  workspace.currentFileName = "last.txt";
  Answer("m.txt");
  RetrieveOperand(context, kSlotB);
  EXPECT_EQ(screen.proposedName, "last.txt");
  EXPECT_EQ(workspace.currentFileName, "m.txt");
  EXPECT_EQ(Array(kSlotB), Rows({{2, -1.5, 0.5}, {1e20, 0, 1.0 / 3}}));
  EXPECT_TRUE(workspace.BCreated);
  EXPECT_FALSE(workspace.ACreated);
  EXPECT_EQ(Text(txtRowsB), "2");
  EXPECT_EQ(Text(txtColsB), "3");
  EXPECT_EQ(screen.grids[kSlotB].Text(2, 3), "0.3333333");
  EXPECT_EQ(screen.windows[kSlotB], WindowState::kShown);
  EXPECT_EQ(screen.timesBroughtToFront, 1);
  EXPECT_FALSE(screen.Enabled(cmdRetrieveB));
  EXPECT_TRUE(screen.Enabled(cmdClearB));
}

TEST_F(FileCommands, RetrieveOperandMakesAVectorRowsWithoutColumns) {
  Put("v.txt", test::DataFile("vector.txt"));
  Answer("v.txt");
  RetrieveOperand(context, kSlotA);
  EXPECT_TRUE(workspace.ACreated);
  EXPECT_EQ(Array(kSlotA).Rows(), 3);
  EXPECT_EQ(Array(kSlotA).Cols(), 0);
  EXPECT_EQ(Text(txtRowsA), "3");
  EXPECT_EQ(Text(txtColsA), "0");
}

TEST_F(FileCommands, RetrieveOperandKeepsTheNameWhenCancelled) {
  workspace.currentFileName = "last.txt";
  RetrieveOperand(context, kSlotA);
  EXPECT_EQ(workspace.currentFileName, "last.txt");
}

TEST_F(FileCommands, RetrieveSystemReplacesTheOldOneAndSelectsItsMethod) {
  EnterSystem(Rows({{1, 1}}));
  PressSolve(context);
  ASSERT_TRUE(workspace.SolutionComputed);
  Put("s.txt", "3,3\r\n1 2 3\n4 5 6\n7 8 9\n 2 \r\n");
  Answer("s.txt");
  RetrieveSystem(context);
  EXPECT_EQ(Array(kSlotSystem), Rows({{1, 2, 3}, {4, 5, 6}, {7, 8, 9}}));
  EXPECT_EQ(workspace.SystemMethod, 2);
  EXPECT_TRUE(screen.IsSelected(OptSystem(2)));
  EXPECT_FALSE(workspace.SolutionComputed);
  EXPECT_EQ(Text(txtEquations), "3");
  EXPECT_EQ(Text(txtUnknowns), "2");
  EXPECT_TRUE(screen.Enabled(cmdSolve));
  EXPECT_FALSE(screen.Enabled(cmdCreateSystem));
  EXPECT_FALSE(screen.Enabled(cmdRetrieveSystem));
  EXPECT_EQ(screen.windows[kSlotSystem], WindowState::kShown);
  EXPECT_EQ(screen.grids[kSlotSystem].Text(0, 3), " =  R.H.S.");
  EXPECT_EQ(screen.grids[kSlotSystem].Text(3, 3), "9");
}

TEST_F(FileCommands, RetrieveSystemByFactorsStoresThemForSolving) {
  Put("s.txt", test::DataFile("system-by-factors.txt"));
  Answer("s.txt");
  RetrieveSystem(context);
  EXPECT_EQ(workspace.SystemMethod, 1);
  EXPECT_TRUE(workspace.StoredFactorsValid);
  EXPECT_TRUE(screen.Enabled(cmdSaveLU));
  EXPECT_EQ(Text(txtEquations), "2");
  EXPECT_EQ(Text(txtUnknowns), "2");
  PressSolve(context);
  // L y = P b = (-0.5, 5), U x = y.
  ASSERT_TRUE(workspace.SolutionComputed);
  EXPECT_EQ(Array(kSlotSolution), Rows({{(-0.5 - 3 * (5.25 / -1.5)) / 4}, {5.25 / -1.5}}));
}

TEST_F(FileCommands, ASystemByFactorsWithoutFactorsKeepsThoseThatAreThere) {
  Put("s.txt", test::DataFile("system-by-factors.txt"));
  Put("bare.txt", "1,1\n1\n1\n0,0,0,0,0\n");
  Answer("s.txt");
  RetrieveSystem(context);
  const std::string factors = LUFile(workspace.storedFactors);
  Answer("bare.txt");
  RetrieveSystem(context);
  EXPECT_TRUE(workspace.StoredFactorsValid);
  EXPECT_EQ(LUFile(workspace.storedFactors), factors);
  EXPECT_TRUE(NoMessage());
}

TEST_F(FileCommands, ASystemWhoseFactorsAreNotSquareIsReadWithoutThem) {
  Put("s.txt", "2,1\n5\n6\n1\n3,3,3,4,0\n1 2 3\n");
  Answer("s.txt");
  RetrieveSystem(context);
  ASSERT_EQ(screen.messages.size(), 1U);
  EXPECT_EQ(screen.LastMessage(), "ERROR: INCORRECT DIMENSIONALITY. U FACTOR IS NOT SQUARE.");
  EXPECT_EQ(screen.messages[0].icon, Icon::kNone);
  EXPECT_FALSE(workspace.StoredFactorsValid);
  EXPECT_EQ(workspace.storedFactors.uCols, 4);
  EXPECT_EQ(Array(kSlotSystem), Rows({{5}, {6}}));
  EXPECT_EQ(Text(txtUnknowns), "2");
}

TEST_F(FileCommands, SavedFactorsComeBack) {
  EnterA(Rows({{1, 2}, {4, 3}}));
  Press(8);
  ASSERT_TRUE(workspace.StoredFactorsValid);
  Answer("lu");
  SaveLU(context);
  const StoredFactors saved = workspace.storedFactors;
  workspace.storedFactors = StoredFactors();
  workspace.StoredFactorsValid = false;
  screen.SetEnabled(cmdSaveLU, false);
  Answer("lu");
  RetrieveLU(context);
  EXPECT_TRUE(workspace.StoredFactorsValid);
  EXPECT_EQ(workspace.storedFactors.L, saved.L);
  EXPECT_EQ(workspace.storedFactors.U, saved.U);
  EXPECT_EQ(workspace.storedFactors.exchanges, saved.exchanges);
  EXPECT_EQ(workspace.storedFactors.exchangeRows, saved.exchangeRows);
  EXPECT_TRUE(screen.Enabled(cmdSaveLU));
  EXPECT_TRUE(screen.Enabled(cmdCreateSystem));
  EXPECT_TRUE(screen.Enabled(cmdRetrieveSystem));
  EXPECT_EQ(Text(txtEquations), "2");
  EXPECT_EQ(Text(txtUnknowns), "2");
}

TEST_F(FileCommands, FactorsWhoseUIsNotSquareKeepTheirCountsOnly) {
  Put("good", test::DataFile("lu.txt"));
  Put("bad", "3,3,3,4,0\n1 2 3\n");
  Answer("good");
  RetrieveLU(context);
  const Matrix u = workspace.storedFactors.U;
  Answer("bad");
  RetrieveLU(context);
  ASSERT_EQ(screen.messages.size(), 1U);
  EXPECT_EQ(screen.LastMessage(), "ERROR: INCORRECT DIMENSIONALITY. U FACTOR IS NOT SQUARE.");
  EXPECT_TRUE(workspace.StoredFactorsValid);
  EXPECT_EQ(workspace.storedFactors.U, u);
  EXPECT_EQ(workspace.storedFactors.lRows, 3);
  EXPECT_EQ(workspace.storedFactors.uCols, 4);
  EXPECT_EQ(Text(txtEquations), "3");
  EXPECT_EQ(Text(txtUnknowns), "3");
  EXPECT_TRUE(screen.Enabled(cmdCreateSystem));
  EXPECT_TRUE(screen.Enabled(cmdRetrieveSystem));
}

TEST_F(FileCommands, ARefusedFileDoesNotBecomeTheCurrentOne) {
  Put("damaged", "2,2\r\n 1 \r\n");
  Put("bad.qmx", "2,2\r\n 1 \r\n");
  Put("unfit", "3,3,3,4,0\n1 2 3\n");
  workspace.currentFileName = "before.qmx";
  const auto refuse = [&](const std::string& name, auto command) {
    Answer(name);
    command();
    EXPECT_EQ(screen.messages.size(), 1U) << name;
    screen.messages.clear();
    screen.fileNames.clear();
    EXPECT_EQ(workspace.currentFileName, "before.qmx") << name;
  };
  for (const char* name : {"damaged", "missing"}) {
    refuse(name, [&] { RetrieveOperand(context, kSlotA); });
    refuse(name, [&] { RetrieveSystem(context); });
    refuse(name, [&] { RetrieveLU(context); });
    refuse(name, [&] { EXPECT_FALSE(OpenNamedProject(context, name)); });
    refuse(name, [&] { EXPECT_FALSE(OpenKeptProject(context, name)); });
  }
  refuse("unfit", [&] { RetrieveLU(context); });
  refuse("bad", [&] { OpenProject(context); });
  EnterA(Rows({{1}}));
  SaveProject(context);
  EXPECT_EQ(files.files.count("before.qmx"), 1U);
  EXPECT_EQ(files.files.at("bad.qmx"), "2,2\r\n 1 \r\n");
}

TEST_F(FileCommands, EveryFileThatIsTakenBecomesTheCurrentOne) {
  Put("m", test::DataFile("matrix.txt"));
  Put("s", test::DataFile("system.txt"));
  Put("lu", test::DataFile("lu.txt"));
  Put("p.qmx", test::DataFile("a.qmx"));
  const auto take = [&](const std::string& name, auto command) {
    Answer(name);
    command();
    return workspace.currentFileName;
  };
  EXPECT_EQ(take("m", [&] { RetrieveOperand(context, kSlotA); }), "m");
  EXPECT_EQ(take("s", [&] { RetrieveSystem(context); }), "s");
  EXPECT_EQ(take("lu", [&] { RetrieveLU(context); }), "lu");
  EXPECT_EQ(take("p", [&] { OpenProject(context); }), "p.qmx");
  EXPECT_EQ(screen.openEnding, ".qmx");
}

TEST_F(FileCommands, EveryCutOfTheOtherFilesLeavesEverythingAsItWas) {
  EnterA(Rows({{4, 3}, {6, 3}}));
  Press(8);
  EnterSystem(Rows({{1, 2}}));
  screen.messages.clear();
  const std::string before = Everything();
  const auto retrieveB = [](Context& c) { RetrieveOperand(c, kSlotB); };
  using Reader = void (*)(Context&);
  const std::vector<std::pair<const char*, Reader>> readers{
      {"matrix.txt", retrieveB},
      {"system.txt", RetrieveSystem},
      {"system-by-factors.txt", RetrieveSystem},
      {"lu.txt", RetrieveLU}};
  for (const auto& [name, read] : readers) {
    const std::string bytes = test::DataFile(name);
    for (std::size_t length = 0; length < bytes.size(); ++length) {
      Put("cut", bytes.substr(0, length));
      Answer("cut");
      read(context);
      ASSERT_EQ(screen.messages.size(), 1U) << name << length;
      screen.messages.clear();
      ASSERT_EQ(Everything(), before) << name << length;
    }
  }
}

}  // namespace
}  // namespace qmx
