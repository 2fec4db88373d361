// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "base/function_ref.h"
#include "base/matrix.h"

namespace qmx {

/// The room for print on a page, and what a character of a fixed-pitch font takes of it, in points.
struct Paper {
  double width = 0;
  double height = 0;
};

/// How large a table is printed: the size of its font, the width of one of its characters and the
/// distance of its lines, in points.
struct PrintSize {
  double font;
  double character;
  double line;
};

/// A matrix as a table on pages, in lines of a fixed-pitch font. In every column the points stand
/// below each other. As many columns as fit stand side by side; the others follow on further pages,
/// behind all rows of the first ones. Every page repeats the numbers of its rows and columns and is
/// counted.
///
/// The largest size is taken at which the table needs no more than kEnoughPages, the smallest where
/// none is small enough.
class PrintedTable {
 public:
  static constexpr int kEnoughPages = 20;
  static constexpr int kLeastDigits = 1;
  static constexpr int kMostDigits = 17;

  /// `digits` are the most significant ones of a number.
  PrintedTable(std::string title, Matrix values, int digits)
      : title_(std::move(title)), values_(std::move(values)), digits_(digits) {}

  /// Finds how wide every column is, from the texts of all its numbers: once, for any paper, and to
  /// be called before anything below. It may take long: `look` is called every few milliseconds and
  /// may throw what ends it.
  void Measure(FunctionRef<void()> look);
  /// Divides the table among pages.
  void LayOut(const Paper& paper);
  int Pages() const { return static_cast<int>(blocks_.size()) * rowBlocks_; }
  const PrintSize& Size() const { return size_; }
  /// The lines of a page, counted from 1, without its foot.
  std::vector<std::string> Page(int page) const;
  /// "page 3 of 20", what stands at the right of the page's last line.
  std::string Foot(int page) const;
  /// The rows and columns on a page, all counted from 1.
  struct Extent {
    int firstRow, lastRow, firstCol, lastCol;
  };
  Extent ExtentOf(int page) const;

 private:
  /// The places that the numbers of a column take before the point and from it on.
  struct Width {
    int before;
    int after;
    int All() const { return before + after; }
  };
  int RowNumberWidth() const;
  bool Divide(const Paper& paper, const PrintSize& size);

  std::string title_;
  Matrix values_;
  int digits_;
  std::vector<Width> widths_;
  PrintSize size_{};
  struct Block {
    int firstCol;
    int lastCol;
  };
  std::vector<Block> blocks_;
  int rowBlocks_ = 0;
  int rowsPerPage_ = 0;
};

}  // namespace qmx
