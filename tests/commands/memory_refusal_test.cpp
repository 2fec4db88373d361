// SPDX-License-Identifier: MIT
#include "commands/grid_commands.h"
#include "commands/lifecycle.h"
#include "support/core_bench.h"

namespace qmx {
namespace {

using test::Rows;

/// A machine that has little memory left.
class MemoryRefusal : public test::Workbench {
 protected:
  static ShownCells Nothing() {
    return {[](int, int) { return std::string(); }, [](int, int) { return false; }};
  }
};

TEST_F(MemoryRefusal, AMatrixIsCreatedWhereItAndACopyFit) {
  screen.Type(txtRowsA, "10");
  screen.Type(txtColsA, "10");
  memory.available = 2 * 100 * sizeof(double) - 1;
  CreateOperand(context, kSlotA);
  EXPECT_FALSE(workspace.ACreated);
  EXPECT_EQ(screen.LastMessage(),
            "A matrix of this size does not fit into the memory of this computer.\n"
            "Rows of A: \"10\"\nColumns of A: \"10\"");
  memory.available = 2 * 100 * sizeof(double);
  CreateOperand(context, kSlotA);
  EXPECT_TRUE(workspace.ACreated);
}

TEST_F(MemoryRefusal, ABlockIsPastedWhereItsNumbersFit) {
  EnterA(Rows({{1, 2}, {3, 4}}));
  const std::string block = "5\t6\n";
  memory.available = 20 * block.size() - 1;
  EXPECT_FALSE(PasteBlock(context, kSlotA, 1, 1, block));
  EXPECT_EQ(screen.LastMessage(), "There is not enough memory to paste so many cells.");
  EXPECT_EQ(Array(kSlotA), Rows({{1, 2}, {3, 4}}));
  memory.available = 20 * block.size();
  EXPECT_TRUE(PasteBlock(context, kSlotA, 1, 1, block));
}

TEST_F(MemoryRefusal, ABlockIsCopiedWhereItsTextFits) {
  EnterA(Rows({{1, 2}, {3, 4}}));
  memory.available = 4 * 100 - 1;
  EXPECT_FALSE(CopyBlock(context, kSlotA, {1, 1, 2, 2}, Nothing()));
  EXPECT_EQ(screen.LastMessage(), "There is not enough memory to copy so many cells.");
  memory.available = 4 * 100;
  EXPECT_TRUE(CopyBlock(context, kSlotA, {1, 1, 2, 2}, Nothing()));
}

}  // namespace
}  // namespace qmx
