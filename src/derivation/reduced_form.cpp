// SPDX-License-Identifier: MIT
#include "derivation/reduced_form.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "derivation/elimination_teller.h"
#include "derivation/rounded.h"
#include "derivation/row_words.h"

namespace qmx {
namespace {

Rational ValueAt(const ExactMatrix& A, int row, int col) {
  Rational value;
  fmpq_set(value.Get(), A.At(row, col));
  return value;
}

/// A double close to a value, of its sign, and neither zero nor infinite where it is not.
double AboutDouble(const Rational& value) {
  if (value.IsZero()) return 0;
  const double about = fmpq_get_d(value.Get());
  constexpr double kLargest = std::numeric_limits<double>::max();
  constexpr double kSmallest = std::numeric_limits<double>::min();
  const double magnitude = std::clamp(std::fabs(about), kSmallest, kLargest);
  return value.Sign() < 0 ? -magnitude : magnitude;
}

Traced AsTraced(const Rational& value) {
  Traced traced;
  traced.value = AboutDouble(value);
  traced.exact = value;
  return traced;
}

/// The words of an operation with its factor as it is shown here, rounded from the exact value.
Line Rounded(Line line, const Rational& factor) {
  const bool isTurned = line.operation->kind == RowOperation::Kind::kSubtract && factor.Sign() < 0;
  Rational shown = factor;
  if (isTurned) fmpq_neg(shown.Get(), shown.Get());
  line.operation->factor = ShowRounded(shown);
  for (Piece& piece : line.pieces) {
    if (auto* number = std::get_if<ShownNumber>(&piece)) *number = line.operation->factor;
  }
  return line;
}

/// Eliminates and tells of it.
class Reduction {
 public:
  Reduction(const ExactMatrix& A, Scribe& scribe, ReducedForm& result)
      : scribe_(scribe),
        R_(result.matrix),
        result_(result),
        steps_(RankOf(A)),
        choice_(steps_, std::min(A.Rows(), A.Cols())),
        isShown_(IsShown(A.Rows(), A.Cols())) {
    fmpq_mat_set(R_.Get(), A.Get());
  }

  void Run() {
    for (int col = 1; col <= R_.Cols() && Row() <= R_.Rows(); ++col) {
      scribe_.Look();
      const int pivot = PivotRow(col);
      if (pivot == 0) {
        SayNoPivot(col);
      } else {
        ReduceColumn(col, pivot);
      }
    }
    if (!choice_.IsFull()) TellPivots();
  }

 private:
  static int RankOf(const ExactMatrix& A) {
    ExactMatrix reduced(A.Rows(), A.Cols());
    return static_cast<int>(fmpq_mat_rref(reduced.Get(), A.Get()));
  }

  /// The row that the next pivot comes into.
  int Row() const { return result_.Rank() + 1; }

  /// The row of the largest magnitude from the next one on, the upper one of equals; 0 where all
  /// are zero.
  int PivotRow(int col) const {
    int found = 0;
    for (int i = Row(); i <= R_.Rows(); ++i) {
      const Rational value = ValueAt(R_, i, col);
      if (value.IsZero()) continue;
      if (found == 0 || IsLarger(value, ValueAt(R_, found, col))) found = i;
    }
    return found;
  }

  static bool IsLarger(Rational one, Rational other) {
    fmpq_abs(one.Get(), one.Get());
    fmpq_abs(other.Get(), other.Get());
    return fmpq_cmp(one.Get(), other.Get()) > 0;
  }

  void SayNoPivot(int col) {
    if (!choice_.IsFull()) return;
    scribe_.Step("Column " + CStr(col));
    if (Row() == 1) {
      scribe_.Say("All elements of column ", col, " are zero: it has no pivot.");
    } else {
      scribe_.Say("From row ", Row(), " on all elements of column ", col,
                  " are zero: it has no pivot.");
    }
  }

  void ReduceColumn(int col, int pivotRow) {
    const int row = Row();
    const bool isTold = choice_.Tells(row);
    const Rational pivot = ValueAt(R_, pivotRow, col);
    if (isTold) {
      SayPivot(col, pivotRow, pivot);
    } else {
      choice_.SayLeftOut(scribe_, row);
    }
    if (pivotRow != row) {
      for (int j = 1; j <= R_.Cols(); ++j) fmpq_swap(R_.At(row, j), R_.At(pivotRow, j));
      if (isTold) scribe_.Add(SayExchange(row, pivotRow));
      if (isTold) ShowNow(col, row, {});
    }
    std::vector<bool> changed(static_cast<std::size_t>(R_.Rows()) + 1, false);
    Divide(row, pivot, isTold, changed);
    for (int k = 1; k <= R_.Rows(); ++k) {
      if (k != row) Subtract(k, col, row, isTold, changed);
    }
    result_.pivots.push_back(col);
    pivotValues_.push_back(pivot);
    if (isTold && std::ranges::count(changed, true) != 0) ShowNow(0, 0, changed);
  }

  void SayPivot(int col, int pivotRow, const Rational& pivot) {
    scribe_.Step("Column " + CStr(col));
    if (Row() == R_.Rows()) {
      scribe_.Say("The pivot is ", ShowRounded(pivot), " in row ", pivotRow, ".");
    } else {
      scribe_.Say("From row ", Row(), " on the element of the largest magnitude in column ", col,
                  " is the pivot: ", ShowRounded(pivot), " in row ", pivotRow, ".");
    }
    ShowNow(col, pivotRow, {});
  }

  void Divide(int row, const Rational& pivot, bool isTold, std::vector<bool>& changed) {
    if (pivot == Rational(1)) return;
    for (int j = 1; j <= R_.Cols(); ++j) fmpq_div(R_.At(row, j), R_.At(row, j), pivot.Get());
    changed[static_cast<std::size_t>(row)] = true;
    if (isTold) scribe_.Add(Rounded(SayDivide(row, AsTraced(pivot)), pivot));
  }

  void Subtract(int target, int col, int row, bool isTold, std::vector<bool>& changed) {
    const Rational factor = ValueAt(R_, target, col);
    if (factor.IsZero()) return;
    scribe_.Look();
    for (int j = 1; j <= R_.Cols(); ++j) {
      fmpq_submul(R_.At(target, j), factor.Get(), R_.At(row, j));
    }
    changed[static_cast<std::size_t>(target)] = true;
    if (isTold) scribe_.Add(Rounded(SaySubtract(target, AsTraced(factor), row), factor));
  }

  /// The matrix as it is by now, with a pivot framed or with the rows that have changed.
  void ShowNow(int pivotCol, int pivotRow, const std::vector<bool>& changed) {
    if (!isShown_) return;
    ShownMatrix shown = ShowRounded(R_);
    if (pivotCol != 0) shown.At(pivotRow, pivotCol).mark = CellMark::kPivot;
    for (std::size_t i = 1; i < changed.size(); ++i) {
      if (changed[i]) MarkRow(shown, static_cast<int>(i), CellMark::kChanged);
    }
    Line line;
    line.isFormula = true;
    line.pieces.emplace_back(std::move(shown));
    scribe_.Add(std::move(line));
  }

  void TellPivots() {
    scribe_.Step("All pivots");
    Table table{{"Row", "Column", "Pivot"}, {}};
    for (int k = 1; k <= result_.Rank(); ++k) {
      const auto at = static_cast<std::size_t>(k) - 1;
      table.rows.push_back(
          {MakeLine(k), MakeLine(result_.pivots[at]), MakeLine(ShowRounded(pivotValues_[at]))});
    }
    scribe_.Add(std::move(table));
  }

  Scribe& scribe_;
  ExactMatrix& R_;
  ReducedForm& result_;
  int steps_;
  StepChoice choice_;
  bool isShown_;
  std::vector<Rational> pivotValues_;
};

}  // namespace

ShownMatrix ShowRounded(const ExactMatrix& A) {
  ShownMatrix shown{A.Rows(), A.Cols(), {}, {}, false};
  for (int i = 1; i <= A.Rows(); ++i) {
    for (int j = 1; j <= A.Cols(); ++j) shown.cells.push_back({ShowRounded(ValueAt(A, i, j))});
  }
  return shown;
}

ShownMatrix ShowColumn(const ExactMatrix& A, int col) {
  ShownMatrix shown{A.Rows(), 1, {}, {}, false};
  for (int i = 1; i <= A.Rows(); ++i) shown.cells.push_back({ShowRounded(ValueAt(A, i, col))});
  return shown;
}

void TellReducedForm(const ExactMatrix& A, Scribe& scribe, ReducedForm& result) {
  scribe.Part("Reduced row echelon form");
  scribe.Say(
      "Every pivot becomes 1 and stands alone in its column; each stands to the right of the one "
      "above it.");
  Reduction(A, scribe, result).Run();
  scribe.Step("The reduced form R");
  if (!IsShown(A.Rows(), A.Cols())) {
    scribe.Say("R has ", A.Rows(), " rows and ", A.Cols(), " columns and is not written out here.");
    return;
  }
  ShownMatrix shown = ShowRounded(result.matrix);
  for (int k = 1; k <= result.Rank(); ++k) {
    shown.At(k, result.pivots[static_cast<std::size_t>(k) - 1]).mark = CellMark::kFound;
  }
  scribe.Formula(Name{"R"}, kEquals, std::move(shown));
}

}  // namespace qmx
