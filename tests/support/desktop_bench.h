// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QMessageBox>
#include <functional>
#include <string>
#include <vector>

#include "app/program.h"
#include "support/core_ports.h"

namespace qmx::test {

/// Regional settings that need no change.
class PointSettings : public RegionalSettings {
 public:
  std::string DecimalSeparator() override { return "."; }
  void SetDecimalSeparator(const std::string&) override {}
};

/// A message box that was met, as it was shown.
struct SeenBox {
  std::string title;
  std::string text;
  QMessageBox::Icon icon;
  QMessageBox::StandardButtons buttons;
};

/// The whole program with its windows, right after its start, worked by keys and clicks.
class Desktop : public ::testing::Test {
 public:
  /// Nothing is told of digits where there is no prover, and no steps are shown where there is no
  /// deriver.
  explicit Desktop(const Prover* prover = nullptr, const Deriver* deriver = nullptr);

  MemoryFiles files;
  RecordingPrinter printer;
  FixedRandom random;
  FixedClock clock;
  FixedMemory memory;
  PointSettings settings;
  Program program;

  frmQMX& Main() { return program.MainWindow(); }
  Workspace& State() { return program.State(); }
  SlotData& Slot(qmx::Slot slot) { return State().At(slot); }

  /// The control of this name, which must be there.
  template <typename Kind = QWidget>
  Kind* Get(const Control& control) {
    Kind* found = qobject_cast<Kind*>(Main().Find(control));
    if (found == nullptr) throw std::runtime_error(control.ObjectName() + " is missing");
    return found;
  }
  std::string Text(const Control& control) { return program.Windows().Text(control); }
  bool IsEnabled(const Control& control) { return Get(control)->isEnabled(); }

  /// Types each character, or presses a key, where the keyboard is at that moment.
  static void Keys(const std::string& text);
  static void Key(Qt::Key key, Qt::KeyboardModifiers held = Qt::NoModifier);

  /// Presses a button by a click of the mouse; it must be enabled and visible.
  void Click(const Control& button);
  /// Clicks into a field, types over its text.
  void TypeInto(const Control& field, const std::string& text);
  /// Does something, or presses a button, that leads to a message box, answers it, and tells what
  /// it was.
  SeenBox ActAndAnswer(const std::function<void()>& act, QMessageBox::StandardButton answer);
  SeenBox ClickAndAnswer(const Control& button, QMessageBox::StandardButton answer);

  /// A window of a matrix, which must be there.
  GridWindow& Window(qmx::Slot slot);
  MatrixGrid& Grid(qmx::Slot slot) { return Window(slot).Grid(); }
  EntryBox& Box(qmx::Slot slot);
  std::string Cell(qmx::Slot slot, int row, int col) {
    return Grid(slot).TextMatrix(row, col).toStdString();
  }
  void ClickCell(qmx::Slot slot, int row, int col);
  void ClickToggle(qmx::Slot slot);
  /// Closes a window as its close box does.
  static void CloseByBox(QWidget& window);

  /// Creates A (B) from its fields; fills it with these numbers, row by row, by the keyboard alone.
  void Enter(qmx::Slot operand, int rows, int cols, const std::vector<std::string>& elements);
};

}  // namespace qmx::test
