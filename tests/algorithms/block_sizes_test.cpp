// SPDX-License-Identifier: MIT
#include "algorithms/block_sizes.h"

#include <gtest/gtest.h>

#include <array>
#include <functional>
#include <string>
#include <type_traits>
#include <vector>

#include "algorithms/definiteness.h"
#include "algorithms/determinant.h"
#include "algorithms/eigenvalues.h"
#include "algorithms/eigenvectors.h"
#include "algorithms/elementary.h"
#include "algorithms/inverse.h"
#include "algorithms/linear_system.h"
#include "algorithms/lu.h"
#include "algorithms/qr.h"
#include "algorithms/work_matrix.h"
#include "base/team.h"
#include "output/reports.h"
#include "reference/reference.h"
#include "support/core_cases.h"
#include "support/core_compare.h"
#include "support/core_instruction_sets.h"

// Every algorithm with blocks so small that all their edges lie inside matrices of an order of
// about 7: none of the sizes may change a bit, nor may the number of threads that share the work.

namespace qmx {
namespace {

using testing::CaseShape;
using testing::CaseSource;
using testing::Comparison;
using testing::Record;
using testing::ToTable;

Progress unheard;

/// Blocks of so many columns, rows or steps each, from the smallest order on.
BlockSizes Sizes(int block, int panel, int strip) {
  return {// Every so many orders the rows lie apart.
          .work = {.competing = panel + 1, .gap = 2, .shareFrom = 0},
          .product = {.tinyOperand = 0, .shareFrom = 0, .leastPiece = 1},
          .elimination = {.smallOrder = 0,
                          .block = block,
                          .panel = panel,
                          .strip = strip,
                          .shareFrom = 0,
                          .sharedStrip = strip},
          .exchange = {.smallOrder = 0,
                       .block = block,
                       .panel = panel,
                       .strip = strip,
                       .factorGap = 1,
                       .shortRow = 2,
                       .scatter = 2,
                       .shareFrom = 0,
                       .sharedStrip = strip},
          .cofactors = {.smallOrder = 1, .shareFrom = 0},
          .qr = {.smallOrder = 0,
                 .block = block,
                 .tile = panel,
                 .sharedBlock = block,
                 .shareFrom = 0,
                 .sharedStrip = strip},
          .hessenberg = {.tinyReflector = 1,
                         .packedFrom = panel,
                         .reflectionStrip = strip,
                         .reflectionDepth = block,
                         .smallOrder = 0,
                         .strip = strip,
                         .tile = panel,
                         .shareFrom = 0,
                         .shareCycleFrom = 0,
                         .sharedBlock = block},
          .definiteness =
              {.smallOrder = 0, .shareFrom = 0, .steps = panel, .group = strip, .strip = strip},
          .leastSquares = {
              .fewElements = 0, .lowStrip = 2, .highStrip = 3, .highFrom = 5, .shareFrom = 0}};
}

/// The same without blocks.
BlockSizes Whole() {
  constexpr int kMany = 1000;
  BlockSizes sizes;
  sizes.product.tinyOperand = kMany;
  sizes.elimination.smallOrder = kMany;
  sizes.exchange.smallOrder = kMany;
  sizes.exchange.shortRow = 0;
  sizes.exchange.scatter = 0;
  sizes.cofactors.smallOrder = kMany;
  sizes.qr.smallOrder = kMany;
  sizes.hessenberg.smallOrder = kMany;
  sizes.hessenberg.tinyReflector = kMany;
  sizes.hessenberg.packedFrom = kMany;
  sizes.definiteness.smallOrder = kMany;
  sizes.leastSquares.fewElements = kMany;
  return sizes;
}

struct NamedSizes {
  const char* name;
  BlockSizes sizes;
};

const std::array kAllSizes{
    NamedSizes{"blocks of 1", Sizes(1, 1, 1)},
    NamedSizes{"blocks of 2", Sizes(2, 2, 2)},
    NamedSizes{"blocks of 3 from panels of 2", Sizes(3, 2, 2)},
    NamedSizes{"blocks of 5 from panels of 2, strips of 3", Sizes(5, 2, 3)},
    NamedSizes{"blocks of 4 from panels of 3, strips of 1", Sizes(4, 3, 1)},
    NamedSizes{"blocks of 6 from panels of 1, strips of 2", Sizes(6, 1, 2)},
    NamedSizes{"blocks of 8, panels of 8, strips of 5", Sizes(8, 8, 5)},
    NamedSizes{"no blocks", Whole()},
};

/// Compares on matrices of all kinds, with all the sizes in turn and on every instruction set.
void ForEachCase(const char* task, CaseShape shape, int largest,
                 const std::function<void(Comparison&, CaseSource&, const Matrix&,
                                          const BlockSizes&, const char*)>& compare) {
  constexpr int kRounds = 8000;
  testing::ForEachInstructionSet([&](InstructionSet set) {
    CaseSource cases(1700 + static_cast<int>(set), shape, largest);
    std::array<Team, 5> teams{Team(1), Team(2), Team(3), Team(7), Team(64)};
    Comparison comparison(std::string(task) + " in tiny blocks, instruction set " +
                          std::to_string(static_cast<int>(set)));
    for (int round = 0; round < kRounds && !comparison.HasSeenEnough(); ++round) {
      const auto& [name, sizes] = kAllSizes[round % kAllSizes.size()];
      // Another team for all sizes in turn.
      const UseTeam use(teams[round / kAllSizes.size() % teams.size()]);
      compare(comparison, cases, cases.Next(), sizes, name);
    }
  });
}

template <class... Parts>
Record Of(const Parts&... parts) {
  Record record;
  const auto append = [&record](const auto& part) {
    if constexpr (std::is_arithmetic_v<std::remove_cvref_t<decltype(part)>>) {
      record.push_back(static_cast<double>(part));
    } else {
      testing::Append(record, part);
    }
  };
  (append(parts), ...);
  return record;
}

TEST(BlockSizesTest, Product) {
  ForEachCase("product", CaseShape::kAny, 9,
              [](Comparison& comparison, CaseSource& cases, const Matrix& A,
                 const BlockSizes& sizes, const char* name) {
                const Matrix B = cases.Next(A.Cols(), cases.Randomness().Integer(1, 9));
                comparison.Compare([&] { return Of(Product(A, B, unheard, sizes)); },
                                   [&] { return Of(reference::Product(ToTable(A), ToTable(B))); },
                                   {&A, &B}, name);
              });
}

TEST(BlockSizesTest, Determinant) {
  ForEachCase("determinant", CaseShape::kSquare, 11,
              [](Comparison& comparison, CaseSource&, const Matrix& A, const BlockSizes& sizes,
                 const char* name) {
                comparison.Compare([&] { return Of(Determinant(A, unheard, sizes)); },
                                   [&] { return Of(reference::Determinant(ToTable(A))); }, {&A},
                                   name);
              });
}

TEST(BlockSizesTest, LuFactors) {
  ForEachCase("LU", CaseShape::kAny, 11,
              [](Comparison& comparison, CaseSource& cases, const Matrix& A,
                 const BlockSizes& sizes, const char* name) {
                const bool pivoting = cases.Randomness().Chance(0.5);
                const auto of = [](const auto& factors) {
                  return Of(factors.factored, factors.exchangeCount, factors.L, factors.U,
                            factors.exchanges);
                };
                comparison.Compare([&] { return of(FactorLu(A, pivoting, unheard, sizes)); },
                                   [&] { return of(reference::FactorLu(ToTable(A), pivoting)); },
                                   {&A}, name);
              });
}

TEST(BlockSizesTest, Inverse) {
  ForEachCase("inverse", CaseShape::kSquare, 11,
              [](Comparison& comparison, CaseSource& cases, const Matrix& A,
                 const BlockSizes& sizes, const char* name) {
                const bool adjoint = cases.Randomness().Chance(0.5);
                comparison.Compare(
                    [&] {
                      const auto found = adjoint ? AdjointByInverse(A, unheard, sizes)
                                                 : Inverse(A, unheard, sizes);
                      return found ? Of(*found) : Record();
                    },
                    [&] {
                      const reference::Inverted found =
                          adjoint ? reference::AdjointByInverse(ToTable(A))
                                  : reference::Inverse(ToTable(A));
                      return found.invertible ? Of(found.result) : Record();
                    },
                    {&A}, name);
              });
}

TEST(BlockSizesTest, AdjointByCofactors) {
  ForEachCase("adjoint", CaseShape::kSquare, 7,
              [](Comparison& comparison, CaseSource&, const Matrix& A, const BlockSizes& sizes,
                 const char* name) {
                comparison.Compare([&] { return Of(AdjointByCofactors(A, unheard, sizes)); },
                                   [&] { return Of(reference::AdjointByCofactors(ToTable(A))); },
                                   {&A}, name);
              });
}

TEST(BlockSizesTest, QrFactors) {
  ForEachCase("QR", CaseShape::kTall, 12,
              [](Comparison& comparison, CaseSource&, const Matrix& A, const BlockSizes& sizes,
                 const char* name) {
                const auto of = [](const auto& factors) {
                  return Of(factors.factored, factors.Q, factors.R);
                };
                comparison.Compare([&] { return of(FactorQr(A, unheard, sizes)); },
                                   [&] { return of(reference::FactorQr(ToTable(A))); }, {&A}, name);
              });
}

Record Letters(const std::string& text) { return {text.begin(), text.end()}; }

TEST(BlockSizesTest, Definiteness) {
  ForEachCase("definiteness", CaseShape::kSymmetric, 11,
              [](Comparison& comparison, CaseSource&, const Matrix& A, const BlockSizes& sizes,
                 const char* name) {
                comparison.Compare(
                    [&] {
                      const DefinitenessReport found = TestDefiniteness(A, unheard, sizes);
                      return Of(Letters(DefinitenessText(found.verdict)),
                                found.overallSmallestPivot, found.smallestPivot,
                                found.leadingMinor);
                    },
                    [&] {
                      const reference::Definite found = reference::TestDefiniteness(ToTable(A));
                      return Of(Letters(found.verdict), found.overallSmallestPivot,
                                found.smallestPivot, found.leadingMinor);
                    },
                    {&A}, name);
              });
}

TEST(BlockSizesTest, LinearSystems) {
  ForEachCase("linear systems", CaseShape::kTall, 9,
              [](Comparison& comparison, CaseSource& cases, const Matrix& A,
                 const BlockSizes& sizes, const char* name) {
                const bool oneShot = cases.Randomness().Chance(0.5);
                const Matrix system = oneShot ? cases.Next(A.Cols(), A.Cols() + 1) : A;
                const auto of = [](const auto& found) {
                  return Of(found.solved, found.inconsistent, found.x);
                };
                comparison.Compare(
                    [&] {
                      return of(oneShot ? SolveOneShot(system, unheard, sizes)
                                        : SolveLeastSquares(system, unheard, sizes));
                    },
                    [&] {
                      return of(oneShot ? reference::SolveOneShot(ToTable(system))
                                        : reference::SolveLeastSquares(ToTable(system)));
                    },
                    {&system}, name);
              });
}

TEST(BlockSizesTest, Eigenvalues) {
  ForEachCase("eigenvalues", CaseShape::kSquare, 9,
              [](Comparison& comparison, CaseSource&, const Matrix& A, const BlockSizes& sizes,
                 const char* name) {
                const EigenParameters p{5e-4, 12, 0.1, 0.001};
                comparison.Compare(
                    [&] {
                      std::int32_t shiftIndex = 0;
                      const EigenvalueRun run = FindEigenvalues(A, p, shiftIndex, unheard, sizes);
                      return Of(run.count, shiftIndex, run.eigenvalues, run.origin);
                    },
                    [&] {
                      int shiftIndex = 0;
                      const reference::Eigen run = reference::FindEigenvalues(
                          ToTable(A),
                          {p.tolerance, p.maxCycles, p.shiftReference, p.additionalShift},
                          shiftIndex);
                      return Of(run.count, shiftIndex, run.values, run.origin);
                    },
                    {&A}, name);
              });
}

TEST(BlockSizesTest, Eigenvectors) {
  ForEachCase("eigenvectors", CaseShape::kSymmetric, 9,
              [](Comparison& comparison, CaseSource& cases, const Matrix& A,
                 const BlockSizes& sizes, const char* name) {
                const EigenParameters p{5e-4, 12, 0.1, 0.001};
                const int n = A.Rows();
                if (n == 0) return;
                const int origin = cases.Randomness().Integer(1, n);
                comparison.Compare(
                    [&] {
                      std::vector<double> x(n, 0.5);
                      const VectorOutcome outcome =
                          FindEigenvector(A, A(origin, origin), origin, p, x, unheard, sizes);
                      return Of(static_cast<int>(outcome), x);
                    },
                    [&] {
                      reference::Table x(n, 1);
                      for (int i = 1; i <= n; ++i) x(i, 1) = 0.5;
                      const int outcome = reference::FindEigenvector(
                          ToTable(A), A(origin, origin), origin,
                          {p.tolerance, p.maxCycles, p.shiftReference, p.additionalShift}, x);
                      return Of(outcome, x);
                    },
                    {&A}, name);
              });
}

TEST(BlockSizesTest, RowsOfWorkMatricesDoNotLieWholePagesApart) {
  EXPECT_EQ(WorkColumns(511, kBlockSizes.work), 511);
  EXPECT_EQ(WorkColumns(512, kBlockSizes.work), 520);
  EXPECT_EQ(WorkColumns(1536, kBlockSizes.work), 1544);
  EXPECT_EQ(WorkColumns(0, kBlockSizes.work), 0);
}

TEST(BlockSizesTest, AWholePageOfColumnsHasTheSameBits) {
  BlockSizes together;
  together.work.competing = 1 << 20;
  testing::Dice dice(1801);
  const Matrix A = testing::RealMatrix(dice, 512, 512);
  const LuFactors apart = FactorLu(A, true, unheard);
  const LuFactors lu = FactorLu(A, true, unheard, together);
  EXPECT_EQ(apart.L, lu.L);
  EXPECT_EQ(apart.U, lu.U);
  EXPECT_EQ(apart.exchanges, lu.exchanges);
  EXPECT_EQ(Inverse(A, unheard), Inverse(A, unheard, together));
  EXPECT_EQ(AdjointByInverse(A, unheard), AdjointByInverse(A, unheard, together));
  const QrFactors qr = FactorQr(A, unheard, together);
  EXPECT_EQ(FactorQr(A, unheard).Q, qr.Q);
  EXPECT_EQ(FactorQr(A, unheard).R, qr.R);
  EXPECT_EQ(TestDefiniteness(A, unheard).smallestPivot,
            TestDefiniteness(A, unheard, together).smallestPivot);
}

}  // namespace
}  // namespace qmx
