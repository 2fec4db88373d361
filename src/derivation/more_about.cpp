// SPDX-License-Identifier: MIT
#include "derivation/more_about.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "derivation/matrix_facts.h"
#include "derivation/polynomial_words.h"
#include "derivation/reduced_form.h"
#include "derivation/rounded.h"

namespace qmx {
namespace {

/// Rows and columns up to which a matrix is looked into.
constexpr int kMostLookedInto = 40;

bool IsFinite(const Matrix& A) {
  return std::all_of(A.Data(), A.Data() + A.Size(), [](double x) { return std::isfinite(x); });
}

void SayHowItIsRead(Scribe& scribe) {
  scribe.Say(
      "Every element is read as the decimal number that its grid shows, and all is computed with "
      "exact fractions. Decimals are these exact values rounded to 15 digits; behind ≈ stand "
      "decimals alone, every digit of which holds.");
}

void SayLeftOut(const Matrix& A, Scribe& scribe) {
  scribe.Say("A has ", A.Rows(), A.Rows() == 1 ? " row and " : " rows and ", A.Cols(),
             A.Cols() == 1 ? " column." : " columns.");
  if (!IsFinite(A)) {
    scribe.Say("Some of its elements are no finite numbers: nothing more can be told exactly.");
  } else if (std::max(A.Rows(), A.Cols()) > kMostLookedInto) {
    scribe.Say(
        "Reduced form, rank, null space, condition number and eigenvalues are left out: with exact "
        "fractions they would take too long for more than ",
        kMostLookedInto, " rows or columns.");
  } else {
    scribe.Say(
        "Its elements are of very different magnitudes, so that exact fractions become very long: "
        "reduced form, rank, null space, condition number and eigenvalues are left out.");
  }
}

void FillGlance(Block& place, const Glance& glance) {
  auto& table = std::get<Table>(place);
  for (const auto& [what, value] : glance) table.rows.push_back({MakeLine(what), value});
}

void TellSquare(const ExactMatrix& A, const ReducedForm& reduced, Scribe& scribe, Glance& glance) {
  scribe.Look();
  const CharacteristicPolynomial characteristic = CharacteristicOf(A);
  // The determinant is the value at 0, but for the sign.
  Rational determinant = characteristic.polynomial.Coefficient(0);
  if (A.Rows() % 2 != 0) fmpq_neg(determinant.Get(), determinant.Get());
  glance.emplace_back("Determinant", MakeLine(ShowRounded(determinant)));
  TellCharacteristic(A, characteristic, scribe);
  TellEigenvalues(A, characteristic, scribe, glance);
  scribe.Look();
  TellConditionNumbers(A, reduced.Rank() < A.Rows(), scribe, glance);
}

}  // namespace

Document MoreAboutMatrix(const Matrix& A, const DerivationLook& look) {
  Document document;
  Scribe scribe(document, look);
  scribe.Title("More about A");
  const bool isRead =
      A.Size() > 0 && std::max(A.Rows(), A.Cols()) <= kMostLookedInto && IsFinite(A);
  ExactMatrix exact(isRead ? A.Rows() : 0, isRead ? A.Cols() : 0);
  if (!isRead || !TakeExact(ElementsOf<Traced>(A), exact) || !IsWithinReach(exact)) {
    SayLeftOut(A, scribe);
    return document;
  }
  SayHowItIsRead(scribe);
  if (IsShown(A.Rows(), A.Cols())) scribe.Formula(Name{"A"}, kEquals, ShowRounded(exact));
  // The facts come first, once all of them are known.
  const std::size_t front = document.blocks.size();
  document.blocks.emplace_back(Table{{"At a glance", ""}, {}});
  Glance glance;
  glance.emplace_back("Shape", MakeLine(A.Rows(), " × ", A.Cols()));
  ReducedForm reduced(A.Rows(), A.Cols());
  TellReducedForm(exact, scribe, reduced);
  glance.emplace_back("Rank", MakeLine(reduced.Rank()));
  glance.emplace_back("Dimension of the null space", MakeLine(A.Cols() - reduced.Rank()));
  TellSpaces(exact, reduced, scribe);
  if (A.IsSquare()) {
    TellSquare(exact, reduced, scribe, glance);
  } else {
    scribe.Part("Eigenvalues and condition number");
    scribe.Say("Only square matrices have them.");
  }
  FillGlance(document.blocks[front], glance);
  return document;
}

}  // namespace qmx
