// SPDX-License-Identifier: MIT
#include <algorithm>
#include <utility>

#include "derivation/elimination_teller.h"
#include "derivation/families.h"
#include "derivation/terms.h"

namespace qmx {
namespace {

void TellRefusal(Scribe& scribe, const Elements<Traced>& U, int column) {
  scribe.Step("Column " + CStr(column));
  scribe.Say(
      "The element on the diagonal is 0 and one below it is not: without pivoting the "
      "factorization ends here.");
  TellParting(scribe, U(column, column));
}

/// P, and which row of A each of its rows takes.
void TellOrder(Scribe& scribe, const std::vector<int>& order) {
  const int m = static_cast<int>(order.size());
  std::string text = "The rows of A have got the order ";
  ForTerms(
      m, [&](int k) { text += (k > 1 ? ", " : "") + CStr(order[k - 1]); },
      [&text] { text += ", …"; });
  scribe.Say(text + ": so does P put them.");
  if (!IsShown(m, m)) return;
  ShownMatrix P{m, m, std::vector<ShownCell>(static_cast<std::size_t>(m) * m), {}, false};
  for (ShownCell& cell : P.cells) cell.number = ShowExact(0);
  for (int k = 1; k <= m; ++k) P.At(k, order[k - 1]).number = ShowExact(1);
  scribe.Formula(Name{"P"}, kEquals, std::move(P));
}

}  // namespace

void DeriveLu(const DerivationQuestion& question, Scribe& scribe) {
  const Matrix& A = question.a;
  const int most = std::min(A.Rows(), A.Cols());
  auto start = ElementsOf<Traced>(A, std::max(A.Rows(), A.Cols()) <= kMostExactOrder);
  scribe.Title(question.pivoting ? "LU factors of A with pivoting"
                                 : "LU factors of A without pivoting");
  ShowNamed(scribe, Name{"A"}, start);
  scribe.Say(
      "Subtracting multiples of rows makes the elements below the diagonal 0: what is left is "
      "U, and the multiples go into L.");
  plain::LuFactors<Traced> lu;
  lu.U = std::move(start);
  EliminationTeller teller(scribe, lu.U, A.Rows(), most, {{}, question.pivoting, false});
  plain::FactorLu(lu, question.pivoting, teller);
  if (lu.elimination.refusedColumn != 0) {
    return TellRefusal(scribe, lu.U, lu.elimination.refusedColumn);
  }
  teller.TellPivots();
  scribe.Step("The factors");
  scribe.Say(
      "Element (i, j) of L is how many times row j was subtracted from the row that is row i "
      "in the end; its diagonal is 1.");
  ShowNamed(scribe, Name{"L"}, lu.L, CellMark::kFound);
  ShowNamed(scribe, Name{"U"}, lu.U, CellMark::kFound);
  if (lu.elimination.exchanges == 0) {
    scribe.Say("No rows have changed places: A = L · U.");
    return;
  }
  TellOrder(scribe, lu.elimination.order);
  scribe.Say("P · A = L · U.");
}

}  // namespace qmx
