// SPDX-License-Identifier: MIT
#include "proof/residues.h"

#include <flint/nmod_mat.h>
#include <flint/nmod_poly.h>
#include <flint/ulong_extras.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <vector>

#include "proof/whole_numbers.h"

namespace qmx {
namespace {

constexpr double kPrimeBits = 62;
constexpr mp_limb_t kFirstPrimeAbove = mp_limb_t{1} << 62;
constexpr double kNone = -std::numeric_limits<double>::infinity();

class ResidueMatrix {
 public:
  ResidueMatrix(int rows, int cols, mp_limb_t prime) { nmod_mat_init(value_, rows, cols, prime); }
  ResidueMatrix(const ResidueMatrix&) = delete;
  ResidueMatrix& operator=(const ResidueMatrix&) = delete;
  ~ResidueMatrix() { nmod_mat_clear(value_); }
  nmod_mat_struct* Get() { return value_; }

 private:
  nmod_mat_t value_;
};

class ResiduePolynomial {
 public:
  explicit ResiduePolynomial(mp_limb_t prime) { nmod_poly_init(value_, prime); }
  ResiduePolynomial(const ResiduePolynomial&) = delete;
  ResiduePolynomial& operator=(const ResiduePolynomial&) = delete;
  ~ResiduePolynomial() { nmod_poly_clear(value_); }
  nmod_poly_struct* Get() { return value_; }

 private:
  nmod_poly_t value_;
};

class WholeNumber {
 public:
  WholeNumber() { fmpz_init(value_); }
  WholeNumber(const WholeNumber&) = delete;
  WholeNumber& operator=(const WholeNumber&) = delete;
  ~WholeNumber() { fmpz_clear(value_); }
  fmpz* Get() { return value_; }

 private:
  fmpz_t value_;
};

/// A scaled by powers of two to whole numbers, and these modulo one prime after the other.
class ScaledMatrix {
 public:
  ScaledMatrix(const Matrix& A, const WholeScale& scale);

  void Reduce(ResidueMatrix& residues) const;

  /// log2 of Hadamard's bound on every minor, and of a bound on the sum of the magnitudes of all
  /// coefficients of the characteristic polynomial.
  double LogOfMinors() const;
  double LogOfCoefficients() const;

 private:
  struct Element {
    std::int64_t mantissa = 0;
    slong exponent = 0;
  };

  std::vector<double> LogsOfNorms(bool ofRows) const;

  int rows_;
  int cols_;
  std::vector<Element> elements_;
};

ScaledMatrix::ScaledMatrix(const Matrix& A, const WholeScale& scale)
    : rows_(A.Rows()), cols_(A.Cols()) {
  elements_.reserve(A.Size());
  for (int i = 0; i < rows_; ++i) {
    for (int j = 0; j < cols_; ++j) {
      int exponent = 0;
      auto mantissa =
          static_cast<std::int64_t>(std::ldexp(std::frexp(A(i + 1, j + 1), &exponent), 53));
      slong whole = mantissa == 0 ? 0 : exponent - 53 + scale.rows[i] + scale.cols[j];
      for (; whole < 0; ++whole) mantissa /= 2;  // Even as long as that: the element is whole.
      elements_.push_back({mantissa, whole});
    }
  }
}

void ScaledMatrix::Reduce(ResidueMatrix& residues) const {
  const nmod_t mod = residues.Get()->mod;
  std::vector<mp_limb_t> powers(1, 1);
  for (int i = 0; i < rows_; ++i) {
    for (int j = 0; j < cols_; ++j) {
      const Element& element = elements_[static_cast<std::size_t>(i) * cols_ + j];
      while (static_cast<slong>(powers.size()) <= element.exponent) {
        powers.push_back(nmod_add(powers.back(), powers.back(), mod));
      }
      const auto magnitude = static_cast<mp_limb_t>(std::abs(element.mantissa));
      const mp_limb_t residue = nmod_mul(magnitude, powers[element.exponent], mod);
      nmod_mat_entry(residues.Get(), i, j) =
          element.mantissa < 0 ? nmod_neg(residue, mod) : residue;
    }
  }
}

/// log2 of upper bounds of the Euclidean norms of the rows or columns.
std::vector<double> ScaledMatrix::LogsOfNorms(bool ofRows) const {
  std::vector<double> logs(ofRows ? rows_ : cols_, kNone);
  for (int i = 0; i < rows_; ++i) {
    for (int j = 0; j < cols_; ++j) {
      const Element& element = elements_[static_cast<std::size_t>(i) * cols_ + j];
      if (element.mantissa == 0) continue;
      double& log = logs[ofRows ? i : j];
      log = std::max(log, std::log2(std::abs(static_cast<double>(element.mantissa))) +
                              static_cast<double>(element.exponent));
    }
  }
  // A hundredth of a bit is far more than the roundings here amount to.
  for (double& log : logs) log += 0.5 * std::log2(ofRows ? cols_ : rows_) + 0.01;
  return logs;
}

double ScaledMatrix::LogOfMinors() const {
  double least = std::numeric_limits<double>::infinity();
  for (const bool ofRows : {true, false}) {
    double sum = 0;
    for (const double log : LogsOfNorms(ofRows)) sum += std::max(log, 0.0);
    least = std::min(least, sum);
  }
  return least;
}

/// A coefficient is a sum of principal minors, each of which is bounded by the norms of its rows;
/// all of those products are terms of the product of 1 + norm.
double ScaledMatrix::LogOfCoefficients() const {
  double sum = 0;
  for (const double log : LogsOfNorms(true)) sum += std::max(log, 0.0) + 1;
  return sum;
}

/// One power of two for all elements, so that eigenvalues are scaled by it as well.
WholeScale CommonScaleOf(const Matrix& A) {
  WholeScale scale = WholeColumnScaleOf(A);
  const slong common = *std::max_element(scale.cols.begin(), scale.cols.end());
  std::fill(scale.cols.begin(), scale.cols.end(), common);
  return scale;
}

/// So many primes that a whole number is known by its residues, whose magnitude and its sign have
/// so many bits and one or two.
slong PrimesFor(double bits) { return static_cast<slong>(std::ceil((bits + 2) / kPrimeBits)); }

}  // namespace

int ExactRank(const Matrix& A, const Watch& watch) {
  const ScaledMatrix scaled(A, WholeScaleOf(A));
  const int full = std::min(A.Rows(), A.Cols());
  int rank = 0;
  mp_limb_t prime = kFirstPrimeAbove;
  for (slong left = PrimesFor(scaled.LogOfMinors()); left > 0 && rank < full; --left) {
    watch.Look();
    prime = n_nextprime(prime, 0);
    ResidueMatrix residues(A.Rows(), A.Cols(), prime);
    scaled.Reduce(residues);
    rank = std::max(rank, static_cast<int>(nmod_mat_rank(residues.Get())));
  }
  return rank;
}

CharacteristicPolynomial ExactCharacteristicPolynomial(const Matrix& A, const Watch& watch) {
  const int n = A.Rows();
  const WholeScale scale = CommonScaleOf(A);
  const ScaledMatrix scaled(A, scale);
  CharacteristicPolynomial result;
  result.shift = scale.cols.front();
  WholeNumber modulus;
  fmpz_one(modulus.Get());
  mp_limb_t prime = kFirstPrimeAbove;
  for (slong left = PrimesFor(scaled.LogOfCoefficients()); left > 0; --left) {
    watch.Look();
    prime = n_nextprime(prime, 0);
    ResidueMatrix residues(n, n, prime);
    scaled.Reduce(residues);
    ResiduePolynomial polynomial(prime);
    nmod_mat_charpoly(polynomial.Get(), residues.Get());
    watch.Look();
    fmpz_poly_CRT_ui(result.coefficients.Get(), result.coefficients.Get(), modulus.Get(),
                     polynomial.Get(), 1);
    fmpz_mul_ui(modulus.Get(), modulus.Get(), prime);
  }
  return result;
}

slong PrimesForCharacteristicPolynomial(const Matrix& A) {
  return PrimesFor(ScaledMatrix(A, CommonScaleOf(A)).LogOfCoefficients());
}

}  // namespace qmx
