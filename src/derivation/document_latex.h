// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "derivation/document.h"

namespace qmx {

/// A document as a whole LaTeX file that pdflatex compiles as it is: class article, packages
/// amsmath and xcolor, nothing beyond ASCII. Pivots are framed, what a step has changed is blue,
/// the element asked about is underlined, digits that do not hold are grey. Matrices are set
/// smaller, and the paper is made wider, where they would not fit.
std::string LatexText(const Document& document, NumberForm form);

}  // namespace qmx
