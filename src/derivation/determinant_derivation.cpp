// SPDX-License-Identifier: MIT
#include "derivation/elimination_teller.h"
#include "derivation/families.h"

namespace qmx {
namespace {

/// det(A) = − p1 · p2 · ... = value
void ShowProduct(Scribe& scribe, const Elements<Traced>& W, int exchanges, const Traced& value) {
  Line line = MakeLine(Name{"det"}, Sign("("), Name{"A"}, Sign(")"), kEquals);
  if (exchanges % 2 != 0) line.pieces.emplace_back(Sign("−"));
  for (int k = 1; k <= W.Rows(); ++k) {
    if (k > 1) line.pieces.emplace_back(Sign("·"));
    const bool isEnclosed = W(k, k).value < 0 && (k > 1 || exchanges % 2 != 0);
    if (isEnclosed) line.pieces.emplace_back(Sign("("));
    line.pieces.emplace_back(Show(W(k, k)));
    if (isEnclosed) line.pieces.emplace_back(Sign(")"));
  }
  line.pieces.emplace_back(kEquals);
  line.pieces.emplace_back(Show(value));
  line.isFormula = true;
  scribe.Add(std::move(line));
}

void SaySign(Scribe& scribe, int exchanges) {
  if (exchanges == 0) {
    scribe.Say("No rows have changed places. The determinant is the product of the diagonal.");
  } else if (exchanges == 1) {
    scribe.Say(
        "Rows have changed places once, which changes the sign. The determinant is minus the "
        "product of the diagonal.");
  } else {
    scribe.Say("Rows have changed places ", exchanges,
               " times, each of which changes the sign. The ",
               exchanges % 2 == 0 ? "determinant is the product of the diagonal."
                                  : "determinant is minus the product of the diagonal.");
  }
}

}  // namespace

void DeriveDeterminant(const DerivationQuestion& question, Scribe& scribe) {
  const int n = question.a.Rows();
  Elements<Traced> W = ElementsOf<Traced>(question.a, n <= kMostExactOrder);
  scribe.Title("Determinant of A");
  ShowNamed(scribe, Name{"A"}, W);
  if (n > 1) {
    scribe.Say(
        "Subtracting multiples of rows makes the elements below the diagonal 0, column by "
        "column, and leaves the determinant as it is.");
  }
  EliminationTeller teller(scribe, W, n, n - 1, {{}, true, true});
  int exchanges = 0;
  const Traced value = PlainDeterminant(W, teller, exchanges);
  teller.TellPivots();
  scribe.Step("The determinant");
  SaySign(scribe, exchanges);
  if (n <= kMostShownRows) {
    ShowProduct(scribe, W, exchanges, value);
  } else {
    scribe.Formula(Name{"det"}, Sign("("), Name{"A"}, Sign(")"), kEquals, value);
  }
}

}  // namespace qmx
