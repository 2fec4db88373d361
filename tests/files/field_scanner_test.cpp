// SPDX-License-Identifier: MIT
#include "files/field_scanner.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace qmx {
namespace {

TEST(FieldScanner, DoesNotCareWhichRecordHoldsANumber) {
  for (const char* bytes :
       {"1,2,3\r\n", " 1 \r\n 2 \r\n 3 \r\n", "1\n2\n3\n", "1 2 3\n", "1,2\n3\n", " 1 , 2\t,\t3 \n",
        "\n\n1\r\n\r\n  2\n\t3  \n", "+1,+2,3.0E+00\n"}) {
    FieldScanner scanner(bytes);
    double value = 0;
    for (const double wanted : {1.0, 2.0, 3.0}) {
      ASSERT_TRUE(scanner.ReadNumber(value)) << bytes;
      EXPECT_EQ(value, wanted) << bytes;
    }
    EXPECT_TRUE(scanner.AtEnd()) << bytes;
  }
}

TEST(FieldScanner, ReadsEveryFormOfANumber) {
  FieldScanner scanner(".5 -.5 5. 1E-20 1e20 1.5E+03 -0 1E-999 00012 4.9E-324\n");
  for (const double wanted : {.5, -.5, 5.0, 1e-20, 1e20, 1500.0, 0.0, 0.0, 12.0, 4.9e-324}) {
    double value = 99;
    ASSERT_TRUE(scanner.ReadNumber(value));
    EXPECT_EQ(value, wanted);
  }
}

TEST(FieldScanner, RefusesWhatIsNoFiniteNumber) {
  for (const char* bytes :
       {"",           " ",       "\n",       "x\n",     "1x\n",   "1e\n",  "1e+\n",  ".\n",
        "+\n",        "-\n",     "--1\n",    "+-1\n",   "-+1\n",  "inf\n", "-inf\n", "nan\n",
        "infinity\n", "1e999\n", "-1e999\n", "0x10\n",  "1D5\n",  "1;2\n", ",1\n",   "#TRUE#\n",
        "\"1\"\n",    "1\r2\n",  "- 1\n",    "1.2.3\n", "1_000\n"}) {
    FieldScanner scanner(bytes);
    double value = 0;
    EXPECT_FALSE(scanner.ReadNumber(value)) << bytes;
  }
}

TEST(FieldScanner, RefusesAFieldThatAFileWithCarriageReturnsEndsIn) {
  for (const char* bytes : {"0\r\n1", "0\r\n1 ", "0\r\n1\r", "0\r\n1 \r"}) {
    FieldScanner scanner(bytes);
    double value = 0;
    ASSERT_TRUE(scanner.ReadNumber(value)) << bytes;
    EXPECT_FALSE(scanner.ReadNumber(value)) << bytes;
    std::int32_t count = 0;
    EXPECT_FALSE(scanner.ReadInteger(count)) << bytes;
    std::string text;
    EXPECT_FALSE(scanner.ReadText(text)) << bytes;
  }
  FieldScanner flag("#TRUE#\r\n#TRUE#");
  bool value = false;
  ASSERT_TRUE(flag.ReadFlag(value));
  EXPECT_FALSE(flag.ReadFlag(value));
}

TEST(FieldScanner, TheLastLineOfAPlainTextMayLackItsEnd) {
  for (const char* bytes : {"0\n1", "0\n1 ", "0,1"}) {
    FieldScanner scanner(bytes);
    double value = 0;
    ASSERT_TRUE(scanner.ReadNumber(value)) << bytes;
    ASSERT_TRUE(scanner.ReadNumber(value)) << bytes;
    EXPECT_EQ(value, 1.0);
    EXPECT_TRUE(scanner.AtEnd());
    EXPECT_FALSE(scanner.ReadNumber(value));
  }
  FieldScanner scanner("#TRUE#\nYes");
  bool flag = false;
  std::string text;
  EXPECT_TRUE(scanner.ReadFlag(flag));
  EXPECT_TRUE(scanner.ReadText(text));
  EXPECT_EQ(text, "Yes");
}

TEST(FieldScanner, ReadsIntegersOfThirtyTwoBits) {
  FieldScanner scanner("2147483647,-2147483648 +7\r\n 0 \r\n");
  for (const std::int32_t wanted :
       {std::numeric_limits<std::int32_t>::max(), std::numeric_limits<std::int32_t>::min(), 7, 0}) {
    std::int32_t value = 0;
    ASSERT_TRUE(scanner.ReadInteger(value));
    EXPECT_EQ(value, wanted);
  }
  for (const char* bytes : {"2147483648\n", "-2147483649\n", "1.0\n", "1.\n", "1e3\n", "x\n", "+\n",
                            "+-1\n", "\n", "99999999999999999999\n", "1x\n"}) {
    FieldScanner odd(bytes);
    std::int32_t value = 0;
    EXPECT_FALSE(odd.ReadInteger(value)) << bytes;
  }
}

TEST(FieldScanner, ReadsFlags) {
  FieldScanner scanner("#TRUE#,#FALSE#\r\n #TRUE# \n");
  for (const bool wanted : {true, false, true}) {
    bool value = !wanted;
    ASSERT_TRUE(scanner.ReadFlag(value));
    EXPECT_EQ(value, wanted);
  }
  for (const char* bytes :
       {"1\n", "TRUE\n", "#true#\n", "#TRUE\n", "#TRUE##\n", "#FALSE#x\n", "\n"}) {
    FieldScanner odd(bytes);
    bool value = false;
    EXPECT_FALSE(odd.ReadFlag(value)) << bytes;
  }
}

TEST(FieldScanner, ReadsTextToTheCommaOrTheEndOfTheLine) {
  FieldScanner scanner("  Positive definite \r\nYes,No\n\n\"a, b\" , c\n");
  for (const char* wanted : {"Positive definite", "Yes", "No", "", "a, b", "c"}) {
    std::string text = "?";
    ASSERT_TRUE(scanner.ReadText(text)) << wanted;
    EXPECT_EQ(text, wanted);
  }
  EXPECT_TRUE(scanner.AtEnd());
}

TEST(FieldScanner, RefusesTextThatIsCutOff) {
  for (const char* bytes : {"\"Positive", "\"Positive\n", "\"Pos\"itive\n"}) {
    FieldScanner scanner(bytes);
    std::string text;
    EXPECT_FALSE(scanner.ReadText(text)) << bytes;
  }
}

TEST(FieldScanner, CountsTheNumbersItCouldRead) {
  FieldScanner scanner("1 2 3 x 5\n");
  double values[5] = {};
  EXPECT_EQ(scanner.ReadNumbers(values, 5), 3U);
  EXPECT_FALSE(scanner.Refuse("element 4"));
  EXPECT_EQ(scanner.ProblemText(), "Line 1: expected element 4, but found \"x 5\".");
}

TEST(FieldScanner, KnowsHowManyNumbersTheRestCanHold) {
  EXPECT_TRUE(FieldScanner("1\n2").CanHoldNumbers(2));
  EXPECT_FALSE(FieldScanner("1\n2").CanHoldNumbers(3));
  FieldScanner scanner("1\n2\n");
  EXPECT_TRUE(scanner.CanHoldNumbers(2));
  EXPECT_FALSE(scanner.CanHoldNumbers(3));
  double value = 0;
  ASSERT_TRUE(scanner.ReadNumber(value));
  EXPECT_TRUE(scanner.CanHoldNumbers(1));
  EXPECT_FALSE(scanner.CanHoldNumbers(2));
  EXPECT_FALSE(scanner.CanHoldNumbers(std::numeric_limits<std::uint64_t>::max()));
}

std::string ProblemAfter(const char* bytes, int numbersBefore) {
  FieldScanner scanner(bytes);
  double value = 0;
  for (int i = 0; i < numbersBefore; ++i) EXPECT_TRUE(scanner.ReadNumber(value));
  EXPECT_FALSE(scanner.ReadNumber(value));
  scanner.Refuse("a number");
  return scanner.ProblemText();
}

TEST(FieldScanner, NamesTheLineAndWhatStandsThere) {
  EXPECT_EQ(ProblemAfter("1\n2\nabc,5\n", 2), "Line 3: expected a number, but found \"abc\".");
  EXPECT_EQ(ProblemAfter("1,2\r\n 3 \r\n", 3),
            "Line 3: expected a number, but found the end of the file.");
  EXPECT_EQ(ProblemAfter("1,,2\n", 1), "Line 1: expected a number, but found an empty field.");
  EXPECT_EQ(ProblemAfter("1\r\n\r\n\r\n 2", 1),
            "Line 4: expected a number, but found \"2\" and the end of the file.");
  EXPECT_EQ(ProblemAfter("", 0), "Line 1: expected a number, but found the end of the file.");
  EXPECT_EQ(ProblemAfter("\x01\xff\x80 much longer than any number ever is\n", 0),
            "Line 1: expected a number, but found \"??? much longer than any...\".");
}

TEST(FieldScanner, KeepsTheFirstProblem) {
  FieldScanner scanner("x\n");
  double value = 0;
  EXPECT_FALSE(scanner.ReadNumber(value));
  scanner.Refuse("the first");
  scanner.Refuse("the second");
  EXPECT_EQ(scanner.Problem()->expected, "the first");
}

TEST(FieldScanner, BlamesTheFieldReadLast) {
  FieldScanner scanner("1\n-5\n7\n");
  std::int32_t value = 0;
  ASSERT_TRUE(scanner.ReadInteger(value));
  ASSERT_TRUE(scanner.ReadInteger(value));
  scanner.RefuseLast("a count");
  EXPECT_EQ(scanner.ProblemText(), "Line 2: expected a count, but found \"-5\".");
}

}  // namespace
}  // namespace qmx
