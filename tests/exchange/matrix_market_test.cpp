// SPDX-License-Identifier: MIT
#include "exchange/matrix_market.h"

#include <gtest/gtest.h>

#include <vector>

#include "bits.h"
#include "support/core_data.h"

namespace qmx {
namespace {

using test::Rows;
using test::SameBits;
using test::TellingMatrix;

std::string File(const std::string& kind, const std::string& rest) {
  return "%%MatrixMarket matrix " + kind + "\n" + rest;
}

TEST(MatrixMarket, ReadsEveryKind) {
  const std::vector<std::pair<std::string, Matrix>> cases = {
      {File("array real general", "2 3\n1\n2\n3\n4\n5\n6\n"), Rows({{1, 3, 5}, {2, 4, 6}})},
      {File("array integer general", "% c\n\n%\n1 2\n-7\n9007199254740992\n"),
       Rows({{-7, 9007199254740992.0}})},
      {File("array real symmetric", "2 2\n1\n2\n3\n"), Rows({{1, 2}, {2, 3}})},
      {File("array real skew-symmetric", "3 3\n1\n2\n3\n"),
       Rows({{0, -1, -2}, {1, 0, -3}, {2, 3, 0}})},
      {File("array real skew-symmetric", "1 1\n"), Rows({{0}})},
      {File("coordinate real general", "2 3 2\n1 2 0.5\n2 3 -1e3\n"),
       Rows({{0, 0.5, 0}, {0, 0, -1000}})},
      {File("coordinate real general", "1 2 3\n1 1 1\n1 2 4\n1 1 2\n"), Rows({{3, 4}})},
      {File("coordinate real general", "1 1 1\n1 1 -0\n"), Rows({{-0.0}})},
      {File("coordinate real general", "2 2 0\n"), Rows({{0, 0}, {0, 0}})},
      {File("coordinate integer general", "1 2 1\n1 2 3\n"), Rows({{0, 3}})},
      {File("coordinate pattern general", "2 2 2\n1 1\n2 1\n"), Rows({{1, 0}, {1, 0}})},
      {File("coordinate pattern symmetric", "2 2 2\n1 1\n2 1\n"), Rows({{1, 1}, {1, 0}})},
      {File("coordinate real symmetric", "2 2 2\n1 1 5\n2 1 3\n"), Rows({{5, 3}, {3, 0}})},
      {File("coordinate real skew-symmetric", "2 2 1\n2 1 3\n"), Rows({{0, -3}, {3, 0}})},
      {"%%matrixmarket MATRIX Array Real General\r\n1 1\r\n1.5D+1\r\n", Rows({{15}})},
      {File("array real general", "2 1 1 2\n"), Rows({{1}, {2}})},
  };
  for (const auto& [text, values] : cases) {
    const auto outcome = ReadMatrixMarket(text);
    EXPECT_EQ(outcome.problem, "") << text;
    EXPECT_TRUE(SameBits(outcome.content, values)) << text;
  }
}

TEST(MatrixMarket, NamesWhatItRefuses) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"1 2\n", "Line 1, column 1: expected \"%%MatrixMarket\"."},
      {"%%MatrixMarket vector array real general\n",
       "Line 1, column 2: expected \"matrix\", but found \"vector\"."},
      {File("dense real general", ""),
       "Line 1, column 3: expected \"array\" or \"coordinate\", but found \"dense\"."},
      {File("array complex general", ""),
       "Line 1, column 4: complex matrices cannot be read; the program has real numbers only."},
      {File("array real hermitian", ""),
       "Line 1, column 5: Hermitian matrices cannot be read; the program has real numbers only."},
      {File("array pattern general", ""),
       "Line 1, column 4: expected \"real\" or \"integer\", but found \"pattern\"."},
      {File("array real upper", ""),
       "Line 1, column 5: expected \"general\", \"symmetric\" or \"skew-symmetric\", but found "
       "\"upper\"."},
      {File("array real general more", "1 1\n1\n"),
       "Line 1: expected the end of the line, but found \" more\"."},
      {File("array real general", ""),
       "Line 2, column 1: expected the number of rows, but found the end of the file."},
      {File("array real general", "2 x\n"),
       "Line 2, column 2: expected the number of columns, but found \"x\"."},
      {File("array real symmetric", "2 3\n1\n2\n3\n"),
       "Line 2, column 2: a symmetric matrix has as many columns as rows."},
      {File("array real general", "0 3\n"), "The matrix is empty (0 x 3)."},
      {File("array real general", "99999 99999\n1\n"),
       "The file is too short for the elements of a matrix of 99999 x 99999."},
      {File("array real general", "4294967297 1\n1\n"), "A matrix of 4294967297 x 1 is too large."},
      {File("array real general", "99999999999999999999 1\n1\n"),
       "Line 2, column 1: expected the number of rows, but found \"99999999999999999999\"."},
      {File("coordinate real general", "99999 99999 1\n1 1 1\n"),
       "A matrix of 99999 x 99999 is too large to be unfolded: all of its elements are kept, zeros "
       "as well."},
      {File("coordinate real general", "2 2 1000\n1 1 1\n"),
       "Line 2, column 3: the file is too short for 1000 entries."},
      {File("array real general", "1 2\n1\nx\n"),
       "Line 4, column 1: expected a number, but found \"x\"."},
      {File("array real general", "1 2\n1\nNaN\n"),
       "Line 4, column 1: expected a finite number, but found \"NaN\"."},
      {File("array real general", "1 2\n1\n"),
       "Line 4, column 1: expected a number, but found the end of the file."},
      {File("array real general", "1 2\n1\n2\n3\n"),
       "Line 5, column 1: expected the end of the file, but found \"3\"."},
      {File("array real general", "1 2\n1\n2"),
       "Line 4: the line has no end; the file seems to be cut off."},
      {File("array integer general", "1 2\n1\n1.5\n"),
       "Line 4, column 1: expected an integer, but found \"1.5\"."},
      {File("array integer general", "1 2\n1\n9007199254740993\n"),
       "Line 4, column 1: the integer \"9007199254740993\" has more digits than a number of the "
       "program can hold."},
      {File("coordinate real general", "2 2 1\n3 1 1\n"),
       "Line 3, column 1: expected a row from 1 to 2, but found \"3\"."},
      {File("coordinate real general", "2 2 1\n1 0 1\n"),
       "Line 3, column 2: expected a column from 1 to 2, but found \"0\"."},
      {File("coordinate real symmetric", "2 2 1\n1 2 1\n"),
       "Line 3, column 2: a symmetric file lists no elements above the diagonal."},
      {File("coordinate real skew-symmetric", "2 2 1\n1 1 1\n"),
       "Line 3, column 2: a skew-symmetric file lists elements below the diagonal only."},
      {File("coordinate real general", "1 1 2\n1 1 1e308\n1 1 1e308\n"),
       "Line 4, column 3: the sum of the entries here is too large."},
  };
  for (const auto& [text, problem] : cases) {
    const auto outcome = ReadMatrixMarket(text);
    EXPECT_EQ(outcome.problem, problem) << text;
    EXPECT_EQ(outcome.content.Size(), 0U) << text;
  }
}

TEST(MatrixMarket, ReadsBackWhatItWrites) {
  const auto text = WriteMatrixMarket(TellingMatrix());
  ASSERT_TRUE(text.Ok());
  EXPECT_TRUE(text.content.starts_with("%%MatrixMarket matrix array real general\n3 4\n1\n"));
  EXPECT_TRUE(SameBits(ReadMatrixMarket(text.content).content, TellingMatrix()));
  EXPECT_EQ(WriteMatrixMarket(Matrix(0, 3)).problem, "The matrix is empty.");
}

TEST(MatrixMarket, RefusesAFileCutAnywhere) {
  const std::string whole = WriteMatrixMarket(TellingMatrix()).content;
  for (std::size_t size = 0; size < whole.size(); ++size)
    EXPECT_FALSE(ReadMatrixMarket(whole.substr(0, size)).Ok()) << size;
}

TEST(MatrixMarket, ReadsTheFilesOfOtherPrograms) {
  const std::vector<std::pair<const char*, Matrix>> cases = {
      {"scipy-array.mtx", TellingMatrix()},
      {"scipy-coordinate.mtx", test::SparseMatrix()},
      {"scipy-symmetric.mtx", Rows({{1, 2, 0}, {2, -0.5, 1.0 / 3}, {0, 1.0 / 3, 4}})},
  };
  for (const auto& [name, values] : cases) {
    const auto outcome = ReadMatrixMarket(test::DataFile(std::string("exchange/") + name));
    EXPECT_EQ(outcome.problem, "") << name;
    EXPECT_TRUE(SameBits(outcome.content, values)) << name;
  }
}

}  // namespace
}  // namespace qmx
