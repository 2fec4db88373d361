// SPDX-License-Identifier: MIT
#include <algorithm>
#include <vector>

#include "derivation/families.h"
#include "derivation/jordan_teller.h"
#include "derivation/row_words.h"
#include "derivation/terms.h"

namespace qmx {
namespace {

plain::Jordan<Traced> JordanOf(const Matrix& A) {
  plain::Jordan<Traced> jordan;
  jordan.W = ElementsOf<Traced>(A, A.Rows() <= kMostExactOrder);
  return jordan;
}

void Begin(Scribe& scribe, const plain::Jordan<Traced>& jordan, const JordanTeller& teller) {
  ShowNamed(scribe, Name{"A"}, jordan.W);
  scribe.Say(
      "What makes A the unit matrix makes the unit matrix, written behind the line, the "
      "inverse of A.");
  if (teller.IsShown()) scribe.Formula(teller.Now());
}

/// Every column had a pivot, and 1 divided by the last one is too small a number.
void TellUnderflow(Scribe& scribe, bool hadAllPivots) {
  if (hadAllPivots) {
    scribe.Say(
        "1 divided by the last pivot is too small for the program's numbers and became 0: "
        "it takes A for a matrix without an inverse.");
  }
}

/// The rows into the order of the columns that they gave a pivot.
void TellReorder(Scribe& scribe, const plain::Jordan<Traced>& jordan,
                 const Elements<Traced>& inverse) {
  const int n = inverse.Rows();
  const std::vector<int> order(jordan.pivotRow.begin() + 1, jordan.pivotRow.end());
  scribe.Step("The order of the rows");
  if (std::is_sorted(order.begin(), order.end())) {
    scribe.Say("Each row already stands where its 1 is on the diagonal.");
    return;
  }
  scribe.Add(SayReorder(order));
  if (n > kMostShownRows) return;
  ShownMatrix now{n, 2 * n, {}, {n}, false};
  for (int i = 1; i <= n; ++i) {
    for (int j = 1; j <= n; ++j) {
      now.cells.push_back({ShowExact(i == j ? 1 : 0), CellMark::kChanged});
    }
    for (int j = 1; j <= n; ++j) now.cells.push_back({Show(inverse(i, j)), CellMark::kChanged});
  }
  scribe.Formula(std::move(now));
}

}  // namespace

void DeriveInverse(const DerivationQuestion& question, Scribe& scribe) {
  const int n = question.a.Rows();
  plain::Jordan<Traced> jordan = JordanOf(question.a);
  scribe.Title("Inverse of A");
  JordanTeller teller(scribe, jordan, false);
  Begin(scribe, jordan, teller);
  plain::Invert(jordan, teller);
  if (!jordan.invertible) return TellUnderflow(scribe, jordan.pivotRow[n] != 0);
  const Elements<Traced> inverse = plain::Unscrambled(jordan);
  TellReorder(scribe, jordan, inverse);
  scribe.Step("The inverse");
  ShowNamed(scribe, Name{"A", "", "-1"}, inverse, CellMark::kFound);
}

void DeriveAdjointByInverse(const DerivationQuestion& question, Scribe& scribe) {
  const int n = question.a.Rows();
  plain::Jordan<Traced> jordan = JordanOf(question.a);
  scribe.Title("Adjoint of A by the inverse");
  JordanTeller teller(scribe, jordan, true);
  Begin(scribe, jordan, teller);
  plain::InvertExchangingRows(jordan, teller);
  if (!jordan.invertible) return TellUnderflow(scribe, jordan.pivotCol[jordan.pivotRow[n]] != 0);
  scribe.Step("The determinant");
  scribe.Say("It is the product of the pivots, and each exchange of rows changes its sign: there ",
             jordan.exchanges == 1 ? "was " : "were ", jordan.exchanges, ".");
  scribe.Formula(Name{"det"}, Sign("("), Name{"A"}, Sign(")"), kEquals,
                 plain::SignOf<Traced>(jordan.exchanges) * jordan.determinant);
  scribe.Step("The adjoint");
  scribe.Formula(Name{"adj"}, Sign("("), Name{"A"}, Sign(")"), kEquals, Name{"det"}, Sign("("),
                 Name{"A"}, Sign(")"), Sign("·"), Name{"A", "", "-1"});
  ShowAdjoint(scribe, plain::AdjointOf(jordan), 0, 0);
}

}  // namespace qmx
