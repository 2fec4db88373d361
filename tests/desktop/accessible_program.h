// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <functional>
#include <string>
#include <thread>
#include <vector>

#include "desktop/accessible_node.h"

namespace qmx::test {

/// Asks again and again until something holds, for as long as a slow machine may take.
inline bool Wait(const std::function<bool()>& holds) {
  for (int tries = 0; tries < 600; ++tries) {
    if (holds()) return true;
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
  }
  return false;
}

/// Drives the program as somebody does who cannot see it: by names alone.
class AccessibilityTest : public testing::Test {
 protected:
  // 1 says that it was done before.
  static void SetUpTestSuite() { ASSERT_LE(atspi_init(), 1); }
  void SetUp() override {
    StartProgram();
    ASSERT_TRUE(Wait([this] { return static_cast<bool>(Window("Orvane")); }));
  }
  void StartProgram() {
    ASSERT_NE(std::getenv("DISPLAY"), nullptr);
    setenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1", 1);
    unsetenv("QT_QPA_PLATFORM");
    std::string name = QMX_PROGRAM;
    char* const arguments[] = {name.data(), nullptr};
    ASSERT_EQ(posix_spawn(&program_, QMX_PROGRAM, nullptr, nullptr, arguments, environ), 0);
  }
  void TearDown() override {
    if (program_ == 0) return;
    kill(program_, SIGTERM);
    waitpid(program_, nullptr, 0);
  }

  AccessibleNode Window(const std::string& name) const {
    for (const AccessibleNode& application : AccessibleDesktop().Children()) {
      for (const AccessibleNode& window : application.Children()) {
        if (window.Name() == name && window.Has(ATSPI_STATE_SHOWING)) return window;
      }
    }
    return {};
  }
  AccessibleNode WaitForWindow(const std::string& name) const {
    AccessibleNode window;
    EXPECT_TRUE(Wait([&] { return static_cast<bool>(window = Window(name)); })) << name;
    return window;
  }
  /// The message box that is open.
  static AccessibleNode WaitForAlert() {
    AccessibleNode alert;
    EXPECT_TRUE(Wait([&] {
      for (const AccessibleNode& application : AccessibleDesktop().Children()) {
        for (const AccessibleNode& window : application.Children()) {
          if (window.Role() == ATSPI_ROLE_ALERT && window.Has(ATSPI_STATE_SHOWING)) alert = window;
        }
      }
      return static_cast<bool>(alert);
    }));
    return alert;
  }
  /// What stands in the main window under a name.
  AccessibleNode Control(const std::string& name) const {
    const AccessibleNode found = Window("Orvane").Find(
        [&](const AccessibleNode& node) { return node.Name() == name && IsControl(node); });
    EXPECT_TRUE(found) << name;
    return found;
  }
  void Press(const std::string& name) const { EXPECT_TRUE(Control(name).Press()) << name; }
  void Fill(const std::string& name, const std::string& text) const {
    EXPECT_TRUE(Control(name).SetText(text)) << name;
    EXPECT_EQ(Control(name).Text(), text);
  }
  bool IsAnnounced(const std::string& name) const {
    return static_cast<bool>(
        Window("Orvane").Find([&](const AccessibleNode& node) { return node.Name() == name; }));
  }
  static std::string Place(int row, int col) {
    return "Row " + std::to_string(row) + ", column " + std::to_string(col);
  }
  /// The value of a cell in a window's grid, by the row and column that it is announced with.
  std::string Cell(const std::string& window, int row, int col) const {
    const std::string place = Place(row, col);
    const AccessibleNode cell = Window(window).Find([&](const AccessibleNode& node) {
      // In front of the place may stand how many digits hold.
      const std::string said = node.Description();
      return said == place || said.ends_with(". " + place);
    });
    return cell ? cell.Name() : "no cell";
  }
  void ExpectGrid(const std::string& window, const std::vector<std::vector<std::string>>& rows) {
    WaitForWindow(window);
    for (std::size_t i = 0; i < rows.size(); ++i) {
      for (std::size_t j = 0; j < rows[i].size(); ++j) {
        const int row = static_cast<int>(i) + 1;
        const int col = static_cast<int>(j) + 1;
        EXPECT_TRUE(Wait([&] { return Cell(window, row, col) == rows[i][j]; }))
            << window << " " << row << "," << col << " is " << Cell(window, row, col);
      }
    }
  }
  /// The open cell of a window's grid; none where another one is open.
  static AccessibleNode OpenCell(const AccessibleNode& window, int row, int col) {
    const std::string name =
        window.Name() + ", row " + std::to_string(row) + ", column " + std::to_string(col) + ", ";
    return window.Find([&](const AccessibleNode& node) {
      return node.Role() == ATSPI_ROLE_TEXT && node.Name().rfind(name, 0) == 0;
    });
  }
  /// Chooses a cell in the editor of A and gives it a text.
  void FillCell(int row, int col, const std::string& text) const {
    const std::string place = Place(row, col);
    const AccessibleNode editor = WaitForWindow("Matrix A");
    const AccessibleNode cell =
        editor.Find([&](const AccessibleNode& node) { return node.Description() == place; });
    ASSERT_TRUE(cell.Press()) << place;
    AccessibleNode box;
    ASSERT_TRUE(Wait([&] {
      box = OpenCell(editor, row, col);
      return box && box.Has(ATSPI_STATE_SHOWING);
    })) << place;
    EXPECT_TRUE(box.SetText(text));
  }

  static bool IsControl(const AccessibleNode& node) {
    const AtspiRole role = node.Role();
    return role == ATSPI_ROLE_PUSH_BUTTON || role == ATSPI_ROLE_TEXT ||
           role == ATSPI_ROLE_RADIO_BUTTON || role == ATSPI_ROLE_CHECK_BOX;
  }

  pid_t program_ = 0;
};

}  // namespace qmx::test
