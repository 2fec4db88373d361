// SPDX-License-Identifier: MIT
#if defined(__linux__)
#include <malloc.h>
#endif

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "algorithms/block_sizes.h"
#include "algorithms/definiteness.h"
#include "algorithms/determinant.h"
#include "algorithms/eigenvalues.h"
#include "algorithms/elementary.h"
#include "algorithms/inverse.h"
#include "algorithms/linear_system.h"
#include "algorithms/lu.h"
#include "algorithms/qr.h"
#include "base/arithmetic.h"
#include "base/team.h"
#include "support/core_cases.h"

// Only the allocator of the C library tells what is in use, and a sanitizer puts its own in its
// place.
#if defined(__linux__) && !defined(QMX_SANITIZED)

namespace qmx {
namespace {

std::size_t BytesInUse() {
  const struct mallinfo2 info = mallinfo2();
  return info.uordblks + info.hblkhd;
}

/// Looks at the memory in use whenever a task reports.
class MemoryWatch : public Progress {
 public:
  MemoryWatch() : before_(BytesInUse()), most_(before_) {}
  void Report([[maybe_unused]] double fraction) override { Look(); }
  void Look() { most_ = std::max(most_, BytesInUse()); }
  /// The most that was in use beyond what was there in the beginning.
  std::size_t Most() const { return most_ - before_; }

 private:
  std::size_t before_;
  std::size_t most_;
};

constexpr int kOrder = 600;

/// What small objects and the heads of blocks take, whatever the order is.
constexpr std::size_t kBookkeeping = 4096;

constexpr int kMembers = 2;
/// Every member but the first one has packed operands of its own, which it keeps.
constexpr std::size_t kPacked = (kMembers - 1) * (kMostPackedA + kMostPackedB) * sizeof(double);

/// Runs a task and expects that it never held more than so many matrices of an order, and a strip
/// of so many columns.
template <class Task>
void ExpectAtMost(std::size_t matrices, std::size_t stripColumns, std::size_t order,
                  const char* name, Task task) {
  Team team(kMembers);
  const UseTeam use(team);
  MemoryWatch watch;
  [[maybe_unused]] const auto result = task(watch);
  watch.Look();
  EXPECT_LE(watch.Most(),
            (matrices * order + stripColumns) * order * sizeof(double) + kPacked + kBookkeeping)
      << name;
  // The watch sees that there is a work matrix or a result at all.
  EXPECT_GE(watch.Most(), order * order * sizeof(double)) << name;
}

/// The same with matrices of kOrder, and with a strip that blocks are copied to.
template <class Task>
void ExpectAtMost(std::size_t matrices, const char* name, Task task) {
  constexpr std::size_t kStripColumns = 300;
  ExpectAtMost(matrices, kStripColumns, kOrder, name, task);
}

TEST(MemoryTest, ATaskHoldsItsResultsAndOneWorkMatrix) {
  testing::Dice dice(1301);
  Matrix A = testing::RealMatrix(dice, kOrder, kOrder);
  for (int i = 1; i <= kOrder; ++i) {
    for (int j = 1; j < i; ++j) A(i, j) = A(j, i);
  }
  const Matrix system = testing::RealMatrix(dice, kOrder + 1, kOrder + 1);
  ExpectAtMost(1, "product", [&](Progress& p) { return Product(A, A, p); });
  ExpectAtMost(1, "determinant", [&](Progress& p) { return Determinant(A, p); });
  ExpectAtMost(2, "inverse", [&](Progress& p) { return Inverse(A, p); });
  ExpectAtMost(2, "adjoint by inverse", [&](Progress& p) { return AdjointByInverse(A, p); });
  ExpectAtMost(2, "LU", [&](Progress& p) { return FactorLu(A, true, p); });
  ExpectAtMost(2, "QR", [&](Progress& p) { return FactorQr(A, p); });
  ExpectAtMost(1, "definiteness", [&](Progress& p) { return TestDefiniteness(A, p); });
  ExpectAtMost(1, "one-shot solution", [&](Progress& p) { return SolveOneShot(system, p); });
  ExpectAtMost(1, "least squares", [&](Progress& p) { return SolveLeastSquares(system, p); });
}

TEST(MemoryTest, TheEigenvaluesHoldThreeWorkMatricesAndAStripForEachMember) {
  testing::Dice dice(1303);
  constexpr std::size_t kSmaller = 200;
  // What each member projects at a time in a cycle, which is more than its strip of a reflection,
  // and what rows are rounded up to; the rest are vectors.
  constexpr HessenbergSizes kSizes = kBlockSizes.hessenberg;
  static_assert(kSizes.sharedBlock >= kSizes.reflectionStrip);
  constexpr std::size_t kStrips = kMembers * kSizes.sharedBlock + kSizes.tile + 3 * 8;
  const Matrix A = testing::RealMatrix(dice, kSmaller, kSmaller);
  ExpectAtMost(3, kStrips, kSmaller, "eigenvalues", [&](Progress& p) {
    std::int32_t shiftIndex = 0;
    ClearArithmeticFaults();
    return FindEigenvalues(A, {0.0005, 3, 0.1, 0.001}, shiftIndex, p);
  });
}

TEST(MemoryTest, TheAdjointByCofactorsHoldsItsResultOneBranchAndOneMinor) {
  testing::Dice dice(1302);
  constexpr int kSmaller = 60;
  constexpr std::size_t kVectors = 8;
  const Matrix A = testing::RealMatrix(dice, kSmaller, kSmaller);
  ExpectAtMost(3, kVectors, kSmaller, "adjoint by cofactors",
               [&](Progress& p) { return AdjointByCofactors(A, p); });
}

}  // namespace
}  // namespace qmx

#endif
