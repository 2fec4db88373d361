// SPDX-License-Identifier: MIT
#include "commands/import_commands.h"

#include <gtest/gtest.h>

#include "commands/dispatcher.h"
#include "commands/file_bench.h"
#include "commands/file_commands.h"
#include "support/core_foreign.h"
#include "workspace/task_numbers.h"

namespace qmx {
namespace {

using test::Rows;
using test::WindowState;

class ImportCommands : public test::FileBench {
 protected:
  void Import(Slot target) { ImportFile(context, dialogs, target); }
  /// Imports bytes and accepts what is proposed.
  void Take(Slot target, const std::string& bytes) {
    Put("f", bytes);
    Answer("f");
    dialogs.Accept();
    Import(target);
  }

  test::ScriptedForeign dialogs;
};

TEST_F(ImportCommands, ATableBecomesAAsAfterRetrieve) {
  Put("own", "2,2\r\n 1 \r\n 2.5 \r\n-3 \r\n 4 \r\n");
  Answer("own");
  RetrieveOperand(context, kSlotA);
  workspace.currentFileName.clear();
  const std::string retrieved = Everything();
  Reset(kSlotA);
  screen.messages.clear();
  Take(kSlotA, "1,2.5\n-3,4\n");
  EXPECT_EQ(workspace.currentFileName, "f");
  workspace.currentFileName.clear();
  EXPECT_EQ(Array(kSlotA), Rows({{1, 2.5}, {-3, 4}}));
  EXPECT_EQ(screen.progress.back(), 1);
  EXPECT_EQ(Text(txtRowsA), "2");
  EXPECT_TRUE(workspace.ACreated);
  // The main window came to the front once more.
  std::string imported = Everything();
  imported.back() = retrieved.back();
  EXPECT_EQ(imported, retrieved);
  EXPECT_TRUE(NoMessage());
}

TEST_F(ImportCommands, WhatWasThereIsReplacedAndResultsStay) {
  EnterA(Rows({{4, 0}, {0, 2}}));
  Press(kTaskInverse);
  Take(kSlotA, "1;2;3\n4;5;6\n");
  EXPECT_EQ(Array(kSlotA), Rows({{1, 2, 3}, {4, 5, 6}}));
  EXPECT_EQ(Text(txtRowsA), "2");
  EXPECT_EQ(Text(txtColsA), "3");
  EXPECT_TRUE(workspace.InverseComputed);
  EXPECT_EQ(screen.windows[kSlotA], WindowState::kShown);
}

TEST_F(ImportCommands, TheQuestionTellsWhatWasRecognised) {
  Put("t.csv", "# weights\nload;left;right\nnone;0,5;1\nhalf;1,25;2\n");
  Answer("t.csv");
  Import(kSlotB);
  EXPECT_EQ(dialogs.seen.fileName, "t.csv");
  EXPECT_EQ(dialogs.seen.target, kSlotB);
  EXPECT_EQ(dialogs.seen.contents.format, ForeignFormat::kTextTable);
  const TableSettings& table = dialogs.seen.contents.table.settings;
  EXPECT_EQ(table.separator, ';');
  EXPECT_EQ(table.decimalSign, ',');
  EXPECT_EQ(table.commentSign, '#');
  EXPECT_EQ(table.headingRows, 1);
  EXPECT_EQ(table.headingColumns, 1);
  EXPECT_FALSE(workspace.BCreated) << "the question was cancelled";
  EXPECT_EQ(workspace.currentFileName, "");
}

TEST_F(ImportCommands, SettingsThatTheUserChangesAreTheOnesThatCount) {
  Put("f", "1,5\n2,5\n");
  Answer("f");
  dialogs.imports.emplace_back([](ImportQuestion& question) {
    EXPECT_FALSE(question.contents.table.certain);
    question.contents.table.settings.separator = ';';
    question.contents.table.settings.decimalSign = ',';
    return true;
  });
  Import(kSlotA);
  EXPECT_EQ(Array(kSlotA), Rows({{1.5}, {2.5}}));
}

TEST_F(ImportCommands, WhatCannotBeReadIsToldInTheQuestionAskedAgain) {
  Put("f", "1,2\n3,x\n");
  Answer("f");
  const std::string before = Everything();
  dialogs.Accept();
  Import(kSlotA);
  ASSERT_EQ(dialogs.problems.size(), 2U);
  EXPECT_EQ(dialogs.problems[0], "");
  EXPECT_EQ(dialogs.problems[1], "Line 2, column 2: expected a number, but found \"x\".");
  EXPECT_EQ(Everything(), before);
  EXPECT_TRUE(NoMessage());
}

TEST_F(ImportCommands, WhatIsNoFileToReadIsToldInABox) {
  const std::string before = Everything();
  Answer("missing");
  Import(kSlotA);
  EXPECT_EQ(screen.LastMessage(),
            "The file \"missing\" could not be read. Nothing was changed.\n\n"
            "There is no such file.");
  Put("f", "PK\x03\x04 and more");
  Answer("f");
  Import(kSlotA);
  EXPECT_EQ(screen.LastMessage(),
            "The file \"f\" could not be read. Nothing was changed.\n\n"
            "This is an archive of several files (such as .npz). Unpack it first; the files in it "
            "may be readable.");
  Put("f", "#TRUE#,#FALSE#\n");
  Answer("f");
  Import(kSlotA);
  EXPECT_EQ(screen.LastMessage(),
            "The file \"f\" could not be read. Nothing was changed.\n\n"
            "This is a project. File > Open opens it.");
  EXPECT_TRUE(dialogs.problems.empty());
  EXPECT_EQ(Everything(), before);
}

TEST_F(ImportCommands, OurOwnFilesAreTakenWithoutAQuestion) {
  Take(kSlotA, "1,2\r\n 5 \r\n 6 \r\n");
  EXPECT_EQ(Array(kSlotA), Rows({{5, 6}}));
  Take(kSlotB, "3,0\r\n 1 \r\n 2 \r\n 3 \r\n");
  EXPECT_EQ(Array(kSlotB), Rows({{1}, {2}, {3}}));
  Take(kSlotB, "1,3\r\n 1 \r\n 2 \r\n 9 \r\n 0 \r\n");
  EXPECT_EQ(Array(kSlotB), Rows({{1, 2, 9}})) << "the matrix of a system file";
  EXPECT_TRUE(dialogs.problems.empty());
}

TEST_F(ImportCommands, CountsWithoutElementsAreATable) {
  Take(kSlotA, "0,5\n");
  EXPECT_EQ(Array(kSlotA), Rows({{0, 5}}));
  Take(kSlotB, "3,0\n");
  EXPECT_EQ(Array(kSlotB), Rows({{3, 0}}));
  EXPECT_EQ(dialogs.problems.size(), 2U);
}

TEST_F(ImportCommands, ATableThatRetrieveWouldTakeIsATable) {
  Take(kSlotA, "1,2\n3,4\n");
  EXPECT_EQ(Array(kSlotA), Rows({{1, 2}, {3, 4}}));
  Take(kSlotSystem, "1,3\n2,1\n3,0\n");
  EXPECT_EQ(Array(kSlotSystem), Rows({{1, 3}, {2, 1}, {3, 0}}));
}

TEST_F(ImportCommands, ANoteIsToldThoughTheFileWasRead) {
  Take(kSlotA, "1,2\n3,4");
  EXPECT_EQ(Array(kSlotA), Rows({{1, 2}, {3, 4}}));
  ASSERT_EQ(screen.messages.size(), 1U);
  EXPECT_TRUE(screen.LastMessage().starts_with("The file \"f\" was read.\n\n"));
  EXPECT_GT(screen.LastMessage().size(), 30U);
}

TEST_F(ImportCommands, AVariableIsChosenAndLookedAt) {
  Put("f",
      "# Created by Octave\n# name: words\n# type: string\n# elements: 1\n# length: 1\nx\n"
      "# name: M\n# type: matrix\n# rows: 1\n# columns: 2\n 1 2\n"
      "# name: s\n# type: scalar\n7\n");
  Answer("f");
  dialogs.imports.emplace_back([](ImportQuestion& question) {
    EXPECT_EQ(question.variable, 1U) << "the first that can be read";
    EXPECT_EQ(question.look(1).content, Rows({{1, 2}}));
    EXPECT_EQ(question.look(2).content, Rows({{7}}));
    EXPECT_FALSE(question.look(0).problem.empty());
    question.variable = 2;
    return true;
  });
  Import(kSlotA);
  EXPECT_EQ(Array(kSlotA), Rows({{7}}));
}

TEST_F(ImportCommands, TheSpecialMatrixTakesATable) {
  Take(kSlotCreated, "1 2 3\n");
  EXPECT_EQ(Array(kSlotCreated), Rows({{1, 2, 3}}));
  EXPECT_TRUE(workspace.CreatedPresent);
  EXPECT_EQ(Text(txtColsCreated), "3");
  EXPECT_EQ(screen.windows[kSlotCreated], WindowState::kShown);
  EXPECT_TRUE(screen.Enabled(cmdIntoA(kSlotCreated)));
}

TEST_F(ImportCommands, ASystemHasItsRightSideInTheLastColumn) {
  Take(kSlotSystem, "2,1,3\n1,3,5\n");
  EXPECT_EQ(Array(kSlotSystem), Rows({{2, 1, 3}, {1, 3, 5}}));
  EXPECT_EQ(workspace.SystemMethod, kSystemOneShot);
  EXPECT_EQ(Text(txtEquations), "2");
  EXPECT_EQ(Text(txtUnknowns), "2");
  EXPECT_TRUE(workspace.SystemPresent);
  EXPECT_EQ(screen.windows[kSlotSystem], WindowState::kShown);
  EXPECT_FALSE(screen.Enabled(cmdCreateSystem));
  EXPECT_TRUE(screen.Enabled(cmdSolve));
  PressSolve(context);
  EXPECT_TRUE(workspace.SolutionComputed);
  Take(kSlotSystem, "1,0,1\n0,1,2\n");
  EXPECT_FALSE(workspace.SolutionComputed) << "it goes as after Retrieve";
}

TEST_F(ImportCommands, TheRightSideMayStandElsewhereOrNowhere) {
  Put("f", "3,2,1\n5,1,3\n");
  Answer("f");
  dialogs.imports.emplace_back([](ImportQuestion& question) {
    question.rightSide = RightSide::kColumn;
    question.rightColumn = 1;
    return true;
  });
  Import(kSlotSystem);
  EXPECT_EQ(Array(kSlotSystem), Rows({{2, 1, 3}, {1, 3, 5}}));
  Put("f", "2,1\n1,3\n");
  Answer("f");
  dialogs.imports.emplace_back([](ImportQuestion& question) {
    question.rightSide = RightSide::kNone;
    return true;
  });
  Import(kSlotSystem);
  EXPECT_EQ(Array(kSlotSystem), Rows({{2, 1, 0}, {1, 3, 0}}));
}

TEST_F(ImportCommands, ASystemWithMoreEquationsThanUnknownsIsOverdetermined) {
  Take(kSlotSystem, "1,1\n2,2\n3,3.5\n");
  EXPECT_EQ(workspace.SystemMethod, kSystemOverdetermined);
  EXPECT_TRUE(screen.IsSelected(OptSystem(kSystemOverdetermined)));
  EXPECT_EQ(Text(txtEquations), "3");
  EXPECT_EQ(Text(txtUnknowns), "1");
}

TEST_F(ImportCommands, WhatIsNoSystemIsToldInTheQuestion) {
  const std::string before = Everything();
  Take(kSlotSystem, "1,2,3,4\n5,6,7,8\n");
  EXPECT_EQ(dialogs.problems.back(), "Can't have more unknowns than equations");
  Take(kSlotSystem, "1\n2\n");
  EXPECT_EQ(dialogs.problems.back(), "There are no coefficients beside the right-hand side.");
  Put("f", "1,2\n3,4\n");
  Answer("f");
  dialogs.imports.emplace_back([](ImportQuestion& question) {
    question.rightSide = RightSide::kColumn;
    question.rightColumn = 3;
    return true;
  });
  Import(kSlotSystem);
  EXPECT_EQ(dialogs.problems.back(),
            "There is no column 3 for the right-hand side: there are 2 columns.");
  EXPECT_EQ(Everything(), before);
}

TEST_F(ImportCommands, WithStoredFactorsOnlyTheRightSideIsTaken) {
  EnterA(Rows({{2, 1}, {1, 3}}));
  Press(kTaskLU);
  OptSystemClick(context, kSystemByFactors);
  Take(kSlotSystem, "3\n5\n");
  EXPECT_TRUE(dialogs.seen.rightSideOnly);
  EXPECT_EQ(Array(kSlotSystem), Rows({{3}, {5}}));
  EXPECT_EQ(workspace.SystemMethod, kSystemByFactors);
  PressSolve(context);
  EXPECT_EQ(Array(kSlotSolution).Rows(), 2);
  Take(kSlotSystem, "3\n5\n7\n");
  EXPECT_EQ(dialogs.problems.back(),
            "The stored factors are of order 2: they need as many right-hand sides, but there are "
            "3.");
}

TEST_F(ImportCommands, ASystemFileIsRetrieved) {
  Take(kSlotSystem, "2,3\r\n 2 \r\n 1 \r\n 3 \r\n 1 \r\n-1 \r\n .25 \r\n 2 \r\n");
  EXPECT_EQ(Array(kSlotSystem), Rows({{2, 1, 3}, {1, -1, .25}}));
  EXPECT_EQ(workspace.SystemMethod, kSystemOverdetermined);
  EXPECT_TRUE(dialogs.problems.empty());
}

TEST_F(ImportCommands, AMatrixBeyondTheMemoryIsRefused) {
  memory.available = 100;
  const std::string before = Everything();
  Take(kSlotA, "1,2,3,4\n5,6,7,8\n1,2,3,4\n5,6,7,8\n");
  ASSERT_EQ(dialogs.problems.size(), 2U);
  EXPECT_EQ(dialogs.problems.back(), "A matrix of 4 x 4 does not fit into memory.");
  EXPECT_EQ(Everything(), before);
}

TEST_F(ImportCommands, RetrieveSaysThatImportReadsAForeignFile) {
  Put("f", "1;2\n3;4\n");
  Answer("f");
  RetrieveOperand(context, kSlotA);
  EXPECT_EQ(screen.LastMessage(),
            "The file \"f\" could not be read. Nothing was changed.\n\n"
            "Line 1: expected the number of rows of Matrix A, but found \"1;2\".\n\n"
            "This looks like a file of another program. File > Import reads such files.");
  Answer("f");
  RetrieveSystem(context);
  EXPECT_TRUE(screen.LastMessage().ends_with(
      "\n\nThis looks like a file of another program. File > Import reads such files."));
  Put("f", "2,2\n1\n2\nx\n4\n");
  Answer("f");
  RetrieveOperand(context, kSlotA);
  EXPECT_EQ(screen.LastMessage(),
            "The file \"f\" could not be read. Nothing was changed.\n\n"
            "Line 4: expected element (2,1) of Matrix A, but found \"x\".");
  Answer("missing");
  RetrieveOperand(context, kSlotA);
  EXPECT_EQ(screen.LastMessage(),
            "The file \"missing\" could not be read. Nothing was changed.\n\n"
            "There is no such file.");
}

}  // namespace
}  // namespace qmx
