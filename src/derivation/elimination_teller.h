// SPDX-License-Identifier: MIT
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "derivation/plain_elimination.h"
#include "derivation/scribe.h"

namespace qmx {

/// Which of the steps of a derivation are told.
class StepChoice {
 public:
  /// Of `steps` for a matrix of this order: all, or the first and the last two.
  StepChoice(int steps, int order) : steps_(steps), isFull_(order <= kFullOrder) {}
  bool Tells(int step) const { return isFull_ || step <= kEnds || step > steps_ - kEnds; }
  /// True for the first that is left out, where what is left out is said.
  bool BeginsGap(int step) const { return step == kEnds + 1 && LeftOut() > 0; }
  int LeftOut() const { return isFull_ ? 0 : std::max(steps_ - 2 * kEnds, 0); }
  /// Say how many are left out, at the first that is: of the columns of an elimination, or of the
  /// rows of a substitution.
  void SayLeftOut(Scribe& scribe, int step) const;
  void SayRowsLeftOut(Scribe& scribe, int step, bool isFromBelow) const;
  bool IsFull() const { return isFull_; }

 private:
  static constexpr int kEnds = 2;
  int steps_;
  bool isFull_;
};

/// Of a large matrix so many rows of a step are told one by one.
inline constexpr int kMostToldRows = 8;

/// Tells where the exact value of a pivot and its double do not agree on being zero. True if they
/// do not: there are no exact values from here on.
bool TellParting(Scribe& scribe, const Traced& pivot);
/// The same of a step of `elements`, which are decimals alone from there on; below a heading of its
/// own where the step is not told.
bool Part(Scribe& scribe, const Traced& pivot, bool isTold, const std::string& heading,
          Elements<Traced>& elements);

/// How an elimination is told.
struct EliminationView {
  std::vector<int> bars;  ///< Of the matrices shown.
  bool pivoting = true;
  bool stopsAtZero = false;  ///< As the rules of the elimination say.
};

/// Tells an elimination column by column while it runs.
class EliminationTeller {
 public:
  /// `W` is the matrix that is eliminated, `steps` the number of its columns that are.
  EliminationTeller(Scribe& scribe, const Elements<Traced>& W, int rows, int steps,
                    EliminationView view);

  void OnPivot(Elements<Traced>& W, int column, int row);
  void OnNoPivot(Elements<Traced>& W, int column);
  void OnExchange(int one, int two);
  void OnSubtract(int target, const Traced& factor, int source);
  void OnColumnDone(int column);

  /// True once the exact values have been given up.
  bool HasParted() const { return hasParted_; }
  /// The pivots of a large matrix in a table; nothing for others.
  void TellPivots() const;
  /// The matrix as it is by now, multipliers shown as the zeros that they stand for.
  ShownMatrix Now() const;

 private:
  struct ToldPivot {
    int column;
    int row;
    Traced value;
  };
  void BeginColumn(int column);
  void SayPivot(int column, int row, const Traced& pivot);
  void ShowNow(int pivotColumn, int firstChanged, int lastChanged);

  Scribe& scribe_;
  const Elements<Traced>& W_;
  int rows_;
  EliminationView view_;
  StepChoice choice_;
  std::vector<ToldPivot> pivots_;
  std::vector<bool> isDone_;  ///< Columns below whose diagonal there are zeros.
  bool isTold_ = true;
  bool hasParted_ = false;
  bool hasChanged_ = false;   ///< Rows of this column have been told of.
  std::vector<int> changed_;  ///< Those that did not stay as they were.
};

}  // namespace qmx
