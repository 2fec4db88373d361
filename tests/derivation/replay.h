// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "base/matrix.h"
#include "derivation/derivation.h"
#include "proof/rational.h"

// Does again what a document says is done, with exact rational numbers and with doubles.

namespace qmx::testing {

/// The elements as decimals that a grid shows.
RationalMatrix AsShown(const Matrix& A);
/// The value of an exact number without a root.
Rational ValueOf(const ExactNumber& number);
/// The text of a line as it is read, numbers as decimals or else as fractions.
std::string TextOf(const Line& line);
std::string TextOf(const Document& document);

/// The last number of a line.
ShownNumber LastNumber(const Line& line);
/// The first formula that begins so.
const Line* FindFormula(const Document& document, const std::string& beginning);

/// What a replay came upon.
struct Replayed {
  int operations = 0;
  int matrices = 0;    ///< Formulas of a matrix alone, compared in every cell.
  int exactCells = 0;  ///< Compared exactly.
  bool isExactToTheEnd = true;
  std::vector<std::string> faults;
  RationalMatrix exact{0, 0};
  Matrix computed;
};

/// Applies every operation of a document to a matrix and compares each matrix that stands alone and
/// has its shape with what comes out: exact values where they stand, decimals as the texts of the
/// doubles. Also compares the words with the operations that they name.
Replayed Replay(const Document& document, const Matrix& start);
Replayed Replay(const Document& document, const RationalMatrix& exact, const Matrix& computed);

/// The cells of a matrix: decimals are the texts of `computed`; exact values, where they are known,
/// those of `exact`, which is empty where none is to be known. Tells what differs.
std::vector<std::string> Differences(const ShownMatrix& shown, const Matrix& computed,
                                     const RationalMatrix& exact);

/// The same for the decimals alone.
std::vector<std::string> DecimalDifferences(const ShownMatrix& shown, const Matrix& computed);

/// The exact values of a matrix, if all are written.
std::optional<RationalMatrix> ExactlyShown(const ShownMatrix& shown);
bool AreEqual(const RationalMatrix& one, const RationalMatrix& two);

std::string Joined(const std::vector<std::string>& faults);

}  // namespace qmx::testing
