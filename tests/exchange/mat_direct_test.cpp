// SPDX-License-Identifier: MIT
#include "exchange/mat_direct.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <limits>
#include <map>
#include <string>
#include <vector>

#include "bits.h"
#include "exchange/size_limits.h"
#include "mat_made.h"
#include "mat_readings.h"
#include "support/core_data.h"
#include "support/core_memory.h"
#include "support/core_ports.h"

namespace qmx {
namespace {

using test::Counts;
using test::Mat4Variable;
using test::Mat5Maker;
using test::Rows;
using test::SameBits;

constexpr const char* kDamagedFile = "The file is damaged, or too large to be read.";
constexpr const char* kDamagedVariable = "The data of the variable are damaged.";

std::string Data(const std::string& name) { return test::DataFile("exchange/" + name); }

std::string Problem(const std::string& bytes, std::size_t index = 0) {
  return ReadMatDirectly(bytes, index).problem;
}

class MatDirect : public ::testing::TestWithParam<bool> {
 protected:
  const Mat5Maker make{GetParam()};

  std::string File(const std::string& variables) const { return make.Header() + variables; }
  template <class Number>
  std::string Stored(std::uint32_t matClass, std::uint32_t type,
                     const std::vector<Number>& numbers) const {
    return File(make.Variable("M", matClass, {1, static_cast<std::uint32_t>(numbers.size())},
                              make.Of(type, numbers)));
  }
};

/// Numbers are kept in the smallest type that holds all of them, whatever their class.
TEST_P(MatDirect, ReadsNumbersInAnyType) {
  const Matrix expected = Rows({{1, 0, 100}});
  for (std::uint32_t matClass = 6; matClass <= 15; ++matClass) {
    const std::string files[] = {
        Stored<std::int8_t>(matClass, 1, {1, 0, 100}),
        Stored<std::uint8_t>(matClass, 2, {1, 0, 100}),
        Stored<std::int16_t>(matClass, 3, {1, 0, 100}),
        Stored<std::uint16_t>(matClass, 4, {1, 0, 100}),
        Stored<std::int32_t>(matClass, 5, {1, 0, 100}),
        Stored<std::uint32_t>(matClass, 6, {1, 0, 100}),
        Stored<float>(matClass, 7, {1, 0, 100}),
        Stored<double>(matClass, 9, {1, 0, 100}),
        Stored<std::int64_t>(matClass, 12, {1, 0, 100}),
        Stored<std::uint64_t>(matClass, 13, {1, 0, 100}),
    };
    for (const std::string& bytes : files)
      EXPECT_TRUE(SameBits(ReadMatDirectly(bytes, 0).content, expected)) << matClass;
  }
}

TEST_P(MatDirect, RefusesNumbersThatAreNoneOfTheirClass) {
  EXPECT_TRUE(ReadMatDirectly(Stored<double>(8, 9, {-128, 127}), 0).Ok());
  EXPECT_TRUE(ReadMatDirectly(Stored<double>(9, 9, {0, 255}), 0).Ok());
  for (const double wrong : {-129.0, 128.0, 0.5})
    EXPECT_EQ(Problem(Stored<double>(8, 9, {wrong})), kDamagedFile) << wrong;
  for (const double wrong : {-1.0, 256.0, 0.5})
    EXPECT_EQ(Problem(Stored<double>(9, 9, {wrong})), kDamagedFile) << wrong;
  EXPECT_EQ(Problem(Stored<std::int64_t>(15, 12, {-1})), kDamagedFile);
  EXPECT_TRUE(SameBits(ReadMatDirectly(Stored<double>(7, 9, {0.1}), 0).content,
                       Rows({{static_cast<double>(0.1F)}})));
  EXPECT_EQ(Problem(Stored<double>(7, 9, {1, -1e300})),
            "Row 1, column 2: expected a finite number, but found \"-Inf\".");
  EXPECT_EQ(Problem(Stored<std::int64_t>(14, 12, {9007199254740993})),
            "Row 1, column 1: the integer 9007199254740993 has more digits than a number of the "
            "program can hold.");
}

/// Also those whose columns are longer than what is read at a time.
TEST_P(MatDirect, ReadsLargeMatrices) {
  for (const std::uint32_t rows : {300U, 200000U}) {
    const std::uint32_t cols = 600000 / rows;
    test::Numbers numbers(600000);
    for (std::size_t k = 0; k < numbers.size(); ++k) numbers[k] = 1.0 / static_cast<double>(k + 1);
    const std::string variable = make.Full("M", {rows, cols}, numbers);
    for (const std::string& bytes : {File(variable), File(make.Compressed(variable))}) {
      const Matrix read = ReadMatDirectly(bytes, 0).content;
      ASSERT_EQ(read.Size(), numbers.size());
      for (std::size_t k = 0; k < numbers.size(); ++k) {
        ASSERT_EQ(read(static_cast<int>(k % rows) + 1, static_cast<int>(k / rows) + 1), numbers[k]);
      }
    }
  }
}

TEST_P(MatDirect, ReadsSparseMatrices) {
  const Matrix expected = Rows({{1, 0}, {0, 3}, {2, 0}});
  const std::string variables[] = {
      make.Sparse({3, 2}, {0, 2, 1}, {0, 2, 3}, {1, 2, 3}),
      // In any order, and with room for more.
      make.Sparse({3, 2}, {2, 0, 1, 0, 9}, {0, 2, 3}, {2, 1, 3, 0, 0}),
      make.Variable("S", 5 | 0x200, {3, 2},
                    make.Of(5, Counts{0, 2, 1}) + make.Of(5, Counts{0, 2, 3}) +
                        make.Of(2, std::vector<std::uint8_t>{1, 2, 3})),
  };
  for (const std::string& variable : variables) {
    EXPECT_TRUE(SameBits(ReadMatDirectly(File(variable), 0).content, expected));
    const std::string bytes = File(make.Compressed(variable));
    EXPECT_TRUE(SameBits(ReadMatDirectly(bytes, 0).content, expected));
    EXPECT_EQ(test::kDirectly.Listed(bytes), "S (sparse, 3 x 2)\n");
  }
}

TEST_P(MatDirect, RefusesSparseMatricesThatAreNone) {
  const std::string damaged[] = {
      make.Sparse({3, 2}, {0, 3}, {0, 1, 2}, {1, 2}),
      make.Sparse({3, 2}, {0, 1, 2}, {0, 3, 2}, {1, 2, 3}),
      make.Sparse({3, 2}, {0, 1}, {0, 1, 3}, {1, 2}),
      make.Sparse({3, 2}, {0, 1}, {0, 1}, {1, 2}),
      make.Sparse({3, 2}, {0}, {0, 1, 2}, {1, 2}),
      make.Sparse({3, 2}, {0, 1}, {0, 1, 2}, {1}),
      make.Variable("S", 5, {3, 2}, make.Of(5, Counts{0}) + make.Of(5, Counts{0, 1, 1})),
  };
  for (const std::string& variable : damaged) {
    EXPECT_EQ(Problem(File(variable)), kDamagedFile);
    EXPECT_EQ(Problem(File(make.Compressed(variable))), kDamagedFile);
  }
  const double infinite = std::numeric_limits<double>::infinity();
  EXPECT_EQ(Problem(File(make.Sparse({3, 2}, {0, 1}, {0, 1, 2}, {1, infinite}))),
            "Row 2, column 2: expected a finite number.");
  EXPECT_EQ(Problem(File(make.Sparse({100000, 100000}, {0}, {0}, {1}))),
            "A matrix of 100000 x 100000 is too large to be unfolded: all of its elements are "
            "kept, zeros as well.");
}

TEST_P(MatDirect, RefusesDataOfAnotherLength) {
  const std::string whole = make.Full("M", {1, 2}, {1, 2});
  std::string longer = whole;
  longer[GetParam() ? 7 : 4] += 8;
  EXPECT_TRUE(ReadMatDirectly(File(make.Compressed(whole)), 0).Ok());
  EXPECT_EQ(Problem(File(make.Compressed(whole + "tail"))), kDamagedVariable);
  EXPECT_EQ(Problem(File(make.Compressed(longer))), kDamagedVariable);
  const std::string elements = make.Of(9, test::Numbers{1, 2});
  const std::string shorter = make.Variable("M", 6, {1, 2}, elements.substr(0, 16));
  const std::string problem = "The variable has not as many elements as its shape asks for.";
  for (const std::string& bytes : {File(shorter), File(make.Compressed(shorter))}) {
    EXPECT_EQ(test::kDirectly.Listed(bytes), "M (double, 1 x 2) - " + problem + "\n");
    EXPECT_EQ(Problem(bytes), problem);
  }
}

TEST_P(MatDirect, ReadsVersion4) {
  const Matrix expected = Rows({{1, 3}, {2, 4}});
  const std::string files[] = {
      Mat4Variable<double>(GetParam(), 0, "M", {2, 2}, {1, 2, 3, 4}),
      Mat4Variable<float>(GetParam(), 10, "M", {2, 2}, {1, 2, 3, 4}),
      Mat4Variable<std::int32_t>(GetParam(), 20, "M", {2, 2}, {1, 2, 3, 4}),
      Mat4Variable<std::int16_t>(GetParam(), 30, "M", {2, 2}, {1, 2, 3, 4}),
      Mat4Variable<std::uint16_t>(GetParam(), 40, "M", {2, 2}, {1, 2, 3, 4}),
      Mat4Variable<std::uint8_t>(GetParam(), 50, "M", {2, 2}, {1, 2, 3, 4}),
  };
  std::string together;
  for (const std::string& bytes : files) {
    EXPECT_EQ(test::kDirectly.Listed(bytes), "M (double, 2 x 2)\n");
    EXPECT_TRUE(SameBits(ReadMatDirectly(bytes, 0).content, expected));
    together += bytes;
  }
  EXPECT_TRUE(SameBits(ReadMatDirectly(together, 5).content, expected));
  EXPECT_EQ(Problem(together, 6), "The file has no such variable.");
  const std::string nameless =
      Mat4Variable<double>(GetParam(), 0, std::string(1, '\0'), {1, 1}, {5});
  EXPECT_EQ(test::kDirectly.Listed(nameless + files[0]), "M (double, 2 x 2)\n");
  EXPECT_TRUE(SameBits(ReadMatDirectly(nameless + files[0], 0).content, expected));
}

TEST_P(MatDirect, ReadsSparseMatricesOfVersion4) {
  // Rows of row, column and value, by columns; the last one is the shape.
  const auto sparse = [](const Counts& shape, const test::Numbers& table) {
    return Mat4Variable<double>(GetParam(), 2, "S", shape, table);
  };
  const std::string bytes = sparse({3, 3}, {3, 1, 3, 2, 1, 2, 5, 6, 0});
  EXPECT_EQ(test::kDirectly.Listed(bytes), "S (sparse, )\n");
  EXPECT_TRUE(SameBits(ReadMatDirectly(bytes, 0).content, Rows({{6, 0}, {0, 0}, {0, 5}})));
  EXPECT_TRUE(SameBits(ReadMatDirectly(sparse({1, 3}, {1, 2, 0}), 0).content, Rows({{0, 0}})));
  EXPECT_EQ(test::kDirectly.Listed(sparse({2, 4}, {1, 3, 1, 2, 5, 0, 6, 0})),
            "S (complex sparse, ) - The variable holds complex numbers; the program has real "
            "numbers only.\n");
  EXPECT_EQ(Problem(sparse({2, 3}, {1, 3, 1, 2, std::nan(""), 0})),
            "Row 1, column 1: expected a finite number.");
  const test::Numbers wrong[] = {
      {0, 3, 1, 2, 5, 0}, {4, 3, 1, 2, 5, 0},  {1.5, 3, 1, 2, 5, 0},
      {1, 3, 3, 2, 5, 0}, {1, -3, 1, 2, 5, 0}, {1, std::nan(""), 1, 2, 5, 0},
  };
  for (const test::Numbers& table : wrong) EXPECT_EQ(Problem(sparse({2, 3}, table)), kDamagedFile);
  EXPECT_EQ(Problem(sparse({3, 2}, {1, 2, 3, 1, 2, 2})), kDamagedFile);
  EXPECT_EQ(Problem(Mat4Variable<float>(GetParam(), 12, "S", {2, 3}, {1, 3, 1, 2, 5, 0})),
            kDamagedFile);
}

TEST_P(MatDirect, ListsADamagedVariableAmongTheOthers) {
  const std::string whole = make.Full("whole", {1, 1}, {5});
  std::string another = whole;
  another[GetParam() ? 3 : 0] = 13;
  std::string compressed = make.Compressed(whole);
  compressed[8] = 'y';
  for (const std::string& damaged :
       {make.Variable("M", 6, {1, 1}, make.Of(9, test::Numbers{1}), 2), another, compressed,
        make.Compressed(another), make.Compressed(make.Of(9, test::Numbers{1, 2})),
        make.Of(9, test::Numbers{1, 2}), make.Element(14, "abcdefgh")}) {
    const std::string bytes = File(damaged + whole);
    EXPECT_EQ(test::kDirectly.Listed(bytes),
              std::string(" (damaged, ) - ") + kDamagedVariable + "\nwhole (double, 1 x 1)\n");
    EXPECT_EQ(Problem(bytes, 0), kDamagedVariable);
    EXPECT_TRUE(SameBits(ReadMatDirectly(bytes, 1).content, Rows({{5}})));
  }
  // Nothing is no variable.
  EXPECT_EQ(test::kDirectly.Listed(File(std::string(24, '\0') + whole)), "whole (double, 1 x 1)\n");
}

TEST_P(MatDirect, RefusesMoreVariablesThanItLists) {
  std::string bytes = File("");
  for (int k = 0; k < 10000; ++k) bytes += make.Full("M", {1, 1}, {1});
  for (const test::MatReading& reading : {test::kAsTheProgram, test::kDirectly}) {
    EXPECT_EQ(reading.list(bytes).content.size(), 10000U);
    EXPECT_EQ(reading.list(bytes + make.Full("M", {1, 1}, {1})).problem,
              "There are more than 10000 variables.");
  }
  EXPECT_EQ(ListMatDirectly(File("")).problem, "The file holds no variables.");
}

/// However large compressed data would become, memory is taken for a matrix that may be only.
TEST_P(MatDirect, CompressedClaimsTakeNoMemory) {
  if (!test::kMemoryIsItsOwn) GTEST_SKIP() << "the sanitizer has memory of its own";
  constexpr std::size_t kMuch = 8 << 20;
  const std::string zeros(kMuch, '\0');
  const std::string variables[] = {
      make.Variable(zeros, 6, {1, 1}, ""),
      make.Variable("M", 6, Counts(kMuch / 4), ""),
      make.Variable("M", 6, {1, 1}, make.Element(9, zeros)),
      make.Variable("M", 6, {30000, 30000}, make.Element(9, zeros)),
      make.Variable("S", 5, {1, 1}, make.Element(5, zeros)),
      make.Full("M", {1, 1}, {1}) + zeros,
  };
  for (const std::string& variable : variables) {
    const std::string bytes = File(make.Compressed(variable));
    ASSERT_LT(bytes.size(), kMuch / 500);
    const long most = test::MemoryOf(
        [&] { return ListMatDirectly(bytes).Ok() && !ReadMatDirectly(bytes, 0).Ok(); });
    EXPECT_GE(most, 0);
    EXPECT_LE(most, 4096);
  }
}

TEST_P(MatDirect, AsksForRoomForTheMatrix) {
  const std::string bytes = File(make.Compressed(make.Full("M", {3, 4}, test::Numbers(12, 1.5))));
  test::FixedMemory memory;
  memory.available = 2 * 12 * sizeof(double);
  EXPECT_TRUE(ReadMatDirectly(bytes, 0, memory).Ok());
  --memory.available;
  EXPECT_EQ(ReadMatDirectly(bytes, 0, memory).problem,
            "A matrix of 3 x 4 does not fit into memory.");
}

INSTANTIATE_TEST_SUITE_P(Orders, MatDirect, ::testing::Values(false, true),
                         [](const auto& order) { return order.param ? "Big" : "Little"; });

TEST(MatDirectly, SaysWhatToDoAboutVersion73) {
  const std::string problem =
      "This is a MAT file of version 7.3, which the program does not read on this system. Save it "
      "as version 7 or below in the program that made it; such files can be read.";
  EXPECT_EQ(ListMatDirectly(Data("matio-7.3.mat")).problem, problem);
  EXPECT_EQ(ReadMatDirectly(Data("matio-7.3.mat"), 0).problem, problem);
  EXPECT_EQ(ListMatDirectly("nothing").problem, "The file is no MAT file.");
}

/// What there is to read in a file, by name, and no words where it is refused.
std::map<std::string, Matrix> AllOf(const std::string& bytes) {
  std::map<std::string, Matrix> matrices;
  const auto list = ListMatDirectly(bytes);
  for (std::size_t k = 0; k < list.content.size(); ++k) {
    auto outcome = ReadMatDirectly(bytes, k);
    EXPECT_EQ(outcome.Ok(), outcome.content.Size() > 0);
    if (outcome.Ok()) matrices.emplace(list.content[k].name, std::move(outcome.content));
  }
  return matrices;
}

TEST(MatDirectly, ReadsOfACutFileOnlyWhatIsWhole) {
  for (const char* name : {"scipy-4.mat", "scipy-5.mat", "scipy-7.mat", "octave-4.mat",
                           "octave-6.mat", "octave-7.mat"}) {
    const std::string whole = Data(name);
    const auto expected = AllOf(whole);
    ASSERT_FALSE(expected.empty()) << name;
    for (std::size_t size = 0; size < whole.size(); ++size) {
      // A file that ends between two variables is whole.
      for (const auto& [variable, matrix] : AllOf(whole.substr(0, size)))
        EXPECT_TRUE(SameBits(matrix, expected.at(variable))) << name << " " << size;
    }
  }
}

/// Compressed data have a check sum. Of others a damage to a number cannot be seen.
TEST(MatDirectly, ReadsNothingElseOfDamagedCompressedData) {
  for (const char* name : {"scipy-7.mat", "octave-7.mat"}) {
    const std::string whole = Data(name);
    const auto expected = AllOf(whole);
    for (std::size_t at = 0; at < whole.size(); ++at) {
      for (int bit = 0; bit < 8; ++bit) {
        std::string bytes = whole;
        bytes[at] = static_cast<char>(bytes[at] ^ 1 << bit);
        for (const auto& [variable, matrix] : AllOf(bytes)) {
          ASSERT_TRUE(expected.contains(variable)) << name << " " << at;
          EXPECT_TRUE(SameBits(matrix, expected.at(variable))) << name << " " << at;
        }
      }
    }
  }
}

TEST(MatDirectly, ReadsOrRefusesEveryDamagedFile) {
  for (const char* name : {"scipy-4.mat", "scipy-5.mat", "octave-4.mat", "octave-6.mat"}) {
    const std::string whole = Data(name);
    for (std::size_t at = 0; at < whole.size(); ++at) {
      for (const char damage : {'\x01', '\x80', '\x55', '\xFF'}) {
        std::string bytes = whole;
        bytes[at] = static_cast<char>(bytes[at] ^ damage);
        for (const auto& [variable, matrix] : AllOf(bytes)) {
          EXPECT_LE(matrix.Size(), kMostUnfolded) << name << " " << at;
          for (std::size_t k = 0; k < matrix.Size(); ++k)
            ASSERT_TRUE(std::isfinite(matrix.Data()[k])) << name << " " << at;
        }
      }
    }
  }
}

}  // namespace
}  // namespace qmx
