// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <vector>

#include "desktop/command_line.h"

namespace qmx::test {
namespace {

std::string LineOf(std::vector<std::string> arguments) {
  std::vector<char*> pointers;
  for (std::string& argument : arguments) pointers.push_back(argument.data());
  return CommandLine(static_cast<int>(pointers.size()), pointers.data());
}

TEST(PosixCommandLine, IsWhatStandsBehindTheProgram) {
  EXPECT_EQ(LineOf({"qmx.exe"}), "");
  EXPECT_EQ(LineOf({"qmx.exe", "/home/a b.qmx"}), "/home/a b.qmx");
  EXPECT_EQ(LineOf({"qmx.exe", "/home/a", "b.qmx"}), "/home/a b.qmx");
}

}  // namespace
}  // namespace qmx::test
