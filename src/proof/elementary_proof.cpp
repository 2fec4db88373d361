// SPDX-License-Identifier: MIT
#include "proof/families.h"
#include "proof/ledger.h"

namespace qmx {
namespace {

constexpr slong kExact = ARF_PREC_EXACT;
// Enough for most products; what is left is added up exactly.
constexpr slong kProductBits = 128;
constexpr slong kEnoughBits = 72;

/// Enters exact(i, j), counted from 1, for all elements.
template <typename Exact>
void EnterAll(const ProofQuestion& question, const Watch& watch, ProofAnswer& answer, Exact exact) {
  Ledger ledger(question.computed.front(), answer.results.front());
  for (int i = 1; i <= ledger.Rows(); ++i) {
    watch.Look();
    for (int j = 1; j <= ledger.Cols(); ++j) ledger.Enter(i - 1, j - 1, exact(i, j));
  }
  answer.outcome = OutcomeOf(ledger);
}

Ball ExactSum(double one, double two) {
  Ball sum(one);
  arb_add(sum, sum, Ball(two), kExact);
  return sum;
}

Ball ExactProduct(double one, double two) {
  Ball product(one);
  arb_mul(product, product, Ball(two), kExact);
  return product;
}

Ball ExactTrace(const Matrix& A) {
  Ball trace;
  for (int k = 1; k <= A.Rows(); ++k) arb_add(trace, trace, Ball(A(k, k)), kExact);
  return trace;
}

Ball DotProduct(arb_srcptr one, arb_srcptr two, int count) {
  Ball sum;
  arb_dot(sum, nullptr, 0, one, 1, two, 1, count, kProductBits);
  if (arb_is_exact(sum) || arb_rel_accuracy_bits(sum) >= kEnoughBits) return sum;
  ExactDot(sum, one, two, count);
  return sum;
}

}  // namespace

void ProveElementary(const ProofQuestion& question, const Watch& watch, ProofAnswer& answer) {
  const Matrix& A = question.a;
  const Matrix& B = question.b;
  const auto enter = [&](auto exact) { EnterAll(question, watch, answer, exact); };
  switch (question.task) {
    case ProofTask::kSum:
      return enter([&](int i, int j) { return ExactSum(A(i, j), B(i, j)); });
    case ProofTask::kDifference:
      return enter([&](int i, int j) { return ExactSum(A(i, j), -B(i, j)); });
    case ProofTask::kTranspose:
      return enter([&](int i, int j) { return Ball(A(j, i)); });
    case ProofTask::kScaled:
      return enter([&](int i, int j) { return ExactProduct(question.scalar, A(i, j)); });
    case ProofTask::kShifted:
      return enter([&](int i, int j) { return ExactSum(A(i, j), i == j ? question.scalar : 0); });
    default:
      return enter([&](int, int) { return ExactTrace(A); });
  }
}

void ProveProduct(const ProofQuestion& question, const Watch& watch, ProofAnswer& answer) {
  const BallMatrix A(question.a);
  const BallMatrix columns = BallMatrix(question.b).Transposed();
  EnterAll(question, watch, answer, [&](int i, int j) {
    watch.Look();
    return DotProduct(A.Row(i - 1), columns.Row(j - 1), A.Cols());
  });
}

}  // namespace qmx
