// SPDX-License-Identifier: MIT
#include "derivation/jordan_teller.h"

#include "derivation/row_words.h"

namespace qmx {

JordanTeller::JordanTeller(Scribe& scribe, const plain::Jordan<Traced>& jordan, bool exchangesRows)
    : scribe_(scribe),
      jordan_(jordan),
      exchangesRows_(exchangesRows),
      n_(jordan.W.Rows()),
      choice_(n_, n_),
      rowOf_(static_cast<std::size_t>(n_) + 1),
      columnOf_(static_cast<std::size_t>(n_) + 1) {}

bool JordanTeller::BeginColumn(int column) {
  scribe_.Look();
  toldRows_ = 0;
  changed_.clear();
  isTold_ = choice_.Tells(column);
  if (isTold_) {
    scribe_.Step("Column " + CStr(column));
  } else {
    choice_.SayLeftOut(scribe_, column);
  }
  return isTold_;
}

void JordanTeller::OnPivot(Elements<Traced>& W, int column, int row) {
  pivotRow_ = row;
  const Traced pivot = W(row, column);
  if (BeginColumn(column)) {
    if (exchangesRows_) {
      scribe_.Say("From row ", column, " down, ", pivot, " in row ", row,
                  " has the largest magnitude: it is the pivot.");
    } else {
      scribe_.Say("Of the rows without a pivot so far, row ", row, " has the largest magnitude, ",
                  pivot, ": it is the pivot.");
    }
  }
  Part(scribe_, pivot, isTold_, "Column " + CStr(column), W);
}

void JordanTeller::OnNoPivot(Elements<Traced>& W, int column) {
  BeginColumn(column);
  if (!isTold_) scribe_.Step("Column " + CStr(column));
  scribe_.Say("All rows without a pivot have a 0 in column ", column,
              ": there is no pivot, and A has no inverse.");
  for (int k = 1; k <= n_; ++k) {
    const bool isFree = exchangesRows_ ? k >= column : jordan_.pivotCol[k] == 0;
    if (!isFree || !PartsAtZero(W(k, column))) continue;
    TellParting(scribe_, W(k, column));
    return;
  }
}

void JordanTeller::OnExchange(int one, int two) {
  pivotRow_ = one;
  if (!isTold_) return;
  scribe_.Add(SayExchange(one, two));
  if (!IsShown()) return;
  ShownMatrix now = Now();
  MarkRow(now, one, CellMark::kChanged);
  MarkRow(now, two, CellMark::kChanged);
  now.At(one, one).mark = CellMark::kPivot;
  scribe_.Formula(std::move(now));
}

void JordanTeller::OnSubtract(int target, const Traced& factor, int source) {
  scribe_.Look();
  if (!IsJust(factor, 0)) changed_.push_back(target);
  if (!isTold_) return;
  if (++toldRows_ <= kMostToldRows || IsShown()) {
    scribe_.Add(SaySubtract(target, factor, source));
  } else if (toldRows_ == kMostToldRows + 1) {
    scribe_.Say("And in the same way all other rows.");
  }
}

void JordanTeller::OnDivide(int target, const Traced& factor) {
  if (!IsJust(factor, 1)) changed_.push_back(target);
  if (isTold_) scribe_.Add(SayDivide(target, factor));
}

void JordanTeller::OnColumnDone(int column) {
  rowOf_[column] = pivotRow_;
  columnOf_[OriginOf(pivotRow_)] = column;
  if (!isTold_ || !IsShown()) return;
  ShownMatrix now = Now();
  for (const int row : changed_) MarkRow(now, row, CellMark::kChanged);
  now.At(pivotRow_, column).mark = CellMark::kPivot;
  scribe_.Formula(std::move(now));
}

int JordanTeller::OriginOf(int row) const {
  // Before the first step the rows have not been numbered yet.
  return exchangesRows_ && !jordan_.pivotRow.empty() ? jordan_.pivotRow[row] : row;
}

ShownNumber JordanTeller::Left(int row, int col) const {
  if (rowOf_[col] != 0) return ShowExact(rowOf_[col] == row ? 1 : 0);
  return Show(jordan_.W(row, col));
}

ShownNumber JordanTeller::Right(int row, int col) const {
  if (columnOf_[col] != 0) return Show(jordan_.W(row, columnOf_[col]));
  return ShowExact(OriginOf(row) == col ? 1 : 0);
}

ShownMatrix JordanTeller::Now() const {
  ShownMatrix now{n_, 2 * n_, {}, {n_}, false};
  now.cells.reserve(static_cast<std::size_t>(n_) * 2 * n_);
  for (int i = 1; i <= n_; ++i) {
    for (int j = 1; j <= n_; ++j) now.cells.push_back({Left(i, j)});
    for (int j = 1; j <= n_; ++j) now.cells.push_back({Right(i, j)});
  }
  return now;
}

}  // namespace qmx
