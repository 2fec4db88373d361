#include "desktop/decimal_guard.h"

#include <gtest/gtest.h>

#include "support/core_screen.h"

namespace qmx {
namespace {

/// A setting in memory that keeps every value written to it.
class FakeSettings : public RegionalSettings {
 public:
  explicit FakeSettings(std::string separator) : separator_(std::move(separator)) {}
  std::vector<std::string> written;

  std::string DecimalSeparator() override { return separator_; }
  void SetDecimalSeparator(const std::string& separator) override {
    written.push_back(separator);
    separator_ = separator;
  }

 private:
  std::string separator_;
};

using Written = std::vector<std::string>;

TEST(DecimalGuard, PointRaisesNoBoxAndIsWrittenBackAtTheEnd) {
  FakeSettings settings(".");
  test::RecordingScreen screen;
  screen.answers = {Answer::kNo};
  DecimalGuard guard(settings);
  EXPECT_TRUE(guard.Check(screen));
  EXPECT_TRUE(screen.messages.empty());
  EXPECT_EQ(settings.written, Written{});
  guard.Restore();
  EXPECT_EQ(settings.written, Written{"."});
}

TEST(DecimalGuard, YesSetsThePointAndTheEndBringsTheCommaBack) {
  FakeSettings settings(",");
  test::RecordingScreen screen;
  screen.answers = {Answer::kYes};
  DecimalGuard guard(settings);
  EXPECT_TRUE(guard.Check(screen));
  EXPECT_EQ(settings.written, Written{"."});
  guard.Restore();
  EXPECT_EQ(settings.written, (Written{".", ","}));
  EXPECT_EQ(settings.DecimalSeparator(), ",");
}

TEST(DecimalGuard, AnyOtherAnswerEndsTheProgramWithNothingChanged) {
  for (const Answer answer : {Answer::kNo, Answer::kCancel, Answer::kOk}) {
    FakeSettings settings(",");
    test::RecordingScreen screen;
    screen.answers = {answer};
    DecimalGuard guard(settings);
    EXPECT_FALSE(guard.Check(screen));
    EXPECT_EQ(screen.messages.size(), 1u);
    EXPECT_EQ(settings.written, Written{});
    EXPECT_EQ(settings.DecimalSeparator(), ",");
  }
}

TEST(DecimalGuard, EverySeparatorButThePointAloneRaisesTheBox) {
  for (const char* separator : {",", "\xD9\xAB", "..", " .", "'", ""}) {
    FakeSettings settings(separator);
    test::RecordingScreen screen;
    screen.answers = {Answer::kYes};
    DecimalGuard guard(settings);
    EXPECT_TRUE(guard.Check(screen));
    EXPECT_EQ(screen.messages.size(), 1u) << '"' << separator << '"';
    EXPECT_EQ(guard.SavedSeparator(), separator);
    guard.Restore();
    EXPECT_EQ(settings.DecimalSeparator(), separator);
  }
}

TEST(DecimalGuard, BoxReadsAsItShould) {
  FakeSettings settings(",");
  test::RecordingScreen screen;
  screen.answers = {Answer::kCancel};
  DecimalGuard(settings).Check(screen);
  ASSERT_EQ(screen.messages.size(), 1u);
  const Message& box = screen.messages.front();
  EXPECT_EQ(box.title, "Decimal Comma Warning!");
  EXPECT_EQ(box.icon, Icon::kCritical);
  EXPECT_EQ(box.buttons, Buttons::kYesNoCancel);
  EXPECT_EQ(box.text,
            "Proper operation of this application requires the use of the DECIMAL POINT.\r"
            "Your system is currently using the DECIMAL COMMA.\r"
            "\r"
            "Do you wish to temporarily change this system setting to decimal point?\r"
            "(Upon exiting, this application will restore your setting.)\r"
            "(See the help file on how to change this setting by hand.)\r"
            "\r"
            "Press YES to change.");
}

TEST(DecimalGuard, SecondInstanceSavesWhatTheFirstOneSet) {
  FakeSettings settings(",");
  test::RecordingScreen screen;
  screen.answers = {Answer::kYes};
  DecimalGuard first(settings);
  DecimalGuard second(settings);
  EXPECT_TRUE(first.Check(screen));
  EXPECT_TRUE(second.Check(screen));
  EXPECT_EQ(screen.messages.size(), 1u);
  first.Restore();
  EXPECT_EQ(settings.DecimalSeparator(), ",");
  second.Restore();
  EXPECT_EQ(settings.DecimalSeparator(), ".");
}

}  // namespace
}  // namespace qmx
