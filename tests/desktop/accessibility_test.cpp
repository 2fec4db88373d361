// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>
#include <thread>

#include "desktop/accessible_node.h"

namespace qmx::test {
namespace {

/// Asks again and again until something holds, for as long as a slow machine may take.
bool Wait(const std::function<bool()>& holds) {
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
    const AccessibleNode cell = Window(window).Find(
        [&](const AccessibleNode& node) { return node.Description() == place; });
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
  /// Chooses a cell in the editor of A and gives it a text.
  void FillCell(int row, int col, const std::string& text) const {
    const std::string place = Place(row, col);
    const AccessibleNode editor = WaitForWindow("Matrix A");
    const AccessibleNode cell =
        editor.Find([&](const AccessibleNode& node) { return node.Description() == place; });
    ASSERT_TRUE(cell.Press()) << place;
    AccessibleNode box;
    ASSERT_TRUE(Wait([&] {
      box = editor.Find([&](const AccessibleNode& node) {
        return node.Role() == ATSPI_ROLE_TEXT && node.Name() == place;
      });
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

TEST_F(AccessibilityTest, EveryControlHasANameOfItsOwn) {
  std::set<std::pair<int, std::string>> names;
  int controls = 0;
  for (const AccessibleNode& node : Window("Orvane").All()) {
    if (!IsControl(node)) continue;
    ++controls;
    EXPECT_FALSE(node.Name().empty());
    EXPECT_TRUE(names.insert({node.Role(), node.Name()}).second) << node.Name();
  }
  EXPECT_GT(controls, 100);
}

TEST_F(AccessibilityTest, FramesAreNamedByTheirTitles) {
  for (const char* title :
       {"Matrix A", "Matrix B", "Special matrix", "For random matrix", "System of linear equations",
        "For scalar multiplication", "For scalar shift", "Partial pivoting",
        "Eigenvalues/eigenvectors computation"}) {
    EXPECT_TRUE(Window("Orvane").Find([&](const AccessibleNode& node) {
      return node.Role() == ATSPI_ROLE_PANEL && node.Name() == title;
    })) << title;
  }
}

TEST_F(AccessibilityTest, TypicalRoadCanBeGoneByNamesAlone) {
  Fill("Rows of A", "3");
  Fill("Columns of A", "3");
  Press("Matrix A: Create");
  const std::vector<std::vector<std::string>> elements{
      {"1", "2", "0"}, {"1", "3", "4"}, {"0", "0", "2"}};
  for (int i = 1; i <= 3; ++i) {
    for (int j = 1; j <= 3; ++j) FillCell(i, j, elements[i - 1][j - 1]);
  }
  ExpectGrid("Matrix A", elements);
  Press("Inverse(A)");
  ExpectGrid("Inverse of A", {{"3", "-2", "4"}, {"-1", "1", "-2"}, {"0", "0", "0.5"}});
  EXPECT_TRUE(IsAnnounced("Rows: 3"));
  Press("Inverse of A: Into B");
  Press("A * B");
  ExpectGrid("A * B", {{"1", "0", "0"}, {"0", "1", "0"}, {"0", "0", "1"}});
  Press("Determinant(A)");
  EXPECT_TRUE(Wait([this] { return IsAnnounced("Determinant of A: 2"); }));
}

TEST_F(AccessibilityTest, MessageBoxTellsItsTextAndKind) {
  Press("Trace(A)");
  const AccessibleNode alert = WaitForAlert();
  EXPECT_EQ(alert.Description(), "Critical message");
  EXPECT_TRUE(alert.Find(
      [](const AccessibleNode& node) { return node.Name() == "Please create matrix A"; }));
  const AccessibleNode ok =
      alert.Find([](const AccessibleNode& node) { return node.Name() == "OK"; });
  EXPECT_TRUE(ok.Press());
  EXPECT_TRUE(Wait([&] { return !alert.Has(ATSPI_STATE_SHOWING); }));
}

/// A user whose locale has the decimal comma.
class DecimalCommaTest : public AccessibilityTest {
 protected:
  void SetUp() override {
    char name[] = "/tmp/qmx-comma-XXXXXX";
    ASSERT_NE(mkdtemp(name), nullptr);
    folder_ = name;
    const std::string locale = folder_ + "/de_DE.UTF-8";
    ASSERT_EQ(std::system(("localedef -i de_DE -f UTF-8 " + locale).c_str()), 0);
    setenv("LOCPATH", name, 1);
    setenv("LC_ALL", "de_DE.UTF-8", 1);
    // The C library does not free the search path that it makes of LOCPATH.
    std::ofstream(folder_ + "/leaks") << "leak:__argz_add_sep\n";
    setenv("LSAN_OPTIONS", ("suppressions=" + folder_ + "/leaks").c_str(), 1);
    StartProgram();
  }
  void TearDown() override {
    AccessibilityTest::TearDown();
    unsetenv("LOCPATH");
    unsetenv("LC_ALL");
    unsetenv("LSAN_OPTIONS");
    std::filesystem::remove_all(folder_);
  }
  void Answer(const std::string& button) const {
    const AccessibleNode alert = WaitForAlert();
    EXPECT_EQ(alert.Name(), "Decimal Comma Warning!");
    EXPECT_FALSE(Window("Orvane"));
    EXPECT_TRUE(
        alert.Find([&](const AccessibleNode& node) { return node.Name() == button; }).Press());
  }

 private:
  std::string folder_;
};

TEST_F(DecimalCommaTest, NoEndsTheProgramBeforeItsWindow) {
  Answer("No");
  int status = -1;
  ASSERT_TRUE(Wait([&] { return waitpid(program_, &status, WNOHANG) == program_; }));
  program_ = 0;
  EXPECT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 0);
}

TEST_F(DecimalCommaTest, YesShowsTheMainWindow) {
  Answer("Yes");
  EXPECT_TRUE(Wait([this] { return static_cast<bool>(Window("Orvane")); }));
}

}  // namespace
}  // namespace qmx::test
