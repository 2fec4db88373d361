// SPDX-License-Identifier: MIT
#include <flint/fmpq_mat.h>

#include <algorithm>

#include "derivation/matrix_facts.h"
#include "derivation/polynomial_words.h"

namespace qmx {
namespace {

/// An eigenvalue, or a pair of them, and the factor of which it is a root.
struct Eigenvalue {
  FoundRoot root;
  const PolynomialFactor* factor;
};

/// p(A) by Horner's rule.
void Evaluate(const RationalPolynomial& polynomial, const ExactMatrix& A, ExactMatrix& value,
              const Scribe& scribe) {
  fmpq_mat_zero(value.Get());
  ExactMatrix product(A.Rows(), A.Rows());
  for (int k = polynomial.Degree(); k >= 0; --k) {
    scribe.Look();
    fmpq_mat_mul(product.Get(), value.Get(), A.Get());
    const Rational coefficient = polynomial.Coefficient(k);
    for (int i = 1; i <= A.Rows(); ++i) {
      fmpq_add(product.At(i, i), product.At(i, i), coefficient.Get());
    }
    fmpq_mat_set(value.Get(), product.Get());
  }
}

/// The dimension of the eigenvectors of each root of a factor: of all of them together, p(A) maps
/// them to zero.
int EigenspaceDimension(const PolynomialFactor& factor, const ExactMatrix& A,
                        const Scribe& scribe) {
  if (factor.multiplicity == 1) return 1;
  ExactMatrix value(A.Rows(), A.Rows());
  Evaluate(factor.polynomial, A, value, scribe);
  const auto rank = static_cast<int>(fmpq_mat_rref(value.Get(), value.Get()));
  // No factor is a constant.
  const int degree = std::max(factor.polynomial.Degree(), 1);
  return (A.Rows() - rank) / degree;
}

Name NameOf(int first, const FoundRoot& root) {
  return {"λ", CStr(first) + (root.isPair ? "," + CStr(first + 1) : "")};
}

/// "= 2", "≈ 1.5", and how it comes about where that is one step.
void AppendValue(Line& line, const FoundRoot& root) {
  const bool isExact = root.kind != FoundRoot::Kind::kHigherDegree;
  line.pieces.emplace_back(Operator{isExact ? "=" : "≈"});
  AppendRoot(line, root);
}

void SayFactor(const PolynomialFactor& factor, Scribe& scribe) {
  const int degree = factor.polynomial.Degree();
  if (degree > kMostShownDegree) return;
  Line line = MakeLine(degree == 1   ? "A factor of degree 1 tells its root: "
                       : degree == 2 ? "A factor of degree 2 is solved by completing the square: "
                                     : "A factor of a higher degree has its roots enclosed until "
                                       "all 15 digits hold: ");
  AppendPolynomial(line, factor.polynomial);
  line.pieces.emplace_back(kEquals);
  line.pieces.emplace_back(ShowExact(0));
  scribe.Add(std::move(line));
}

std::vector<Eigenvalue> AllOf(const CharacteristicPolynomial& characteristic, Scribe& scribe) {
  std::vector<Eigenvalue> all;
  int number = 1;
  for (const PolynomialFactor& factor : characteristic.factors) {
    scribe.Look();
    SayFactor(factor, scribe);
    std::vector<FoundRoot> roots = RootsOf(factor.polynomial, [&scribe] { scribe.Look(); });
    if (!std::ranges::all_of(roots, &FoundRoot::HasDecimals)) {
      scribe.Say(
          "Some of them are so close together that their digits would take too long to find: … "
          "stands for these.");
    }
    for (FoundRoot& root : roots) {
      Line line = MakeLine(NameOf(number, root));
      line.isFormula = true;
      AppendValue(line, root);
      scribe.Add(std::move(line));
      number += root.isPair ? 2 : 1;
      all.push_back({std::move(root), &factor});
    }
  }
  return all;
}

/// Says so of a matrix that has enough eigenvectors, and whether they are real as far as that is
/// known.
std::string DiagonalText(const std::vector<Eigenvalue>& all) {
  const auto isPair = [](const Eigenvalue& value) { return value.root.isPair; };
  const auto isKnown = [](const Eigenvalue& value) { return value.root.HasDecimals(); };
  if (std::ranges::any_of(all, isPair)) return "A can be made diagonal with complex numbers.";
  if (std::ranges::all_of(all, isKnown)) return "A can be made diagonal.";
  return "A can be made diagonal, if not with real numbers then with complex ones.";
}

void TellMultiplicities(const std::vector<Eigenvalue>& all, const ExactMatrix& A, Scribe& scribe) {
  const bool hasMultiple = std::ranges::any_of(
      all, [](const Eigenvalue& value) { return value.factor->multiplicity > 1; });
  const std::string diagonal = DiagonalText(all);
  if (!hasMultiple) {
    scribe.Say(A.Rows() == 1 ? "It is the only one." : "All are different: " + diagonal);
    return;
  }
  Table table{{"Eigenvalue", "Multiplicity", "Dimension of its eigenvectors"}, {}};
  bool isDiagonal = true;
  int number = 1;
  const PolynomialFactor* last = nullptr;
  int dimension = 0;
  for (const Eigenvalue& value : all) {
    if (value.factor != last) dimension = EigenspaceDimension(*value.factor, A, scribe);
    last = value.factor;
    isDiagonal = isDiagonal && dimension == value.factor->multiplicity;
    table.rows.push_back({MakeLine(NameOf(number, value.root)),
                          MakeLine(value.factor->multiplicity), MakeLine(dimension)});
    number += value.root.isPair ? 2 : 1;
  }
  scribe.Add(std::move(table));
  scribe.Say(isDiagonal ? "Each has as many eigenvectors as its multiplicity: " + diagonal
                        : "Not each has as many eigenvectors as its multiplicity: A cannot be made "
                          "diagonal.");
}

/// One below the other.
void AddToGlance(const std::vector<Eigenvalue>& all, Glance& glance) {
  constexpr std::size_t kMost = 8;
  for (std::size_t k = 0; k < all.size() && k < kMost; ++k) {
    Line line;
    AppendRoot(line, all[k].root);
    const int multiplicity = all[k].factor->multiplicity;
    if (multiplicity > 1) line.pieces.emplace_back(Words{" (" + CStr(multiplicity) + " times)"});
    glance.emplace_back(k == 0 ? "Eigenvalues" : "", std::move(line));
  }
  if (all.size() > kMost) glance.emplace_back("", MakeLine("…"));
}

}  // namespace

void TellEigenvalues(const ExactMatrix& A, const CharacteristicPolynomial& characteristic,
                     Scribe& scribe, Glance& glance) {
  scribe.Part("Eigenvalues");
  scribe.Say(
      "The eigenvalues of A are the roots of its characteristic polynomial, real ones and pairs of "
      "complex ones.");
  const std::vector<Eigenvalue> all = AllOf(characteristic, scribe);
  TellMultiplicities(all, A, scribe);
  AddToGlance(all, glance);
}

}  // namespace qmx
