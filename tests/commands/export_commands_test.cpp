// SPDX-License-Identifier: MIT
#include "commands/export_commands.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstring>

#include "commands/file_bench.h"
#include "support/core_foreign.h"
#include "workspace/task_numbers.h"

namespace qmx {
namespace {

using test::Rows;

class ExportCommands : public test::FileBench {
 protected:
  void Export(Slot slot, ForeignFormat format, const std::string& name, char separator = ',',
              char decimalSign = '.') {
    dialogs.exported = ForeignChoice{format, separator, decimalSign, {}};
    Answer(name);
    ExportSlot(context, dialogs, slot);
  }

  test::ScriptedForeign dialogs;
};

TEST_F(ExportCommands, EveryFormatGivesTheSameBitsBack) {
  const Matrix odd = Rows({{0.1, -1.0 / 3, 1e308}, {5e-324, -0.0, 9007199254740993.0}});
  EnterA(odd);
  workspace.A().array(2, 2) = -0.0;
  for (const ForeignFormatInfo& info : kForeignFormats) {
    const std::string name = "x" + std::string(info.ending);
    files.files.clear();
    Export(kSlotA, info.format, "x");
    ASSERT_EQ(files.files.count(name), 1U) << info.title;
    EXPECT_EQ(screen.status, "Exported to " + name);
    const std::string& bytes = files.files.at(name);
    const auto found = InspectForeign(bytes);
    ASSERT_TRUE(found.Ok()) << found.problem;
    EXPECT_EQ(found.content.format, info.format);
    const auto back = ReadForeign(bytes, found.content, 0);
    ASSERT_TRUE(back.Ok()) << back.problem;
    ASSERT_EQ(back.content.Size(), odd.Size());
    EXPECT_EQ(std::memcmp(back.content.Data(), Array(kSlotA).Data(), odd.Size() * sizeof(double)),
              0)
        << info.title;
  }
  EXPECT_TRUE(NoMessage());
}

TEST_F(ExportCommands, ATableHasTheSignsThatWereChosen) {
  EnterA(Rows({{1.5, 2}, {-0.25, 1e20}}));
  Export(kSlotA, ForeignFormat::kTextTable, "t.csv", ';', ',');
  EXPECT_EQ(files.files.at("t.csv"), "1,5;2\r\n-0,25;1E+20\r\n");
  Export(kSlotA, ForeignFormat::kTextTable, "t", ',', ',');
  EXPECT_TRUE(screen.LastMessage().starts_with("The matrix cannot be exported. "));
  EXPECT_EQ(files.files.size(), 1U);
}

TEST_F(ExportCommands, VariablesAreNamedAfterTheMatrix) {
  EnterA(Rows({{2}}));
  Press(kTaskInverse);
  Export(kSlotA, ForeignFormat::kOctaveText, "a");
  EXPECT_NE(files.files.at("a.txt").find("# name: A\n"), std::string::npos);
  Export(kSlotInverse, ForeignFormat::kOctaveText, "i");
  EXPECT_NE(files.files.at("i.txt").find("# name: Inverse_of_A\n"), std::string::npos);
}

TEST_F(ExportCommands, ACancelledQuestionOrDialogWritesNothing) {
  EnterA(Rows({{2}}));
  workspace.currentFileName = "p.qmx";
  ExportSlot(context, dialogs, kSlotA);
  EXPECT_EQ(screen.saveDialogs, 0);
  Export(kSlotA, ForeignFormat::kNpy, "");
  EXPECT_TRUE(files.files.empty());
  Export(kSlotA, ForeignFormat::kNpy, "x");
  EXPECT_EQ(workspace.currentFileName, "p.qmx") << "the project's file stays what it is";
}

TEST_F(ExportCommands, WhatCannotBeWrittenIsToldAndTheOldFileKept) {
  EnterA(Rows({{2}}));
  Put("x.npy", "old");
  files.room = 5;
  Export(kSlotA, ForeignFormat::kNpy, "x");
  EXPECT_EQ(screen.LastMessage(),
            "The file \"x.npy\" could not be written. It is as it was before.\n\n"
            "There is no space left.");
  EXPECT_EQ(files.files.at("x.npy"), "old");
  workspace.A().array(1, 1) = HUGE_VAL;
  files.room = 10000;
  Export(kSlotA, ForeignFormat::kNpy, "x");
  EXPECT_TRUE(screen.LastMessage().starts_with("The matrix cannot be exported. Row 1, column 1: "));
  Reset(kSlotA);
  Export(kSlotA, ForeignFormat::kNpy, "x");
  EXPECT_TRUE(screen.LastMessage().starts_with("The matrix cannot be exported. "));
  EXPECT_EQ(files.files.at("x.npy"), "old");
}

TEST_F(ExportCommands, TooLittleMemoryIsToldBefore) {
  EnterA(Rows({{2, 3}, {4, 5}}));
  memory.available = 100;
  Export(kSlotA, ForeignFormat::kTextTable, "x");
  EXPECT_EQ(screen.LastMessage(), "There is not enough memory to write so many numbers.");
  EXPECT_TRUE(files.files.empty());
}

}  // namespace
}  // namespace qmx
