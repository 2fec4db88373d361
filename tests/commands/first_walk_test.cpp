// SPDX-License-Identifier: MIT
// The first walk of the README comes out as it says there.

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

#include "base/number_text.h"
#include "commands/lifecycle.h"
#include "support/core_bench.h"
#include "support/core_folder.h"

namespace qmx {
namespace {

/// The 3 x 3 matrix whose numbers the README has typed.
Matrix NumbersToType() {
  std::ifstream file(test::SourceFolder() + "/README.md");
  std::string text{std::istreambuf_iterator<char>(file), {}};
  constexpr std::string_view kBefore = "the nine numbers ";
  const std::size_t start = text.find(kBefore);
  if (start == std::string::npos) return {};
  text = text.substr(start + kBefore.size());
  std::replace(text.begin(), text.end(), ',', ' ');
  std::istringstream numbers(text);
  Matrix matrix(3, 3);
  for (int i = 1; i <= 3; ++i) {
    for (int j = 1; j <= 3; ++j) numbers >> matrix(i, j);
  }
  EXPECT_TRUE(numbers.good());
  return matrix;
}

class FirstWalk : public test::Workbench {};

TEST_F(FirstWalk, EndsAtTheIdentity) {
  EnterA(NumbersToType());
  Press(5);
  ASSERT_TRUE(workspace.InverseComputed);
  CopyInto(context, kSlotB, kSlotInverse);
  Press(2);
  EXPECT_EQ(Array(kSlotProduct), test::Rows({{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}));
  // Toggling the width is to show something.
  const Matrix& inverse = Array(kSlotInverse);
  bool isLong = false;
  for (int i = 1; i <= 3; ++i) {
    for (int j = 1; j <= 3; ++j) isLong |= CStr(inverse(i, j)) != CStrSingle(inverse(i, j));
  }
  EXPECT_TRUE(isLong);
}

}  // namespace
}  // namespace qmx
