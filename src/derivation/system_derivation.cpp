// SPDX-License-Identifier: MIT
#include <cmath>

#include "derivation/elimination_teller.h"
#include "derivation/families.h"
#include "derivation/solving_teller.h"
#include "derivation/terms.h"

namespace qmx {
namespace {

void ShowSystem(Scribe& scribe, const Elements<Traced>& system) {
  if (!IsShown(system.Rows(), system.Cols())) {
    scribe.Say("The system has ", system.Rows(), " equations and is not written out here.");
    return;
  }
  ShownMatrix shown = ShowMatrix(system);
  shown.bars = {system.Cols() - 1};
  scribe.Formula(std::move(shown));
}

/// (i, j): a(1,i)·a(1,j) + ... = sum, for each element of the normal equations.
void TellNormalElements(Scribe& scribe, const Elements<Traced>& system,
                        const Elements<Traced>& normal) {
  const int c = system.Cols();
  for (int i = 1; i < c; ++i) {
    for (int j = 1; j <= i + 1; ++j) {
      // The last one of a row is that of the right-hand side.
      const int col = j <= i ? j : c;
      scribe.Look();
      Line line = MakeLine(Name{"m", IndexText(i, col)}, kEquals);
      AppendSumOfProducts(
          line, system.Rows(), [&](int r) { return system(r, i); },
          [&](int r) { return system(r, col); });
      line.pieces.emplace_back(kEquals);
      line.pieces.emplace_back(Show(normal(i, col)));
      line.isFormula = true;
      scribe.Add(std::move(line));
    }
  }
}

/// The leading n x n block.
Elements<Traced> Leading(const Elements<Traced>& elements, int n) {
  Elements<Traced> block(n, n);
  for (int i = 1; i <= n; ++i) {
    for (int j = 1; j <= n; ++j) block(i, j) = elements(i, j);
  }
  return block;
}

/// The rows of b in the order of the rows of U.
Elements<Traced> OrderedRightSide(const DerivationQuestion& question, bool isExact) {
  const int n = question.system.Rows();
  Elements<Traced> x(n, 1);
  for (int i = 1; i <= n; ++i) {
    x(i, 1) = TracedElement(question.system(RowOfSystem(question, i), 1));
    x(i, 1).isKnown = x(i, 1).isKnown && isExact;
  }
  return x;
}

void TellForward(Scribe& scribe, const Elements<Traced>& L, Elements<Traced>& x) {
  const int n = x.Rows();
  scribe.Step("Forward substitution");
  scribe.Say("L · y = P · b from the first row down; the diagonal of L is 1.");
  const StepChoice choice(n, n);
  const Elements<Traced> right = x;
  plain::SubstituteForward(L, x, [&](int i) {
    scribe.Look();
    choice.SayRowsLeftOut(scribe, i, false);
    if (!choice.Tells(i)) return;
    Line line = MakeLine(Name{"y", CStr(i)}, kEquals);
    Line known = EquationWithKnown(L, x, i, 1, i - 1, right(i, 1));
    line.pieces.insert(line.pieces.end(), known.pieces.begin(), known.pieces.end());
    if (known.pieces.size() > 1) {
      line.pieces.emplace_back(kEquals);
      line.pieces.emplace_back(Show(x(i, 1)));
    }
    line.isFormula = true;
    scribe.Add(std::move(line));
  });
}

}  // namespace

int RowOfSystem(const DerivationQuestion& question, int row) {
  if (question.exchanges.Rows() == 0) return row;
  if (question.exchanges.Rows() < row) return 0;
  const double named = std::rint(question.exchanges(row, 1));
  return named >= 1 && named <= question.system.Rows() ? static_cast<int>(named) : 0;
}

void DeriveSolution(const DerivationQuestion& question, Scribe& scribe) {
  Elements<Traced> M = ElementsOf<Traced>(question.a, question.a.Rows() <= kMostExactOrder);
  scribe.Title("Solution of the system");
  scribe.Say("The equations, with the right-hand side behind the line:");
  ShowSystem(scribe, M);
  TellSolution(scribe, M);
}

void DeriveLeastSquares(const DerivationQuestion& question, Scribe& scribe) {
  const int unknowns = question.a.Cols() - 1;
  const auto system = ElementsOf<Traced>(
      question.a, question.a.Rows() <= kMostExactOrder * 4 && unknowns <= kMostExactOrder);
  scribe.Title("Least squares");
  scribe.Say("The equations A · x = b, with the right-hand side behind the line:");
  ShowSystem(scribe, system);
  scribe.Step("The normal equations");
  scribe.Say("The sum of the squares of what is left is least where ", Name{"A", "", "T"},
             Sign("·"), Name{"A"}, Sign("·"), Name{"x"}, kEquals, Name{"A", "", "T"}, Sign("·"),
             Name{"b"},
             ". Each element of these equations is a column of A times a column of A or the "
             "right-hand side.");
  Elements<Traced> normal = plain::NormalEquations(system, [&scribe] { scribe.Look(); });
  if (unknowns > 1 && unknowns <= kFullOrder) {
    scribe.Say("Above the diagonal stand the same numbers as below it, which are told once.");
  }
  if (unknowns <= kFullOrder) {
    TellNormalElements(scribe, system, normal);
  } else {
    scribe.Say("Their sums are left out here.");
  }
  ShowSystem(scribe, normal);
  TellSolution(scribe, normal);
}

void DeriveSolutionByFactors(const DerivationQuestion& question, Scribe& scribe) {
  const int n = question.system.Rows();
  const bool isExact = n <= kMostExactOrder;
  const auto L = Leading(ElementsOf<Traced>(question.a, isExact), n);
  const auto U = Leading(ElementsOf<Traced>(question.b, isExact), n);
  Elements<Traced> x = OrderedRightSide(question, isExact);
  scribe.Title("Solution by the factors L and U");
  scribe.Say(
      "P · A = L · U, so that A · x = b is L · U · x = P · b: first L · y = P · b, then "
      "U · x = y.");
  ShowNamed(scribe, Name{"L"}, L);
  ShowNamed(scribe, Name{"U"}, U);
  scribe.Say("The right-hand side in the order of the rows of U:");
  ShowNamed(scribe, Name{"b"}, x);
  TellForward(scribe, L, x);
  ShowNamed(scribe, Name{"y"}, x);
  TellBackSubstitution(scribe, U, x, x);
}

}  // namespace qmx
