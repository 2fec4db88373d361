// SPDX-License-Identifier: MIT
#pragma once

#include <string_view>
#include <vector>

#include "derivation/document.h"
#include "derivation/document_reading.h"

// How much room a document takes on LaTeX's paper, estimated generously. All lengths are in points.

namespace qmx {

/// What A4 has within margins of 20 mm.
inline constexpr double kLatexTextWidth = 483;
inline constexpr double kLatexTextHeight = 728;
inline constexpr double kLatexMargin = 56.9;
/// How far formulas stand to the right of text.
inline constexpr double kLatexIndent = 12;

/// A size of type, the width of a figure in it, and how far rows of a matrix are apart.
struct LatexType {
  std::string_view command;
  double figure;
  double line;
};

/// Paper that everything fits on: what stands within its margins.
struct LatexPaper {
  double width = kLatexTextWidth;
  double height = kLatexTextHeight;
};

/// The largest type in which all parts of a line fit on a page, else the smallest one.
const LatexType& LatexTypeFor(const Line& line, NumberForm form);

/// The same for a table, which makes the paper wider where it needs that.
const LatexType& LatexTypeFor(const Table& table, NumberForm form, LatexPaper& paper);

/// The parts of a line put together to rows that fit on the paper, which becomes larger where a
/// part needs that.
std::vector<LinePart> LatexRows(const Line& line, const LatexType& type, NumberForm form,
                                LatexPaper& paper);

}  // namespace qmx
