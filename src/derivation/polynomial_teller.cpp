// SPDX-License-Identifier: MIT
#include "derivation/polynomial_teller.h"

#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>

namespace qmx {
namespace {

// Polynomials of matrices of higher order, or with longer coefficients, are not made: their factors
// could take minutes.
constexpr int kMostOrder = 16;
constexpr slong kMostBits = 8000;

Name Lambda(int power) { return {"λ", "", power > 1 ? CStr(power) : ""}; }

Rational Half(const Rational& number) {
  Rational half;
  fmpq_div_2exp(half.Get(), number.Get(), 1);
  return half;
}

/// p(λ) = what `append` writes and tells to be exact; else p(λ) ≈ that.
template <class Append>
void ShowPolynomial(Scribe& scribe, Append&& append) {
  Line line = MakeLine(Name{"p"}, Sign("("), Lambda(1), Sign(")"), kEquals);
  const std::size_t sign = line.pieces.size() - 1;
  if (!append(line)) line.pieces[sign] = Sign("≈");
  line.isFormula = true;
  scribe.Add(std::move(line));
}

/// (factor) · (factor) ...
bool AppendFactors(Line& line, const std::vector<PolynomialFactor>& factors) {
  bool isFirst = true;
  bool isExact = true;
  for (const PolynomialFactor& factor : factors) {
    // λ needs no parentheses.
    const bool isEnclosed = factor.polynomial.size() != 2 || !factor.polynomial[0].IsZero();
    for (int k = 0; k < factor.multiplicity; ++k) {
      if (!isFirst) line.pieces.emplace_back(Sign("·"));
      isFirst = false;
      if (isEnclosed) line.pieces.emplace_back(Sign("("));
      isExact = AppendPolynomial(line, factor.polynomial) && isExact;
      if (isEnclosed) line.pieces.emplace_back(Sign(")"));
    }
  }
  return isExact;
}

std::string TimesText(int multiplicity) {
  return multiplicity == 1 ? "." : ", " + CStr(multiplicity) + " times.";
}

/// λ = -b/2 ± √(b²/4 - c), of λ² + b·λ + c.
void TellQuadratic(Scribe& scribe, const PolynomialFactor& factor) {
  const Rational middle = Half(factor.polynomial[1]);
  Rational square;
  fmpq_mul(square.Get(), middle.Get(), middle.Get());
  fmpq_sub(square.Get(), square.Get(), factor.polynomial[0].Get());
  Rational real = middle;
  fmpq_neg(real.Get(), real.Get());
  const bool isReal = square.Sign() > 0;
  TracedRoot root;
  root.coefficient = Rational(1);
  fmpq_abs(root.square.Get(), square.Get());
  const ExactNumber exact = ExactOf(root);
  if (!exact.IsKnown() || !ExactOf(real).IsKnown()) {
    return scribe.Say("A factor of degree 2 has ", isReal ? "two real roots" : "a complex pair",
                      TimesText(factor.multiplicity));
  }
  ShownNumber shown;
  shown.exact = exact;
  Line line = MakeLine(Lambda(1), kEquals);
  if (real.Sign() != 0) line.pieces.emplace_back(ShowExact(real));
  line.pieces.emplace_back(Sign("±"));
  line.pieces.emplace_back(std::move(shown));
  if (!isReal) {
    line.pieces.emplace_back(Sign("·"));
    line.pieces.emplace_back(Name{"i"});
  }
  line.pieces.emplace_back(Words{(isReal ? ": two real eigenvalues" : ": a complex pair") +
                                 TimesText(factor.multiplicity)});
  scribe.Add(std::move(line));
}

void TellRoots(Scribe& scribe, const PolynomialFactor& factor) {
  const int degree = static_cast<int>(factor.polynomial.size()) - 1;
  if (degree == 1) {
    Rational root = factor.polynomial[0];
    fmpq_neg(root.Get(), root.Get());
    return scribe.Say(Lambda(1), kEquals, ShowExact(root), TimesText(factor.multiplicity));
  }
  if (degree == 2) return TellQuadratic(scribe, factor);
  const int complex = degree - factor.realRoots;
  std::string text = "The factor of degree " + CStr(degree) + " has ";
  if (factor.realRoots == 0) text += "no real roots";
  if (factor.realRoots == 1) text += "1 real root";
  if (factor.realRoots > 1) text += CStr(factor.realRoots) + " real roots";
  text +=
      " and " + (complex == 0 ? std::string("no complex ones") : CStr(complex) + " complex ones");
  scribe.Say(text + ", none of which is rational", TimesText(factor.multiplicity));
}

/// Bits of the elements once they have a common denominator.
slong BitsOf(const ExactMatrix& A) {
  Whole denominator;
  fmpz_one(denominator.Get());
  slong most = 0;
  for (int i = 1; i <= A.Rows(); ++i) {
    for (int j = 1; j <= A.Cols(); ++j) {
      fmpz_lcm(denominator.Get(), denominator.Get(), fmpq_denref(A.At(i, j)));
      most = std::max(most, static_cast<slong>(fmpz_bits(fmpq_numref(A.At(i, j)))));
    }
  }
  return most + static_cast<slong>(fmpz_bits(denominator.Get()));
}

}  // namespace

bool AppendPolynomial(Line& line, const Polynomial& polynomial) {
  bool isFirst = true;
  bool isExact = true;
  for (int k = static_cast<int>(polynomial.size()) - 1; k >= 0; --k) {
    Rational coefficient = polynomial[k];
    if (coefficient.IsZero()) continue;
    const bool isNegative = coefficient.Sign() < 0;
    if (isNegative || !isFirst) line.pieces.emplace_back(Sign(isNegative ? "−" : "+"));
    isFirst = false;
    fmpq_abs(coefficient.Get(), coefficient.Get());
    const bool isOne = coefficient == Rational(1);
    if (!isOne || k == 0) {
      ShownNumber shown = ShowExact(coefficient);
      isExact = isExact && shown.exact.IsKnown();
      line.pieces.emplace_back(std::move(shown));
    }
    if (!isOne && k > 0) line.pieces.emplace_back(Sign("·"));
    if (k > 0) line.pieces.emplace_back(Lambda(k));
  }
  return isExact;
}

std::vector<PolynomialFactor> TellCharacteristicPolynomial(Scribe& scribe, const Matrix& A) {
  const int n = A.Rows();
  scribe.Part("The characteristic polynomial");
  ExactMatrix exact(n <= kMostOrder ? n : 0, n <= kMostOrder ? n : 0);
  if (n > kMostOrder || !TakeExact(ElementsOf<Traced>(A), exact) || n * BitsOf(exact) > kMostBits) {
    scribe.Say("It would take too long to make for this matrix and is left out.");
    return {};
  }
  scribe.Say("The eigenvalues are the roots of ", Name{"p"}, Sign("("), Lambda(1), Sign(")"),
             kEquals, Name{"det"}, Sign("("), Lambda(1), Sign("·"), Name{"I"}, Sign("−"), Name{"A"},
             Sign(")"), ", here without rounding:");
  scribe.Look();
  const Polynomial polynomial = CharacteristicPolynomial(exact);
  ShowPolynomial(scribe, [&](Line& line) { return AppendPolynomial(line, polynomial); });
  scribe.Look();
  std::vector<PolynomialFactor> factors = FactorsOf(polynomial);
  scribe.Look();
  if (factors.size() == 1 && factors[0].multiplicity == 1 && n > 1) {
    scribe.Say("It has no factors with rational coefficients.");
  } else if (n > 1) {
    scribe.Say("Its factors with rational coefficients:");
    ShowPolynomial(scribe, [&](Line& line) { return AppendFactors(line, factors); });
  }
  for (const PolynomialFactor& factor : factors) TellRoots(scribe, factor);
  return factors;
}

}  // namespace qmx
