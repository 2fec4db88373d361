// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "derivation/document.h"

namespace qmx {

/// A document as plain text in UTF-8, for a fixed-pitch font: matrices with brackets of several
/// lines, in every column the points below each other, a pivot as [2], a part of the result as *2*,
/// the element asked about as »2«, an arrow behind every row that a step has changed. Formulas that
/// are wider than a page are broken behind a matrix. Lines end in "\n".
std::string PlainText(const Document& document, NumberForm form);

/// A document as it is read aloud: every line of the document is one line of text, signs are words,
/// matrices are told row by row, and digits that do not hold are told as such.
///   A⁻¹ -> "A to the power -1"     [1 2] -> "the matrix of 1 row and 2 columns: row 1: 1, 2;"
std::string SpokenText(const Document& document, NumberForm form);
/// One line of it, without an end.
std::string SpokenLine(const Line& line, NumberForm form);

}  // namespace qmx
