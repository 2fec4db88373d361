// SPDX-License-Identifier: MIT
#include "exchange/npy.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>
#include <vector>

#include "bits.h"
#include "support/core_data.h"

namespace qmx {
namespace {

using test::Rows;
using test::SameBits;
using test::TellingMatrix;

std::string File(const std::string& header, const std::string& elements, int version = 1) {
  std::string bytes("\x93NUMPY", 6);
  bytes += static_cast<char>(version);
  bytes += '\0';
  for (int k = 0; k < (version == 1 ? 2 : 4); ++k)
    bytes += static_cast<char>(header.size() >> (8 * k) & 0xFF);
  return bytes + header + elements;
}

std::string Header(const std::string& type, const std::string& shape,
                   const std::string& byColumns = "False") {
  return "{'descr': '" + type + "', 'fortran_order': " + byColumns + ", 'shape': " + shape +
         ", }\n";
}

template <class Element>
std::string Bytes(const std::vector<Element>& elements, bool bigEndian = false) {
  std::string bytes;
  for (const Element element : elements) {
    char raw[sizeof element];
    std::memcpy(raw, &element, sizeof element);
    if (bigEndian) std::reverse(raw, raw + sizeof raw);
    bytes.append(raw, sizeof raw);
  }
  return bytes;
}

template <class Element>
void ExpectReads(const std::string& type, const std::vector<Element>& elements) {
  const auto one = static_cast<double>(elements.at(0));
  const auto two = static_cast<double>(elements.at(1));
  for (const bool big : {false, true}) {
    const std::string code = (sizeof(Element) == 1 ? "|" : big ? ">" : "<") + type;
    const auto outcome = ReadNpy(File(Header(code, "(1, 2)"), Bytes(elements, big)));
    EXPECT_EQ(outcome.problem, "") << code;
    EXPECT_TRUE(SameBits(outcome.content, Rows({{one, two}}))) << code;
  }
}

TEST(Npy, ReadsEveryKindOfNumberInBothByteOrders) {
  ExpectReads<double>("f8", {-0.0, 0.1});
  ExpectReads<float>("f4", {0.1F, -2.5F});
  ExpectReads<std::int8_t>("i1", {-128, 127});
  ExpectReads<std::uint8_t>("u1", {200, 255});
  ExpectReads<std::int16_t>("i2", {-32768, 258});
  ExpectReads<std::uint16_t>("u2", {65535, 258});
  ExpectReads<std::int32_t>("i4", {-2147483647, 16909060});
  ExpectReads<std::uint32_t>("u4", {4294967295U, 16909060U});
  ExpectReads<std::int64_t>("i8", {-9007199254740992, 1LL << 62});
  ExpectReads<std::uint64_t>("u8", {9007199254740992U, 1ULL << 63});
  const auto truth = ReadNpy(File(Header("|b1", "(3,)"), std::string("\0\1\7", 3)));
  EXPECT_TRUE(SameBits(truth.content, Rows({{0}, {1}, {1}})));
}

TEST(Npy, ReadsEveryShapeAndOrder) {
  const std::string six = Bytes<double>({1, 2, 3, 4, 5, 6});
  const auto read = [&](const std::string& shape, const std::string& byColumns, int version = 1) {
    return ReadNpy(File(Header("<f8", shape, byColumns), six, version)).content;
  };
  EXPECT_TRUE(SameBits(read("(2, 3)", "False"), Rows({{1, 2, 3}, {4, 5, 6}})));
  EXPECT_TRUE(SameBits(read("(2, 3)", "True"), Rows({{1, 3, 5}, {2, 4, 6}})));
  EXPECT_TRUE(SameBits(read("(6,)", "False"), Rows({{1}, {2}, {3}, {4}, {5}, {6}})));
  EXPECT_TRUE(SameBits(read("(6,)", "True"), Rows({{1}, {2}, {3}, {4}, {5}, {6}})));
  EXPECT_TRUE(SameBits(read("(1L, 6L)", "False", 2), Rows({{1, 2, 3, 4, 5, 6}})));
  EXPECT_TRUE(SameBits(read("(3,2)", "False", 3), Rows({{1, 2}, {3, 4}, {5, 6}})));
  EXPECT_TRUE(
      SameBits(ReadNpy(File(Header("<f8", "()"), Bytes<double>({7}))).content, Rows({{7}})));
  const std::string other = "{\"shape\": (1, 1), \"descr\": \"<f8\", \"fortran_order\": True}";
  EXPECT_TRUE(SameBits(ReadNpy(File(other, Bytes<double>({7}))).content, Rows({{7}})));
}

TEST(Npy, SaysWhatItRefuses) {
  const std::string one = Bytes<double>({1});
  const auto problem = [](const std::string& header, const std::string& elements, int version = 1) {
    return ReadNpy(File(header, elements, version)).problem;
  };
  EXPECT_EQ(problem(Header("<c16", "(1,)"), one + one),
            "The array holds complex numbers (complex128); the program has real numbers only.");
  EXPECT_EQ(problem(Header("<f2", "(1,)"), "12"), "Numbers of type float16 cannot be read.");
  EXPECT_EQ(problem(Header("<U3", "(1,)"), one),
            "The array holds elements of type \"<U3\", not numbers.");
  EXPECT_EQ(problem("{'descr': [('a', '<f8')], 'fortran_order': False, 'shape': (1,), }", one),
            "The array holds records, not numbers.");
  EXPECT_EQ(problem(Header("<f8", "(1, 1, 1)"), one),
            "The array has 3 dimensions (1 x 1 x 1); a matrix has two.");
  EXPECT_EQ(problem(Header("<f8", "(0, 3)"), ""), "The matrix is empty (0 x 3).");
  EXPECT_EQ(problem(Header("<f8", "(2, 1)"), one),
            "The file is too short for the elements of a matrix of 2 x 1.");
  EXPECT_EQ(problem(Header("<f8", "(99999, 99999)"), one),
            "The file is too short for the elements of a matrix of 99999 x 99999.");
  EXPECT_EQ(problem(Header("<f8", "(18446744073709551615, 18446744073709551615)"), one),
            "A matrix of 18446744073709551615 x 18446744073709551615 is too large.");
  EXPECT_EQ(problem(Header("<f8", "(1,)"), one + "x"),
            "The file goes on behind the elements of a matrix of 1 x 1.");
  EXPECT_EQ(problem(Header("<f8", "(1,)"), one, 4), "Version 4 of .npy files is not known.");
  EXPECT_EQ(problem("{'descr': '<f8', 'shape': (1,), }", one),
            "The header of the file cannot be read: an entry is missing.");
  EXPECT_EQ(problem("{'descr': '<f8', 'descr': '<f8'}", one),
            "The header of the file cannot be read: it has an entry \"descr\".");
  EXPECT_EQ(problem("{'fortran_order': Maybe}", one),
            "The header of the file cannot be read: expected True or False, but found \"Maybe}\".");
  EXPECT_EQ(problem("{'shape': (-1,)}", one),
            "The header of the file cannot be read: expected a number of elements, but found "
            "\"-1,)}\".");
  EXPECT_EQ(ReadNpy(std::string("\x93NUMPY\x01\x00\xFF\x00{", 11)).problem,
            "The header of the file cannot be read: the file ends within it.");
  EXPECT_EQ(ReadNpy("hello").problem, "The file is no .npy file.");
}

TEST(Npy, NamesTheElementThatNoNumberOfTheProgramIs) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const double infinity = std::numeric_limits<double>::infinity();
  const auto byRows = ReadNpy(File(Header("<f8", "(2, 2)"), Bytes<double>({1, 2, nan, 4})));
  EXPECT_EQ(byRows.problem, "Row 2, column 1: expected a finite number, but found \"NaN\".");
  EXPECT_EQ(byRows.line, 2);
  EXPECT_EQ(byRows.column, 1);
  const auto byColumns =
      ReadNpy(File(Header("<f8", "(2, 2)", "True"), Bytes<double>({1, 2, -infinity, 4})));
  EXPECT_EQ(byColumns.problem, "Row 1, column 2: expected a finite number, but found \"-Inf\".");
  EXPECT_EQ(
      ReadNpy(File(Header("<i8", "(1, 2)"), Bytes<std::int64_t>({1, 9007199254740993}))).problem,
      "Row 1, column 2: the integer 9007199254740993 has more digits than a number of the "
      "program can hold.");
  for (const std::int64_t value :
       {std::numeric_limits<std::int64_t>::max(), std::int64_t{-9007199254740993}})
    EXPECT_FALSE(ReadNpy(File(Header("<i8", "(1,)"), Bytes<std::int64_t>({value}))).Ok()) << value;
  EXPECT_FALSE(ReadNpy(File(Header("<u8", "(1,)"), std::string(8, '\xFF'))).Ok());
  EXPECT_TRUE(ReadNpy(File(Header("<i8", "(1,)"),
                           Bytes<std::int64_t>({std::numeric_limits<std::int64_t>::min()})))
                  .Ok());
}

TEST(Npy, TellsWhatAHeaderSays) {
  const auto header = ReadNpyHeader(File(Header(">c8", "(2, 3, 4)"), ""));
  EXPECT_EQ(header.content.kind, "complex64");
  EXPECT_EQ(header.content.shape, "2 x 3 x 4");
  EXPECT_EQ(ReadNpyHeader(File(Header("<f8", "()"), "")).content.shape, "scalar");
}

TEST(Npy, ReadsBackWhatItWritesAndWritesWhatNumpyWrites) {
  const auto bytes = WriteNpy(TellingMatrix());
  ASSERT_TRUE(bytes.Ok());
  EXPECT_TRUE(SameBits(ReadNpy(bytes.content).content, TellingMatrix()));
  EXPECT_EQ(bytes.content, test::DataFile("exchange/numpy.npy"));
  EXPECT_EQ(WriteNpy(Matrix()).problem, "The matrix is empty.");
}

TEST(Npy, RefusesAFileCutAnywhere) {
  const std::string whole = WriteNpy(TellingMatrix()).content;
  for (std::size_t size = 0; size < whole.size(); ++size)
    EXPECT_FALSE(ReadNpy(whole.substr(0, size)).Ok()) << size;
}

TEST(Npy, ReadsTheFilesOfNumpy) {
  for (const char* name : {"numpy.npy", "numpy-by-columns.npy", "numpy-big-endian.npy",
                           "numpy-version-2.npy", "numpy-version-3.npy"}) {
    const auto outcome = ReadNpy(test::DataFile(std::string("exchange/") + name));
    EXPECT_EQ(outcome.problem, "") << name;
    EXPECT_TRUE(SameBits(outcome.content, TellingMatrix())) << name;
  }
  EXPECT_TRUE(SameBits(ReadNpy(test::DataFile("exchange/numpy-float32.npy")).content,
                       Rows({{0.1F, -2.5}})));
  EXPECT_FALSE(ReadNpy(test::DataFile("exchange/numpy-complex.npy")).Ok());
}

}  // namespace
}  // namespace qmx
