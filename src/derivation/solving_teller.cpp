// SPDX-License-Identifier: MIT
#include "derivation/solving_teller.h"

#include "derivation/elimination_teller.h"
#include "derivation/terms.h"

namespace qmx {
namespace {

Name Unknown(int i) { return {"x", CStr(i)}; }

Elements<Traced> ColumnOf(const Elements<Traced>& M, int col) {
  Elements<Traced> column(M.Rows(), 1);
  for (int i = 1; i <= M.Rows(); ++i) column(i, 1) = M(i, col);
  return column;
}

/// p · x(i) + m · x(j) + ... = right
void ShowEquation(Scribe& scribe, const Elements<Traced>& M, int row, const Traced& right) {
  const int n = M.Rows();
  Line line;
  line.isFormula = true;
  bool isFirst = true;
  for (int j = row; j <= n; ++j) {
    if (AppendTerm(line, M(row, j), Unknown(j), isFirst)) isFirst = false;
  }
  if (isFirst) line.pieces.emplace_back(ShowExact(0));
  line.pieces.emplace_back(kEquals);
  line.pieces.emplace_back(Show(right));
  scribe.Add(std::move(line));
}

/// What a row without a pivot says.
void TellFailure(Scribe& scribe, const Elements<Traced>& M, const Elements<Traced>& x,
                 const plain::Substitution& end, const Traced& check) {
  const int row = end.failedRow;
  const Traced left = plain::SumOfKnown(M, x, row, row, M.Rows());
  scribe.Say("Row ", row, " has a 0 on its diagonal, so ", Unknown(row), " has no pivot.");
  TellParting(scribe, M(row, row));
  if (end.inconsistent) {
    scribe.Say("With what is known its left side is ", left, " and its right side ", check,
               ": the system has no solution.");
  } else {
    scribe.Say("Both of its sides are ", check, ", whatever ", Unknown(row),
               " is: the equations depend on each other and the system has infinitely many "
               "solutions.");
  }
  Traced difference = left - check;
  if (difference.isKnown && difference.exact.IsZero() == end.inconsistent &&
      !PartsAtZero(M(row, row))) {
    scribe.Say("Without rounding this would be otherwise: the sides are ", left, " and ", check,
               ".");
  }
}

}  // namespace

Line EquationWithKnown(const Elements<Traced>& M, const Elements<Traced>& x, int row, int first,
                       int last, const Traced& right) {
  Line line = MakeLine(right);
  for (int j = first; j <= last; ++j) {
    if (IsJust(M(row, j), 0)) continue;
    line.pieces.emplace_back(Sign("−"));
    AppendProduct(line, M(row, j), x(j, 1));
  }
  line.isFormula = true;
  return line;
}

void TellBackSubstitution(Scribe& scribe, Elements<Traced> M, const Elements<Traced>& right,
                          const Elements<Traced>& check) {
  const int n = right.Rows();
  scribe.Step("Back substitution");
  scribe.Say("From the last row up, each row gives one more unknown.");
  const StepChoice choice(n, n);
  Elements<Traced> x(n, 1);
  const plain::Substitution end = plain::SubstituteBack(
      M, n, x, [&](int i) { return right(i, 1); }, [&](int i) { return check(i, 1); },
      [&](int i, const Traced& rest) {
        scribe.Look();
        const int step = n - i + 1;
        choice.SayRowsLeftOut(scribe, step, true);
        if (!choice.Tells(step)) return;
        // Of all pivots only the last one has not been told yet.
        TellParting(scribe, M(i, i));
        ShowEquation(scribe, M, i, right(i, 1));
        if (i < n) {
          Line line;
          AppendTerm(line, M(i, i), Unknown(i), true);
          line.pieces.emplace_back(kEquals);
          Line known = EquationWithKnown(M, x, i, i + 1, n, right(i, 1));
          line.pieces.insert(line.pieces.end(), known.pieces.begin(), known.pieces.end());
          line.pieces.emplace_back(kEquals);
          line.pieces.emplace_back(Show(rest));
          line.isFormula = true;
          scribe.Add(std::move(line));
        }
        scribe.Formula(Unknown(i), kEquals, x(i, 1));
      });
  if (end.failedRow != 0) {
    ShowEquation(scribe, M, end.failedRow, right(end.failedRow, 1));
    return TellFailure(scribe, M, x, end, check(end.failedRow, 1));
  }
  scribe.Step("The solution");
  ShowNamed(scribe, Name{"x"}, x, CellMark::kFound);
}

void TellSolution(Scribe& scribe, Elements<Traced>& M) {
  const int n = M.Rows();
  if (n > 1) {
    scribe.Say(
        "Subtracting multiples of equations makes the coefficients below the diagonal 0, "
        "column by column; the solutions stay the same.");
  }
  EliminationTeller teller(scribe, M, n, n - 1, {{M.Cols() - 1}, true, false});
  plain::Eliminate(M, {n, n - 1, true, false}, teller);
  teller.TellPivots();
  TellBackSubstitution(scribe, M, ColumnOf(M, M.Cols()), ColumnOf(M, n + 1));
}

}  // namespace qmx
