// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "derivation/document.h"

namespace qmx::test {

/// A number with a decimal that holds as a whole and, if given, an exact value.
ShownNumber Shown(const std::string& decimal, const std::string& numerator = {},
                  const std::string& denominator = "1", const std::string& radicand = "1");
/// One of whose decimal only the first `held` characters hold.
ShownNumber PartlyHeld(const std::string& decimal, std::size_t held, const std::string& numerator,
                       const std::string& denominator);

/// A matrix of decimals that are exact as well, given row by row.
ShownMatrix ShownOf(int rows, int cols, const std::vector<std::string>& numbers);

/// A line of a formula, and a sentence.
Line Formula(std::vector<Piece> pieces);
Line Sentence(std::vector<Piece> pieces);

/// A document with everything that there can be in one.
Document EverythingDocument();

/// All forms, for loops.
inline constexpr NumberForm kAllForms[] = {NumberForm::kFractions, NumberForm::kDecimals,
                                           NumberForm::kBoth};

}  // namespace qmx::test
