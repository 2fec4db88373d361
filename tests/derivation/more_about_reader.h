// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "derivation/document.h"

// Reads what a document tells about a matrix.

namespace qmx::testing {

/// The exact elements of a matrix as texts like those of the examples.
std::string Written(const ShownMatrix& matrix);
/// The reduced form, and the columns of the marks in it.
ShownMatrix ReducedOf(const Document& document);
std::string PivotsOf(const ShownMatrix& reduced);
/// The basis of the null space, and as a text with each vector as a row.
std::vector<ShownMatrix> NullVectorsOf(const Document& document);
std::string NullSpaceOf(const Document& document);
/// All formulas that begin so, without that beginning.
std::vector<std::string> FormulasOf(const Document& document, const std::string& beginning);
/// A value in the table of what is known at a glance; null where there is none.
const Line* AtAGlance(const Document& document, const std::string& what);
/// The multiplicities in the order of the eigenvalues; empty where all are 1.
std::vector<std::string> MultiplicitiesOf(const Document& document);
/// The decimals of all eigenvalues, of a pair "1±2", with multiplicities " x2", ordered as texts.
std::string EigenvaluesOf(const Document& document);

}  // namespace qmx::testing
