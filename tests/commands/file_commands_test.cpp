#include "commands/file_commands.h"

#include <gtest/gtest.h>

#include "commands/dispatcher.h"
#include "commands/lifecycle.h"
#include "commands/parameters.h"
#include "files/lu_file.h"
#include "files/project_file.h"
#include "support/core_bench.h"
#include "support/core_data.h"
#include "support/core_samples.h"

namespace qmx {
namespace {

using test::Rows;
using test::WindowState;

class FileCommands : public test::Workbench {
 protected:
  void Answer(const std::string& name) { screen.fileNames.push_back(name); }
  void Put(const std::string& name, const std::string& bytes) { files.files[name] = bytes; }
  std::string Text(const Control& control) const { return screen.Text(control); }

  /// All that a refused file must leave alone.
  std::string Everything() {
    std::string state = ProjectFile(workspace, screen) + test::FlagLine(workspace);
    state += LUFile(workspace.storedFactors);
    for (const auto& [name, text] : screen.texts) state += name + "=" + text + ";";
    for (const auto& [name, on] : screen.enabled) state += name + (on ? "+" : "-");
    for (const auto& [name, on] : screen.selected) state += name + (on ? "*" : " ");
    for (const bool frame : screen.frames) state += frame ? "F" : "f";
    for (const WindowState window : screen.windows)
      state += std::to_string(static_cast<int>(window));
    for (const auto& grid : screen.grids) {
      state += std::to_string(grid.rows) + "x" + std::to_string(grid.cols) + ":";
      for (const auto& [cell, text] : grid.texts) state += text + "|";
    }
    return state + std::to_string(screen.timesBroughtToFront);
  }
};

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

TEST_F(FileCommands, SaveProjectAsksOnceAndAppendsTheEnding) {
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

TEST_F(FileCommands, TheEndingIsComparedToTheLetter) {
  for (const auto& [name, written] : std::vector<std::pair<std::string, std::string>>{
           {"p.QMX", "p.QMX.qmx"}, {"p.qmx", "p.qmx"}, {"qmx", "qmx.qmx"}, {".qmx", ".qmx"}}) {
    files.files.clear();
    Answer(name);
    SaveProjectAs(context);
    EXPECT_EQ(files.files.count(written), 1U) << name;
  }
}

TEST_F(FileCommands, SaveProjectTakesTheNameOfTheLastFile) {
  Put("m.txt", test::DataFile("matrix.txt"));
  Answer("m.txt");
  RetrieveOperand(context, kSlotA);
  SaveProject(context);
  EXPECT_EQ(screen.saveDialogs, 0);
  EXPECT_EQ(files.files.count("m.txt.qmx"), 1U);
}

TEST_F(FileCommands, OpenProjectAppendsTheEndingAndReadsEverything) {
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

TEST_F(FileCommands, AnOpenedProjectShowsInTheMainWindow) {
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
  for (int slot = 0; slot < kSlotCount; ++slot) {
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

TEST_F(FileCommands, AnOpenedVectorHasACountOfNoColumns) {
  Put("e.qmx", test::DataFile("everything.qmx"));
  OpenNamedProject(context, "e.qmx");
  EXPECT_EQ(workspace.At(kSlotSolution).rows, 2);
  EXPECT_EQ(workspace.At(kSlotSolution).cols, 0);
  EXPECT_EQ(Array(kSlotSolution).Cols(), 1);
  EXPECT_EQ(workspace.At(kSlotExchanges).cols, 0);
  EXPECT_EQ(workspace.At(kSlotEigenvalues).cols, 1);
}

TEST_F(FileCommands, WhatAProjectDoesNotHoldStaysWithItsFlagCleared) {
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

TEST_F(FileCommands, AnOpenEntryBoxGoesWhenItsMatrixIsReplaced) {
  EnterA(Rows({{9}}));
  screen.entryBoxes[kSlotA] = true;
  Put("a.qmx", test::DataFile("a.qmx"));
  OpenNamedProject(context, "a.qmx");
  EXPECT_FALSE(screen.entryBoxes[kSlotA]);
}

TEST_F(FileCommands, ACommandLineLosesItsQuotes) {
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
  for (const char* empty : {"", "\"", "\"\""}) OpenNamedProject(context, empty);
  EXPECT_TRUE(NoMessage());
}

TEST_F(FileCommands, AFileThatIsNotThereGivesOneBox) {
  const std::string before = Everything();
  OpenNamedProject(context, "missing.qmx");
  ASSERT_EQ(screen.messages.size(), 1U);
  EXPECT_EQ(screen.LastMessage(),
            "The file \"missing.qmx\" could not be read. Nothing was changed.\n\n"
            "There is no such file.");
  EXPECT_EQ(screen.messages[0].icon, Icon::kCritical);
  EXPECT_EQ(Everything(), before);
}

TEST_F(FileCommands, EveryCutOfAProjectLeavesEverythingAsItWas) {
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

TEST_F(FileCommands, ATaskSessionComesBackBitByBit) {
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

TEST_F(FileCommands, AnyWorkspaceComesBackBitByBit) {
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

TEST_F(FileCommands, AfterAFaultTheProjectIsSavedAndOpensAgain) {
  EnterA(Rows({{1e300, 0}, {0, 1e300}}));
  EXPECT_THROW(Press(3), RuntimeFault);
  Answer("rescued");
  EXPECT_TRUE(SaveProjectAfterFault(context));
  workspace = Workspace();
  OpenNamedProject(context, "rescued.qmx");
  EXPECT_TRUE(NoMessage());
  EXPECT_EQ(Array(kSlotA), Rows({{1e300, 0}, {0, 1e300}}));
}

TEST_F(FileCommands, AfterAFaultAnotherNameIsAskedWhereWritingFails) {
  EnterA(Rows({{1}}));
  EXPECT_FALSE(SaveProjectAfterFault(context));
  files.room = 10;
  Answer("one");
  Answer("two");
  EXPECT_FALSE(SaveProjectAfterFault(context));
  EXPECT_EQ(screen.messages.size(), 2U);
}

class ThrowingFiles : public FileStore {
 public:
  FileOutcome Read(const std::string&, std::string&) override { throw std::bad_alloc(); }
  FileOutcome Replace(const std::string&, std::string_view) override { throw std::bad_alloc(); }
};

TEST_F(FileCommands, SavingAfterAFaultNeverThrows) {
  ThrowingFiles throwing;
  Context odd{workspace, screen, throwing, printer, random, clock};
  Answer("one");
  EXPECT_FALSE(SaveProjectAfterFault(odd));
}

}  // namespace
}  // namespace qmx
