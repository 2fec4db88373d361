// SPDX-License-Identifier: MIT
#include "commands/document_status.h"

#include <gtest/gtest.h>

namespace qmx {
namespace {

TEST(DocumentStatusTest, AnEmptyStartSaysWhereToBegin) {
  EXPECT_EQ(StatusOf(Workspace(), false).text,
            "To begin, type the rows and columns of matrix A and press Create, or open a project.");
}

TEST(DocumentStatusTest, WithoutAFileNothingIsSavedYet) {
  Workspace workspace;
  workspace.ACreated = true;
  EXPECT_EQ(StatusOf(workspace, true).text, "Not saved yet");
}

TEST(DocumentStatusTest, AProjectIsNamedWithItsPathInTheToolTip) {
  Workspace workspace;
  workspace.currentFileName = "/home/me/work.qmx";
  EXPECT_EQ(StatusOf(workspace, false).text, "work.qmx, saved");
  EXPECT_EQ(StatusOf(workspace, true).text, "work.qmx, changed since it was saved");
  EXPECT_EQ(StatusOf(workspace, true).toolTip, "/home/me/work.qmx");
}

TEST(DocumentStatusTest, AnotherFileTellsWhatSaveWillWrite) {
  Workspace workspace;
  workspace.currentFileName = "/home/me/justA.txt";
  EXPECT_EQ(StatusOf(workspace, false).text, "Save will write justA.txt.qmx");
  EXPECT_EQ(StatusOf(workspace, false).toolTip,
            "The file used last is /home/me/justA.txt. Save writes the project to "
            "/home/me/justA.txt.qmx.");
}

}  // namespace
}  // namespace qmx
