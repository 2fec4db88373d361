// SPDX-License-Identifier: MIT
// What pictures of matrices are made of: squares, colours and marks on a line.

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <random>
#include <vector>

#include "output/number_line.h"
#include "output/picture_cells.h"
#include "output/picture_colours.h"

namespace qmx {
namespace {

Matrix AnyMatrix(int rows, int cols, double zeros, std::mt19937& any) {
  std::uniform_real_distribution<double> number(-10, 10);
  std::bernoulli_distribution isZero(zeros);
  Matrix matrix(rows, cols);
  for (int i = 1; i <= rows; ++i) {
    for (int j = 1; j <= cols; ++j) matrix(i, j) = isZero(any) ? 0 : number(any);
  }
  return matrix;
}

/// What a square shows by the plain loop over its elements.
PictureCell PlainCell(const Matrix& matrix, const PictureCells& cells, int i, int j) {
  PictureCell found{0, cells.FirstRow(i), cells.FirstCol(j)};
  for (int row = cells.FirstRow(i); row < cells.FirstRow(i + 1); ++row) {
    for (int col = cells.FirstCol(j); col < cells.FirstCol(j + 1); ++col) {
      if (std::abs(matrix(row, col)) > std::abs(found.value)) found = {matrix(row, col), row, col};
    }
  }
  return found;
}

TEST(PictureCells, HoldTheLargestElementOfEachBlockAsThePlainLoopFindsIt) {
  std::mt19937 any(7);
  for (int round = 0; round < 200; ++round) {
    const int rows = static_cast<int>(any() % 40) + 1;
    const int cols = static_cast<int>(any() % 40) + 1;
    const int mostRows = static_cast<int>(any() % 45) + 1;
    const int mostCols = static_cast<int>(any() % 45) + 1;
    const Matrix matrix = AnyMatrix(rows, cols, 0.6, any);
    const PictureCells cells(matrix, mostRows, mostCols);
    ASSERT_EQ(cells.Rows(), std::min(rows, mostRows));
    ASSERT_EQ(cells.Cols(), std::min(cols, mostCols));
    EXPECT_EQ(cells.FirstRow(cells.Rows()), rows + 1);
    EXPECT_EQ(cells.FirstCol(cells.Cols()), cols + 1);
    double largest = 0;
    bool hasZeros = false;
    for (int i = 0; i < cells.Rows(); ++i) {
      for (int j = 0; j < cells.Cols(); ++j) {
        const PictureCell wanted = PlainCell(matrix, cells, i, j);
        const PictureCell& found = cells.At(i, j);
        ASSERT_EQ(found.value, wanted.value);
        ASSERT_EQ(found.row, wanted.row);
        ASSERT_EQ(found.col, wanted.col);
        largest = std::max(largest, std::abs(wanted.value));
        hasZeros = hasZeros || wanted.value == 0;
      }
    }
    EXPECT_EQ(cells.Largest(), largest);
    EXPECT_EQ(cells.HasZeros(), hasZeros);
  }
}

TEST(PictureCells, EveryElementBelongsToOneSquare) {
  for (int elements = 1; elements <= 60; ++elements) {
    const Matrix column(elements, 1);
    for (int squares = 1; squares <= elements; ++squares) {
      const PictureCells cells(column, squares, 1);
      for (int row = 1; row <= elements; ++row) {
        const int square = cells.RowOf(row);
        ASSERT_LE(cells.FirstRow(square), row);
        ASSERT_GT(cells.FirstRow(square + 1), row);
      }
    }
  }
}

TEST(PictureCells, NoLargeElementAndNoSmallOneIsLost) {
  Matrix matrix(2000, 2000);
  matrix(1234, 567) = -1e300;
  matrix(3, 1999) = 5e-324;
  const PictureCells cells(matrix, 300, 300);
  EXPECT_EQ(cells.Largest(), 1e300);
  EXPECT_EQ(cells.At(cells.RowOf(1234), cells.ColOf(567)).value, -1e300);
  EXPECT_EQ(cells.At(cells.RowOf(3), cells.ColOf(1999)).value, 5e-324);
  int zeros = 0;
  for (int i = 0; i < 300; ++i) {
    for (int j = 0; j < 300; ++j) zeros += cells.At(i, j).value == 0 ? 1 : 0;
  }
  EXPECT_EQ(zeros, 300 * 300 - 2);
}

TEST(PictureCells, AMatrixOfNothingHasNoSquares) {
  const PictureCells cells(Matrix(0, 0), 10, 10);
  EXPECT_EQ(cells.Rows(), 0);
  EXPECT_EQ(cells.Largest(), 0);
  EXPECT_FALSE(cells.HasZeros());
}

struct Light {
  double red, green, blue;
};

double Linear(std::uint8_t part) {
  const double share = part / 255.0;
  return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
}
Light LightOf(const Rgb& colour) {
  return {Linear(colour.red), Linear(colour.green), Linear(colour.blue)};
}
double Luminance(const Rgb& colour) {
  const Light light = LightOf(colour);
  return 0.2126 * light.red + 0.7152 * light.green + 0.0722 * light.blue;
}
double Distance(const Light& one, const Light& other) {
  return std::hypot(one.red - other.red, one.green - other.green, one.blue - other.blue);
}

/// How people without one kind of cones see a colour: published matrices for linear light, of
/// protanopia and deuteranopia.
Light Seen(const Rgb& colour, bool protan) {
  const Light l = LightOf(colour);
  if (protan) {
    return {0.152286 * l.red + 1.052583 * l.green - 0.204868 * l.blue,
            0.114503 * l.red + 0.786281 * l.green + 0.099216 * l.blue,
            -0.003882 * l.red - 0.048116 * l.green + 1.051998 * l.blue};
  }
  return {0.367322 * l.red + 0.860646 * l.green - 0.227968 * l.blue,
          0.280085 * l.red + 0.672501 * l.green + 0.047413 * l.blue,
          -0.011820 * l.red + 0.042940 * l.green + 0.968881 * l.blue};
}

TEST(PictureColour, IsStrongerForALargerNumber) {
  for (const bool dark : {false, true}) {
    for (const int sign : {-1, 1}) {
      double before = Luminance(PictureColour(sign * 1e-9, 1, dark));
      for (int step = 1; step <= 20; ++step) {
        const double now = Luminance(PictureColour(sign * step / 20.0, 1, dark));
        EXPECT_TRUE(dark ? now > before : now < before) << dark << sign << step;
        before = now;
      }
    }
  }
}

TEST(PictureColour, TellsTheSignsApartForPeopleWhoConfuseRedAndGreen) {
  for (const bool dark : {false, true}) {
    for (const bool protan : {false, true}) {
      for (int step = 5; step <= 20; ++step) {
        const double share = step / 20.0;
        EXPECT_GT(Distance(Seen(PictureColour(share, 1, dark), protan),
                           Seen(PictureColour(-share, 1, dark), protan)),
                  0.12)
            << dark << protan << step;
      }
    }
  }
}

TEST(PictureColour, ZeroIsLikeNoOtherNumber) {
  for (const bool dark : {false, true}) {
    const Light zero = LightOf(PictureColour(0, 1, dark));
    EXPECT_EQ(zero.red, zero.green);
    EXPECT_EQ(zero.green, zero.blue);
    for (int step = -1000; step <= 1000; ++step) {
      const double value = step == 0 ? 5e-324 : step / 1000.0;
      EXPECT_GT(Distance(zero, LightOf(PictureColour(value, 1, dark))), 0.1) << dark << value;
    }
  }
}

/// The whole palette: other colours would be another look.
TEST(PictureColour, ItsPaletteIsThis) {
  const auto palette = [](bool dark) {
    std::vector<int> all;
    for (const double value : {0.0, -1e-9, -0.5, -1.0, 1e-9, 0.5, 1.0}) {
      const Rgb colour = PictureColour(value, 1, dark);
      all.insert(all.end(), {colour.red, colour.green, colour.blue});
    }
    return all;
  };
  EXPECT_EQ(palette(false), (std::vector<int>{190, 190, 190, 232, 241, 252, 91, 155, 213, 8, 48,
                                              107, 255, 244, 228, 240, 150, 50, 127, 45,  0}));
  EXPECT_EQ(palette(true), (std::vector<int>{105, 105, 105, 18, 28,  44,  44, 110, 180, 178, 218,
                                             255, 44,  28,  14, 190, 100, 20, 255, 214, 150}));
}

TEST(PictureColour, GoesByTheShareOfTheLargest) {
  EXPECT_EQ(PictureColour(3, 6, false), PictureColour(0.5, 1, false));
  EXPECT_EQ(PictureColour(1e300, 1e300, true), PictureColour(1, 1, true));
  EXPECT_EQ(PictureColour(0, 0, false), PictureColour(0, 1, false));
}

void ExpectLine(const std::vector<double>& numbers, double step, const std::vector<double>& marks) {
  const NumberLine line = NumberLineFor(numbers, 8);
  EXPECT_DOUBLE_EQ(line.step, step);
  ASSERT_EQ(line.marks.size(), marks.size());
  for (std::size_t i = 0; i < marks.size(); ++i) EXPECT_DOUBLE_EQ(line.marks[i], marks[i]);
}

TEST(NumberLine, HasMarksAtRoundNumbersAroundAllNumbersAndZero) {
  ExpectLine({1, 2, 10}, 2, {0, 2, 4, 6, 8, 10});
  ExpectLine({-0.3, 0.4}, 0.2, {-0.4, -0.2, 0, 0.2, 0.4});
  ExpectLine({}, 0.2, {0, 0.2, 0.4, 0.6, 0.8, 1});
  ExpectLine({0, 0}, 0.2, {0, 0.2, 0.4, 0.6, 0.8, 1});
  ExpectLine({-1000}, 200, {-1000, -800, -600, -400, -200, 0});
}

TEST(NumberLine, HoldsWhateverDoublesThereAre) {
  std::mt19937_64 any(3);
  for (int round = 0; round < 2000; ++round) {
    std::vector<double> numbers;
    for (int i = 0; i < 3; ++i) {
      const double number = std::bit_cast<double>(any());
      if (std::isfinite(number)) numbers.push_back(number);
    }
    const NumberLine line = NumberLineFor(numbers, 8);
    EXPECT_LE(line.marks.size(), 8U);
    EXPECT_GE(line.marks.size(), 2U);
    EXPECT_TRUE(std::isfinite(line.low) && std::isfinite(line.high));
    EXPECT_LT(line.low, line.high);
    for (const double number : numbers) {
      EXPECT_LE(line.low, number);
      EXPECT_GE(line.high, number);
    }
  }
}

}  // namespace
}  // namespace qmx
