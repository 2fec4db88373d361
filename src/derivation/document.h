// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <variant>
#include <vector>

// How a result came about, as a document: data only, without a window, a font or an arithmetic. The
// derivations of this folder make it; the window, the printer and the writers of plain text, LaTeX
// and HTML all read the same one.

namespace qmx {

/// An exact value: numerator / denominator · √radicand, in lowest terms, the radicand free of
/// squares. Whole numbers in decimal digits; a negative one begins with '-', which stands in the
/// numerator alone. An empty numerator: not known, or too long to be written.
struct ExactNumber {
  std::string numerator;
  std::string denominator = "1";
  std::string radicand = "1";

  bool IsKnown() const { return !numerator.empty(); }
  bool operator==(const ExactNumber&) const = default;
};

/// A number in the two ways in which it can be shown.
struct ShownNumber {
  /// As the program computed it, in the digits of the grids; empty where it never computed it.
  std::string decimal;
  /// How many leading characters of `decimal` hold: the rest is grey, since there the exact value
  /// rounds to others. Its length where nothing is known to be wrong.
  std::size_t held = 0;
  ExactNumber exact;

  bool operator==(const ShownNumber&) const = default;
};

/// Which of the two is on show. A number that has only one of them always shows that.
enum class NumberForm { kFractions, kDecimals, kBoth };

/// Why an element is to be looked at.
enum class CellMark {
  kNone,
  kPivot,    ///< Framed: the element that is divided by.
  kChanged,  ///< The step has changed it.
  kFound,    ///< Part of the result.
  kAsked,    ///< Of a result whose other elements are shown as well: the one that was asked about.
};

struct ShownCell {
  ShownNumber number;
  CellMark mark = CellMark::kNone;
  /// An element that is not there: of a minor, the row and the column that are left out.
  bool isBlank = false;
};

/// A matrix in brackets.
struct ShownMatrix {
  int rows = 0;
  int cols = 0;
  std::vector<ShownCell> cells;  ///< Row by row.
  /// A vertical line stands after each of these columns (from 1): [A | b].
  std::vector<int> bars;
  /// Between vertical lines instead of brackets: a determinant.
  bool isDeterminant = false;

  /// Element (row, col), from 1.
  ShownCell& At(int row, int col) {
    return cells[static_cast<std::size_t>(row - 1) * cols + (col - 1)];
  }
  const ShownCell& At(int row, int col) const {
    return cells[static_cast<std::size_t>(row - 1) * cols + (col - 1)];
  }
};

/// Running text in UTF-8, with the blanks that it needs on either side.
struct Words {
  std::string text;
};

/// A name of mathematics, set in italics: A, P, x with index 3, A to the power -1 or T.
struct Name {
  std::string letter;  ///< One letter, or a short word that is set upright: "det", "adj".
  std::string index = {};
  std::string power = {};
};

/// What stands between numbers, names and matrices: one of + − · = ≠ ≈ < > ≤ ≥ ( ) , → √ ± |, in
/// UTF-8 and without blanks.
struct Operator {
  std::string sign;
};

using Piece = std::variant<Words, Name, Operator, ShownNumber, ShownMatrix>;

/// What the words of a step do to the rows or the columns of the matrix before it, for whoever does
/// it again.
struct RowOperation {
  enum class Kind {
    kExchange,  ///< `target` and `source` change places.
    kSubtract,  ///< `target` minus `factor` times `source`.
    kDivide,    ///< `target` divided by `factor`.
    kReorder,   ///< order[k - 1] becomes k.
  };
  Kind kind = Kind::kExchange;
  bool isOfColumns = false;
  int target = 0;
  int source = 0;
  double value = 0;    ///< The factor as the program computed it, with all its bits.
  ShownNumber factor;  ///< The factor as the words show it, up to the sign.
  std::vector<int> order = {};
};

/// A sentence with numbers in it, or a formula.
struct Line {
  std::vector<Piece> pieces;
  /// On a line of its own, set apart.
  bool isFormula = false;
  /// What the sentence says is done, where it says that something is done.
  std::optional<RowOperation> operation = {};
};

struct Heading {
  std::string text;
  int level = 1;  ///< 1: the document; 2: a part; 3: a step.
};

/// A table with a heading row, such as an iteration's cycles.
struct Table {
  std::vector<std::string> headings;
  std::vector<std::vector<Line>> rows;
};

using Block = std::variant<Heading, Line, Table>;

struct Document {
  std::string title;
  std::vector<Block> blocks;
};

}  // namespace qmx
