// SPDX-License-Identifier: MIT
#include "exchange/mat_file.h"

#include <gtest/gtest.h>

#include <cmath>
#include <iterator>
#include <string>

#include "bits.h"
#include "exchange/mat_layout.h"
#include "mat_made.h"
#include "mat_readings.h"
#include "support/core_data.h"

namespace qmx {
namespace {

using test::Rows;
using test::SameBits;
using test::TellingMatrix;

std::string Data(const std::string& name) { return test::DataFile("exchange/" + name); }

class MatFile : public ::testing::TestWithParam<test::MatReading> {};

TEST_P(MatFile, ListsWhatIsInside) {
  const std::string expected =
      "A (double, 3 x 4)\n"
      "S (sparse, 3 x 4)\n"
      "integers (int16, 2 x 2)\n"
      "huge (uint64, 1 x 2)\n"
      "flags (logical, 1 x 2)\n"
      "complex (complex double, 3 x 4) - The variable holds complex numbers; the program has real "
      "numbers only.\n"
      "text (text, 1 x 5) - The variable is of type \"text\" and no matrix of numbers.\n"
      "record (struct, 1 x 1) - The variable is of type \"struct\" and no matrix of numbers.\n"
      "three (double, 2 x 3 x 4) - The variable has more than two dimensions (2 x 3 x 4).\n";
  EXPECT_EQ(GetParam().Listed(Data("scipy-5.mat")), expected);
  EXPECT_EQ(GetParam().Listed(Data("scipy-7.mat")), expected);
}

TEST_P(MatFile, ReadsTheFilesOfOtherPrograms) {
  for (const char* name : {"scipy-4.mat", "scipy-5.mat", "scipy-7.mat", "octave-4.mat",
                           "octave-6.mat", "octave-7.mat"}) {
    const std::string bytes = Data(name);
    EXPECT_TRUE(IsMat(bytes)) << name;
    EXPECT_TRUE(SameBits(GetParam().ReadByName(bytes, "A"), TellingMatrix())) << name;
    if (bytes == Data("octave-4.mat")) continue;
    EXPECT_TRUE(SameBits(GetParam().ReadByName(bytes, "S"), test::SparseMatrix())) << name;
  }
  EXPECT_TRUE(
      SameBits(GetParam().ReadByName(Data("scipy-7.mat"), "integers"), Rows({{1, -2}, {300, 4}})));
  EXPECT_TRUE(SameBits(GetParam().ReadByName(Data("scipy-7.mat"), "flags"), Rows({{1, 0}})));
  EXPECT_TRUE(
      SameBits(GetParam().ReadByName(Data("octave-7.mat"), "scalar"), Rows({{std::acos(-1.0)}})));
}

TEST_P(MatFile, RefusesWhatIsNoMatrixOfRealNumbers) {
  const std::string bytes = Data("scipy-5.mat");
  constexpr const char* kTooManyDigits =
      "Row 1, column 2: the integer 18446744073709551615 has more digits than a number of the "
      "program can hold.";
  const char* problems[] = {
      "",
      "",
      "",
      kTooManyDigits,
      "",
      "The variable holds complex numbers; the program has real numbers only.",
      "The variable is of type \"text\" and no matrix of numbers.",
      "The variable is of type \"struct\" and no matrix of numbers.",
      "The variable has more than two dimensions (2 x 3 x 4).",
      "The file has no such variable.",
  };
  for (std::size_t k = 0; k < std::size(problems); ++k)
    EXPECT_EQ(GetParam().Read(bytes, k).problem, problems[k]) << k;
}

TEST_P(MatFile, WritesAndReadsBack) {
  const auto bytes = WriteMat(TellingMatrix(), "Sum_of_A");
  ASSERT_TRUE(bytes.Ok()) << bytes.problem;
  EXPECT_EQ(GetParam().Listed(bytes.content), "Sum_of_A (double, 3 x 4)\n");
  EXPECT_TRUE(SameBits(GetParam().Read(bytes.content, 0).content, TellingMatrix()));
  EXPECT_TRUE(
      SameBits(GetParam().Read(WriteMat(Rows({{7}}), "x").content, 0).content, Rows({{7}})));
  EXPECT_EQ(WriteMat(Matrix(), "x").problem, "The matrix is empty.");
}

TEST_P(MatFile, RefusesAFileCutAnywhere) {
  for (const char* name : {"octave-4.mat", "octave-6.mat", "octave-7.mat"}) {
    const std::string whole = Data(name);
    const std::size_t variables = GetParam().list(whole).content.size();
    for (std::size_t size = 0; size < whole.size(); ++size) {
      const std::string cut = whole.substr(0, size);
      // A file that ends between two variables is whole.
      const auto list = GetParam().list(cut);
      EXPECT_TRUE(!list.Ok() || list.content.size() < variables) << name << " " << size;
    }
  }
}

TEST_P(MatFile, RefusesAShapeThatItsElementsDoNotFill) {
  const test::Mat5Maker make(false);
  for (const test::Counts& shape : {test::Counts{3, 2}, test::Counts{1, 2}}) {
    const std::string bytes = make.Header() + make.Full("M", shape, {1, 2, 3, 4});
    const std::string problem = "The variable has not as many elements as its shape asks for.";
    EXPECT_EQ(GetParam().Listed(bytes),
              "M (double, " + std::to_string(shape[0]) + " x 2) - " + problem + "\n");
    EXPECT_EQ(GetParam().Read(bytes, 0).problem, problem);
  }
  EXPECT_FALSE(GetParam().Read(make.Header() + make.Full("M", {99 << 16, 2}, {1}), 0).Ok());
}

TEST_P(MatFile, RefusesDamagedCompressedData) {
  std::string bytes = Data("scipy-7.mat");
  // Within the first variable, behind what its start needs.
  bytes[bytes.size() > 260 ? 230 : 0] ^= 0x55;
  EXPECT_FALSE(GetParam().Read(bytes, 0).Ok());
}

INSTANTIATE_TEST_SUITE_P(Readings, MatFile, ::testing::Values(test::kAsTheProgram, test::kDirectly),
                         [](const auto& reading) { return std::string(reading.param.name); });

TEST(MatLayout, TellsTheVersions) {
  EXPECT_EQ(MatVersionOf(Data("octave-4.mat")), MatVersion::k4);
  EXPECT_EQ(MatVersionOf(Data("octave-6.mat")), MatVersion::k5);
  EXPECT_EQ(MatVersionOf(Data("octave-7.mat")), MatVersion::k5);
  EXPECT_EQ(MatVersionOf(Data("octave.txt")), MatVersion::kNone);
  EXPECT_EQ(MatVersionOf(""), MatVersion::kNone);
  EXPECT_EQ(MatVersionOf(std::string(200, '\0')), MatVersion::kNone);
}

}  // namespace
}  // namespace qmx
