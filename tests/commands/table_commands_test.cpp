// SPDX-License-Identifier: MIT
#include "commands/table_commands.h"

#include <gtest/gtest.h>

#include "support/core_bench.h"
#include "workspace/task_numbers.h"

namespace qmx {
namespace {

using test::Rows;

class Preview : public PrintPreview {
 public:
  bool Show(const Workspace&, const std::vector<Slot>& slots, Slot first) override {
    offered = slots;
    shown = first;
    return works;
  }
  std::vector<Slot> offered;
  Slot shown = kSlotA;
  bool works = true;
};

using TableCommands = test::Workbench;

TEST_F(TableCommands, OfferEveryMatrixThatIsThere) {
  Preview preview;
  PrintTable(context, preview, {});
  EXPECT_EQ(screen.LastMessage(), "There is no matrix to print.");
  EXPECT_TRUE(preview.offered.empty());
  EnterB(Rows({{2}}));
  EnterA(Rows({{4}}));
  Press(kTaskInverse);
  PrintTable(context, preview, kSlotInverse);
  EXPECT_EQ(preview.offered, (std::vector<Slot>{kSlotA, kSlotB, kSlotInverse}));
  EXPECT_EQ(preview.shown, kSlotInverse);
  PrintTable(context, preview, kSlotSum);
  EXPECT_EQ(preview.shown, kSlotA) << "there is no sum";
  EXPECT_EQ(screen.messages.size(), 1U);
}

TEST_F(TableCommands, APrinterThatFailsIsTold) {
  EnterA(Rows({{4}}));
  Preview preview;
  preview.works = false;
  PrintTable(context, preview, {});
  EXPECT_EQ(screen.LastMessage(), "The table could not be printed.");
}

}  // namespace
}  // namespace qmx
