// SPDX-License-Identifier: MIT
#include "commands/results_commands.h"

#include <gtest/gtest.h>

#include "commands/file_bench.h"

namespace qmx {
namespace {

class ResultsCommands : public test::FileBench {
 protected:
  const std::vector<std::string> lines_{"REPORT", "", "x = 1", test::DashRule()};
};

TEST_F(ResultsCommands, TheListIsSavedAsText) {
  Answer("reports");
  workspace.currentFileName = "p.qmx";
  SaveResults(context, lines_);
  EXPECT_EQ(files.files.at("reports.txt"), "REPORT\r\n\r\nx = 1\r\n" + test::DashRule() + "\r\n");
  EXPECT_EQ(screen.status, "Saved to reports.txt");
  EXPECT_EQ(workspace.currentFileName, "p.qmx");
  Answer("");
  SaveResults(context, lines_);
  SaveResults(context, {});
  EXPECT_EQ(screen.saveDialogs, 2);
  EXPECT_EQ(files.files.size(), 1U);
}

TEST_F(ResultsCommands, AFullDiskIsTold) {
  files.room = 3;
  Answer("reports.txt");
  SaveResults(context, lines_);
  EXPECT_EQ(screen.LastMessage(),
            "The file \"reports.txt\" could not be written. It is as it was before.\n\n"
            "There is no space left.");
  EXPECT_EQ(screen.status, "");
}

TEST_F(ResultsCommands, TheListIsPrintedInTheFontOfItsColumns) {
  PrintResults(context, lines_);
  EXPECT_EQ(printer.lines, lines_);
  EXPECT_EQ(printer.fonts.front(), "Courier New");
}

}  // namespace
}  // namespace qmx
