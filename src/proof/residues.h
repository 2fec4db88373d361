// SPDX-License-Identifier: MIT
#pragma once

#include <flint/fmpz_poly.h>

#include "base/matrix.h"
#include "proof/watch.h"

namespace qmx {

/// The rank of A, exactly: elimination modulo primes of 62 bits. One prime proves a full rank; what
/// is less is proved by so many primes that no minor, which is whole once A has been scaled by
/// powers of two, can be divided by all of them (Hadamard's bound). Throws what the watch throws.
int ExactRank(const Matrix& A, const Watch& watch);

/// Polynomials with whole coefficients.
class WholePolynomial {
 public:
  WholePolynomial() { fmpz_poly_init(value_); }
  WholePolynomial(const WholePolynomial& other) : WholePolynomial() {
    fmpz_poly_set(value_, other.value_);
  }
  WholePolynomial& operator=(WholePolynomial other) noexcept {
    fmpz_poly_swap(value_, other.value_);
    return *this;
  }
  ~WholePolynomial() { fmpz_poly_clear(value_); }
  fmpz_poly_struct* Get() { return value_; }
  const fmpz_poly_struct* Get() const { return value_; }

 private:
  fmpz_poly_t value_;
};

/// det(z - 2^shift·A), whose coefficients are whole: its zeros are 2^shift times the eigenvalues.
struct CharacteristicPolynomial {
  WholePolynomial coefficients;
  slong shift = 0;
};

/// The characteristic polynomial of a square A, exactly, by the Chinese remainder theorem. Throws
/// what the watch throws.
CharacteristicPolynomial ExactCharacteristicPolynomial(const Matrix& A, const Watch& watch);

/// Number of primes that the characteristic polynomial takes: what its time goes by.
slong PrimesForCharacteristicPolynomial(const Matrix& A);

}  // namespace qmx
