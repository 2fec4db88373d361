// SPDX-License-Identifier: MIT
#include "files/lu_file.h"

#include <gtest/gtest.h>

#include "support/core_bench.h"
#include "support/core_data.h"

namespace qmx {
namespace {

using test::Rows;

StoredFactors Factors(Matrix exchanges, int exchangeRows) {
  StoredFactors factors;
  factors.L = Rows({{1, 0}, {0.5, 1}});
  factors.U = Rows({{4, 3}, {0, -1.5}});
  factors.exchanges = std::move(exchanges);
  factors.lRows = factors.lCols = factors.uRows = factors.uCols = 2;
  factors.exchangeRows = exchangeRows;
  factors.exchangeCols = 1;
  return factors;
}

StoredFactors Exchanged() { return Factors(Rows({{2}, {1}}), 2); }
StoredFactors Plain() { return Factors(Rows({{1}, {2}}), 0); }

void ExpectSame(const StoredFactors& one, const StoredFactors& two) {
  EXPECT_EQ(one.L, two.L);
  EXPECT_EQ(one.U, two.U);
  EXPECT_EQ(one.exchanges, two.exchanges);
  EXPECT_EQ(one.lRows, two.lRows);
  EXPECT_EQ(one.lCols, two.lCols);
  EXPECT_EQ(one.uRows, two.uRows);
  EXPECT_EQ(one.uCols, two.uCols);
  EXPECT_EQ(one.exchangeRows, two.exchangeRows);
  EXPECT_EQ(one.exchangeCols, two.exchangeCols);
}

TEST(LUFile, HoldsTheCountsTheFactorsAndTheExchanges) {
  EXPECT_EQ(
      LUFile(Exchanged()),
      "2,2,2,2,2\r\n 1 \r\n 0 \r\n .5 \r\n 1 \r\n 4 \r\n 3 \r\n 0 \r\n-1.5 \r\n 2 \r\n 1 \r\n");
  EXPECT_EQ(LUFile(Plain()),
            "2,2,2,2,0\r\n 1 \r\n 0 \r\n .5 \r\n 1 \r\n 4 \r\n 3 \r\n 0 \r\n-1.5 \r\n");
}

TEST(LUFile, IsTheSampleThatTheDocumentationShows) {
  EXPECT_EQ(LUFile(Exchanged()), test::DataFile("lu.txt"));
}

TEST(LUFile, ReadsBackWhatWasWritten) {
  for (const StoredFactors& factors : {Exchanged(), Plain()}) {
    const auto reading = ReadLUFile(LUFile(factors));
    EXPECT_EQ(reading.problem, "");
    ExpectSame(reading.content, factors);
  }
}

TEST(LUFile, GoesByTheFactorsWhereTheirCountsWereOverwritten) {
  StoredFactors factors = Exchanged();
  factors.uCols = 7;
  factors.exchangeRows = 0;
  EXPECT_EQ(LUFile(factors), LUFile(Exchanged()));
  factors = Plain();
  factors.exchangeRows = 5;
  EXPECT_EQ(ReadLUFile(LUFile(factors)).content.exchanges, factors.exchanges);
}

TEST(LUFile, ReadsOnlyTheCountsWhereUIsNotSquare) {
  for (const char* bytes :
       {"3,3,3,4,3\r\n 1 \r\n", "3,3,3,4,3\r\n", "3,3,3,4,3\r\nrubbish", "3,1,2000000000,4,99\n"}) {
    const auto reading = ReadLUFile(bytes);
    EXPECT_EQ(reading.problem, "") << bytes;
    EXPECT_EQ(reading.content.lRows, 3);
    EXPECT_EQ(reading.content.uCols, 4);
    EXPECT_EQ(reading.content.L.Size(), 0U);
  }
}

struct BadFile {
  const char* bytes;
  const char* problem;
};

TEST(LUFile, RefusesFactorsThatNoSystemCouldBeSolvedWith) {
  constexpr BadFile kBad[] = {
      {"1,1,2,2,0\n1 1 2 3 4\n",
       "Line 1: expected a factor L of the shape of U, 2 x 2, but found L of 1 x 1."},
      {"2,3,2,2,0\n1 0 0 1 0 0 4 3 0 1\n",
       "Line 1: expected a factor L of the shape of U, 2 x 2, but found L of 2 x 3."},
      {"2,2,2,2,1\n1 0 0 1 4 3 0 1 1\n",
       "Line 1: expected no exchange records or 2, but found \"1\"."},
      {"2,2,2,2,3\n1 0 0 1 4 3 0 1 1 2 2\n",
       "Line 1: expected no exchange records or 2, but found \"3\"."},
      {"2,2,2,2,2\n1 0 0 1 4 3 0 1\n1\n3\n",
       "Line 4: expected exchange record 2, a row number from 1 to 2, but found \"3\"."},
      {"2,2,2,2,2\n1 0 0 1 4 3 0 1\n0.4\n1\n",
       "Line 3: expected exchange record 1, a row number from 1 to 2, but found \"0.4\"."},
      {"2,2,2,2,2\n1 0 0 1 4 3 0 1\n-1e300\n1\n",
       "Line 3: expected exchange record 1, a row number from 1 to 2, but found \"-1e300\"."},
      {"2,2,2,2,-2\n",
       "Line 1: expected the number of exchange records, at least 0, but found \"-2\"."},
      {"2,2,-2,-2,2\n",
       "Line 1: expected the number of rows of the factor U, at least 0, but found \"-2\"."},
      {"2,2,2\n",
       "Line 2: expected the number of columns of the factor U, but found the end of the file."},
      {"2,2,2,2,0\n1 0 0 1 4 3 0 x\n",
       "Line 2: expected element (2,2) of the factor U, but found \"x\"."},
      {"2,2,2,2,0\n1 0 0 1 4 3 0 1 9\n", "Line 2: expected the end of the file, but found \"9\"."},
      {"0,0,0,0,0\n", "Line 1: expected factors of order 1 or more, but found \"0\"."},
      {"50000,50000,50000,50000,0\n1\n",
       "Line 1: expected a file long enough for the 2500000000 elements of the factor L, but found "
       "\"0\"."},
  };
  for (const auto& [bytes, problem] : kBad) EXPECT_EQ(ReadLUFile(bytes).problem, problem);
}

TEST(LUFile, RoundsExchangeRecords) {
  const auto reading = ReadLUFile("2,2,2,2,2\n1 0 0 1 4 3 0 1\n2.4\n0.6\n");
  EXPECT_EQ(reading.problem, "");
  EXPECT_EQ(reading.content.exchanges, Rows({{2.4}, {0.6}}));
}

TEST(LUFile, RefusesEveryCut) {
  const std::string bytes = LUFile(Exchanged());
  for (std::size_t length = 0; length < bytes.size(); ++length)
    EXPECT_FALSE(ReadLUFile(bytes.substr(0, length)).Ok()) << length;
}

TEST(LUFile, RefusesAFileOfAnotherKind) {
  for (const char* name : {"matrix.txt", "vector.txt", "system.txt", "system-by-factors.txt",
                           "a.qmx", "everything.qmx"})
    EXPECT_FALSE(ReadLUFile(test::DataFile(name)).Ok()) << name;
}

}  // namespace
}  // namespace qmx
