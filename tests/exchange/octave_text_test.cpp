// SPDX-License-Identifier: MIT
#include "exchange/octave_text.h"

#include <gtest/gtest.h>

#include "bits.h"
#include "support/core_data.h"

namespace qmx {
namespace {

using test::Rows;
using test::SameBits;
using test::TellingMatrix;

std::string Variable(const std::string& type, const std::string& body) {
  return "# name: x\n# type: " + type + "\n" + body + "\n\n";
}

TEST(OctaveText, ReadsEveryTypeOfNumbers) {
  const std::vector<std::pair<std::string, Matrix>> cases = {
      {Variable("matrix", "# rows: 2\n# columns: 2\n 1 2\n 3 -0\n"), Rows({{1, 2}, {3, -0.0}})},
      {Variable("matrix", "# ndims: 2\n 2 2\n 1\n 2\n 3\n 4\n"), Rows({{1, 3}, {2, 4}})},
      {Variable("float matrix", "# rows: 1\n# columns: 1\n 0.10000000149011612\n"), Rows({{0.1F}})},
      {Variable("bool matrix", "# rows: 1\n# columns: 2\n 1 0\n"), Rows({{1, 0}})},
      {Variable("uint8 matrix", "# ndims: 2\n 1 2\n  200\n  7\n"), Rows({{200, 7}})},
      {Variable("scalar", "2.5\n"), Rows({{2.5}})},
      {Variable("global scalar", "2.5\n"), Rows({{2.5}})},
      {Variable("bool", "1\n"), Rows({{1}})},
      {Variable("int64 scalar", "-9007199254740992\n"), Rows({{-9007199254740992.0}})},
      {Variable("diagonal matrix", "# rows: 2\n# columns: 3\n1.5\n2\n"),
       Rows({{1.5, 0, 0}, {0, 2, 0}})},
      {Variable("permutation matrix", "# size: 3\n# orient: c\n3\n1\n2\n"),
       Rows({{0, 1, 0}, {0, 0, 1}, {1, 0, 0}})},
      {Variable("permutation matrix", "# size: 3\n# orient: r\n3\n1\n2\n"),
       Rows({{0, 0, 1}, {1, 0, 0}, {0, 1, 0}})},
      {Variable("sparse matrix", "# nnz: 2\n# rows: 2\n# columns: 2\n1 2 5\n2 1 -0.5\n"),
       Rows({{0, 5}, {-0.5, 0}})},
      {Variable("range", "# base, limit, increment\n1 7 2\n"), Rows({{1, 3, 5, 7}})},
      {Variable("double_range", "# base, limit, increment\n0 0.3 0.1\n"),
       Rows({{0, 0.1, 0.2, 0.3}})},
      {Variable("double_range", "# base, limit, increment\n5 0 -2\n"), Rows({{5, 3, 1}})},
      {"% Created by hand\r\n% name: x\r\n% type: scalar\r\n4\r\n", Rows({{4}})},
  };
  for (const auto& [text, values] : cases) {
    EXPECT_TRUE(IsOctaveText(text)) << text;
    const auto outcome = ReadOctaveText(text, 0);
    EXPECT_EQ(outcome.problem, "") << text;
    EXPECT_TRUE(SameBits(outcome.content, values)) << text;
  }
}

TEST(OctaveText, SaysWhatItRefuses) {
  const std::vector<std::pair<std::string, std::string>> cases = {
      {Variable("complex matrix", "# rows: 1\n# columns: 1\n (1,2)\n"),
       "The variable holds complex numbers; the program has real numbers only."},
      {Variable("string", "# elements: 1\n# length: 1\na\n"),
       "The variable is of type \"string\" and no matrix of numbers."},
      {Variable("matrix", "# ndims: 3\n 1 1 2\n 1\n 2\n"),
       "The variable has more than two dimensions (1 x 1 x 2)."},
      {Variable("matrix", "# rows: 0\n# columns: 3\n"), "The matrix is empty (0 x 3)."},
      {Variable("matrix", "# rows: 99999\n# columns: 99999\n 1\n"),
       "The file is too short for the elements of a matrix of 99999 x 99999."},
      {Variable("diagonal matrix", "# rows: 99999\n# columns: 99999\n 1\n"),
       "A matrix of 99999 x 99999 is too large to be unfolded: all of its elements are kept, zeros "
       "as well."},
      {Variable("matrix", "# rows: 1\n# columns: 2\n 1 x\n"),
       "Line 5, column 2: expected a number, but found \"x\"."},
      {Variable("matrix", "# rows: 1\n# columns: 2\n 1 NA\n"),
       "Line 5, column 2: expected a finite number, but found \"NA\"."},
      {Variable("matrix", "# rows: 1\n# columns: 2\n 1\n"),
       "Line 8, column 1: expected a number, but found the end of the file."},
      {Variable("matrix", "# rows: 1\n# columns: 2\n 1 2 3\n"),
       "Line 5, column 3: expected the end of the variable, but found \"3\"."},
      {Variable("matrix", "# columns: 2\n 1 2\n"),
       "Line 3: expected a line \"# rows:\" with a count, but found \"# columns: 2\"."},
      {Variable("matrix", "# rows: x\n# columns: 2\n 1 2\n"),
       "Line 3: expected a line \"# rows:\" with a count, but found \"# rows: x\"."},
      {Variable("int8 scalar", "1.5\n"),
       "Line 3, column 1: expected an integer, but found \"1.5\"."},
      {Variable("uint64 scalar", "18446744073709551615\n"),
       "Line 3, column 1: the integer \"18446744073709551615\" has more digits than a number of "
       "the "
       "program can hold."},
      {Variable("sparse matrix", "# nnz: 1\n# rows: 2\n# columns: 2\n3 1 5\n"),
       "Line 6, column 1: expected an index from 1 to 2, but found \"3\"."},
      {Variable("range", "# base, limit, increment\n1 0 1\n"), "The range is empty."},
      {Variable("range", "# base, limit, increment\n1 2 0\n"),
       "A matrix of 1 x 1152921504606846976 is too large."},
      {"# name: x\n# type: scalar\n2.",
       "Line 3: the line has no end; the file seems to be cut off."},
      {"# name: x\nscalar\n", "Line 2: expected a line \"# type:\", but found \"scalar\"."},
      {"# nothing\n", "The file holds no variables."},
  };
  for (const auto& [text, problem] : cases) {
    const auto outcome = ReadOctaveText(text, 0);
    EXPECT_EQ(outcome.problem, problem) << text;
    EXPECT_EQ(outcome.content.Size(), 0U) << text;
  }
  EXPECT_EQ(ReadOctaveText(Variable("scalar", "1\n"), 1).problem, "The file has no such variable.");
}

TEST(OctaveText, ListsVariablesButNotTheirParts) {
  const std::string bytes = test::DataFile("exchange/octave.txt");
  const auto list = ListOctaveText(bytes);
  ASSERT_TRUE(list.Ok()) << list.problem;
  std::string names;
  for (const ForeignVariable& variable : list.content) {
    names += variable.name + " (" + variable.kind + ", " + variable.shape + ")" +
             (variable.problem.empty() ? "\n" : " -\n");
  }
  EXPECT_EQ(names,
            "A (matrix, 3 x 4)\n"
            "S (sparse matrix, 3 x 4)\n"
            "diagonal (diagonal matrix, 2 x 3)\n"
            "down (double_range, )\n"
            "flags (bool matrix, 1 x 2)\n"
            "huge (uint64 scalar, 1 x 1)\n"
            "infinite (matrix, 1 x 2)\n"
            "integers (int8 matrix, 2 x 2)\n"
            "last (scalar, 1 x 1)\n"
            "nested (cell, 2 x 2) -\n"
            "none (matrix, 0 x 3)\n"
            "permutation (permutation matrix, 3 x 3)\n"
            "range (double_range, )\n"
            "record (scalar struct, 1 x 1) -\n"
            "scalar (scalar, 1 x 1)\n"
            "single_matrix (float matrix, 1 x 2)\n"
            "text (string, ) -\n"
            "three (matrix, 2 x 2 x 2) -\n"
            "z (complex matrix, 1 x 2) -\n");
}

TEST(OctaveText, ReadsTheFilesOfOctave) {
  const std::string bytes = test::DataFile("exchange/octave.txt");
  const auto list = ListOctaveText(bytes);
  const auto read = [&](const std::string& name) {
    for (std::size_t k = 0; k < list.content.size(); ++k) {
      if (list.content[k].name == name) return ReadOctaveText(bytes, k).content;
    }
    return Matrix();
  };
  EXPECT_TRUE(SameBits(read("A"), TellingMatrix()));
  EXPECT_TRUE(SameBits(read("S"), test::SparseMatrix()));
  EXPECT_TRUE(SameBits(read("diagonal"), Rows({{2.5, 0, 0}, {0, 2.5, 0}})));
  EXPECT_TRUE(SameBits(read("down"), Rows({{5, 3, 1}})));
  EXPECT_TRUE(SameBits(read("range"), Rows({{0, 0.1, 0.2, 0.1 * 3, 0.4, 0.5}})));
  EXPECT_TRUE(SameBits(read("permutation"), Rows({{0, 1, 0}, {0, 0, 1}, {1, 0, 0}})));
  EXPECT_TRUE(SameBits(read("integers"), Rows({{1, -2}, {3, 4}})));
  EXPECT_TRUE(SameBits(read("single_matrix"), Rows({{0.1F, -2.5}})));
  EXPECT_TRUE(SameBits(read("last"), Rows({{-0.0}})));
}

TEST(OctaveText, WritesAndReadsBack) {
  EXPECT_EQ(WriteOctaveText(Rows({{1, -0.0}, {0.5, 1e20}}), "M").content,
            "# Created by Orvane\n# name: M\n# type: matrix\n# rows: 2\n# columns: 2\n"
            " 1 -0\n 0.5 1E+20\n\n\n");
  const auto text = WriteOctaveText(TellingMatrix(), "A");
  EXPECT_TRUE(SameBits(ReadOctaveText(text.content, 0).content, TellingMatrix()));
  EXPECT_EQ(ListOctaveText(text.content).content.at(0).name, "A");
  EXPECT_EQ(WriteOctaveText(Matrix(1, 0), "A").problem, "The matrix is empty.");
}

TEST(OctaveText, RefusesAFileCutAnywhere) {
  const std::string whole = WriteOctaveText(TellingMatrix(), "A").content;
  // The two empty lines at the end are no part of the matrix.
  for (std::size_t size = 0; size < whole.size() - 2; ++size)
    EXPECT_FALSE(ReadOctaveText(whole.substr(0, size), 0).Ok()) << size;
}

TEST(OctaveText, HasItsOwnFirstLines) {
  EXPECT_FALSE(IsOctaveText(""));
  EXPECT_FALSE(IsOctaveText("# name: x\n1 2\n"));
  EXPECT_FALSE(IsOctaveText("1 2\n# name: x\n# type: matrix\n"));
}

}  // namespace
}  // namespace qmx
