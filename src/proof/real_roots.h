// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

#include "proof/ball.h"
#include "proof/residues.h"
#include "proof/watch.h"

namespace qmx {

/// A real zero of a characteristic polynomial: an eigenvalue.
struct RealRoot {
  Ball value;             ///< Exact where the eigenvalue is rational.
  bool isSimple = false;  ///< Proved to be no multiple zero.
};

/// Encloses the real eigenvalues that lie close to given numbers: Newton's method on the
/// square-free part of the characteristic polynomial, proved by one step of the interval Newton
/// method (Moore, Kearfott & Cloud, Introduction to Interval Analysis, 8.1).
class RealRoots {
 public:
  RealRoots(const CharacteristicPolynomial& polynomial, const Watch& watch);

  /// The eigenvalue that Newton's method reaches from `start`, to `bits` significant bits; nothing
  /// where it reaches none. Throws what the watch throws.
  std::optional<RealRoot> Near(double start, slong bits) const;

 private:
  std::optional<Ball> Converge(const Ball& start, slong bits) const;
  std::optional<Ball> Certify(const Ball& near, slong bits) const;
  bool MakeExact(Ball& root) const;
  bool IsSimple(const Ball& root, slong bits) const;
  double LogOfTerms(const Ball& at) const;

  const Watch& watch_;
  slong shift_;
  WholePolynomial squareFree_;
  WholePolynomial repeated_;  ///< Its zeros are the multiple ones.
};

}  // namespace qmx
