// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <set>

#include "desktop/accessible_program.h"

namespace qmx::test {
namespace {

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
  EXPECT_TRUE(Wait([this] {
    return static_cast<bool>(Window("Inverse of A").Find([](const AccessibleNode& node) {
      return node.Description().ends_with(" digits hold. Row 3, column 3");
    }));
  }));
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
