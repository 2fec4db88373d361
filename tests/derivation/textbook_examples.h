// SPDX-License-Identifier: MIT
#pragma once

#include <span>
#include <string>

#include "base/matrix.h"
#include "proof/rational.h"

// Matrices as exercises have them, with what is known of them. The answers were worked out with a
// computer algebra system, not with what is tested.

namespace qmx::testing {

/// Rows end in ";". Numbers are whole ones, fractions or, in the matrix, decimals.
struct TextbookExample {
  const char* name;
  const char* matrix;
  const char* reduced;         ///< The reduced row echelon form.
  const char* pivots;          ///< The columns of its pivots.
  const char* nullSpace;       ///< A basis in whole numbers, one vector after the other.
  const char* characteristic;  ///< Powers falling; empty for one that is not square.
  const char* factors;         ///< Over the rational numbers, with leading coefficients 1.
  /// Rounded to 15 digits, of a pair a±b, the multiplicity behind an x; ordered as texts.
  const char* eigenvalues;
  const char* condition;          ///< In the 1-norm; empty where there is no inverse.
  const char* spectralCondition;  ///< In the 2-norm, rounded to 15 digits.
};

std::span<const TextbookExample> TextbookExamples();

/// The numbers that such a text writes.
RationalMatrix RationalsOf(const std::string& text);
Matrix DoublesOf(const std::string& text);

}  // namespace qmx::testing
