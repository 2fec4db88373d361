// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cmath>
#include <cstddef>
#include <new>
#include <optional>
#include <span>

#include "algorithms/eigenvalues.h"
#include "base/arithmetic.h"
#include "base/fault.h"
#include "derivation/elimination_teller.h"
#include "derivation/families.h"
#include "derivation/matrix_facts.h"
#include "derivation/polynomial_words.h"
#include "derivation/reduced_form.h"

namespace qmx {
namespace {

// Of a long iteration the first and the last cycles are told.
constexpr std::size_t kFirstCycles = 40;
constexpr std::size_t kLastCycles = 10;
// Bits that the determinant of a matrix may take whose polynomial is made. With elements of 15
// digits that is an order of 30; roots of polynomials with longer coefficients take minutes.
constexpr slong kMostBits = 3000;
// Significant digits of a change.
constexpr int kChangeDigits = 3;

/// A number that a column of the table shows in few digits.
ShownNumber Short(std::string decimal) {
  ShownNumber shown;
  shown.decimal = std::move(decimal);
  shown.held = shown.decimal.size();
  return shown;
}

ShownNumber Computed(double value) { return Short(std::isfinite(value) ? CStr(value) : ""); }

void AppendItem(Line& line, Piece piece) {
  if (!line.pieces.empty()) line.pieces.emplace_back(Words{", "});
  line.pieces.push_back(std::move(piece));
}

/// Collects the cycles as rows of a table: the first and the last ones, and those between that
/// found something.
class CycleRows final : public EigenvalueObserver {
 public:
  explicit CycleRows(const Scribe& scribe) : scribe_(scribe) {}

  void OnCycle(std::span<const double> diagonal, std::span<const double> change) override;
  void OnFound(int position, double eigenvalue) override;
  void OnShift(int place, double shift) override;

  int Count() const { return count_; }
  Table Take();

 private:
  Line& Cell(std::size_t col) { return rows_.back()[col]; }
  void LeaveOut();

  const Scribe& scribe_;
  int count_ = 0;
  std::vector<std::vector<Line>> rows_;
  std::vector<int> cycles_;  ///< The number of each row's cycle.
};

void CycleRows::OnCycle(std::span<const double> diagonal, std::span<const double> change) {
  scribe_.Look();
  ++count_;
  rows_.push_back({MakeLine(count_), {}, {}, {}, {}});
  cycles_.push_back(count_);
  LeaveOut();
  const std::size_t shown = std::min<std::size_t>(diagonal.size(), kFullOrder);
  for (std::size_t k = 0; k < shown; ++k) AppendItem(Cell(1), Short(CStrSingle(diagonal[k])));
  if (shown < diagonal.size()) AppendItem(Cell(1), Words{"…"});
  const double largest = *std::max_element(change.begin(), change.end());
  Cell(2) = MakeLine(Short(TableNumber(largest, kChangeDigits)));
}

void CycleRows::OnFound(int position, double eigenvalue) {
  AppendItem(Cell(3), Computed(eigenvalue));
  Cell(3).pieces.emplace_back(Words{" (" + CStr(position) + ")"});
}

void CycleRows::OnShift(int place, double shift) {
  Cell(4) = MakeLine(Short(CStrSingle(shift)), " (", place, ")");
}

/// Lets the cycle go that is not one of the last any more.
void CycleRows::LeaveOut() {
  if (rows_.size() <= kFirstCycles + kLastCycles) return;
  const auto at = static_cast<std::ptrdiff_t>(rows_.size() - kLastCycles - 1);
  if (!rows_[at][3].pieces.empty()) return;
  rows_.erase(rows_.begin() + at);
  cycles_.erase(cycles_.begin() + at);
}

Table CycleRows::Take() {
  Table table{{"Cycle", "Diagonal", "Largest change", "Found", "Shift"}, {}};
  for (std::size_t k = 0; k < rows_.size(); ++k) {
    const int left = k == 0 ? 0 : cycles_[k] - cycles_[k - 1] - 1;
    if (left > 0) {
      const std::string text = CStr(left) + (left == 1 ? " cycle" : " cycles") + " left out";
      table.rows.push_back({MakeLine("…"), MakeLine(text), {}, {}, {}});
    }
    table.rows.push_back(std::move(rows_[k]));
  }
  return table;
}

class LookingProgress final : public Progress {
 public:
  explicit LookingProgress(const Scribe& scribe) : scribe_(scribe) {}
  void Report(double /*fraction*/) override { scribe_.Look(); }

 private:
  const Scribe& scribe_;
};

/// The program's own iteration, watched. Nothing where it ends in a fault, as it did for the
/// program.
std::optional<EigenvalueRun> Run(const DerivationQuestion& question, Scribe& scribe) {
  std::int32_t shiftIndex = question.shiftIndex;
  LookingProgress progress(scribe);
  CycleRows rows(scribe);
  std::optional<EigenvalueRun> run;
  std::string ending;
  ClearArithmeticFaults();
  try {
    run = FindEigenvalues(question.a, question.eigen, shiftIndex, progress, kBlockSizes, &rows);
  } catch (const RuntimeFault& fault) {
    if (fault.Number() == Fault::kOutOfMemory) throw std::bad_alloc();
    ending = FaultText(fault.Number());
  }
  if (rows.Count() > 0) scribe.Add(rows.Take());
  if (!run) scribe.Say("The iteration ends with a fault: ", ending, ".");
  return run;
}

/// The rational root that a value found stands for, the closest one; nothing where none is as close
/// as the error bound promises.
std::optional<Rational> RootCloseTo(double value, const std::vector<PolynomialFactor>& factors,
                                    double bound) {
  std::optional<Rational> closest;
  for (const PolynomialFactor& factor : factors) {
    if (factor.polynomial.Degree() != 1) continue;
    Rational root = RootOfLinear(factor.polynomial);
    const double distance = std::abs(fmpq_get_d(root.Get()) - value);
    if (distance > bound) continue;
    bound = distance;
    closest = std::move(root);
  }
  return closest;
}

void TellFound(Scribe& scribe, const EigenvalueRun& run,
               const std::vector<PolynomialFactor>& factors, double bound) {
  const int n = static_cast<int>(run.eigenvalues.size());
  scribe.Part("The eigenvalues found");
  if (run.count == 0) return scribe.Say("No diagonal entry has settled within the cycles allowed.");
  Table table{{"Row of A", "Found", "Exactly"}, {}};
  for (int t = 0; t < std::min(run.count, kMostExactOrder); ++t) {
    const double value = run.eigenvalues[t];
    const std::optional<Rational> root = RootCloseTo(value, factors, bound);
    ShownNumber shown = Computed(value);
    if (root) shown.held = HeldCharacters(shown.decimal, *root);
    table.rows.push_back(
        {MakeLine(static_cast<int>(run.origin[t])), MakeLine(std::move(shown)),
         root ? MakeLine(ShowExact(*root)) : MakeLine("no rational one as close")});
  }
  if (factors.empty()) {
    table.headings.pop_back();
    for (auto& row : table.rows) row.pop_back();
  }
  scribe.Add(std::move(table));
  if (run.count > kMostExactOrder) {
    scribe.Say("And ", run.count - kMostExactOrder, " more.");
  }
  if (run.count < n) {
    scribe.Say("The other ", n - run.count, n - run.count == 1 ? " has" : " have",
               " not been found: complex eigenvalues never "
               "settle, and others may need more cycles.");
  }
}

std::optional<EigenvalueRun> TellIteration(const DerivationQuestion& question, Scribe& scribe,
                                           const std::vector<PolynomialFactor>& factors) {
  scribe.Part("The iteration");
  if (question.a.Rows() > 2) {
    scribe.Say(
        "Reflections first make all elements below the subdiagonal 0 (Hessenberg form), which "
        "leaves the eigenvalues as they are.");
  }
  scribe.Say(
      "Each cycle factors what is left into Q · R and puts R · Q in its place. A diagonal entry "
      "that has changed by no more than ",
      Computed(question.eigen.tolerance),
      " and is cut off from its neighbours is an eigenvalue and is taken out; in parentheses, "
      "the row of A where it began. Once an entry has changed by no more than ",
      Computed(question.eigen.shiftReference),
      ", the diagonal is moved by the one that changed least, whose place stands in "
      "parentheses; the moves are added to what is found.");
  std::optional<EigenvalueRun> run = Run(question, scribe);
  // What has settled may be off by as much as the bound that the tolerance is half of.
  if (run) TellFound(scribe, *run, factors, 2 * question.eigen.tolerance);
  return run;
}

/// Whether the polynomial and its roots are there in a moment.
bool IsQuick(const ExactMatrix& A) {
  Whole denominator;
  fmpz_one(denominator.Get());
  slong most = 0;
  for (int i = 1; i <= A.Rows(); ++i) {
    for (int j = 1; j <= A.Cols(); ++j) {
      fmpz_lcm(denominator.Get(), denominator.Get(), fmpq_denref(A.At(i, j)));
      most = std::max(most, static_cast<slong>(fmpz_bits(fmpq_numref(A.At(i, j)))));
    }
  }
  return A.Rows() * (most + static_cast<slong>(fmpz_bits(denominator.Get()))) <= kMostBits &&
         IsWithinReach(A);
}

/// The exact polynomial, its factors and its roots; no factors where A is too large for that.
std::vector<PolynomialFactor> TellPolynomial(const Matrix& A, Scribe& scribe) {
  const int n = A.Rows();
  if (n <= kMostExactOrder) {
    ExactMatrix exact(n, n);
    if (TakeExact(ElementsOf<Traced>(A), exact) && IsQuick(exact)) {
      scribe.Look();
      CharacteristicPolynomial characteristic = CharacteristicOf(exact);
      TellCharacteristic(exact, characteristic, scribe);
      Glance unread;
      TellEigenvalues(exact, characteristic, scribe, unread);
      return std::move(characteristic.factors);
    }
  }
  scribe.Part("Characteristic polynomial");
  scribe.Say("It would take too long to make for this matrix and is left out.");
  return {};
}

std::vector<PolynomialFactor> TellBoth(const DerivationQuestion& question, Scribe& scribe,
                                       std::optional<EigenvalueRun>& run) {
  if (IsShown(question.a.Rows(), question.a.Cols())) {
    ShowNamed(scribe, Name{"A"}, ElementsOf<Traced>(question.a));
  }
  std::vector<PolynomialFactor> factors = TellPolynomial(question.a, scribe);
  run = TellIteration(question, scribe, factors);
  return factors;
}

/// What solves (A − λI)·x = 0 for a rational eigenvalue.
void TellExactVectors(Scribe& scribe, const Matrix& A, const PolynomialFactor& factor) {
  scribe.Look();
  const int n = A.Rows();
  ExactMatrix shifted(n, n);
  if (!TakeExact(ElementsOf<Traced>(A), shifted)) return;
  const Rational root = RootOfLinear(factor.polynomial);
  for (int i = 1; i <= n; ++i) fmpq_sub(shifted.At(i, i), shifted.At(i, i), root.Get());
  scribe.Part("Eigenvectors of a rational eigenvalue");
  scribe.Say("For ", Name{"λ"}, kEquals, ShowExact(root), " all solutions of ", Sign("("),
             Name{"A"}, Sign("−"), Name{"λ"}, Sign("·"), Name{"I"}, Sign(")"), Sign("·"), Name{"x"},
             kEquals, ShowExact(0), " are sought.");
  scribe.Formula(Name{"A"}, Sign("−"), Name{"λ"}, Sign("·"), Name{"I"}, kEquals,
                 ShowRounded(shifted));
  ReducedForm reduced(n, n);
  TellReducedForm(shifted, scribe, reduced);
  const int count = n - reduced.Rank();
  ExactMatrix basis(n, count);
  NullSpaceBasis(reduced, basis);
  scribe.Step("The eigenvectors");
  scribe.Say("Each column without a pivot gives one; all others are sums of their multiples.");
  for (int k = 1; k <= count; ++k) {
    ShownMatrix vector = ShowColumn(basis, k);
    MarkCells(vector, CellMark::kFound);
    scribe.Formula(Name{"x", count > 1 ? CStr(k) : ""}, kEquals, std::move(vector));
  }
}

/// How the program moves an eigenvalue before it factors the shifted matrix.
double MovedValue(const DerivationQuestion& question, double lambda, int origin) {
  const double additional = question.eigen.additionalShift;
  return question.a(origin, origin) - lambda >= 0.0 ? lambda - additional : additional + lambda;
}

/// The factorization of A − μI, by its pivots.
void TellInverseIteration(Scribe& scribe, const DerivationQuestion& question, double lambda,
                          int origin) {
  scribe.Look();
  const int n = question.a.Rows();
  const double mu = MovedValue(question, lambda, origin);
  Elements<Traced> M = ElementsOf<Traced>(question.a, false);
  for (int i = 1; i <= n; ++i) M(i, i).value -= mu;
  scribe.Formula(Name{"λ"}, kEquals, Computed(lambda), Sign(","), Name{"μ"}, kEquals, Computed(mu));
  plain::LookingWatcher watcher([&scribe] { scribe.Look(); });
  plain::Eliminate(M, {n, n, true, true}, watcher);
  Line line = MakeLine("The pivots of A − μ · I: ");
  const int shown = std::min(n, kFullOrder);
  for (int k = 1; k <= shown; ++k) {
    if (k > 1) line.pieces.emplace_back(Words{", "});
    line.pieces.emplace_back(Show(M(k, k)));
  }
  line.pieces.emplace_back(Words{shown < n ? ", …" : "."});
  scribe.Add(std::move(line));
  for (int k = 1; k <= n; ++k) {
    if (M(k, k).value == 0) return scribe.Say("One is 0: the program takes it for singular.");
  }
}

}  // namespace

void DeriveEigenvalues(const DerivationQuestion& question, Scribe& scribe) {
  scribe.Title("Eigenvalues of A");
  std::optional<EigenvalueRun> run;
  TellBoth(question, scribe, run);
}

void DeriveEigenvectors(const DerivationQuestion& question, Scribe& scribe) {
  const int n = question.a.Rows();
  scribe.Title("Eigenvectors of A");
  std::optional<EigenvalueRun> run;
  const std::vector<PolynomialFactor> factors = TellBoth(question, scribe, run);
  for (const PolynomialFactor& factor : factors) {
    if (n <= kFullOrder && factor.polynomial.Degree() == 1) {
      TellExactVectors(scribe, question.a, factor);
    }
  }
  scribe.Part("The inverse iteration");
  if (!run || run->count == 0) return scribe.Say("There are none without an eigenvalue found.");
  scribe.Say(
      "The program begins with a random vector and solves again and again with A − μ · I, where μ "
      "lies beside the eigenvalue, away from the diagonal entry of A where it was found; each time "
      "the vector gets the length 1, until no element changes by more than ",
      Computed(question.eigen.tolerance), " but for the sign.");
  for (int t = 0; t < std::min(run->count, kFullOrder); ++t) {
    TellInverseIteration(scribe, question, run->eigenvalues[t], static_cast<int>(run->origin[t]));
  }
}

}  // namespace qmx
