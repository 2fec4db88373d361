// SPDX-License-Identifier: MIT
#include "derivation/elimination_teller.h"
#include "derivation/families.h"
#include "derivation/plain_cofactors.h"
#include "derivation/terms.h"

namespace qmx {
namespace {

/// A with row i and column j left out, between lines.
ShownMatrix ShowMinor(const Elements<Traced>& A, int i, int j) {
  ShownMatrix minor = ShowMatrix(A);
  minor.isDeterminant = true;
  for (int k = 1; k <= A.Rows(); ++k) {
    minor.At(i, k) = {};
    minor.At(k, j) = {};
    minor.At(i, k).isBlank = true;
    minor.At(k, j).isBlank = true;
  }
  return minor;
}

Traced MinorValue(const Scribe& scribe, const Elements<Traced>& A, int i, int j) {
  Elements<Traced> minor = plain::MinorOf(A, i, j);
  plain::LookingWatcher watcher([&scribe] { scribe.Look(); });
  int exchanges = 0;
  return plain::Determinant(minor, watcher, exchanges);
}

/// C(i,j) = ± minor = value
void ShowCofactor(Scribe& scribe, const Elements<Traced>& A, int i, int j, const Traced& value) {
  Line line = MakeLine(Name{"C", IndexText(i, j)}, kEquals);
  if ((i + j) % 2 != 0) line.pieces.emplace_back(Sign("−"));
  if (A.Rows() > 1) {
    line.pieces.emplace_back(ShowMinor(A, i, j));
    line.pieces.emplace_back(kEquals);
  }
  line.pieces.emplace_back(Show(value));
  line.isFormula = true;
  scribe.Add(std::move(line));
}

/// Row i and column j are left out: the determinant of what is left, step by step.
void TellMinor(Scribe& scribe, const Elements<Traced>& A, int i, int j) {
  scribe.Part("Element (" + IndexText(j, i) + ") of the adjoint");
  scribe.Say("It is the cofactor of A for row ", i, " and column ", j,
             ": the determinant of A without them, with the sign of ", i, " + ", j, ", which is ",
             (i + j) % 2 == 0 ? "even: plus." : "odd: minus.");
  Elements<Traced> minor = plain::MinorOf(A, i, j);
  const int n = minor.Rows();
  if (n == 0) return scribe.Say("Nothing is left of A; the determinant of nothing is 1.");
  if (IsShown(n, n)) scribe.Formula(ShowMatrix(minor));
  EliminationTeller teller(scribe, minor, n, n - 1, {{}, true, true});
  int exchanges = 0;
  const Traced value = plain::Determinant(minor, teller, exchanges);
  scribe.Step("The cofactor");
  TellDiagonalProduct(scribe, minor, exchanges, value, MakeLine(Name{"det"}, kEquals));
  const Traced cofactor = plain::CofactorOf(value, i, j);
  scribe.Formula(Name{"C", IndexText(i, j)}, kEquals, cofactor);
}

Elements<Traced> AllCofactors(Scribe& scribe, const Elements<Traced>& A, bool isTold) {
  const int n = A.Rows();
  Elements<Traced> adjoint(n, n);
  for (int i = 1; i <= n; ++i) {
    for (int j = 1; j <= n; ++j) {
      scribe.Look();
      adjoint(j, i) = plain::CofactorOf(MinorValue(scribe, A, i, j), i, j);
      if (isTold) ShowCofactor(scribe, A, i, j, adjoint(j, i));
    }
  }
  return adjoint;
}

}  // namespace

void ShowAdjoint(Scribe& scribe, const Elements<Traced>& adjoint, int row, int col) {
  if (!IsShown(adjoint.Rows(), adjoint.Cols()))
    return scribe.Say("It is too large to be written out here.");
  ShownMatrix shown = ShowMatrix(adjoint);
  if (row > 0) {
    shown.At(row, col).mark = CellMark::kAsked;
  } else {
    MarkCells(shown, CellMark::kFound);
  }
  scribe.Formula(Name{"adj"}, Sign("("), Name{"A"}, Sign(")"), kEquals, std::move(shown));
}

void DeriveAdjointByCofactors(const DerivationQuestion& question, Scribe& scribe) {
  const int n = question.a.Rows();
  const auto A = ElementsOf<Traced>(question.a, n <= kMostExactOrder);
  scribe.Title("Adjoint of A by cofactors");
  ShowNamed(scribe, Name{"A"}, A);
  scribe.Say(
      "Element (i, j) of the adjoint is the cofactor for row j and column i of A: the "
      "determinant of what is left of A without that row and column, with a minus where "
      "i + j is odd.");
  const bool isChosen = question.row > 0 && question.col > 0;
  const int row = isChosen ? question.row : 1;
  const int col = isChosen ? question.col : 1;
  TellMinor(scribe, A, col, row);
  if (!IsShown(n, n)) return;
  const bool isTold = n <= kFullOrder;
  scribe.Part(isTold ? "All cofactors" : "The adjoint");
  const Elements<Traced> adjoint = AllCofactors(scribe, A, isTold);
  if (isTold) scribe.Part("The adjoint");
  ShowAdjoint(scribe, adjoint, isChosen ? row : 0, col);
}

}  // namespace qmx
