// SPDX-License-Identifier: MIT
#pragma once

#include "base/matrix.h"
#include "proof/ball.h"
#include "proof/proof.h"

namespace qmx {

/// Writes down what is proved about the elements of one computed matrix, and tells whether more
/// bits could still help. One pass enters every element once, with as many bits as the pass has.
class Ledger {
 public:
  Ledger(const Matrix& computed, ResultProof& result);

  void BeginPass();
  /// Element (row, col), from 0, of the exact result.
  void Enter(int row, int col, const Ball& exact);
  /// Nothing can be said about the element, and no precision changes that.
  void GiveUp() { ++hopeless_; }

  /// Elements of this pass that are not yet enclosed far more narrowly than doubles lie.
  int Wide() const { return wide_; }
  /// Elements of this pass that were computed as zero, and may be or may not.
  int MaybeZero() const { return maybeZero_; }
  int Hopeless() const { return hopeless_; }

  double Computed(int row, int col) const { return computed_(row + 1, col + 1); }
  int Rows() const { return computed_.Rows(); }
  int Cols() const { return computed_.Cols(); }

 private:
  const Matrix& computed_;
  ResultProof& result_;
  int wide_ = 0;
  int maybeZero_ = 0;
  int hopeless_ = 0;
};

/// What the passes so far amount to.
ProofOutcome OutcomeOf(const Ledger& ledger);

}  // namespace qmx
