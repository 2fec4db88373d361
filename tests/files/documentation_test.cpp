// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

#include "support/core_data.h"
#include "support/core_folder.h"

namespace qmx {
namespace {

std::string Documentation() {
  std::ifstream file(test::SourceFolder() + "/docs/file-formats.md", std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// A file as the documentation shows it: blanks made visible, lines without their CR.
std::string Shown(const std::string& bytes) {
  std::string text;
  std::size_t lineStart = 0;
  for (const char c : bytes) {
    if (c == '\r') continue;
    text += c == ' ' ? "\u2420" : std::string(1, c);
    if (c == '\n') lineStart = text.size();
  }
  EXPECT_EQ(lineStart, text.size()) << "the last line has no end";
  return text;
}

TEST(Documentation, ShowsTheSampleFilesByteForByte) {
  const std::string text = Documentation();
  for (const char* name :
       {"matrix.txt", "vector.txt", "system.txt", "system-by-factors.txt", "lu.txt", "a.qmx"}) {
    EXPECT_NE(text.find("`" + std::string(name) + "`"), std::string::npos) << name;
    EXPECT_NE(text.find("```\n" + Shown(test::DataFile(name)) + "```\n"), std::string::npos)
        << name;
  }
}

TEST(Documentation, ShowsTheEigenSectionOfTheSample) {
  const std::string text = Documentation();
  const std::string everything = Shown(test::DataFile("everything.qmx"));
  const std::size_t start = text.rfind("```\n.001,100");
  ASSERT_NE(start, std::string::npos);
  const std::size_t end = text.find("```", start + 4);
  EXPECT_NE(everything.find(text.substr(start + 4, end - start - 4)), std::string::npos);
}

}  // namespace
}  // namespace qmx
