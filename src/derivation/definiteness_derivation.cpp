// SPDX-License-Identifier: MIT
#include <optional>
#include <string>

#include "algorithms/definiteness.h"
#include "derivation/elimination_teller.h"
#include "derivation/exact_matrix.h"
#include "derivation/families.h"
#include "derivation/plain_definiteness.h"
#include "derivation/row_words.h"
#include "derivation/terms.h"

namespace qmx {
namespace {

std::string HeadingOf(int order) { return "The leading minor of order " + CStr(order); }

/// Tells the elimination that grows row by row.
class MinorTeller {
 public:
  MinorTeller(Scribe& scribe, const Elements<Traced>& start, const Elements<Traced>& W)
      : scribe_(scribe),
        start_(start),
        W_(W),
        choice_(W.Rows(), W.Rows()),
        isCleared_(W.Rows(), W.Rows()) {}

  void OnRow(int row);
  void OnPivot(Elements<Traced>& W, int row, int column, bool isNewRow);
  void OnNoPivot(Elements<Traced>& W, int row, int column);
  void OnExchange(int one, int two);
  void OnSubtract(int target, const Traced& factor, int source);
  void OnMinor(int order, const Traced& minor, int exchanges);

 private:
  ShownMatrix Now() const;
  void PartAt(Elements<Traced>& W, const Traced& pivot, int row);
  /// Of a large matrix the first columns of a row that joins are told.
  bool TellsColumn(int column) const {
    return isTold_ && (choice_.IsFull() || column <= kFullOrder);
  }
  void TellMinor(int order, const Traced& minor, int exchanges);

  Scribe& scribe_;
  const Elements<Traced>& start_;
  const Elements<Traced>& W_;
  StepChoice choice_;
  Elements<double> isCleared_;  ///< 1 where an element is a zero of the mathematics.
  bool isTold_ = true;
  bool hasLeftRow_ = false;  ///< A row without a pivot has been left as it was.
};

void MinorTeller::OnRow(int row) {
  scribe_.Look();
  isTold_ = choice_.Tells(row);
  if (!isTold_) {
    if (choice_.BeginsGap(row)) {
      scribe_.Step("Rows " + CStr(row) + " to " + CStr(row + choice_.LeftOut() - 1));
      scribe_.Say("These ", choice_.LeftOut(), " steps are left out here.");
    }
    return;
  }
  scribe_.Step(HeadingOf(row));
  scribe_.Say("Row ", row, " joins the rows above it.");
}

void MinorTeller::PartAt(Elements<Traced>& W, const Traced& pivot, int row) {
  Part(scribe_, pivot, isTold_, HeadingOf(row), W);
}

void MinorTeller::OnPivot(Elements<Traced>& W, int row, int column, bool isNewRow) {
  const Traced pivot = W(isNewRow ? row : column, column);
  if (isTold_ && !TellsColumn(column) && column == kFullOrder + 1) {
    scribe_.Say("And in the same way columns ", column, " to ", row - 1, ".");
  }
  if (TellsColumn(column)) {
    const std::string who = isNewRow ? "row " + CStr(row) : "the diagonal";
    scribe_.Say("Column ", column, ": " + who + " has the larger magnitude and is the pivot, ",
                pivot, ".");
  }
  PartAt(W, pivot, row);
}

void MinorTeller::OnNoPivot(Elements<Traced>& W, int row, int column) {
  hasLeftRow_ = true;
  if (isTold_) {
    scribe_.Say("Column ", column, ": the diagonal and row ", row, " are both 0. The rest of row ",
                row, " stays as it is.");
  }
  PartAt(W, W(column, column), row);
  PartAt(W, W(row, column), row);
}

void MinorTeller::OnExchange(int one, int two) {
  for (int j = 1; j <= W_.Cols(); ++j) std::swap(isCleared_(one, j), isCleared_(two, j));
  if (TellsColumn(one)) scribe_.Add(SayExchange(one, two));
}

void MinorTeller::OnSubtract(int target, const Traced& factor, int source) {
  scribe_.Look();
  isCleared_(target, source) = 1;
  if (TellsColumn(source)) scribe_.Add(SaySubtract(target, factor, source));
}

void MinorTeller::OnMinor(int order, const Traced& minor, int exchanges) {
  if (order == 1) scribe_.Step(HeadingOf(1));
  if (isTold_) TellMinor(order, minor, exchanges);
  if (!minor.isKnown) return;
  const std::optional<Rational> exact = ExactDeterminant(start_, order);
  if (!exact || *exact == minor.exact) return;
  if (!isTold_) scribe_.Step(HeadingOf(order));
  scribe_.Say(
      "A row above had been left as it was, so that this product is not the minor of order ", order,
      ", which is ", ShowExact(*exact), ". The program goes by the product.");
}

void MinorTeller::TellMinor(int order, const Traced& minor, int exchanges) {
  const bool isShown = IsShown(W_.Rows(), W_.Cols());
  if (isShown) scribe_.Formula(Now());
  Line line = MakeLine(Name{"d", CStr(order)}, kEquals);
  const bool isWritten = order > 1 && order <= kMostTerms;
  if (isWritten && exchanges % 2 != 0) line.pieces.emplace_back(Sign("−"));
  if (isWritten) {
    AppendDiagonalProduct(line, W_, order);
    line.pieces.emplace_back(kEquals);
  }
  line.pieces.emplace_back(Show(minor));
  line.isFormula = true;
  if (isWritten && exchanges == 1) {
    scribe_.Say(
        "Rows have changed places once so far, which changes the sign of the product of the "
        "diagonal.");
  } else if (isWritten && exchanges > 1) {
    scribe_.Say("Rows have changed places ", exchanges,
                " times so far, each of which changes the sign of the product of the diagonal.");
  }
  scribe_.Add(std::move(line));
}

ShownMatrix MinorTeller::Now() const {
  ShownMatrix now = ShowMatrix(W_);
  for (int i = 1; i <= now.rows; ++i) {
    for (int j = 1; j < i; ++j) {
      ShownCell& cell = now.At(i, j);
      if (hasLeftRow_) {
        // What stands there is neither 0 nor looked at again.
        cell = {};
        cell.isBlank = true;
      } else if (isCleared_(i, j) != 0) {
        cell.number = ShowExact(0);
      }
    }
  }
  return now;
}

const char* VerdictText(Definiteness verdict) {
  switch (verdict) {
    case Definiteness::kIndefinite:
      return "indefinite";
    case Definiteness::kPositiveDefinite:
      return "positive definite";
    case Definiteness::kNegativeDefinite:
      return "negative definite";
    case Definiteness::kSemidefinite:
      return "semidefinite";
    case Definiteness::kPositiveSemidefinite:
      return "positive semidefinite";
    case Definiteness::kNegativeSemidefinite:
      return "negative semidefinite";
  }
  return "";
}

/// The minors in a table, and what follows from their signs.
void TellVerdict(Scribe& scribe, const Elements<Traced>& minors) {
  scribe.Step("The verdict");
  Table table{{"Order", "Leading minor", "Sign"}, {}};
  std::vector<double> values;
  for (int k = 1; k <= minors.Rows(); ++k) {
    const double value = minors(k, 1).value;
    values.push_back(value);
    table.rows.push_back({MakeLine(k), MakeLine(minors(k, 1)),
                          MakeLine(value > 0   ? "+"
                                   : value < 0 ? "−"
                                               : "0")});
  }
  scribe.Add(std::move(table));
  scribe.Say(
      "A negative minor of even order, or odd orders with both signs: indefinite. Else no "
      "negative one: positive; negative ones of odd order: negative; definite where none is "
      "0, and semidefinite by these minors where one is.");
  scribe.Say("A is ", VerdictText(ClassifyMinors(values)), ".");
}

}  // namespace

void DeriveDefiniteness(const DerivationQuestion& question, Scribe& scribe) {
  const auto start = ElementsOf<Traced>(question.a, question.a.Rows() <= kMostExactOrder);
  scribe.Title("Definiteness of A");
  ShowNamed(scribe, Name{"A"}, start);
  scribe.Say(
      "A symmetric matrix is judged by the signs of its leading minors, the determinants of "
      "the blocks in its upper left corner. An elimination that grows row by row gives one "
      "after the other.");
  Elements<Traced> W = start;
  Elements<Traced> minors;
  MinorTeller teller(scribe, start, W);
  plain::LeadingMinors(W, minors, teller);
  TellVerdict(scribe, minors);
}

}  // namespace qmx
