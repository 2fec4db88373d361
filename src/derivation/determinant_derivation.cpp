// SPDX-License-Identifier: MIT
#include <optional>
#include <utility>

#include "derivation/elimination_teller.h"
#include "derivation/exact_matrix.h"
#include "derivation/families.h"
#include "derivation/terms.h"

namespace qmx {
namespace {

/// What the determinant is without rounding, where the steps have lost that.
void TellExactDeterminant(Scribe& scribe, const Matrix& A) {
  const std::optional<Rational> exact = ExactDeterminant(ElementsOf<Traced>(A), A.Rows());
  if (exact) scribe.Say("Without rounding the determinant of A is ", ShowExact(*exact), ".");
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

void TellDiagonalProduct(Scribe& scribe, const Elements<Traced>& W, int exchanges,
                         const Traced& value, Line line) {
  SaySign(scribe, exchanges);
  if (W.Rows() <= kMostTerms) {
    if (exchanges % 2 != 0) line.pieces.emplace_back(Sign("−"));
    AppendDiagonalProduct(line, W, W.Rows());
    if (W.Rows() > 1) line.pieces.emplace_back(kEquals);
  }
  if (W.Rows() != 1) line.pieces.emplace_back(Show(value));
  line.isFormula = true;
  scribe.Add(std::move(line));
}

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
  const Traced value = plain::Determinant(W, teller, exchanges);
  teller.TellPivots();
  scribe.Step("The determinant");
  TellDiagonalProduct(scribe, W, exchanges, value,
                      MakeLine(Name{"det"}, Sign("("), Name{"A"}, Sign(")"), kEquals));
  if (teller.HasParted()) TellExactDeterminant(scribe, question.a);
}

}  // namespace qmx
