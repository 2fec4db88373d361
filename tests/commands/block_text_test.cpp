// SPDX-License-Identifier: MIT
#include "commands/block_text.h"

#include <gtest/gtest.h>

#include <random>

#include "base/number_text.h"

namespace qmx {
namespace {

/// The numbers of a block as "rows x cols: texts", or its problem.
std::string Read(std::string_view text) {
  const NumberBlock block = ReadNumberBlock(text);
  if (!block.problem.empty()) return block.problem;
  std::string all = std::to_string(block.texts.rows) + "x" + std::to_string(block.texts.cols) + ":";
  for (int i = 0; i < block.texts.rows; ++i) {
    for (int j = 0; j < block.texts.cols; ++j) all += " " + std::string(block.texts.At(i, j));
  }
  EXPECT_EQ(block.values.size(), block.texts.Size());
  return all;
}

TEST(BlockText, TabsSeparateCellsAndLineEndsRows) {
  EXPECT_EQ(Read("1\t2\n3\t4\n"), "2x2: 1 2 3 4");
  EXPECT_EQ(Read("1\t2\r\n3\t4\r\n"), "2x2: 1 2 3 4");
  EXPECT_EQ(Read("1\t2\r3\t4"), "2x2: 1 2 3 4");
  EXPECT_EQ(Read("5"), "1x1: 5");
  EXPECT_EQ(Read("5\n6\n\n \n"), "2x1: 5 6");
}

TEST(BlockText, OtherSeparatorsCountWhereThereIsNoTab) {
  EXPECT_EQ(Read("1;2\n3;4"), "2x2: 1 2 3 4");
  EXPECT_EQ(Read("1 2\n 3   4 \n"), "2x2: 1 2 3 4");
  EXPECT_EQ(Read("1, 2\n3, 4"), "2x2: 1 2 3 4");
  EXPECT_EQ(Read("1,2,3\n4,5,6"), "2x3: 1 2 3 4 5 6");
  EXPECT_EQ(Read("1.5,2.5\n-1,-2"), "2x2: 1.5 2.5 -1 -2");
}

TEST(BlockText, ValuesAreThoseOfTheTexts) {
  const NumberBlock block = ReadNumberBlock("0.1\t-.5\n1e3\t+7.\n");
  EXPECT_EQ(block.values, (std::vector<double>{0.1, -0.5, 1000, 7}));
}

TEST(BlockText, BlanksQuotesAndTheMinusSignOfUnicodeAreTolerated) {
  EXPECT_EQ(Read(" 1 \t\"2\"\n\" 3 \" \t\xC2\xA0\xE2\x88\x92"
                 "4\n"),
            "2x2: 1 2 3 -4");
  EXPECT_EQ(Read("1E\xE2\x88\x92"
                 "3"),
            "1x1: 1E-3");
  EXPECT_EQ(Read("\"1\",\"2\"\n\"3\",\"4\""), "2x2: 1 2 3 4");
  EXPECT_EQ(Read("\"1\" \"2\""), "1x2: 1 2");
  EXPECT_EQ(Read("\xEF\xBB\xBF"
                 "1\t2"),
            "1x2: 1 2");
}

constexpr const char* kComma =
    ". A decimal point is needed, not a comma; tabs or semicolons separate numbers.";

TEST(BlockText, BlanksOfSeveralKindsAreTakenOffBothEnds) {
  const std::string nbsp = "\xC2\xA0";
  const std::string narrow = "\xE2\x80\xAF";
  for (const std::string& blanks : {std::string("   "), nbsp + nbsp, narrow + nbsp + " "}) {
    EXPECT_EQ(Read("1\t" + blanks + "2"), "1x2: 1 2") << blanks;
    EXPECT_EQ(Read("1" + blanks + "\t2"), "1x2: 1 2") << blanks;
  }
}

TEST(BlockText, ACommaThatMayBeADecimalOneIsRefused) {
  EXPECT_EQ(Read("1,5"), std::string("row 1, column 1 of it is \"1,5\"") + kComma);
  EXPECT_EQ(Read("1.5\t2\n3\t-2,5E3"), std::string("row 2, column 2 of it is \"-2,5E3\"") + kComma);
  EXPECT_EQ(Read("1.5;2,5"), std::string("row 1, column 2 of it is \"2,5\"") + kComma);
  EXPECT_EQ(Read("1.5 2,5"), std::string("row 1, column 2 of it is \"2,5\"") + kComma);
  EXPECT_EQ(Read("1,2\n3,4"), std::string("row 1, column 1 of it is \"1,2\"") + kComma);
  EXPECT_EQ(Read("\"1,5\",\"2,5\""), std::string("row 1, column 1 of it is \"1,5\"") + kComma);
  EXPECT_EQ(Read("7\n,5"), std::string("row 2, column 1 of it is \",5\"") + kComma);
}

TEST(BlockText, DecimalCommasAreReadWhereTheyCanBeNothingElse) {
  EXPECT_EQ(Read("1,5\t2\n-3\t0,25\n"), "2x2: 1.5 2 -3 0.25");
  EXPECT_EQ(Read("1;2,5"), "1x2: 1 2.5");
  EXPECT_EQ(Read("1,5 2,25"), "1x2: 1.5 2.25");
  EXPECT_EQ(Read("1,5\n2,25\n3\n"), "3x1: 1.5 2.25 3");
  EXPECT_EQ(Read("\"1,5\"\t\"2,5E-3\""), "1x2: 1.5 2.5E-3");
  EXPECT_EQ(Read("1,234\t2,5"), "1x2: 1.234 2.5");
  EXPECT_EQ(Read("0,123\t0,456"), "1x2: 0.123 0.456");
  EXPECT_EQ(ReadNumberBlock("0,1\t2,5").values, (std::vector<double>{0.1, 2.5}));
}

TEST(BlockText, DecimalCommasThatMayBeSomethingElseAreRefused) {
  for (const char* text : {"1,234\t5,678", "1,5", "1,5\n2,5", "1,5;2.5", "1,5\t1,2,3", ",5\t1,5"}) {
    EXPECT_TRUE(Read(text).ends_with(kComma)) << Read(text);
  }
  EXPECT_EQ(Read("1,5\tx"), std::string("row 1, column 1 of it is \"1,5\"") + kComma);
}

TEST(BlockText, ThousandsSeparatorsAreRefused) {
  EXPECT_EQ(Read("1,234.5\t1"), std::string("row 1, column 1 of it is \"1,234.5\"") + kComma);
  EXPECT_EQ(Read("1,234.5"), std::string("row 1, column 1 of it is \"1,234.5\"") + kComma);
  EXPECT_EQ(Read("1,234,567"), std::string("row 1, column 1 of it is \"1,234,567\"") + kComma);
  EXPECT_EQ(Read("1.234,5"), std::string("row 1, column 1 of it is \"1.234,5\"") + kComma);
  EXPECT_EQ(Read("1.234.567\t1"), "row 1, column 1 of it is \"1.234.567\", which is no number.");
  EXPECT_EQ(Read("1'234\t1"), "row 1, column 1 of it is \"1'234\", which is no number.");
  EXPECT_EQ(Read("1 234\t1"), "row 1, column 1 of it is \"1 234\", which is no number.");
}

TEST(BlockText, TheFirstCellThatIsNoNumberIsNamed) {
  EXPECT_EQ(Read("1\t2\n3\tabc\nx\ty"), "row 2, column 2 of it is \"abc\", which is no number.");
  EXPECT_EQ(Read("Smith, John"), "row 1, column 1 of it is \"Smith\", which is no number.");
  EXPECT_EQ(Read("Smith, John\t1"),
            "row 1, column 1 of it is \"Smith, John\", which is no number.");
  for (const char* text : {"1e", "-", ".", "1..2", "0x10", "nan", "inf", "1 2\t3", "--1", "5%"}) {
    EXPECT_TRUE(Read(text).ends_with("which is no number.")) << text << ": " << Read(text);
  }
  EXPECT_EQ(Read("\"1\n2\"\t3"), "row 1, column 1 of it is \"1 2\", which is no number.");
  EXPECT_EQ(Read("5\"\t6"), "row 1, column 1 of it is \"5\"\", which is no number.");
}

TEST(BlockText, WhatIsLongIsShownInPart) {
  EXPECT_EQ(Read(std::string(100, 'x')),
            "row 1, column 1 of it is \"" + std::string(40, 'x') + "...\", which is no number.");
  EXPECT_EQ(Read("x" + std::string(39, 'x') + "\xC3\xA4"),
            "row 1, column 1 of it is \"" + std::string(40, 'x') + "...\", which is no number.");
}

TEST(BlockText, NumbersThatAreTooLargeAreRefused) {
  EXPECT_EQ(Read("1\t1E999"), "row 1, column 2 of it is \"1E999\", which is too large.");
  EXPECT_EQ(Read("-1.8e308"), "row 1, column 1 of it is \"-1.8e308\", which is too large.");
  EXPECT_EQ(Read("1E-999"), "1x1: 1E-999");
}

TEST(BlockText, EmptyCellsAreRefused) {
  constexpr const char* kEmpty = " of it is empty. Write 0 where you mean zero.";
  EXPECT_EQ(Read("1\t\t3"), std::string("row 1, column 2") + kEmpty);
  EXPECT_EQ(Read("1\t2\t\n"), std::string("row 1, column 3") + kEmpty);
  EXPECT_EQ(Read("1\n\n3"), std::string("row 2, column 1") + kEmpty);
  EXPECT_EQ(Read("1\t\"\""), std::string("row 1, column 2") + kEmpty);
  EXPECT_EQ(Read(""), std::string("row 1, column 1") + kEmpty);
  EXPECT_EQ(Read("1;2;;\n"), std::string("row 1, column 3") + kEmpty);
}

TEST(BlockText, RowsOfDifferentLengthAreRefused) {
  EXPECT_EQ(Read("1\t2\n3\n4\t5"), "its row 2 has 1 column, but the first row has 2.");
  EXPECT_EQ(Read("1\n2\n3 4"), "its row 3 has 2 columns, but the first row has 1.");
}

TEST(BlockText, AnyTextIsABlockOfItsNumbersOrAProblem) {
  constexpr std::string_view kCharacters = "0123456789+-.,eE;\t \n\r\"\xE2\x88\x92\xC2\xA0x";
  std::mt19937 random(4711);
  int blocks = 0;
  for (int round = 0; round < 200000; ++round) {
    std::string text(random() % 12, ' ');
    // Mostly digits, so that many of them are blocks.
    for (char& c : text) c = kCharacters[random() % (random() % 2 == 0 ? 10 : kCharacters.size())];
    const NumberBlock block = ReadNumberBlock(text);
    if (!block.problem.empty()) continue;
    ++blocks;
    const TextBlock& texts = block.texts;
    ASSERT_EQ(block.values.size(), static_cast<std::size_t>(texts.rows) * texts.cols) << text;
    ASSERT_EQ(block.values.size(), texts.Size()) << text;
    for (int i = 0; i < texts.rows; ++i) {
      for (int j = 0; j < texts.cols; ++j) {
        const auto place = static_cast<std::size_t>(i) * texts.cols + j;
        ASSERT_EQ(ParseNumber(texts.At(i, j)), block.values[place]) << text;
      }
    }
  }
  EXPECT_GT(blocks, 20000);
}

TEST(BlockText, ASingleTextLosesWhatStandsAroundIt) {
  EXPECT_EQ(PlainCellText(" \xE2\x88\x92"
                          "5 \r\n"),
            "-5");
  EXPECT_EQ(PlainCellText("\"2.5\"\n"), "2.5");
  EXPECT_EQ(PlainCellText("1\t2"), "1\t2");
  EXPECT_EQ(PlainCellText(""), "");
}

}  // namespace
}  // namespace qmx
