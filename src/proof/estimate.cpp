// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cmath>

#include "proof/elimination_passes.h"
#include "proof/pivoted_elimination.h"
#include "proof/proof.h"
#include "proof/residues.h"
#include "proof/shapes.h"

// The constants are what bench/proof_benchmark measured on one core of 2.6 GHz.

namespace qmx {
namespace {

constexpr double kNano = 1e-9;
constexpr double kTermOfExactDot = 12 * kNano;       // A product of doubles, added to a sum.
constexpr double kTermOfApproximateDot = 8 * kNano;  // The same with 128 bits and no radii.
constexpr double kElement = 600 * kNano;             // To enter it and to count its digits.
constexpr double kOperand = 50 * kNano;              // To read an element of an operand.
constexpr double kResidue = 2 * kNano;               // Of a step of elimination modulo a prime.

/// A product of balls, added to a sum.
double TermOfDot(double bits) { return (10 + 0.11 * bits) * kNano; }

double Cube(double n) { return n * n * n; }

double BitsAtFirst(double n) { return static_cast<double>(FirstBits(static_cast<int>(n))); }

double SecondsOfElimination(double n, double bits) { return Cube(n) / 3 * TermOfDot(bits); }

double SecondsOfCondition(double n) { return Cube(n) * kTermOfApproximateDot; }

double SecondsOfGram(double rows, double cols) { return rows * cols * cols / 2 * kTermOfExactDot; }

double SecondsOfInverse(double n) {
  const bool isAround = n > kLargestDirectInverse;
  return isAround ? 22 * kNano * Cube(n) : Cube(n) * TermOfDot(BitsAtFirst(n));
}

double SecondsOfPolynomial(const Matrix& A) {
  const auto primes = static_cast<double>(PrimesForCharacteristicPolynomial(A));
  const double n = A.Rows();
  return primes * (kResidue * Cube(n) + 10 * kNano * n * n + 2 * kNano * n * primes);
}

/// Newton's method takes some thirty values of the polynomial and its derivative, with numbers of
/// 512 bits; a vector takes an elimination.
double SecondsOfEigen(const ProofQuestion& question) {
  const double n = question.a.Rows();
  const double values = question.computed[0].Rows();
  const double vectors = question.computed[1].Cols();
  return SecondsOfPolynomial(question.a) + (values + vectors) * 60 * n * TermOfDot(512) +
         vectors * SecondsOfElimination(n, BitsAtFirst(n));
}

struct Sizes {
  double rows;
  double cols;
  double bits;  ///< Of the first pass.
};

double SecondsOf(const ProofQuestion& question, const Sizes& a) {
  const double n = std::min(a.rows, a.cols);
  switch (question.task) {
    case ProofTask::kProduct:
      return a.rows * a.cols * question.b.Cols() * kTermOfExactDot;
    case ProofTask::kDeterminant:
      return SecondsOfElimination(n, a.bits);
    case ProofTask::kLu:
      return a.rows * a.cols * n / 3 * TermOfDot(a.bits);
    case ProofTask::kInverse:
      return SecondsOfInverse(n);
    case ProofTask::kAdjoint:
      return Cube(n) * TermOfDot(a.bits);
    case ProofTask::kQr:
      return SecondsOfGram(a.rows, n) + SecondsOfElimination(n, 2 * a.bits) +
             a.rows * n * n / 2 * TermOfDot(2 * a.bits);
    case ProofTask::kEigen:
      return SecondsOfEigen(question);
    case ProofTask::kSolution:
      return SecondsOfElimination(n, a.bits) + SecondsOfCondition(n);
    case ProofTask::kSolutionByFactors:
      return a.rows * a.rows * TermOfDot(2 * a.bits);
    case ProofTask::kLeastSquares:
      return SecondsOfGram(a.rows, a.cols) + SecondsOfElimination(n, a.bits) +
             SecondsOfCondition(n);
    case ProofTask::kDefiniteness:
      return SecondsOfElimination(n, 2 * a.bits);
    default:
      return 0;
  }
}

}  // namespace

ProofCost EstimateProof(const ProofQuestion& question) {
  if (!Fits(question)) return {};
  const double least = std::min(question.a.Rows(), question.a.Cols());
  const Sizes a{static_cast<double>(question.a.Rows()), static_cast<double>(question.a.Cols()),
                BitsAtFirst(least)};
  double elements = 0;
  for (const Matrix& computed : question.computed) {
    elements += static_cast<double>(computed.Size());
  }
  const double operands = static_cast<double>(question.a.Size() + question.b.Size());
  ProofCost cost;
  cost.seconds = elements * kElement + operands * kOperand + SecondsOf(question, a);
  cost.bytes = BytesOfBalls(6, std::sqrt(elements + operands), a.bits);
  return cost;
}

}  // namespace qmx
