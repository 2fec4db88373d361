// SPDX-License-Identifier: MIT
#include "output/printed_table.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <set>

#include "base/number_text.h"
#include "support/core_rows.h"

namespace qmx {
namespace {

using test::Rows;

/// A4 with margins of 10 mm.
constexpr Paper kA4{538.6, 785.2};

Matrix Random(int rows, int cols) {
  std::mt19937 any(7);
  std::uniform_real_distribution<double> element(-10, 10);
  Matrix values(rows, cols);
  for (std::size_t i = 0; i < values.Size(); ++i) values.Data()[i] = element(any);
  return values;
}

PrintedTable Measured(const std::string& title, const Matrix& values, int digits) {
  PrintedTable table(title, values, digits);
  table.Measure([] {});
  return table;
}

TEST(PrintedTable, ColumnsAreAlignedAtThePoint) {
  const Matrix values = Rows({{1, -12.5, 1e20}, {-0.125, 3, 2}});
  PrintedTable table = Measured("Matrix A", values, 7);
  table.LayOut(kA4);
  ASSERT_EQ(table.Pages(), 1);
  EXPECT_EQ(table.Page(1), (std::vector<std::string>{
                               "Matrix A, 2 x 3",
                               "",
                               "    1        2    3",
                               "1   1      -12.5  1E+20",
                               "2  -0.125    3    2",
                           }));
  EXPECT_EQ(table.Foot(1), "page 1 of 1");
  EXPECT_EQ(table.Size().font, 10);
}

TEST(PrintedTable, DigitsAreChosen) {
  const Matrix values = Rows({{1.0 / 3, 200.0 / 3}});
  for (const auto& [digits, line] : std::vector<std::pair<int, std::string>>{
           {1, "1  0.3  7E+01"},
           {3, "1  0.333  66.7"},
           {7, "1  0.3333333  66.66667"},
           {17, "1  0.33333333333333331  66.666666666666671"}}) {
    PrintedTable table = Measured("x", values, digits);
    table.LayOut(kA4);
    EXPECT_EQ(table.Page(1)[3], line) << digits;
  }
}

TEST(PrintedTable, PagesRepeatTheNumbersOfTheirRowsAndColumns) {
  const Matrix values = Random(200, 150);
  PrintedTable table = Measured("Matrix A", values, 7);
  table.LayOut(kA4);
  EXPECT_LE(table.Pages(), 20);
  EXPECT_GE(table.Pages(), 2);
  Matrix seen(200, 150);
  for (int page = 1; page <= table.Pages(); ++page) {
    const PrintedTable::Extent extent = table.ExtentOf(page);
    const std::vector<std::string> lines = table.Page(page);
    ASSERT_EQ(lines.size(), 3U + extent.lastRow - extent.firstRow + 1);
    EXPECT_EQ(lines[0], "Matrix A, 200 x 150: rows " + CStr(extent.firstRow) + " to " +
                            CStr(extent.lastRow) + ", columns " + CStr(extent.firstCol) + " to " +
                            CStr(extent.lastCol));
    EXPECT_EQ(table.Foot(page), "page " + CStr(page) + " of " + CStr(table.Pages()));
    for (const std::string& line : lines)
      EXPECT_LE(static_cast<double>(line.size()) * table.Size().character, kA4.width);
    EXPECT_LE(static_cast<double>(lines.size() + 2) * table.Size().line, kA4.height);
    std::istringstream heads(lines[2]);
    for (int j = extent.firstCol; j <= extent.lastCol; ++j) {
      int number = 0;
      heads >> number;
      EXPECT_EQ(number, j);
    }
    for (int i = extent.firstRow; i <= extent.lastRow; ++i) {
      std::istringstream cells(lines[static_cast<std::size_t>(3 + i - extent.firstRow)]);
      int number = 0;
      cells >> number;
      EXPECT_EQ(number, i);
      for (int j = extent.firstCol; j <= extent.lastCol; ++j) {
        std::string cell;
        cells >> cell;
        EXPECT_EQ(cell, TableNumber(values(i, j), 7));
        seen(i, j) += 1;
      }
    }
  }
  for (std::size_t i = 0; i < seen.Size(); ++i) ASSERT_EQ(seen.Data()[i], 1.0);
}

TEST(PrintedTable, SmallTablesAreLargeAndLongOnesNeverVanish) {
  const Matrix small = Random(3, 3);
  PrintedTable one = Measured("x", small, 7);
  one.LayOut(kA4);
  EXPECT_EQ(one.Size().font, 10);
  const Matrix large = Random(900, 300);
  PrintedTable many = Measured("x", large, 17);
  many.LayOut(kA4);
  EXPECT_GT(many.Pages(), PrintedTable::kEnoughPages);
  EXPECT_EQ(many.Size().font, 5.5);
  // Paper that nothing fits on gets a number a page.
  PrintedTable stamps = Measured("x", small, 7);
  stamps.LayOut({1, 1});
  EXPECT_EQ(stamps.Pages(), 9);
}

TEST(PrintedTable, NoPageIsLongerOrWiderThanThePaper) {
  const Matrix values = Random(500, 90);
  PrintedTable table = Measured("Matrix A", values, 7);
  for (const Paper& paper : {kA4, Paper{785.2, 538.6}, Paper{300, 200}}) {
    table.LayOut(paper);
    const PrintSize size = table.Size();
    for (int page = 1; page <= table.Pages(); ++page) {
      const std::vector<std::string> lines = table.Page(page);
      // Below the table an empty line and the number of the page.
      EXPECT_LE((static_cast<double>(lines.size()) + 2) * size.line, paper.height);
      for (std::size_t k = 2; k < lines.size(); ++k)
        ASSERT_LE(static_cast<double>(lines[k].size()) * size.character, paper.width) << page;
    }
    // Nor is there room for a row more where more pages follow.
    if (table.ExtentOf(1).lastRow < 500) {
      const double blocks = table.ExtentOf(1).lastRow;
      const double most = std::floor(paper.height / size.line) - 5;
      EXPECT_EQ(std::ceil(500 / blocks), std::ceil(500 / most));
    }
  }
}

TEST(PrintedTable, TheGapShrinksOnlyInTheSmallestPrint) {
  Matrix ones(50, 300);
  for (std::size_t k = 0; k < ones.Size(); ++k) ones.Data()[k] = 1;
  PrintedTable table = Measured("x", ones, 7);
  std::set<double> seen;
  for (int width = 60; width < 700; width += 1) {
    table.LayOut({static_cast<double>(width), 800});
    const double font = table.Size().font;
    seen.insert(font);
    EXPECT_EQ(table.Page(1)[3].find(" 1 1 ") != std::string::npos, font < 8) << width;
  }
  EXPECT_TRUE(seen.contains(8) && seen.contains(7)) << seen.size();
}

TEST(PrintedTable, MeasuringIsLookedAfterAndLeftAtOnce) {
  struct Enough {};
  const Matrix values = Random(300, 100);
  PrintedTable table("x", values, 7);
  int looks = 0;
  EXPECT_THROW(table.Measure([&] {
    if (++looks == 3) throw Enough{};
  }),
               Enough);
  EXPECT_EQ(looks, 3);
  // What was left can be done again, from the beginning.
  table.Measure([&] { ++looks; });
  EXPECT_GE(looks, 3 + 5);
  PrintedTable other = Measured("x", values, 7);
  table.LayOut(kA4);
  other.LayOut(kA4);
  ASSERT_EQ(table.Pages(), other.Pages());
  EXPECT_EQ(table.Page(1), other.Page(1));
}

TEST(TableNumber, TakesThreeMorePlacesBehindThePoint) {
  EXPECT_EQ(TableNumber(1.0 / 30, 3), "0.0333");
  EXPECT_EQ(TableNumber(1e-6, 3), "0.000001");
  EXPECT_EQ(TableNumber(1.25e-6, 3), "1.25E-06");
  EXPECT_EQ(TableNumber(1234567.8, 7), "1234568");
  EXPECT_EQ(TableNumber(12345678, 7), "1.234568E+07");
  EXPECT_EQ(TableNumber(-0.0, 7), "0");
}

}  // namespace
}  // namespace qmx
