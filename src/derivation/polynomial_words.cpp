// SPDX-License-Identifier: MIT
#include "derivation/polynomial_words.h"

#include <utility>

#include "derivation/rounded.h"
#include "derivation/shown.h"

namespace qmx {
namespace {

const Name kLambda{"λ"};

Name PowerOfLambda(int exponent) { return {"λ", "", exponent == 1 ? "" : CStr(exponent)}; }

/// coefficient · λ^exponent with its sign.
void AppendTermOf(Line& line, Rational coefficient, int exponent, bool isFirst) {
  const bool isNegative = coefficient.Sign() < 0;
  if (isNegative) fmpq_neg(coefficient.Get(), coefficient.Get());
  if (!isFirst || isNegative) line.pieces.emplace_back(Operator{isNegative ? "−" : "+"});
  const bool isOne = coefficient == Rational(1);
  if (!isOne || exponent == 0) line.pieces.emplace_back(ShowRounded(coefficient));
  if (exponent == 0) return;
  if (!isOne) line.pieces.emplace_back(Operator{"·"});
  line.pieces.emplace_back(PowerOfLambda(exponent));
}

/// √|square|
ShownNumber RootOfMagnitude(const Rational& square) {
  TracedRoot root;
  root.coefficient = Rational(1);
  root.square = square;
  fmpq_abs(root.square.Get(), root.square.Get());
  ShownNumber shown;
  shown.exact = ExactOf(root);
  return shown;
}

void AppendQuadratic(Line& line, const FoundRoot& root) {
  const bool isComplex = root.isPair;
  ShownNumber radical = RootOfMagnitude(root.square);
  const std::string decimals = isComplex ? root.imaginary : RootText(Rational(), root.square, true);
  radical.decimal = decimals;
  radical.held = decimals.size();
  if (!root.center.IsZero()) line.pieces.emplace_back(ShowRounded(root.center));
  const char* sign = isComplex ? "±" : root.isUpper ? "+" : "−";
  if (!root.center.IsZero() || isComplex || !root.isUpper) {
    line.pieces.emplace_back(Operator{sign});
  }
  const bool isUnit = isComplex && radical.exact == ExactNumber{"1", "1", "1"};
  if (!isUnit) line.pieces.emplace_back(radical);
  if (isComplex) {
    if (!isUnit) line.pieces.emplace_back(Operator{"·"});
    line.pieces.emplace_back(Name{"i"});
    return;
  }
  line.pieces.emplace_back(Operator{"≈"});
  line.pieces.emplace_back(ShowDigits(root.real));
}

/// The traces and matrices that give the coefficients one after the other.
void TellTraces(const ExactMatrix& A, Scribe& scribe) {
  const int n = A.Rows();
  scribe.Say(
      "Its coefficients follow from traces: with B = A first, each coefficient is minus the trace "
      "of "
      "B, divided by its number k; then B becomes A·(B + coefficient·I).");
  Table table{{"k", "Trace of B", "Coefficient", "of"}, {}};
  ExactMatrix B(n, n);
  ExactMatrix sum(n, n);
  fmpq_mat_set(B.Get(), A.Get());
  for (int k = 1; k <= n; ++k) {
    scribe.Look();
    Rational trace;
    fmpq_mat_trace(trace.Get(), B.Get());
    Rational coefficient;
    fmpq_div(coefficient.Get(), trace.Get(), Rational(-k).Get());
    Line power = n == k ? MakeLine("1") : MakeLine(PowerOfLambda(n - k));
    table.rows.push_back({MakeLine(k), MakeLine(ShowRounded(trace)),
                          MakeLine(ShowRounded(coefficient)), std::move(power)});
    fmpq_mat_set(sum.Get(), B.Get());
    for (int i = 1; i <= n; ++i) fmpq_add(sum.At(i, i), sum.At(i, i), coefficient.Get());
    fmpq_mat_mul(B.Get(), A.Get(), sum.Get());
  }
  scribe.Add(std::move(table));
}

Line DeterminantOfLambda() {
  Line line = MakeLine(Name{"det"}, Operator{"("}, kLambda, Operator{"·"}, Name{"I"}, Operator{"−"},
                       Name{"A"}, Operator{")"}, kEquals);
  line.isFormula = true;
  return line;
}

/// Adds the product of the factors, each in parentheses: (λ - 2)²·(λ² + 1).
void AppendFactors(Line& line, const std::vector<PolynomialFactor>& factors) {
  for (std::size_t k = 0; k < factors.size(); ++k) {
    if (k > 0) line.pieces.emplace_back(Operator{"·"});
    const PolynomialFactor& factor = factors[k];
    const std::string power = factor.multiplicity == 1 ? "" : CStr(factor.multiplicity);
    if (factor.polynomial.Degree() == 1 && factor.polynomial.Coefficient(0).IsZero()) {
      line.pieces.emplace_back(Name{"λ", "", power});
      continue;
    }
    line.pieces.emplace_back(Operator{"("});
    AppendPolynomial(line, factor.polynomial);
    line.pieces.emplace_back(Operator{")"});
    if (!power.empty()) line.pieces.emplace_back(Name{"", "", power});
  }
}

}  // namespace

void AppendPolynomial(Line& line, const RationalPolynomial& polynomial) {
  bool isFirst = true;
  for (int k = polynomial.Degree(); k >= 0; --k) {
    Rational coefficient = polynomial.Coefficient(k);
    if (coefficient.IsZero()) continue;
    AppendTermOf(line, std::move(coefficient), k, isFirst);
    isFirst = false;
  }
}

void AppendRoot(Line& line, const FoundRoot& root) {
  if (root.kind == FoundRoot::Kind::kRational) {
    line.pieces.emplace_back(ShowRounded(root.center));
    return;
  }
  if (root.kind == FoundRoot::Kind::kQuadratic) {
    AppendQuadratic(line, root);
    return;
  }
  if (!root.isPair) {
    line.pieces.emplace_back(ShowDigits(root.real));
    return;
  }
  if (root.real != "0") line.pieces.emplace_back(ShowDigits(root.real));
  line.pieces.emplace_back(Operator{"±"});
  line.pieces.emplace_back(ShowDigits(root.imaginary));
  line.pieces.emplace_back(Operator{"·"});
  line.pieces.emplace_back(Name{"i"});
}

void TellCharacteristic(const ExactMatrix& A, const CharacteristicPolynomial& characteristic,
                        Scribe& scribe) {
  scribe.Part("Characteristic polynomial");
  if (A.Rows() > kMostShownDegree) {
    scribe.Say("It has degree ", A.Rows(), " and is not written out here.");
    return;
  }
  if (A.Rows() <= kFullOrder && A.Rows() > 1) TellTraces(A, scribe);
  Line line = DeterminantOfLambda();
  AppendPolynomial(line, characteristic.polynomial);
  scribe.Add(std::move(line));
  const bool isOneFactor =
      characteristic.factors.size() == 1 && characteristic.factors.front().multiplicity == 1;
  if (isOneFactor) {
    if (A.Rows() > 1) scribe.Say("It has no factors over the rational numbers.");
    return;
  }
  scribe.Say("Its factors over the rational numbers:");
  Line factored = DeterminantOfLambda();
  AppendFactors(factored, characteristic.factors);
  scribe.Add(std::move(factored));
}

}  // namespace qmx
