// SPDX-License-Identifier: MIT
#include "exchange/mat_file.h"

#include <gtest/gtest.h>
#include <matio.h>
#include <unistd.h>

#include <cmath>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <limits>

#include "bits.h"
#include "exchange/mat_layout.h"
#include "support/core_data.h"

namespace qmx {
namespace {

using test::Rows;
using test::SameBits;
using test::TellingMatrix;

std::string Data(const std::string& name) { return test::DataFile("exchange/" + name); }

std::string Listed(const std::string& bytes) {
  const auto list = ListMat(bytes);
  std::string names = list.problem;
  for (const ForeignVariable& variable : list.content) {
    names += variable.name + " (" + variable.kind + ", " + variable.shape + ")" +
             (variable.problem.empty() ? "" : " - " + variable.problem) + "\n";
  }
  return names;
}

Matrix ReadByName(const std::string& bytes, const std::string& name) {
  const auto list = ListMat(bytes);
  for (std::size_t k = 0; k < list.content.size(); ++k) {
    if (list.content[k].name != name) continue;
    auto outcome = ReadMat(bytes, k);
    EXPECT_EQ(outcome.problem, "") << name;
    return std::move(outcome.content);
  }
  ADD_FAILURE() << "no " << name;
  return {};
}

/// One variable of integers, by columns, in a file of any version, as matio writes it.
template <class Element>
std::string Written(mat_ft version, matio_classes kind, matio_types type, std::vector<Element> data,
                    std::size_t rows, std::size_t cols) {
  const std::string name = testing::TempDir() + "qmx_mat_" + std::to_string(getpid());
  mat_t* file = Mat_CreateVer(name.c_str(), nullptr, version);
  std::size_t shape[] = {rows, cols};
  matvar_t* variable = Mat_VarCreate("M", kind, type, 2, shape, data.data(), 0);
  EXPECT_EQ(Mat_VarWrite(file, variable, MAT_COMPRESSION_NONE), 0);
  Mat_VarFree(variable);
  Mat_Close(file);
  std::ifstream stream(name, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
  std::remove(name.c_str());
  return bytes;
}

TEST(MatFile, ListsWhatIsInside) {
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
  EXPECT_EQ(Listed(Data("scipy-5.mat")), expected);
  EXPECT_EQ(Listed(Data("scipy-7.mat")), expected);
}

TEST(MatFile, ReadsTheFilesOfOtherPrograms) {
  for (const char* name : {"scipy-4.mat", "scipy-5.mat", "scipy-7.mat", "octave-4.mat",
                           "octave-6.mat", "octave-7.mat"}) {
    const std::string bytes = Data(name);
    EXPECT_TRUE(IsMat(bytes)) << name;
    EXPECT_TRUE(SameBits(ReadByName(bytes, "A"), TellingMatrix())) << name;
    if (bytes == Data("octave-4.mat")) continue;
    EXPECT_TRUE(SameBits(ReadByName(bytes, "S"), test::SparseMatrix())) << name;
  }
  EXPECT_TRUE(SameBits(ReadByName(Data("matio-7.3.mat"), "M"), Rows({{1, 3, 5}, {2, 4, 6}})));
  EXPECT_TRUE(SameBits(ReadByName(Data("scipy-7.mat"), "integers"), Rows({{1, -2}, {300, 4}})));
  EXPECT_TRUE(SameBits(ReadByName(Data("scipy-7.mat"), "flags"), Rows({{1, 0}})));
  EXPECT_TRUE(SameBits(ReadByName(Data("octave-7.mat"), "scalar"), Rows({{std::acos(-1.0)}})));
}

TEST(MatFile, RefusesWhatIsNoMatrixOfRealNumbers) {
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
    EXPECT_EQ(ReadMat(bytes, k).problem, problems[k]) << k;
}

TEST(MatFile, ReadsEveryVersionThatMatioWrites) {
  for (const mat_ft version : {MAT_FT_MAT4, MAT_FT_MAT5, MAT_FT_MAT73}) {
    const std::string bytes =
        Written<double>(version, MAT_C_DOUBLE, MAT_T_DOUBLE, {1, -0.0, 0.1, 1e300, 5, 6}, 2, 3);
    EXPECT_TRUE(SameBits(ReadByName(bytes, "M"), Rows({{1, 0.1, 5}, {-0.0, 1e300, 6}}))) << version;
  }
  const std::string integers = Written<std::int64_t>(MAT_FT_MAT73, MAT_C_INT64, MAT_T_INT64,
                                                     {1, 2, 9007199254740993, 4}, 2, 2);
  EXPECT_EQ(ReadMat(integers, 0).problem,
            "Row 1, column 2: the integer 9007199254740993 has more digits than a number of the "
            "program can hold.");
  const std::string infinite = Written<double>(MAT_FT_MAT5, MAT_C_DOUBLE, MAT_T_DOUBLE,
                                               {1, std::numeric_limits<double>::infinity()}, 2, 1);
  EXPECT_EQ(ReadMat(infinite, 0).problem,
            "Row 2, column 1: expected a finite number, but found \"Inf\".");
}

TEST(MatFile, WritesAndReadsBack) {
  const auto bytes = WriteMat(TellingMatrix(), "Sum_of_A");
  ASSERT_TRUE(bytes.Ok()) << bytes.problem;
  EXPECT_EQ(Listed(bytes.content), "Sum_of_A (double, 3 x 4)\n");
  EXPECT_TRUE(SameBits(ReadMat(bytes.content, 0).content, TellingMatrix()));
  EXPECT_TRUE(SameBits(ReadMat(WriteMat(Rows({{7}}), "x").content, 0).content, Rows({{7}})));
  EXPECT_EQ(WriteMat(Matrix(), "x").problem, "The matrix is empty.");
}

TEST(MatFile, RefusesAFileCutAnywhere) {
  for (const char* name : {"octave-4.mat", "octave-6.mat", "octave-7.mat"}) {
    const std::string whole = Data(name);
    const std::size_t variables = ListMat(whole).content.size();
    for (std::size_t size = 0; size < whole.size(); ++size) {
      const std::string cut = whole.substr(0, size);
      // A file that ends between two variables is whole.
      const auto list = ListMat(cut);
      EXPECT_TRUE(!list.Ok() || list.content.size() < variables) << name << " " << size;
    }
  }
}

TEST(MatFile, RefusesAShapeThatItsElementsDoNotFill) {
  // The shape of M stands behind the header of the file, the tag of the variable and its flags.
  std::string bytes = Written<double>(MAT_FT_MAT5, MAT_C_DOUBLE, MAT_T_DOUBLE, {1, 2, 3, 4}, 2, 2);
  constexpr std::size_t kRows = 128 + 8 + 16 + 8;
  ASSERT_EQ(bytes[kRows], 2);
  bytes[kRows] = 3;
  EXPECT_EQ(Listed(bytes),
            "M (double, 3 x 2) - The variable has not as many elements as its shape "
            "asks for.\n");
  EXPECT_EQ(ReadMat(bytes, 0).problem,
            "The variable has not as many elements as its shape asks for.");
  bytes[kRows + 2] = 99;
  EXPECT_FALSE(ReadMat(bytes, 0).Ok());
}

TEST(MatFile, RefusesDamagedCompressedData) {
  std::string bytes = Data("scipy-7.mat");
  // Within the first variable, behind what its start needs.
  bytes[bytes.size() > 260 ? 230 : 0] ^= 0x55;
  EXPECT_FALSE(ReadMat(bytes, 0).Ok());
}

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
