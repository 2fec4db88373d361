// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cmath>

#include "base/number_text.h"
#include "proof/elimination_passes.h"
#include "proof/families.h"
#include "proof/ledger.h"
#include "proof/residues.h"

namespace qmx {
namespace {

/// Columns first..last of A, in the order given by their numbers from 1.
Matrix Columns(const Matrix& A, int first, int last) {
  Matrix part(A.Rows(), last - first + 1);
  for (int i = 1; i <= A.Rows(); ++i) {
    std::copy(A.Row(i) + first - 1, A.Row(i) + last, part.Row(i));
  }
  return part;
}

/// The n x n part of a system and its last column, side by side.
Matrix SquareSystem(const Matrix& system) {
  const int n = system.Rows();
  Matrix square(n, n + 1);
  for (int i = 1; i <= n; ++i) {
    std::copy(system.Row(i), system.Row(i) + n, square.Row(i));
    square(i, n + 1) = system(i, system.Cols());
  }
  return square;
}

/// Solves a regular system with more and more bits. `scale` has one column more than A, for the
/// right-hand side. False where A is singular.
bool Solve(const BallMatrix& A, const BallMatrix& rightSide, const WholeScale& scale,
           std::function<bool()> isSingular, const Watch& watch, Ledger& ledger,
           ProofAnswer& answer) {
  EliminationPasses passes(A, scale, std::move(isSingular), watch);
  while (const auto elimination = passes.Next()) {
    BallMatrix x = elimination->Solve(rightSide);
    ledger.BeginPass();
    for (int j = 0; j < A.Cols(); ++j) {
      if (arb_contains_zero(x(0, j)) && elimination->IsZeroUnknown(x(0, j), j, scale.cols.back())) {
        arb_zero(x(0, j));
      }
      ledger.Enter(j, 0, Ball(x(0, j)));
    }
    answer.outcome = OutcomeOf(ledger);
    if (answer.outcome == ProofOutcome::kProved) return true;
  }
  return false;
}

void RefuseSingular(ProofAnswer& answer) {
  answer.singular = true;
  answer.outcome = ProofOutcome::kNoExactAnswer;
}

/// L·U·x = P·b by substitution: L is unit lower triangular.
class Substitution {
 public:
  explicit Substitution(const ProofQuestion& question);

  /// Row of the solution.
  BallMatrix Solve(slong bits, const Watch& watch) const;
  bool IsZeroUnknown(arb_srcptr unknown, int j) const;
  bool IsSingular() const { return isSingular_; }
  int Order() const { return n_; }

 private:
  int n_;
  BallMatrix L_;
  BallMatrix U_;
  BallMatrix rightSide_;
  bool isSingular_ = false;
  Ball determinant_;
  // Of the system of 2n equations [L 0; -I U]·[y; x] = [P·b; 0], whose elements are doubles.
  WholeScale scale_;
  slong whole_ = 0;
};

Substitution::Substitution(const ProofQuestion& question)
    : n_(question.system.Rows()),
      L_(question.a),
      U_(question.b),
      rightSide_(1, n_),
      determinant_(1.0) {
  const int n = n_;
  Matrix both(2 * n, 2 * n + 1);
  for (int i = 1; i <= n; ++i) {
    for (int j = 1; j < i; ++j) both(i, j) = question.a(i, j);
    both(i, i) = 1;
    both(n + i, i) = -1;
    for (int j = i; j <= n; ++j) both(n + i, n + j) = question.b(i, j);
    const int row = question.exchanges.Rows() == 0 ? i : RoundToInteger(question.exchanges(i, 1));
    both(i, 2 * n + 1) = question.system(row, 1);
    arb_set_d(rightSide_(0, i - 1), question.system(row, 1));
    isSingular_ = isSingular_ || question.b(i, i) == 0;
    arb_mul(determinant_, determinant_, U_(i - 1, i - 1), 64);
  }
  scale_ = WholeScaleOf(both);
  for (const slong row : scale_.rows) whole_ += row;
  for (int j = 0; j < 2 * n; ++j) whole_ += scale_.cols[j];
}

BallMatrix Substitution::Solve(slong bits, const Watch& watch) const {
  BallMatrix x = rightSide_;
  arb_ptr unknowns = x.Row(0);
  for (int i = 0; i < n_; ++i) {
    watch.Look();
    arb_dot(unknowns + i, unknowns + i, 1, L_.Row(i), 1, unknowns, 1, i, bits);
  }
  for (int i = n_ - 1; i >= 0; --i) {
    watch.Look();
    arb_dot(unknowns + i, unknowns + i, 1, U_.Row(i) + i + 1, 1, unknowns + i + 1, 1, n_ - 1 - i,
            bits);
    arb_div(unknowns + i, unknowns + i, U_(i, i), bits);
  }
  return x;
}

bool Substitution::IsZeroUnknown(arb_srcptr unknown, int j) const {
  return arb_contains_zero(unknown) &&
         IsZeroQuotient(unknown, determinant_, whole_ + scale_.cols.back() - scale_.cols[n_ + j]);
}

}  // namespace

void ProveSolution(const ProofQuestion& question, const Watch& watch, ProofAnswer& answer) {
  const Matrix system = SquareSystem(question.a);
  const int n = system.Rows();
  const Matrix coefficients = Columns(system, 1, n);
  const BallMatrix A(coefficients);
  const BallMatrix rightSide = BallMatrix(Columns(system, n + 1, n + 1)).Transposed();
  const WholeScale scale = WholeScaleOf(system);
  Ledger ledger(question.computed.front(), answer.results.front());
  if (!Solve(A, rightSide, scale, RankTest(coefficients, watch), watch, ledger, answer)) {
    return RefuseSingular(answer);
  }
  answer.conditionExponent = ConditionExponent(A, scale, watch);
}

void ProveSolutionByFactors(const ProofQuestion& question, const Watch& watch,
                            ProofAnswer& answer) {
  const Substitution substitution(question);
  if (substitution.IsSingular()) return RefuseSingular(answer);
  Ledger ledger(question.computed.front(), answer.results.front());
  for (slong bits = FirstBits(2 * substitution.Order());; bits *= 2) {
    watch.Raise(bits);
    BallMatrix x = substitution.Solve(bits, watch);
    ledger.BeginPass();
    for (int j = 0; j < substitution.Order(); ++j) {
      if (substitution.IsZeroUnknown(x(0, j), j)) arb_zero(x(0, j));
      ledger.Enter(j, 0, Ball(x(0, j)));
    }
    answer.outcome = OutcomeOf(ledger);
    if (answer.outcome == ProofOutcome::kProved) return;
  }
}

void ProveLeastSquares(const ProofQuestion& question, const Watch& watch, ProofAnswer& answer) {
  const Matrix& system = question.a;
  const int k = system.Cols() - 1;
  const Matrix coefficients = Columns(system, 1, k);
  const std::vector<slong> columns = WholeColumnScaleOf(system).cols;
  const WholeScale scale{columns, columns};
  // The normal equations AᵀA·x = Aᵀb are the first k rows of the products of [A b] with itself.
  const BallMatrix gram = GramMatrix(system, watch);
  BallMatrix normal(k, k);
  BallMatrix rightSide(1, k);
  for (int i = 0; i < k; ++i) {
    for (int j = 0; j < k; ++j) arb_set(normal(i, j), gram(i, j));
    arb_set(rightSide(0, i), gram(i, k));
  }
  const auto isSingular = [&] { return ExactRank(coefficients, watch) < k; };
  Ledger ledger(question.computed.front(), answer.results.front());
  if (!Solve(normal, rightSide, scale, isSingular, watch, ledger, answer)) {
    return RefuseSingular(answer);
  }
  answer.conditionExponent = ConditionExponent(normal, scale, watch) / 2;
}

}  // namespace qmx
