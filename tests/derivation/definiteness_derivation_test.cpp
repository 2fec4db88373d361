// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <cmath>

#include "algorithms/definiteness.h"
#include "base/number_text.h"
#include "derivation/operands.h"
#include "derivation/questions.h"
#include "derivation/replay.h"

namespace qmx::testing {
namespace {

Progress unheard;

RationalMatrix LeadingBlock(const RationalMatrix& A, int order) {
  RationalMatrix block(order, order);
  for (int i = 1; i <= order; ++i) {
    for (int j = 1; j <= order; ++j) block(i, j) = A(i, j);
  }
  return block;
}

/// The rows of the table of minors.
const Table* FindTable(const Document& document) {
  for (const Block& block : document.blocks) {
    if (const auto* table = std::get_if<Table>(&block)) return table;
  }
  return nullptr;
}

TEST(DefinitenessDerivation, StepsDoneAgainGiveTheMinors) {
  OperandSource source(61);
  int exact = 0;
  for (int round = 0; round < 250; ++round) {
    const Matrix A = source.Symmetric();
    const Document document = Derive(Ask(DerivationTask::kDefiniteness, A));
    const std::string text = TextOf(document);
    const Replayed replayed = Replay(document, A);
    ASSERT_TRUE(replayed.faults.empty()) << Joined(replayed.faults) << text;
    const DefinitenessReport report = TestDefiniteness(A, unheard);
    const Table* table = FindTable(document);
    ASSERT_NE(table, nullptr);
    const bool isNoMinor = text.find("this product is not the minor") != std::string::npos;
    for (int k = 1; k <= A.Rows(); ++k) {
      const ShownNumber minor = LastNumber(table->rows[k - 1][1]);
      const double computed = report.leadingMinor[k - 1];
      EXPECT_EQ(minor.decimal, std::isfinite(computed) ? CStr(computed) : "") << text;
      if (!minor.exact.IsKnown() || isNoMinor) continue;
      ++exact;
      EXPECT_TRUE(ValueOf(minor.exact) == DeterminantOf(LeadingBlock(AsShown(A), k))) << text;
    }
  }
  EXPECT_GE(exact, 500);
}

TEST(DefinitenessDerivation, SaysTheVerdict) {
  const auto ending = [](const Matrix& A) {
    const std::string text = TextOf(Derive(Ask(DerivationTask::kDefiniteness, A)));
    return text.substr(text.rfind("A is "));
  };
  EXPECT_EQ(ending(MatrixOf({{2, 1}, {1, 2}})), "A is positive definite.\n");
  EXPECT_EQ(ending(MatrixOf({{-2, 1}, {1, -2}})), "A is negative definite.\n");
  EXPECT_EQ(ending(MatrixOf({{1, 2}, {2, 1}})), "A is indefinite.\n");
  EXPECT_EQ(ending(MatrixOf({{0, 0}, {0, -1}})), "A is semidefinite.\n");
}

}  // namespace
}  // namespace qmx::testing
