// SPDX-License-Identifier: MIT
// What needs matio beside the program: its files of every kind, and that both ways of reading make
// the same of a file.

#include <gtest/gtest.h>
#include <matio.h>
#include <unistd.h>

#include <cstdint>
#include <cstdio>
#include <fstream>
#include <functional>
#include <iterator>
#include <limits>
#include <string>
#include <vector>

#include "bits.h"
#include "exchange/mat_layout.h"
#include "mat_made.h"
#include "mat_readings.h"
#include "support/core_corpus.h"
#include "support/core_data.h"

namespace qmx {
namespace {

using test::Rows;
using test::SameBits;

constexpr const char* kHeader = "MATLAB 5.0 MAT-file, created by Orvane";

/// A file of any version, with what is written into it.
std::string FileOf(mat_ft version, const std::function<void(mat_t*)>& write) {
  const std::string name = testing::TempDir() + "qmx_mat_" + std::to_string(getpid());
  mat_t* file = Mat_CreateVer(name.c_str(), kHeader, version);
  write(file);
  Mat_Close(file);
  std::ifstream stream(name, std::ios::binary);
  const std::string bytes{std::istreambuf_iterator<char>(stream), {}};
  std::remove(name.c_str());
  return bytes;
}

void Put(mat_t* file, const char* name, matio_classes kind, matio_types type,
         std::vector<std::size_t> shape, const void* data, int flags = 0,
         matio_compression compression = MAT_COMPRESSION_NONE) {
  matvar_t* variable = Mat_VarCreate(name, kind, type, static_cast<int>(shape.size()), shape.data(),
                                     const_cast<void*>(data), flags);
  EXPECT_EQ(Mat_VarWrite(file, variable, compression), 0) << name;
  Mat_VarFree(variable);
}

/// One variable M, by columns.
template <class Element>
std::string Written(mat_ft version, matio_classes kind, matio_types type, std::vector<Element> data,
                    std::size_t rows, std::size_t cols,
                    matio_compression compression = MAT_COMPRESSION_NONE) {
  return FileOf(version, [&](mat_t* file) {
    Put(file, "M", kind, type, {rows, cols}, data.data(), 0, compression);
  });
}

std::string InWords(const ForeignVariable& variable) {
  return variable.name + " (" + variable.kind + ", " + variable.shape + ") " + variable.problem;
}

/// True if both readings make the same of a file, but for variables that only one of them can tell
/// to be there, and to be damaged.
::testing::AssertionResult ReadAlike(const std::string& bytes) {
  const auto list = ListMat(bytes);
  const auto direct = ListMatDirectly(bytes);
  if (list.problem != direct.problem)
    return ::testing::AssertionFailure() << list.problem << " and directly " << direct.problem;
  std::size_t k = 0;
  for (std::size_t other = 0; other < direct.content.size(); ++other) {
    if (direct.content[other].kind == "damaged") continue;
    const std::string words = InWords(direct.content[other]);
    if (k == list.content.size()) return ::testing::AssertionFailure() << "only directly " << words;
    if (InWords(list.content[k]) != words)
      return ::testing::AssertionFailure() << InWords(list.content[k]) << " and directly " << words;
    const auto one = ReadMat(bytes, k++);
    const auto two = ReadMatDirectly(bytes, other);
    if (one.problem != two.problem || one.line != two.line || one.column != two.column)
      return ::testing::AssertionFailure() << one.problem << " and directly " << two.problem;
    const auto same = SameBits(one.content, two.content);
    if (!same) return same;
  }
  if (k < list.content.size()) return ::testing::AssertionFailure() << "directly too few";
  return ::testing::AssertionSuccess();
}

TEST(Matio, ReadsVersion73) {
  const std::string bytes = test::DataFile("exchange/matio-7.3.mat");
  EXPECT_TRUE(SameBits(test::kAsTheProgram.ReadByName(bytes, "M"), Rows({{1, 3, 5}, {2, 4, 6}})));
}

TEST(Matio, ReadsEveryVersionThatItWrites) {
  for (const mat_ft version : {MAT_FT_MAT4, MAT_FT_MAT5, MAT_FT_MAT73}) {
    const std::string bytes =
        Written<double>(version, MAT_C_DOUBLE, MAT_T_DOUBLE, {1, -0.0, 0.1, 1e300, 5, 6}, 2, 3);
    EXPECT_TRUE(
        SameBits(test::kAsTheProgram.ReadByName(bytes, "M"), Rows({{1, 0.1, 5}, {-0.0, 1e300, 6}})))
        << version;
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

TEST(ReadingDirectly, MakesTheSameOfStoredFiles) {
  std::size_t compared = 0;
  for (const std::string& bytes : test::Corpus("mat")) {
    if (MatVersionOf(bytes) == MatVersion::k73) continue;
    EXPECT_TRUE(ReadAlike(bytes));
    ++compared;
  }
  EXPECT_GE(compared, 7U);
  for (const char* name : {"scipy-4.mat", "scipy-5.mat", "scipy-7.mat", "octave-4.mat",
                           "octave-6.mat", "octave-7.mat"})
    EXPECT_TRUE(ReadAlike(test::DataFile(std::string("exchange/") + name))) << name;
}

template <class Element>
void ExpectAlike(matio_classes kind, matio_types type) {
  using Limits = std::numeric_limits<Element>;
  const std::vector<Element> data = {Limits::lowest(), Limits::max(), 0, 1, 100, 7};
  for (const matio_compression compression : {MAT_COMPRESSION_NONE, MAT_COMPRESSION_ZLIB}) {
    EXPECT_TRUE(ReadAlike(Written(MAT_FT_MAT5, kind, type, data, 2, 3, compression)));
    EXPECT_TRUE(ReadAlike(Written(MAT_FT_MAT5, kind, type, data, 1, 1, compression)));
    EXPECT_TRUE(ReadAlike(Written(MAT_FT_MAT5, kind, type, data, 0, 3, compression)));
    const std::string whole =
        Written(MAT_FT_MAT5, kind, type, std::vector<Element>{5, 0, 100, 7}, 2, 2, compression);
    EXPECT_TRUE(SameBits(test::kDirectly.ReadByName(whole, "M"), Rows({{5, 100}, {0, 7}})));
  }
}

TEST(ReadingDirectly, MakesTheSameOfEveryClass) {
  ExpectAlike<double>(MAT_C_DOUBLE, MAT_T_DOUBLE);
  ExpectAlike<float>(MAT_C_SINGLE, MAT_T_SINGLE);
  ExpectAlike<std::int8_t>(MAT_C_INT8, MAT_T_INT8);
  ExpectAlike<std::uint8_t>(MAT_C_UINT8, MAT_T_UINT8);
  ExpectAlike<std::int16_t>(MAT_C_INT16, MAT_T_INT16);
  ExpectAlike<std::uint16_t>(MAT_C_UINT16, MAT_T_UINT16);
  ExpectAlike<std::int32_t>(MAT_C_INT32, MAT_T_INT32);
  ExpectAlike<std::uint32_t>(MAT_C_UINT32, MAT_T_UINT32);
  ExpectAlike<std::int64_t>(MAT_C_INT64, MAT_T_INT64);
  ExpectAlike<std::uint64_t>(MAT_C_UINT64, MAT_T_UINT64);
}

/// One variable of each kind that is no full matrix of real numbers, and truth values.
void PutAllKinds(mat_t* file, matio_compression compression) {
  double numbers[] = {1, 2, 3, 4, 5, 6};
  mat_complex_split_t parts{numbers, numbers + 2};
  Put(file, "z", MAT_C_DOUBLE, MAT_T_DOUBLE, {1, 2}, &parts, MAT_F_COMPLEX, compression);
  Put(file, "three", MAT_C_DOUBLE, MAT_T_DOUBLE, {1, 2, 3}, numbers, 0, compression);
  Put(file, "none", MAT_C_DOUBLE, MAT_T_DOUBLE, {0, 0}, nullptr, 0, compression);
  const char text[] = "text";
  Put(file, "word", MAT_C_CHAR, MAT_T_UTF8, {1, 4}, text, 0, compression);
  std::uint8_t truths[] = {0, 1, 2};
  Put(file, "truths", MAT_C_UINT8, MAT_T_UINT8, {1, 3}, truths, MAT_F_LOGICAL, compression);

  mat_uint32_t rows[] = {0, 2, 1};
  mat_uint32_t starts[] = {0, 2, 2, 3};
  mat_sparse_t sparse{};
  sparse.nzmax = 3;
  sparse.ir = rows;
  sparse.nir = 3;
  sparse.jc = starts;
  sparse.njc = 4;
  sparse.ndata = 3;
  sparse.data = numbers;
  Put(file, "S", MAT_C_SPARSE, MAT_T_DOUBLE, {3, 3}, &sparse, MAT_F_DONT_COPY_DATA, compression);

  std::size_t shape[] = {1, 1};
  matvar_t* cells[] = {
      Mat_VarCreate("", MAT_C_DOUBLE, MAT_T_DOUBLE, 2, shape, numbers, MAT_F_DONT_COPY_DATA)};
  Put(file, "cells", MAT_C_CELL, MAT_T_CELL, {1, 1}, cells, 0, compression);
  const char* fields[] = {"a"};
  matvar_t* record = Mat_VarCreateStruct("record", 2, shape, fields, 1);
  Mat_VarSetStructFieldByName(record, "a", 0,
                              Mat_VarCreate("a", MAT_C_DOUBLE, MAT_T_DOUBLE, 2, shape, numbers, 0));
  Mat_VarWrite(file, record, compression);
  Mat_VarFree(record);
}

TEST(ReadingDirectly, MakesTheSameOfEveryKindOfVariable) {
  for (const matio_compression compression : {MAT_COMPRESSION_NONE, MAT_COMPRESSION_ZLIB}) {
    const std::string bytes =
        FileOf(MAT_FT_MAT5, [&](mat_t* file) { PutAllKinds(file, compression); });
    EXPECT_TRUE(ReadAlike(bytes));
    EXPECT_EQ(ListMatDirectly(bytes).content.size(), 8U);
    EXPECT_TRUE(
        SameBits(test::kDirectly.ReadByName(bytes, "S"), Rows({{1, 0, 0}, {0, 0, 3}, {2, 0, 0}})));
  }
  const std::string old = FileOf(MAT_FT_MAT4, [](mat_t* file) {
    const double numbers[] = {1, -0.5, 3, 4};
    Put(file, "one", MAT_C_DOUBLE, MAT_T_DOUBLE, {2, 2}, numbers);
    const mat_complex_split_t parts{const_cast<double*>(numbers), const_cast<double*>(numbers)};
    Put(file, "z", MAT_C_DOUBLE, MAT_T_DOUBLE, {2, 2}, &parts, MAT_F_COMPLEX);
    Put(file, "word", MAT_C_CHAR, MAT_T_UINT8, {1, 4}, "text");
  });
  EXPECT_TRUE(ReadAlike(old));
  EXPECT_EQ(ListMatDirectly(old).content.size(), 3U);
}

TEST(ReadingDirectly, MakesTheSameOfFilesMadeByHand) {
  for (const bool bigEndian : {false, true}) {
    const test::Mat5Maker make(bigEndian);
    const std::string full = make.Full("full", {2, 2}, {1, 2, 3, 4});
    const std::string files[] = {
        full + make.Full("", {1, 1}, {1}) + make.Variable("empty", 6, {0, 2}, make.Element(9, "")),
        make.Full(std::string("cut\0off", 7), {1, 1}, {1}) +
            make.Variable("wrong", 6, {1, 1}, make.Of(9, test::Numbers{1}), 2),
        make.Full("few", {2, 2}, {1, 2, 3}) + make.Full("many", {1, 2}, {1, 2, 3}),
        make.Full("line", {3}, {1, 2, 3}) + make.Variable("bare", 6, {1, 1}, ""),
        make.Variable("in bytes", 6, {1, 3}, make.Of(2, std::vector<std::uint8_t>{1, 2, 255})),
        make.Variable("object", 17, {1, 1}, full) + make.Variable("unheard of", 99, {1, 1}, full),
        make.Sparse({3, 2}, {0, 2, 1}, {0, 2, 3}, {1, 2, 3}) +
            make.Sparse({3, 2}, {0, 3}, {0, 1, 2}, {1, 2}) +
            make.Sparse({3, 2}, {0, 1}, {0, 2, 1}, {1, 2}) +
            make.Sparse({3, 2}, {0}, {0, 1, 2}, {1, 2}) +
            make.Sparse({3, 2}, {0, 1}, {0, 1}, {1, 2}) +
            make.Sparse({3, 2}, {0, 1}, {0, 1, 2}, {1}) +
            make.Sparse({3, 2}, {0, 1}, {0, 1, 2}, {1, std::numeric_limits<double>::quiet_NaN()}),
    };
    for (const std::string& variables : files)
      EXPECT_TRUE(ReadAlike(make.Header() + variables + full));
    for (const test::Counts& shape : {test::Counts{2, 3}, test::Counts{2, 4}, test::Counts{2, 2}}) {
      EXPECT_TRUE(ReadAlike(
          test::Mat4Variable<double>(bigEndian, 2, "S", shape, {1, 3, 1, 2, 5, 0, 6, 0})));
    }
    EXPECT_TRUE(
        ReadAlike(test::Mat4Variable<float>(bigEndian, 12, "S", {2, 3}, {1, 3, 1, 2, 5, 0})));
    const std::string file = make.Header() + full;
    EXPECT_EQ(MatVersionOf(file), MatVersion::k5);
    EXPECT_TRUE(SameBits(ReadMatDirectly(file, 0).content, Rows({{1, 3}, {2, 4}})));
  }
}

TEST(MatWriting, GivesTheBytesOfMatio) {
  for (const char* name : {"H", "abcd", "abcde", "A_very_long_name_of_a_variable_indeed"}) {
    for (const Matrix& values : {Rows({{7}}), test::TellingMatrix()}) {
      std::vector<double> byColumns;
      for (int j = 1; j <= values.Cols(); ++j)
        for (int i = 1; i <= values.Rows(); ++i) byColumns.push_back(values(i, j));
      const std::string bytes = FileOf(MAT_FT_MAT5, [&](mat_t* file) {
        Put(file, name, MAT_C_DOUBLE, MAT_T_DOUBLE,
            {static_cast<std::size_t>(values.Rows()), static_cast<std::size_t>(values.Cols())},
            byColumns.data());
      });
      EXPECT_EQ(WriteMat(values, name).content, bytes) << name;
    }
  }
}

}  // namespace
}  // namespace qmx
