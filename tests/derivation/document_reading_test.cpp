// SPDX-License-Identifier: MIT
#include "derivation/document_reading.h"

#include <gtest/gtest.h>

#include "derivation/document_sample.h"

namespace qmx::test {
namespace {

std::string ShownOfForms(const ShownNumber& number, NumberForm form) {
  const ShownForms forms = FormsOf(number, form);
  return std::string(forms.exact ? "exact" : "") + (forms.decimal ? "decimal" : "");
}

TEST(DocumentReading, ANumberShowsTheFormThatIsAskedForWhereItHasBoth) {
  const ShownNumber both = Shown("0.5", "1", "2");
  EXPECT_EQ(ShownOfForms(both, NumberForm::kFractions), "exact");
  EXPECT_EQ(ShownOfForms(both, NumberForm::kDecimals), "decimal");
  EXPECT_EQ(ShownOfForms(both, NumberForm::kBoth), "exactdecimal");
  // The same text twice would tell nothing.
  EXPECT_EQ(ShownOfForms(Shown("-3", "-3"), NumberForm::kBoth), "exact");
  for (const NumberForm form : kAllForms) {
    EXPECT_EQ(ShownOfForms(Shown("0.5"), form), "decimal");
    EXPECT_EQ(ShownOfForms(Shown("", "1", "2"), form), "exact");
    EXPECT_EQ(ShownOfForms(Shown(""), form), "");
  }
}

TEST(DocumentReading, AnExactNumberIsOneLineOfText) {
  EXPECT_EQ(ExactText({"3", "1", "1"}), "3");
  EXPECT_EQ(ExactText({"-2", "5", "1"}), "-2/5");
  EXPECT_EQ(ExactText({"1", "1", "3"}), "√3");
  EXPECT_EQ(ExactText({"-1", "2", "3"}), "-√3/2");
  EXPECT_EQ(ExactText({"-11", "5", "3"}), "-11√3/5");
  EXPECT_EQ(ExactText({}), "");
}

/// The pieces one after the other, "_" for a blank between them.
std::string Spaced(const std::vector<Piece>& pieces) {
  const Line line{pieces, true};
  std::string text;
  for (std::size_t i = 0; i < pieces.size(); ++i) {
    if (HasBlankBefore(line, i, NumberForm::kFractions)) text += "_";
    if (const auto* sign = std::get_if<Operator>(&pieces[i])) text += sign->sign;
    if (const auto* name = std::get_if<Name>(&pieces[i])) text += name->letter;
    if (const auto* words = std::get_if<Words>(&pieces[i])) text += words->text;
    if (const auto* number = std::get_if<ShownNumber>(&pieces[i])) text += ExactText(number->exact);
    if (std::holds_alternative<ShownMatrix>(pieces[i])) text += "M";
  }
  return text;
}

TEST(DocumentReading, FormulasHaveBlanksWhereTheyNeedThem) {
  const ShownNumber five = Shown("5", "5");
  const ShownNumber half = Shown("0.5", "1", "2");
  const Name lambda{"λ"};
  const Operator minus{"−"};
  const ShownMatrix m = ShownOf(1, 1, {"1"});
  EXPECT_EQ(Spaced({lambda, minus, five, lambda}), "λ_−_5λ");
  EXPECT_EQ(Spaced({minus, lambda, Operator{"+"}, half, lambda}), "−λ_+_1/2_λ");
  EXPECT_EQ(Spaced({Operator{"("}, minus, five, Operator{")"}, Operator{"("}, lambda, minus, five,
                    Operator{")"}}),
            "(−5)(λ_−_5)");
  EXPECT_EQ(Spaced({Name{"det"}, Operator{"("}, Name{"A"}, Operator{")"}, Operator{"="}, five}),
            "det(A)_=_5");
  EXPECT_EQ(Spaced({Name{"det"}, Name{"A"}, Operator{","}, five}), "det_A,_5");
  EXPECT_EQ(Spaced({Operator{"|"}, lambda, Operator{"|"}, Operator{"="}, Operator{"√"}, five}),
            "|λ|_=_√5");
  EXPECT_EQ(Spaced({m, m, Operator{"·"}, minus, five, m}), "M_M_·_−5_M");
  EXPECT_EQ(Spaced({Words{"is "}, five, Words{" or "}, lambda}), "is 5 or λ");
  EXPECT_EQ(Spaced({Words{"row "}, minus, five}), "row −_5");
}

TEST(DocumentReading, ANegativeNumberBehindASignIsInParentheses) {
  const auto needs = [](const std::string& sign, const ShownNumber& number, NumberForm form) {
    return NeedsParentheses(Formula({Name{"x"}, Operator{sign}, number}), 2, form);
  };
  const ShownNumber minusTwo = Shown("-2", "-2");
  for (const char* sign : {"+", "−", "·"}) {
    EXPECT_TRUE(needs(sign, minusTwo, NumberForm::kBoth)) << sign;
  }
  EXPECT_FALSE(needs("=", minusTwo, NumberForm::kBoth));
  EXPECT_FALSE(needs("·", Shown("2", "2"), NumberForm::kBoth));
  // What counts is what is shown: an exact zero that was computed as a little less.
  const ShownNumber almostZero = PartlyHeld("-1E-17", 0, "0", "1");
  EXPECT_FALSE(needs("·", almostZero, NumberForm::kFractions));
  EXPECT_TRUE(needs("·", almostZero, NumberForm::kDecimals));
}

TEST(DocumentReading, ALineMayBeBrokenBehindItsMatrices) {
  const ShownMatrix m = ShownOf(1, 1, {"1"});
  const auto parts = LineParts(Formula({Name{"A"}, Operator{"="}, m, Operator{"·"}, m}));
  ASSERT_EQ(parts.size(), 2U);
  EXPECT_EQ(parts[0].end, 3U);
  EXPECT_EQ(parts[1].begin, 3U);
  EXPECT_EQ(parts[1].end, 5U);
  EXPECT_TRUE(LineParts(Formula({})).empty());
}

TEST(DocumentReading, MarksAreCountedWhereTheyAreSeen) {
  const MarksInUse both = MarksOf(EverythingDocument(), NumberForm::kBoth);
  EXPECT_TRUE(both.pivot && both.changed && both.found && both.asked && both.unproved);
  EXPECT_FALSE(MarksOf(EverythingDocument(), NumberForm::kFractions).unproved);
  const MarksInUse none = MarksOf({"", {Formula({Name{"A"}})}}, NumberForm::kBoth);
  EXPECT_FALSE(none.pivot || none.changed || none.found || none.asked || none.unproved);
}

TEST(DocumentReading, CharactersAreTakenOneByOne) {
  std::string_view text = "a−√";
  EXPECT_EQ(CharacterCount(text), 3);
  EXPECT_EQ(TakeCharacter(text), U'a');
  EXPECT_EQ(TakeCharacter(text), U'−');
  EXPECT_EQ(TakeCharacter(text), U'√');
  EXPECT_TRUE(text.empty());
  std::string_view broken = "\xE2\x88";
  EXPECT_EQ(TakeCharacter(broken), char32_t{0xFFFD});
  std::string_view stray = "\x88z";
  EXPECT_EQ(TakeCharacter(stray), char32_t{0xFFFD});
  EXPECT_EQ(stray, "z");
}

}  // namespace
}  // namespace qmx::test
