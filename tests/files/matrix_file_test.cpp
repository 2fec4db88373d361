// SPDX-License-Identifier: MIT
#include "files/matrix_file.h"

#include <gtest/gtest.h>

#include "support/core_bench.h"
#include "support/core_data.h"
#include "workspace/slot_table.h"

namespace qmx {
namespace {

using test::Rows;

TEST(MatrixFile, HoldsTheCountsAndTheElementsRowByRow) {
  EXPECT_EQ(MatrixFile(kSlotA, Rows({{1, -2.5, 0.5}, {1e20, 0, 1.0 / 3}})),
            "2,3\r\n 1 \r\n-2.5 \r\n .5 \r\n 1E+20 \r\n 0 \r\n .3333333333333333 \r\n");
  EXPECT_EQ(MatrixFile(kSlotSum, Rows({{7}})), "1,1\r\n 7 \r\n");
}

TEST(MatrixFile, WritesVectorsWithoutColumns) {
  const Matrix column = Rows({{1}, {-2}});
  for (const Slot slot : {kSlotEigenvalues, kSlotSolution, kSlotExchanges})
    EXPECT_EQ(MatrixFile(slot, column), "2,0\r\n 1 \r\n-2 \r\n") << slot;
  EXPECT_EQ(MatrixFile(kSlotA, column), "2,1\r\n 1 \r\n-2 \r\n");
}

TEST(MatrixFile, WritesAnEmptyLineForARowWithoutColumns) {
  EXPECT_EQ(MatrixFile(kSlotA, Matrix(2, 0)), "2,0\r\n\r\n\r\n");
  EXPECT_EQ(MatrixFile(kSlotA, Matrix(0, 2)), "0,2\r\n");
  EXPECT_EQ(MatrixFile(kSlotA, Matrix()), "0,0\r\n");
}

TEST(MatrixFile, IsTheSampleThatTheDocumentationShows) {
  EXPECT_EQ(MatrixFile(kSlotA, Rows({{2, -1.5, 0.5}, {1e20, 0, 1.0 / 3}})),
            test::DataFile("matrix.txt"));
  EXPECT_EQ(MatrixFile(kSlotSolution, Rows({{1}, {-2}, {0.1 + 0.2}})),
            test::DataFile("vector.txt"));
}

TEST(MatrixFile, ReadsBackWhatWasWritten) {
  for (const Matrix& values : {Rows({{1, -2.5, 0.5}, {1e20, 0, 1.0 / 3}}), Rows({{4.9e-324}}),
                               Rows({{0.1}, {0.2}, {0.30000000000000004}}), Matrix(0, 3)}) {
    const auto reading = ReadMatrixFile(kSlotA, MatrixFile(kSlotA, values));
    EXPECT_EQ(reading.problem, "");
    EXPECT_EQ(reading.content, values);
  }
}

TEST(MatrixFile, TakesEveryKindOfRecordAndLineEnd) {
  const Matrix wanted = Rows({{1, 2}, {3, 4}});
  for (const char* bytes : {"2,2\r\n 1 \r\n 2 \r\n 3 \r\n 4 \r\n", "2,2\n1\n2\n3\n4\n",
                            "2 2\n1 2\n3 4\n", "2,2,1,2,3,4\n", " 2 \r\n 2 \r\n1,2\r\n3,4\r\n",
                            "2,2\n\n1, 2\n3, 4\n\n\n", "\t2,\t2\n1.0 2e0 +3 4.\n"}) {
    const auto reading = ReadMatrixFile(kSlotB, bytes);
    EXPECT_EQ(reading.problem, "") << bytes;
    EXPECT_EQ(reading.content, wanted) << bytes;
  }
}

TEST(MatrixFile, GivesAVectorFileRowsAndNoColumns) {
  for (const char* bytes : {"3,0\r\n 1 \r\n 2 \r\n 3 \r\n", "3,0\r\n", "3,0\nleft unread"}) {
    const auto reading = ReadMatrixFile(kSlotA, bytes);
    EXPECT_EQ(reading.problem, "") << bytes;
    EXPECT_EQ(reading.content.Rows(), 3) << bytes;
    EXPECT_EQ(reading.content.Cols(), 0) << bytes;
  }
}

struct BadFile {
  const char* bytes;
  const char* problem;
};

TEST(MatrixFile, NamesTheLineAndWhatWasExpected) {
  constexpr BadFile kBad[] = {
      {"", "Line 1: expected the number of rows of Matrix A, but found the end of the file."},
      {"x",
       "Line 1: expected the number of rows of Matrix A, but found \"x\" and the end of the file."},
      {"2\r\n",
       "Line 2: expected the number of columns of Matrix A, but found the end of the file."},
      {"-1,2\n", "Line 1: expected the number of rows of Matrix A, at least 0, but found \"-1\"."},
      {"2,-2\n",
       "Line 1: expected the number of columns of Matrix A, at least 0, but found \"-2\"."},
      {"2.5,2\n", "Line 1: expected the number of rows of Matrix A, but found \"2.5\"."},
      {"2,2\n1\n2\nthree\n4\n", "Line 4: expected element (2,1) of Matrix A, but found \"three\"."},
      {"2,2\r\n1\r\n2\r\n3,4444444444",
       "Line 4: expected element (2,2) of Matrix A, but found \"4444444444\" and the end of the "
       "file."},
      {"2,2\n1\n2\n3\n4\n5\n", "Line 6: expected the end of the file, but found \"5\"."},
      {"2,2\n1\n2\n",
       "Line 1: expected a file long enough for the 4 elements of Matrix A, but found \"2\"."},
      {"#TRUE#,#FALSE#\n",
       "Line 1: expected the number of rows of Matrix A, but found \"#TRUE#\"."},
  };
  for (const auto& [bytes, problem] : kBad)
    EXPECT_EQ(ReadMatrixFile(kSlotA, bytes).problem, problem);
}

TEST(MatrixFile, RefusesCountsThatItsBytesCannotHold) {
  for (const char* bytes :
       {"2147483647,2147483647\n1\n", "1000000,1000000\n1 2 3\n", "2147483647,0\n",
        "0,2147483647\n", "2147483647,1\n1\n", "4294967296,1\n1\n", "65536,65536\n1\n"})
    EXPECT_FALSE(ReadMatrixFile(kSlotA, bytes).Ok()) << bytes;
}

TEST(MatrixFile, RefusesAFileOfAnotherKind) {
  // Factors, a system and a project.
  for (const char* name :
       {"lu.txt", "system.txt", "system-by-factors.txt", "a.qmx", "everything.qmx"})
    EXPECT_FALSE(ReadMatrixFile(kSlotA, test::DataFile(name)).Ok()) << name;
}

TEST(MatrixFile, RefusesEveryCut) {
  const std::string bytes = MatrixFile(kSlotA, Rows({{1, -2.5, 0.5}, {1e20, 0, 1.0 / 3}}));
  for (std::size_t length = 0; length < bytes.size(); ++length)
    EXPECT_FALSE(ReadMatrixFile(kSlotA, bytes.substr(0, length)).Ok()) << length;
}

MatrixSection Section(Slot slot, const std::string& bytes) {
  FieldScanner scanner(bytes);
  MatrixSection section;
  EXPECT_TRUE(ReadMatrixSection(scanner, slot, section)) << scanner.ProblemText();
  EXPECT_TRUE(scanner.AtEnd());
  return section;
}

TEST(MatrixSection, GivesAVectorOneColumnAndACountOfNone) {
  for (const Slot slot : {kSlotSolution, kSlotExchanges, kSlotSystem, kSlotA}) {
    const MatrixSection section = Section(slot, "2,0\r\n 1 \r\n 2 \r\n");
    EXPECT_EQ(section.array, Rows({{1}, {2}}));
    EXPECT_EQ(section.rows, 2);
    EXPECT_EQ(section.cols, 0);
  }
}

TEST(MatrixSection, TellsRowsWithoutColumnsFromAVector) {
  const MatrixSection section = Section(kSlotA, MatrixFile(kSlotA, Matrix(3, 0)));
  EXPECT_EQ(section.array.Rows(), 3);
  EXPECT_EQ(section.array.Cols(), 0);
  EXPECT_EQ(section.rows, 3);
  const std::string bytes = "3,0\r\n\r\n\r\n\r\n";
  for (std::size_t length = 0; length < bytes.size(); ++length) {
    FieldScanner scanner(std::string_view(bytes).substr(0, length));
    MatrixSection cut;
    EXPECT_FALSE(ReadMatrixSection(scanner, kSlotA, cut)) << length;
  }
}

TEST(MatrixSection, RefusesAVectorOfSeveralColumns) {
  FieldScanner scanner("2,2\n1 2 3 4\n");
  MatrixSection section;
  EXPECT_FALSE(ReadMatrixSection(scanner, kSlotSolution, section));
  EXPECT_EQ(scanner.ProblemText(),
            "Line 1: expected a column count of 0, as \"Solution\" is a vector, but found \"2\".");
}

}  // namespace
}  // namespace qmx
