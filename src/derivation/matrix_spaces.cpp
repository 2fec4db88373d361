// SPDX-License-Identifier: MIT
#include <algorithm>
#include <utility>

#include "derivation/reduced_form.h"
#include "derivation/rounded.h"

namespace qmx {
namespace {

/// Larger bases are not written out.
constexpr int kMostVectors = 12;

bool IsPivot(const ReducedForm& reduced, int col) {
  return std::ranges::find(reduced.pivots, col) != reduced.pivots.end();
}

std::vector<int> FreeColumns(const ReducedForm& reduced) {
  std::vector<int> free;
  for (int j = 1; j <= reduced.matrix.Cols(); ++j) {
    if (!IsPivot(reduced, j)) free.push_back(j);
  }
  return free;
}

/// "1", "1 and 2", "1, 2 and 5"
std::string Listed(const std::vector<int>& numbers) {
  std::string text;
  for (std::size_t k = 0; k < numbers.size(); ++k) {
    if (k > 0) text += k + 1 == numbers.size() ? " and " : ", ";
    text += CStr(numbers[k]);
  }
  return text;
}

/// "column 1", "columns 1 and 2"
std::string ListedColumns(const std::vector<int>& columns) {
  return (columns.size() == 1 ? "column " : "columns ") + Listed(columns);
}

Name Unknown(int index) { return {"x", CStr(index)}; }

void TellRank(const ReducedForm& reduced, Scribe& scribe) {
  scribe.Part("Rank");
  const int rank = reduced.Rank();
  const int rows = reduced.matrix.Rows();
  const int cols = reduced.matrix.Cols();
  if (rank == 0) {
    scribe.Say("R has no pivot: the rank of A is 0.");
  } else {
    scribe.Say("R has ", rank, rank == 1 ? " pivot, in " : " pivots, in ",
               ListedColumns(reduced.pivots), ": the rank of A is ", rank, ".");
  }
  if (rank == rows && rank == cols) {
    scribe.Say("The rank is the order of A: A has an inverse.");
  } else if (rank == std::min(rows, cols)) {
    scribe.Say("That is as much as a matrix of its shape can have.");
  } else if (rows == cols) {
    scribe.Say("The rank is less than the order of A: A is singular.");
  }
}

void TellColumnSpace(const ExactMatrix& A, const ReducedForm& reduced, Scribe& scribe) {
  scribe.Part("Column space");
  if (reduced.Rank() == 0) {
    scribe.Say("All columns of A are zero: the column space holds the zero vector alone.");
    return;
  }
  const std::string columns = ListedColumns(reduced.pivots);
  scribe.Say("Where R has its pivots, A has columns that are a basis of its column space: ",
             columns, ". The rows of R that are not zero are a basis of its row space.");
  if (!IsShown(A.Rows(), reduced.Rank())) return;
  Line line;
  line.isFormula = true;
  for (const int col : reduced.pivots) {
    if (!line.pieces.empty()) line.pieces.emplace_back(Operator{","});
    line.pieces.emplace_back(ShowColumn(A, col));
  }
  scribe.Add(std::move(line));
}

/// x₁ = -2·x₃ + 1/2·x₄
Line EquationOf(const ReducedForm& reduced, int row, const std::vector<int>& free) {
  Line line = MakeLine(Unknown(reduced.pivots[static_cast<std::size_t>(row) - 1]), kEquals);
  line.isFormula = true;
  bool isFirst = true;
  for (const int col : free) {
    Rational factor;
    fmpq_neg(factor.Get(), reduced.matrix.At(row, col));
    if (factor.IsZero()) continue;
    const bool isNegative = factor.Sign() < 0;
    if (isNegative) fmpq_neg(factor.Get(), factor.Get());
    if (!isFirst || isNegative) line.pieces.emplace_back(Operator{isNegative ? "−" : "+"});
    if (!(factor == Rational(1))) {
      line.pieces.emplace_back(ShowRounded(factor));
      line.pieces.emplace_back(Operator{"·"});
    }
    line.pieces.emplace_back(Unknown(col));
    isFirst = false;
  }
  if (isFirst) line.pieces.emplace_back(ShowRounded(Rational()));
  return line;
}

/// A sum of all vectors of the basis.
void SayAllSolutions(int count, Scribe& scribe) {
  Line line = MakeLine(Name{"x"}, kEquals);
  line.isFormula = true;
  for (int k = 1; k <= count; ++k) {
    const std::string index = count == 1 ? "" : CStr(k);
    if (k > 1) line.pieces.emplace_back(Operator{"+"});
    line.pieces.emplace_back(Name{"t", index});
    line.pieces.emplace_back(Operator{"·"});
    line.pieces.emplace_back(Name{"n", index});
  }
  scribe.Add(std::move(line));
}

void TellNullSpace(const ReducedForm& reduced, Scribe& scribe) {
  scribe.Part("Null space");
  const std::vector<int> free = FreeColumns(reduced);
  if (free.empty()) {
    scribe.Say("Every column has its pivot: A·x = 0 only for x = 0.");
    return;
  }
  scribe.Say("No pivot stands in ", ListedColumns(free),
             free.size() == 1 ? ": there the unknown is free, "
                              : ": there the unknowns are free, and the null space has dimension ",
             free.size() == 1 ? "and the null space has dimension 1."
                              : CStr(static_cast<int>(free.size())) + ".");
  if (!IsShown(reduced.matrix.Cols(), 1) || free.size() > kMostVectors) {
    scribe.Say("Its basis is not written out here.");
    return;
  }
  if (reduced.Rank() > 0) scribe.Say("The rows of R say what the other unknowns are:");
  for (int row = 1; row <= reduced.Rank(); ++row) scribe.Add(EquationOf(reduced, row, free));
  ExactMatrix basis(reduced.matrix.Cols(), static_cast<int>(free.size()));
  NullSpaceBasis(reduced, basis);
  scribe.Say(free.size() == 1
                 ? "A basis in whole numbers, with the free unknown as small as that allows:"
                 : "A basis in whole numbers, each vector with one free unknown, the others zero:");
  for (int k = 1; k <= basis.Cols(); ++k) {
    ShownMatrix shown = ShowColumn(basis, k);
    MarkCells(shown, CellMark::kFound);
    scribe.Formula(Name{"n", free.size() == 1 ? "" : CStr(k)}, kEquals, std::move(shown));
  }
  scribe.Say("All solutions of A·x = 0:");
  SayAllSolutions(basis.Cols(), scribe);
}

}  // namespace

void NullSpaceBasis(const ReducedForm& reduced, ExactMatrix& basis) {
  const std::vector<int> free = FreeColumns(reduced);
  for (int k = 1; k <= basis.Cols(); ++k) {
    const int col = free[static_cast<std::size_t>(k) - 1];
    Rational common(1);
    for (int row = 1; row <= reduced.Rank(); ++row) {
      fmpz_lcm(fmpq_numref(common.Get()), common.Numerator(),
               fmpq_denref(reduced.matrix.At(row, col)));
    }
    fmpq_set(basis.At(col, k), common.Get());
    for (int row = 1; row <= reduced.Rank(); ++row) {
      fmpq* element = basis.At(reduced.pivots[static_cast<std::size_t>(row) - 1], k);
      fmpq_mul(element, reduced.matrix.At(row, col), common.Get());
      fmpq_neg(element, element);
    }
  }
}

void TellSpaces(const ExactMatrix& A, const ReducedForm& reduced, Scribe& scribe) {
  TellRank(reduced, scribe);
  TellColumnSpace(A, reduced, scribe);
  TellNullSpace(reduced, scribe);
}

}  // namespace qmx
