// SPDX-License-Identifier: MIT
#include <algorithm>

#include "proof/elimination_passes.h"
#include "proof/families.h"
#include "proof/ledger.h"
#include "proof/ordered_elimination.h"

namespace qmx {
namespace {

/// The rows of A in the order of the factors.
Matrix Reordered(const Matrix& A, const Matrix& exchanges) {
  Matrix ordered(A.Rows(), A.Cols());
  for (int k = 1; k <= A.Rows(); ++k) {
    const int row = exchanges.Rows() == 0 ? k : static_cast<int>(exchanges(k, 1));
    std::copy(A.Row(row), A.Row(row) + A.Cols(), ordered.Row(k));
  }
  return ordered;
}

void EnterLower(const OrderedElimination& factors, int pivots, Ledger& L) {
  L.BeginPass();
  for (int i = 0; i < L.Rows(); ++i) {
    for (int j = 0; j < L.Cols(); ++j) {
      if (i <= j || j >= pivots) {
        L.Enter(i, j, Ball(i == j ? 1.0 : 0.0));
      } else if (j < factors.Known()) {
        L.Enter(i, j, Ball(factors.Lower(i, j)));
      } else {
        L.GiveUp();
      }
    }
  }
}

void EnterUpper(const OrderedElimination& factors, Ledger& U) {
  U.BeginPass();
  for (int i = 0; i < U.Rows(); ++i) {
    for (int j = 0; j < U.Cols(); ++j) {
      if (i > j) {
        U.Enter(i, j, Ball(0.0));
      } else if (i <= factors.Known()) {
        U.Enter(i, j, Ball(factors.Upper(i, j)));
      } else {
        U.GiveUp();
      }
    }
  }
}

}  // namespace

void ProveLu(const ProofQuestion& question, const Watch& watch, ProofAnswer& answer) {
  const Matrix ordered = Reordered(question.a, question.exchanges);
  const BallMatrix A(ordered);
  const WholeScale scale = WholeScaleOf(ordered);
  Ledger L(question.computed[0], answer.results[0]);
  Ledger U(question.computed[1], answer.results[1]);
  const int pivots = std::min(A.Rows(), A.Cols());
  for (slong bits = FirstBits(pivots);; bits *= 2) {
    watch.Raise(bits);
    watch.Demand(BytesOfBalls(6, std::max(A.Rows(), A.Cols()), static_cast<double>(bits)));
    const OrderedElimination factors(A, &scale, bits, watch);
    EnterLower(factors, pivots, L);
    EnterUpper(factors, U);
    answer.outcome = std::max(OutcomeOf(L), OutcomeOf(U));
    answer.singular = factors.HasNoFactors() || factors.FirstZeroPivot() < factors.Known();
    const int open = L.Wide() + L.MaybeZero() + U.Wide() + U.MaybeZero();
    const int unknown = factors.HasNoFactors() ? 0 : L.Hopeless() + U.Hopeless();
    if (open + unknown == 0) return;
  }
}

}  // namespace qmx
