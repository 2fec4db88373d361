// SPDX-License-Identifier: MIT
#include "commands/kept_note.h"

#include <gtest/gtest.h>

namespace qmx {
namespace {

constexpr const char* kNote = "no more than 15 to 17 digits can be held";

TEST(KeptNote, NothingIsSaidOfWhatIsHeldToItsLastDigit) {
  for (const std::string_view typed :
       {"0.1", "123456789012345", "9007199254740992", "0.5000000000000000000000000", "-1e300", "",
        "-", "abc", "0", "0.000", "1.5e", "  7", "1e-320"}) {
    EXPECT_EQ(KeptNote(typed), "") << typed;
  }
}

TEST(KeptNote, DigitsThatAreLostAreTold) {
  for (const std::string_view typed :
       {"9007199254740993", "0.123456789012345678", "-3.14159265358979323846", "1.2345e-322",
        "  9007199254740993"}) {
    EXPECT_EQ(KeptNote(typed), kNote) << typed;
  }
}

TEST(KeptNote, EveryDigitIsLookedAt) {
  EXPECT_EQ(KeptNote(std::string(900, '0') + "1"), "");
  EXPECT_EQ(KeptNote("1." + std::string(900, '0')), "");
  EXPECT_EQ(KeptNote("1." + std::string(900, '0') + "1"), kNote);
}

}  // namespace
}  // namespace qmx
