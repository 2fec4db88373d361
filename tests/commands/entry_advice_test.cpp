// SPDX-License-Identifier: MIT
#include "commands/entry_advice.h"

#include <gtest/gtest.h>

#include "base/number_text.h"

namespace qmx {
namespace {

TEST(ElementLine, NamesTheElementAndAllItsDigits) {
  EXPECT_EQ(ElementLine(kSlotA, 2, 3, 1.0 / 3), "A(2,3) = 0.3333333333333333");
  EXPECT_EQ(ElementLine(kSlotSystem, 1, 4, -0.1), "System(1,4) = -0.1");
  EXPECT_EQ(ElementLine(kSlotEigenvalues, 2, 1, 7), "(2,1) = 7");
}

TEST(WhyReadInPart, HasNothingToSayOfNumbers) {
  for (const char* text : {"0", "-1.5", "+.5", "1e3", "1E-05", " 7 ", "1.", "-.5e+1"})
    EXPECT_EQ(WhyReadInPart(text), "") << text;
}

TEST(WhyReadInPart, TellsWhatIsWrong) {
  const std::pair<const char*, const char*> cases[] = {
      {"", "there is no number"},
      {"  ", "there is no number"},
      {"0,5", "the decimal sign is the point"},
      {",5", "the decimal sign is the point"},
      {"1.2.3", "a number has one point"},
      {"1e2.5", "an exponent is a whole number"},
      {"1e.5", "an exponent is a whole number"},
      {"1-2", "a sign stands in front or after E"},
      {"--5", "a number has one sign in front"},
      {"1e--5", "an exponent has one sign"},
      {"1e2e3", "a number has one E"},
      {"1e", "the digits of the exponent are missing"},
      {"1e-", "the digits of the exponent are missing"},
      {"-", "digits are missing"},
      {"-.", "digits are missing"},
      {"e5", "a number begins with digit, sign or point"},
      {"abc", "a number begins with digit, sign or point"},
      {"1e999", "larger numbers cannot be held"},
      {"1 000", "one number is read"},
      {"1/3", "/ is no part of a number"},
      {"5\u20ac", "\u20ac is no part of a number"},
  };
  for (const auto& [text, why] : cases) EXPECT_EQ(WhyReadInPart(text), why) << text;
}

// Whatever is typed: silence means that the text and the value are the same number.
TEST(WhyReadInPart, IsSilentJustWhereTheWholeTextIsTheNumber) {
  const std::string characters = "05+-.Ee,x ";
  const std::size_t count = characters.size();
  for (std::size_t code = 0; code < count * count * count * count; ++code) {
    std::string text;
    for (std::size_t rest = code; rest != 0; rest /= count) text += characters[rest % count];
    const std::size_t first = text.find_first_not_of(' ');
    const std::string bare = first == std::string::npos
                                 ? ""
                                 : text.substr(first, text.find_last_not_of(' ') - first + 1);
    const auto number = ParseNumber(bare);
    EXPECT_EQ(WhyReadInPart(text).empty(), number.has_value()) << '"' << text << '"';
    EXPECT_EQ(Val(text), number.value_or(Val(text))) << '"' << text << '"';
  }
}

TEST(FieldNote, TellsWhatANumberIsReadAs) {
  EXPECT_EQ(FieldNote(FieldKind::kNumber, "0.5"), "");
  EXPECT_EQ(FieldNote(FieldKind::kNumber, "0,5"), "Read as 0: the decimal sign is the point.");
  EXPECT_EQ(FieldNote(FieldKind::kNumber, "1.5.2"), "Read as 1.5: a number has one point.");
  EXPECT_EQ(FieldNote(FieldKind::kNumber, ""), "Read as 0: there is no number.");
}

TEST(FieldNote, TellsWhatAWholeNumberIsReadAs) {
  EXPECT_EQ(FieldNote(FieldKind::kWholeNumber, "1e2"), "");
  EXPECT_EQ(FieldNote(FieldKind::kWholeNumber, "2.5"), "Read as 2: a whole number is taken.");
  EXPECT_EQ(FieldNote(FieldKind::kWholeNumber, "99,5"),
            "Read as 99: the decimal sign is the point.");
  EXPECT_EQ(FieldNote(FieldKind::kWholeNumber, "1e99"),
            "Read as 2147483647: a whole number is taken.");
}

TEST(FieldNote, TellsThatACountIsNotTaken) {
  for (const char* text : {"3", " 3 ", "+12"})
    EXPECT_EQ(FieldNote(FieldKind::kDimension, text), "") << text;
  for (const char* text : {"", "0", "-1", "2.0", "2,5", "x", "99999999999"}) {
    EXPECT_EQ(FieldNote(FieldKind::kDimension, text),
              "Not taken: this must be a whole number of at least 1.")
        << text;
  }
}

TEST(CountNote, TellsTheRange) {
  EXPECT_EQ(CountNote("5", 1, 5), "");
  EXPECT_EQ(CountNote("6", 1, 5), "Not taken: this must be a whole number from 1 to 5.");
  EXPECT_EQ(CountNote("x", 1, 5), "Not taken: this must be a whole number from 1 to 5.");
}

TEST(KeyRefusal, SaysWhatToDoInstead) {
  const std::pair<const char*, const char*> cases[] = {
      {"/", "/ is not accepted here: type .3333333333333333 for 1/3"},
      {",", ", is not accepted here: type . for the decimal sign"},
      {"x", "x is not accepted here: numbers are typed with 0 to 9 + - . E"},
      {"O", "O is not accepted here: type 0 for zero"},
      {"d", "d is not accepted here: type E before an exponent"},
      {"*", "* is not accepted here: a cell holds a number, no formula"},
      {" ", "Space is not accepted here: digits stand without a gap"},
      {"\u2212", "\u2212 is not accepted here: type - for minus"},
      {"\u00e9", "\u00e9 is not accepted here: numbers are typed with 0 to 9 + - . E"},
      {"Backspace", "Backspace is not accepted here: press Delete, or type over it"},
      {"Enter", "Enter is not accepted here: it is stored already; an arrow leads on"},
      {"Escape", "Escape is not accepted here: Ctrl+Z takes back what you typed"},
  };
  for (const auto& [key, text] : cases) EXPECT_EQ(KeyRefusal(key), text);
}

}  // namespace
}  // namespace qmx
