// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <vector>

#include "proof/proof.h"
#include "proof/rational.h"

namespace qmx::testing {

/// The exact results of a question in rational numbers by textbook methods, one for each computed
/// matrix; irrational ones are off by less than 2^-2000 of themselves. An element that nothing is
/// the exact answer to, a matrix without an exact answer, stays empty.
using Truth = std::vector<std::optional<Rational>>;  ///< Row by row.

std::vector<Truth> TruthOf(const ProofQuestion& question);

/// A real eigenvalue to some 1600 bits; exactly where it is rational.
struct Eigenvalue {
  Rational value;
  bool isSimple = false;
};
std::vector<Eigenvalue> RealEigenvaluesOf(const Matrix& A);

/// The same, eigenvectors being those of the eigenvalues that are enclosed: of several close ones
/// that need not be the nearest to the computed one.
std::vector<Truth> TruthOf(const ProofQuestion& question, const ProofAnswer& answer);

/// The determinant, and the inverse of a regular matrix.
Rational ExactDeterminantOf(RationalMatrix A);
std::optional<RationalMatrix> ExactInverseOf(RationalMatrix A);

}  // namespace qmx::testing
