// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/matrix.h"
#include "support/core_ports.h"
#include "support/core_rows.h"
#include "support/core_screen.h"
#include "workspace/context.h"

namespace qmx::test {

/// The line that ends a report, written out: 80 em dashes.
std::string DashRule();

/// A whole program without windows, as it stands right after its start.
class Workbench : public ::testing::Test {
 public:
  Workbench();

  Workspace workspace;
  RecordingScreen screen;
  MemoryFiles files;
  RecordingPrinter printer;
  FixedRandom random;
  FixedClock clock;
  FixedMemory memory;
  Context context{workspace, screen, {files, printer, random, clock, memory}};

  /// Creates A (B) from the fields and types every element into its editor.
  void EnterA(const Matrix& values) { Enter(kSlotA, values); }
  void EnterB(const Matrix& values) { Enter(kSlotB, values); }
  /// Creates the System with the selected method and types every element of the augmented matrix.
  void EnterSystem(const Matrix& augmented);
  /// Presses a task button.
  void Press(int task);
  /// Presses a task button and returns the number of the fault that this ends in, or 0.
  int FaultOf(int task);
  /// Resets A or B and says yes.
  void Reset(Slot operand);

  const Matrix& Array(Slot slot) const { return workspace.At(slot).array; }
  bool NoMessage() const { return screen.messages.empty(); }

 private:
  void Enter(Slot operand, const Matrix& values);
  void TypeElements(Slot slot, const Matrix& values);
};

}  // namespace qmx::test
