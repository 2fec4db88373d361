// SPDX-License-Identifier: MIT
#include "grids/digit_runs.h"

#include <gtest/gtest.h>

#include "grids/contrast.h"

namespace qmx {
namespace {

/// The parts of a text, those that are not proved in brackets.
std::string Marked(const QString& text, int held) {
  std::string marked;
  for (const DigitRun& run : DigitRuns(text, held)) {
    const std::string part = text.mid(run.start, run.length).toStdString();
    marked += run.isProved ? part : "[" + part + "]";
  }
  return marked;
}

TEST(DigitRuns, DigitsThatDoNotHoldAreApart) {
  EXPECT_EQ(Marked("-12.34", 3), "-12.3[4]");
  EXPECT_EQ(Marked("0.3333333", 5), "0.33333[33]");
  EXPECT_EQ(Marked("123456789012345", 9), "123456789[012345]");
}

TEST(DigitRuns, ThePointGoesWithTheDigitBeforeIt) {
  EXPECT_EQ(Marked("12.5", 2), "12.[5]");
  EXPECT_EQ(Marked("12.5", 1), "1[2.5]");
}

TEST(DigitRuns, ZerosInFrontAreNoDigits) {
  EXPECT_EQ(Marked("0.001234", 2), "0.0012[34]");
  EXPECT_EQ(Marked("-0.5", 1), "-0.5");
}

TEST(DigitRuns, TheExponentGoesWithTheFirstDigit) {
  EXPECT_EQ(Marked("9.007199E+15", 1), "9.[007199]E+15");
  EXPECT_EQ(Marked("9.007199E+15", 0), "[9.007199E+15]");
  EXPECT_EQ(Marked("9.007199E+15", 7), "9.007199E+15");
}

TEST(DigitRuns, AZeroHoldsOrDoesNot) {
  EXPECT_EQ(Marked("0", 0), "[0]");
  EXPECT_EQ(Marked("0", 15), "0");
}

TEST(DigitRuns, WhatIsNotWrittenNeedsNoMark) {
  EXPECT_EQ(Marked("0.5", 9), "0.5");
  EXPECT_EQ(Marked("", 3), "");
}

struct Ground {
  QColor text;
  QColor base;
};

TEST(UnprovedColour, IsClearlyLighterThanTheTextAndStillReadable) {
  // Light, dark as desktops have it, black on white, white on black, a selected cell of each.
  const std::vector<Ground> grounds{{Qt::black, Qt::white},
                                    {Qt::white, Qt::black},
                                    {QColor(239, 240, 241), QColor(35, 38, 41)},
                                    {QColor(255, 255, 255), QColor(45, 45, 45)},
                                    {Qt::black, QColor(193, 221, 238)},
                                    {Qt::white, QColor(41, 71, 90)}};
  for (const auto& [text, base] : grounds) {
    const QColor grey = UnprovedColour(text, base);
    EXPECT_GE(Contrast(grey, text), 3) << text.name().toStdString();
    EXPECT_GE(Contrast(grey, base), 3) << text.name().toStdString();
  }
}

TEST(UnprovedColour, RedAndBlueStayWhatTheyAreButPaler) {
  for (const QColor& text : {QColor(Qt::red), QColor(Qt::blue)}) {
    const QColor pale = UnprovedColour(text, Qt::white);
    EXPECT_EQ(pale.hslHue(), text.hslHue());
    EXPECT_GT(pale.lightness(), text.lightness());
    EXPECT_GE(Contrast(pale, text), 2);
    EXPECT_GE(Contrast(pale, Qt::white), 1.8);
  }
}

TEST(Contrast, BlackAndWhiteAreTheEnds) {
  EXPECT_NEAR(Contrast(Qt::black, Qt::white), 21, 1e-6);
  EXPECT_NEAR(Contrast(Qt::white, Qt::black), 21, 1e-6);
  EXPECT_NEAR(Contrast(Qt::red, Qt::red), 1, 1e-12);
}

}  // namespace
}  // namespace qmx
