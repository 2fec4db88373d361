// SPDX-License-Identifier: MIT
#include "derivation/elimination_teller.h"

#include <algorithm>

#include "derivation/row_words.h"

namespace qmx {

void StepChoice::SayLeftOut(Scribe& scribe, int step) const {
  if (!BeginsGap(step)) return;
  const int left = LeftOut();
  scribe.Step(left == 1 ? "Column " + CStr(step)
                        : "Columns " + CStr(step) + " to " + CStr(steps_ - kEnds));
  scribe.Say(left == 1 ? "One step like these is left out here."
                       : CStr(left) + " steps like these are left out here.");
}

void StepChoice::SayRowsLeftOut(Scribe& scribe, int step, bool isFromBelow) const {
  if (!BeginsGap(step)) return;
  const int first = kEnds + 1;
  const int last = steps_ - kEnds;
  scribe.Say("Rows ", isFromBelow ? last : first, " to ", isFromBelow ? first : last,
             " are left out here: ", LeftOut(), " steps.");
}

bool TellParting(Scribe& scribe, const Traced& pivot) {
  if (!PartsAtZero(pivot)) return false;
  if (pivot.value != 0) {
    scribe.Say(
        "Without rounding this would be 0; the ", pivot,
        " is rounding alone. The program divides by it all the same, which fractions cannot: "
        "from here on there are decimals alone.");
  } else {
    scribe.Say("Without rounding this would not be 0 but ", ShowExact(pivot.exact),
               ". The program goes by its decimals: from here on there are these alone.");
  }
  return true;
}

bool Part(Scribe& scribe, const Traced& pivot, bool isTold, const std::string& heading,
          Elements<Traced>& elements) {
  if (!PartsAtZero(pivot)) return false;
  if (!isTold) scribe.Step(heading);
  TellParting(scribe, pivot);
  ForgetExact(elements);
  return true;
}

EliminationTeller::EliminationTeller(Scribe& scribe, const Elements<Traced>& W, int rows, int steps,
                                     EliminationView view)
    : scribe_(scribe),
      W_(W),
      rows_(rows),
      view_(std::move(view)),
      choice_(steps, std::max(rows, steps)),
      isDone_(static_cast<std::size_t>(W.Cols()) + 1) {}

void EliminationTeller::BeginColumn(int column) {
  scribe_.Look();
  hasChanged_ = false;
  changed_.clear();
  isTold_ = choice_.Tells(column);
  if (!isTold_) return choice_.SayLeftOut(scribe_, column);
  scribe_.Step("Column " + CStr(column));
}

void EliminationTeller::OnPivot(Elements<Traced>& W, int column, int row) {
  BeginColumn(column);
  const Traced pivot = W(row, column);
  if (!choice_.IsFull()) pivots_.push_back({column, row, pivot});
  if (isTold_) SayPivot(column, row, pivot);
  if (column < rows_ && Part(scribe_, pivot, isTold_, "Column " + CStr(column), W)) {
    hasParted_ = true;
  }
}

void EliminationTeller::SayPivot(int column, int row, const Traced& pivot) {
  if (column == rows_) {
    scribe_.Say("The last pivot is ", pivot, "; there is no row below it.");
  } else if (view_.pivoting) {
    scribe_.Say("From row ", column, " down, ", pivot, " in row ", row,
                " has the largest magnitude: it is the pivot.");
  } else {
    scribe_.Say("The pivot is ", pivot, " on the diagonal.");
  }
}

void EliminationTeller::OnNoPivot(Elements<Traced>& W, int column) {
  BeginColumn(column);
  if (!choice_.IsFull()) pivots_.push_back({column, 0, W(column, column)});
  if (isTold_ && column == rows_) {
    scribe_.Say("The last element of the diagonal is 0.");
  } else if (isTold_) {
    const char* end = view_.stopsAtZero ? ": the elimination ends here." : " and is skipped.";
    scribe_.Say("From row ", column, " down column ", column, " is zero", end);
  }
  for (int k = column; k <= rows_; ++k) {
    if (!Part(scribe_, W(k, column), isTold_, "Column " + CStr(column), W)) continue;
    hasParted_ = true;
    return;
  }
}

void EliminationTeller::OnExchange(int one, int two) {
  if (!isTold_) return;
  scribe_.Add(SayExchange(one, two));
  if (!IsShown(rows_, W_.Cols())) return;
  ShownMatrix now = Now();
  MarkRow(now, one, CellMark::kChanged);
  MarkRow(now, two, CellMark::kChanged);
  now.At(one, one).mark = CellMark::kPivot;
  scribe_.Formula(std::move(now));
}

void EliminationTeller::OnSubtract(int target, const Traced& factor, int source) {
  scribe_.Look();
  hasChanged_ = true;
  if (!IsJust(factor, 0)) changed_.push_back(target);
  if (!isTold_) return;
  const int told = target - source;
  if (rows_ <= kMostShownRows || told <= kMostToldRows) {
    scribe_.Add(SaySubtract(target, factor, source));
  } else if (told == kMostToldRows + 1) {
    scribe_.Say("And in the same way rows ", target, " to ", rows_, ".");
  }
}

void EliminationTeller::OnColumnDone(int column) {
  isDone_[column] = true;
  if (!isTold_ || !hasChanged_ || !IsShown(rows_, W_.Cols())) return;
  ShownMatrix now = Now();
  for (const int row : changed_) MarkRow(now, row, CellMark::kChanged);
  now.At(column, column).mark = CellMark::kPivot;
  scribe_.Formula(std::move(now));
}

ShownMatrix EliminationTeller::Now() const {
  ShownMatrix now{rows_, W_.Cols(), {}, view_.bars, false};
  now.cells.reserve(static_cast<std::size_t>(rows_) * W_.Cols());
  for (int i = 1; i <= rows_; ++i) {
    for (int j = 1; j <= W_.Cols(); ++j) {
      const bool isCleared = j < i && isDone_[j];
      now.cells.push_back({isCleared ? ShowExact(0) : Show(W_(i, j))});
    }
  }
  return now;
}

void EliminationTeller::TellPivots() const {
  if (choice_.IsFull()) return;
  scribe_.Step("All pivots");
  Table table{{"Column", "Pivot", "From row"}, {}};
  for (const ToldPivot& pivot : pivots_) {
    table.rows.push_back({MakeLine(pivot.column), MakeLine(pivot.value),
                          pivot.row == 0 ? MakeLine("none") : MakeLine(pivot.row)});
  }
  scribe_.Add(std::move(table));
}

}  // namespace qmx
