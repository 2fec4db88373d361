// SPDX-License-Identifier: MIT
#include <optional>
#include <utility>

#include "derivation/largest_root.h"
#include "derivation/matrix_facts.h"
#include "derivation/polynomial_words.h"
#include "derivation/reduced_form.h"
#include "derivation/rounded.h"
#include "derivation/shown.h"
#include "proof/ball.h"

namespace qmx {
namespace {

// How narrow enclosures are made, in bits: at first, and at the most.
constexpr int kFirstBits = 60;
constexpr int kMostBits = 480;

/// The 1-norm: the largest sum of magnitudes in a column, and that column.
struct ColumnNorm {
  Rational value;
  int column = 1;
};

ColumnNorm NormOf(const ExactMatrix& A) {
  ColumnNorm norm;
  for (int j = 1; j <= A.Cols(); ++j) {
    Rational sum;
    Rational magnitude;
    for (int i = 1; i <= A.Rows(); ++i) {
      fmpq_abs(magnitude.Get(), A.At(i, j));
      fmpq_add(sum.Get(), sum.Get(), magnitude.Get());
    }
    if (fmpq_cmp(sum.Get(), norm.value.Get()) <= 0) continue;
    norm.value = sum;
    norm.column = j;
  }
  return norm;
}

const Name kNorm{"‖A‖", "1"};
const Name kInverseNorm{"‖A⁻¹‖", "1"};

void TellNorm(const ExactMatrix& A, const Name& name, const Name& normName, const ColumnNorm& norm,
              Scribe& scribe) {
  constexpr int kMostTermsOfSum = 8;
  Line line = MakeLine(normName, kEquals);
  line.isFormula = true;
  if (A.Rows() > 1 && A.Rows() <= kMostTermsOfSum) {
    for (int i = 1; i <= A.Rows(); ++i) {
      Rational magnitude;
      fmpq_abs(magnitude.Get(), A.At(i, norm.column));
      if (i > 1) line.pieces.emplace_back(Operator{"+"});
      line.pieces.emplace_back(ShowRounded(magnitude));
    }
    line.pieces.emplace_back(kEquals);
  }
  line.pieces.emplace_back(ShowRounded(norm.value));
  scribe.Say("In ", name, " the largest sum of magnitudes is that of column ", norm.column, ":");
  scribe.Add(std::move(line));
}

void TellInOneNorm(const ExactMatrix& A, const ExactMatrix& inverse, Scribe& scribe,
                   Glance& glance) {
  scribe.Step("In the 1-norm");
  const Name inverseName{"A", "", "-1"};
  if (IsShown(A.Rows(), A.Cols())) scribe.Formula(inverseName, kEquals, ShowRounded(inverse));
  const ColumnNorm norm = NormOf(A);
  const ColumnNorm inverseNorm = NormOf(inverse);
  TellNorm(A, Name{"A"}, kNorm, norm, scribe);
  TellNorm(inverse, inverseName, kInverseNorm, inverseNorm, scribe);
  Rational condition;
  fmpq_mul(condition.Get(), norm.value.Get(), inverseNorm.value.Get());
  scribe.Formula(Name{"κ", "1"}, kEquals, kNorm, Operator{"·"}, kInverseNorm, kEquals,
                 ShowRounded(norm.value), Operator{"·"}, ShowRounded(inverseNorm.value), kEquals,
                 ShowRounded(condition));
  glance.emplace_back("Condition number, 1-norm", MakeLine(ShowRounded(condition)));
}

/// What κ₂ is made of: decimals that hold, and exact values where there are some.
struct SpectralRatio {
  ShownNumber least;
  ShownNumber largest;
  ShownNumber ratio;
};

/// The text that both ends of an enclosure round to; empty where there is none.
std::string CommonText(const Rational& lower, const Rational& upper) {
  std::string text = RoundedText(lower);
  return text == RoundedText(upper) ? text : std::string();
}

/// √(upper / lower) for the ends of two enclosures; empty where they do not tell it.
std::string RatioText(const LargestRoot& largest, const LargestRoot& inverseLeast, slong bits) {
  const auto rootOfProduct = [bits](const Rational& one, const Rational& other) {
    Rational value;
    fmpq_mul(value.Get(), one.Get(), other.Get());
    Ball root;
    arb_set_fmpq(root, value.Get(), bits);
    arb_sqrt(root, root, bits);
    return root;
  };
  const Ball lower = rootOfProduct(largest.Lower(), inverseLeast.Lower());
  const Ball upper = rootOfProduct(largest.Upper(), inverseLeast.Upper());
  Ball both;
  arb_union(both, lower, upper, bits);
  return RoundedText(both);
}

Rational Reciprocal(const Rational& value) {
  Rational reciprocal;
  fmpq_inv(reciprocal.Get(), value.Get());
  return reciprocal;
}

/// A root is exact where its factor is of degree 1.
void AddExact(const CharacteristicPolynomial& characteristic, const LargestRoot& roots,
              SpectralRatio& spectral) {
  std::optional<Rational> least;
  std::optional<Rational> largest;
  for (const PolynomialFactor& factor : characteristic.factors) {
    if (factor.polynomial.Degree() != 1) continue;
    const Rational root = RootOfLinear(factor.polynomial);
    const int above = roots.CountAbove(root);
    if (above == 0) largest = root;
    if (above + factor.multiplicity == characteristic.polynomial.Degree()) least = root;
  }
  if (least) spectral.least.exact = ExactOf(*least);
  if (largest) spectral.largest.exact = ExactOf(*largest);
  if (!least || !largest) return;
  TracedRoot ratio;
  ratio.coefficient = Rational(1);
  fmpq_div(ratio.square.Get(), largest->Get(), least->Get());
  spectral.ratio.exact = ExactOf(ratio);
}

SpectralRatio RatioOf(const CharacteristicPolynomial& characteristic, const Scribe& scribe) {
  const DerivationLook look = [&scribe] { scribe.Look(); };
  LargestRoot largest(characteristic.polynomial, false, look);
  LargestRoot inverseLeast(characteristic.polynomial, true, look);
  SpectralRatio spectral;
  for (int bits = kFirstBits; bits <= kMostBits; bits *= 2) {
    largest.Narrow(bits);
    inverseLeast.Narrow(bits);
    spectral.largest = ShowDigits(CommonText(largest.Lower(), largest.Upper()));
    spectral.least =
        ShowDigits(CommonText(Reciprocal(inverseLeast.Upper()), Reciprocal(inverseLeast.Lower())));
    spectral.ratio = ShowDigits(RatioText(largest, inverseLeast, 2 * bits));
    AddExact(characteristic, largest, spectral);
    if (!spectral.least.decimal.empty() && !spectral.largest.decimal.empty() &&
        !spectral.ratio.decimal.empty())
      break;
  }
  return spectral;
}

Operator SignFor(const ShownNumber& number) { return {number.exact.IsKnown() ? "=" : "≈"}; }

void TellInTwoNorm(const ExactMatrix& A, Scribe& scribe, Glance& glance) {
  scribe.Step("In the 2-norm");
  scribe.Say(
      "It is the root of the ratio of the largest and the smallest eigenvalue of the transpose of "
      "A "
      "times A.");
  ExactMatrix square(A.Rows(), A.Rows());
  ExactMatrix transposed(A.Rows(), A.Rows());
  fmpq_mat_transpose(transposed.Get(), A.Get());
  fmpq_mat_mul(square.Get(), transposed.Get(), A.Get());
  scribe.Look();
  const CharacteristicPolynomial characteristic = CharacteristicOf(square);
  if (IsShown(A.Rows(), A.Cols())) {
    scribe.Formula(Name{"A", "", "T"}, Operator{"·"}, Name{"A"}, kEquals, ShowRounded(square));
  }
  if (A.Rows() <= kFullOrder) {
    scribe.Say("Its characteristic polynomial:");
    Line line;
    line.isFormula = true;
    AppendPolynomial(line, characteristic.polynomial);
    scribe.Add(std::move(line));
  }
  const SpectralRatio spectral = RatioOf(characteristic, scribe);
  scribe.Formula(Name{"μ", "max"}, SignFor(spectral.largest), spectral.largest);
  scribe.Formula(Name{"μ", "min"}, SignFor(spectral.least), spectral.least);
  scribe.Formula(Name{"κ", "2"}, kEquals, Operator{"√"}, Operator{"("}, Name{"μ", "max"},
                 Words{"/"}, Name{"μ", "min"}, Operator{")"}, SignFor(spectral.ratio),
                 spectral.ratio);
  glance.emplace_back("Condition number, 2-norm", MakeLine(spectral.ratio));
}

}  // namespace

void TellConditionNumbers(const ExactMatrix& A, bool isSingular, Scribe& scribe, Glance& glance) {
  scribe.Part("Condition number");
  if (isSingular) {
    scribe.Say("A has no inverse: its condition number is infinite.");
    glance.emplace_back("Condition number", MakeLine("infinite"));
    return;
  }
  scribe.Say(
      "The condition number says by how much relative errors of the elements of A, or of a "
      "right-hand "
      "side, may grow in the solution of a system.");
  ExactMatrix inverse(A.Rows(), A.Rows());
  scribe.Look();
  fmpq_mat_inv(inverse.Get(), A.Get());
  TellInOneNorm(A, inverse, scribe, glance);
  TellInTwoNorm(A, scribe, glance);
}

}  // namespace qmx
