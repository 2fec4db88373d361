// SPDX-License-Identifier: MIT
// What a screen reader hears while somebody works with the keyboard.

#include <cstdlib>

#include "desktop/accessible_events.h"
#include "desktop/accessible_program.h"

namespace qmx::test {
namespace {

constexpr const char* kFocused = "object:state-changed:focused";
constexpr const char* kShowing = "object:state-changed:showing";

class ScreenReaderTest : public AccessibilityTest {
 protected:
  /// Keys as a keyboard sends them, to where the display has the keyboard.
  static void Type(const std::string& keys) {
    ASSERT_EQ(std::system(("xdotool key --clearmodifiers " + keys).c_str()), 0);
  }
  /// The names of what got the focus.
  static std::vector<std::string> Arrivals(const std::vector<AccessibleEvents::Event>& heard) {
    std::vector<std::string> names;
    for (const auto& event : heard) {
      if (event.type == kFocused && event.on) names.push_back(event.name);
    }
    return names;
  }
  static std::vector<std::string> Said(const std::vector<AccessibleEvents::Event>& heard) {
    std::vector<std::string> said;
    for (const auto& event : heard) {
      const bool isSaid =
          event.type == kShowing && event.on && event.role == ATSPI_ROLE_NOTIFICATION;
      if (isSaid) said.push_back(event.name);
    }
    return said;
  }
  /// Waits for something to be said, and expects it to be this and nothing more.
  void ExpectSaid(const std::string& text) {
    EXPECT_TRUE(events_.WaitFor([](const auto& heard) { return !Said(heard).empty(); })) << text;
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    EXPECT_EQ(Said(events_.Heard()), std::vector<std::string>{text});
    events_.Forget();
  }
  /// Presses keys that lead to one arrival: at this name, and nowhere else.
  void ExpectArrival(const std::string& keys, const std::string& name) {
    events_.Forget();
    Type(keys);
    EXPECT_TRUE(events_.WaitFor([&](const auto& heard) { return !Arrivals(heard).empty(); }))
        << name;
    // Long enough for another one.
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    EXPECT_EQ(Arrivals(events_.Heard()), std::vector<std::string>{name});
  }
  void CreateA(int rows, int cols) {
    Fill("Rows of A", std::to_string(rows));
    Fill("Columns of A", std::to_string(cols));
    Press("Matrix A: Create");
    const AccessibleNode window = WaitForWindow("Matrix A");
    ASSERT_TRUE(Wait([&] { return window.Has(ATSPI_STATE_ACTIVE); }));
  }

  AccessibleEvents events_{{kFocused, kShowing}};
};

TEST_F(ScreenReaderTest, AnArrowTellsTheOpenCellOnce) {
  CreateA(3, 3);
  Type("1 Right 2 Right 3 Right 4");
  ASSERT_TRUE(Wait([&] { return Cell("Matrix A", 2, 1) == "4"; }));
  ExpectArrival("Up", "Matrix A, row 1, column 1, 1");
  ExpectArrival("Right", "Matrix A, row 1, column 2, 2");
  ExpectArrival("Left", "Matrix A, row 1, column 1, 1");
  ExpectArrival("Down", "Matrix A, row 2, column 1, 4");
  ExpectArrival("Right", "Matrix A, row 2, column 2, empty");
}

TEST_F(ScreenReaderTest, AnArrowOnTheGridTellsTheCellThatItOpens) {
  CreateA(2, 2);
  ExpectArrival("Down", "Matrix A, row 2, column 1, empty");
  EXPECT_TRUE(OpenCell(Window("Matrix A"), 2, 1).Has(ATSPI_STATE_FOCUSED));
}

TEST_F(ScreenReaderTest, AKeyThatOpensNothingTellsTheCell) {
  CreateA(2, 2);
  ExpectArrival("End", "Matrix A, row 1, column 2, empty");
}

TEST_F(ScreenReaderTest, RowsAndColumnsCountFromTheFirstDataCell) {
  CreateA(2, 3);
  const AccessibleNode table = Window("Matrix A").Find([](const AccessibleNode& node) {
    return node.Role() == ATSPI_ROLE_TABLE;
  });
  ASSERT_TRUE(table);
  EXPECT_EQ(table.TableSize(), (std::pair{2, 3}));
  for (int row = 0; row < 2; ++row) {
    for (int col = 0; col < 3; ++col) {
      const AccessibleNode cell = table.TableCell(row, col);
      EXPECT_EQ(cell.Description(), Place(row + 1, col + 1));
      EXPECT_EQ(table.PlaceOf(cell), (std::pair{row, col}));
      EXPECT_EQ(table.ColumnHeader(col), std::to_string(col + 1));
      EXPECT_EQ(table.RowHeader(row), std::to_string(row + 1));
    }
  }
}

TEST_F(ScreenReaderTest, ANewResultTakesNoFocusAndIsAnnounced) {
  CreateA(2, 2);
  for (int i = 1; i <= 2; ++i) {
    for (int j = 1; j <= 2; ++j) FillCell(i, j, i == j ? "2" : "0");
  }
  events_.Forget();
  Press("Inverse(A)");
  EXPECT_TRUE(Wait([this] { return static_cast<bool>(Window("Inverse of A")); }));
  for (const std::string& name : Arrivals(events_.Heard()))
    EXPECT_EQ(name.find("Inverse of A"), std::string::npos) << name;
  ExpectSaid("Inverse of A computed, 2 by 2");
  const AccessibleNode result = WaitForWindow("Inverse of A");
  for (const AccessibleNode& node : result.All())
    EXPECT_FALSE(node.Has(ATSPI_STATE_FOCUSED)) << node.Name();
  Press("Determinant(A)");
  ExpectSaid("Determinant of A: 4");
  Press("LU factors of A");
  ExpectSaid("L computed, 2 by 2; U computed, 2 by 2");
}

TEST_F(ScreenReaderTest, ARefusedKeyIsAnnounced) {
  CreateA(2, 2);
  Type("slash");
  ExpectSaid("/ is not accepted here: type .3333333333333333 for 1/3");
  Type("1 BackSpace");
  ExpectSaid("Backspace is not accepted here: press Delete, or type over it");
}

TEST_F(ScreenReaderTest, AFieldThatIsReadInPartIsAnnounced) {
  const AccessibleNode field = Control("Scalar that multiplies A");
  // There is nobody here who gives a window the keyboard.
  ASSERT_EQ(std::system("xdotool search --name '^Orvane$' windowfocus --sync"), 0);
  ASSERT_TRUE(field.Focus());
  ASSERT_TRUE(Wait([&] { return field.Has(ATSPI_STATE_FOCUSED); }));
  Type("0 comma 5");
  ExpectSaid("Read as 0: the decimal sign is the point.");
  EXPECT_EQ(field.Description(), "Read as 0: the decimal sign is the point.");
}

}  // namespace
}  // namespace qmx::test
