// SPDX-License-Identifier: MIT
#include "base/words.h"

#include <gtest/gtest.h>

namespace qmx {
namespace {

TEST(Words, OneIsCountedWithoutAnS) {
  EXPECT_EQ(CountOf(0, "cell"), "0 cells");
  EXPECT_EQ(CountOf(1, "cell"), "1 cell");
  EXPECT_EQ(CountOf(12, "column"), "12 columns");
}

TEST(Words, WhatIsQuotedIsShortAndOnOneLine) {
  EXPECT_EQ(Quoted("abc"), "\"abc\"");
  EXPECT_EQ(Quoted("a\r\nb\tc\x7F"), "\"a  b c \"");
  EXPECT_EQ(Quoted(std::string(40, 'x')), '"' + std::string(40, 'x') + '"');
  EXPECT_EQ(Quoted(std::string(41, 'x')), '"' + std::string(40, 'x') + "...\"");
  // A character of several bytes is there as a whole or not at all.
  EXPECT_EQ(Quoted(std::string(39, 'x') + "\xC3\xA4 and more"),
            '"' + std::string(39, 'x') + "...\"");
}

}  // namespace
}  // namespace qmx
