// SPDX-License-Identifier: MIT
#include "desktop/decimal_guard.h"

#include <gtest/gtest.h>

#include "desktop/fake_settings.h"
#include "support/core_screen.h"

namespace qmx::test {
namespace {

using Written = std::vector<std::string>;

TEST(DecimalGuard, PointRaisesNoBoxAndIsWrittenBackAtTheEnd) {
  FakeSettings settings(".");
  RecordingScreen screen;
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
  RecordingScreen screen;
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
    RecordingScreen screen;
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
    RecordingScreen screen;
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
  RecordingScreen screen;
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
  RecordingScreen screen;
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
}  // namespace qmx::test
