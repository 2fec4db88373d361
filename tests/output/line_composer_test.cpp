// SPDX-License-Identifier: MIT
#include "output/line_composer.h"

#include <gtest/gtest.h>

namespace qmx {
namespace {

using Lines = std::vector<std::string>;

class LineComposerTest : public ::testing::Test {
 protected:
  LineComposer lines;
};

TEST_F(LineComposerTest, PutsBlanksAroundNumbersOnly) {
  lines.Add("A(").Add(1).Add(",").Add(-2).Add(")=").Add(2.5).End();
  lines.Add(")=").Add(-2.5).End();
  lines.Add(0.1 + 0.2).End();
  EXPECT_EQ(lines.Take(), (Lines{"A( 1 ,-2 )= 2.5 ", ")=-2.5 ", " .3 "}));
}

TEST_F(LineComposerTest, HasALineOnlyWhenItEnds) {
  lines.Add("begun");
  EXPECT_TRUE(lines.Take().empty());
  lines.End();
  lines.EmptyLine();
  lines.Line("whole");
  EXPECT_EQ(lines.Take(), (Lines{"begun", "", "whole"}));
}

TEST_F(LineComposerTest, TabMovesToTheColumnOfThisLineOrTheNext) {
  lines.Add("ab").Tab(5).Line("x");
  lines.Tab(5).Line("y");
  lines.Add("abcd").Tab(5).Line("z");
  lines.Add("abcde").Tab(5).Line("w");
  EXPECT_EQ(lines.Take(), (Lines{"ab  x", "    y", "abcdz", "abcde", "    w"}));
}

}  // namespace
}  // namespace qmx
