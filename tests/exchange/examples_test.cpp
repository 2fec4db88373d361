// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>

#include "bits.h"
#include "exchange/foreign_file.h"
#include "support/core_folder.h"

namespace qmx {
namespace {

std::string SourceFile(const std::string& name) {
  std::ifstream file(test::SourceFolder() + "/" + name, std::ios::binary);
  EXPECT_TRUE(file) << name;
  return {std::istreambuf_iterator<char>(file), {}};
}

std::string Example(const std::string& name) { return SourceFile("examples/" + name); }

Matrix Hilbert() {
  Matrix H(4, 4);
  for (int i = 1; i <= 4; ++i) {
    for (int j = 1; j <= 4; ++j) H(i, j) = 1.0 / (i + j - 1);
  }
  return H;
}

struct Form {
  const char* name;
  ForeignChoice choice;
};

TEST(Examples, AreWhatTheProgramReadsAndWrites) {
  const Form forms[] = {
      {"hilbert.csv", {}},
      {"hilbert-comma.csv", {.separator = ';', .decimalSign = ','}},
      {"hilbert.mtx", {.format = ForeignFormat::kMatrixMarket}},
      {"hilbert.npy", {.format = ForeignFormat::kNpy}},
      {"hilbert.mat", {.format = ForeignFormat::kMat, .name = "H"}},
      {"hilbert-octave.txt", {.format = ForeignFormat::kOctaveText, .name = "H"}},
  };
  for (const Form& form : forms) {
    const std::string bytes = Example(form.name);
    const auto contents = InspectForeign(bytes);
    ASSERT_TRUE(contents.Ok()) << form.name << contents.problem;
    EXPECT_EQ(contents.content.format, form.choice.format) << form.name;
    EXPECT_TRUE(contents.content.table.certain) << form.name;
    const auto outcome = ReadForeign(bytes, contents.content, contents.content.proposed);
    EXPECT_TRUE(test::SameBits(outcome.content, Hilbert())) << form.name << outcome.problem;
    EXPECT_EQ(WriteForeign(Hilbert(), form.choice).content, bytes) << form.name;
  }
}

TEST(Examples, StandInTheDocumentation) {
  std::string shown = Example("hilbert-comma.csv");
  std::erase(shown, '\r');
  const std::string text = SourceFile("docs/file-formats.md");
  EXPECT_NE(text.find("```\n" + shown + "```\n"), std::string::npos);
}

TEST(Examples, HaveATableWithHeadings) {
  const std::string bytes = Example("measurements.csv");
  const auto contents = InspectForeign(bytes);
  ASSERT_TRUE(contents.Ok());
  const TableSettings expected{.separator = ';',
                               .decimalSign = ',',
                               .commentSign = '#',
                               .headingRows = 1,
                               .headingColumns = 1};
  EXPECT_EQ(contents.content.table.settings, expected);
  EXPECT_TRUE(contents.content.table.certain);
  EXPECT_TRUE(
      test::SameBits(ReadForeign(bytes, contents.content, 0).content,
                     test::Rows({{0.1, 0.12, 0.09}, {1.35, 2.5, 1.375}, {2.625, 5.0625, 2.75}})));
}

}  // namespace
}  // namespace qmx
