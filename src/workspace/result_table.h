// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <initializer_list>
#include <string>
#include <string_view>

#include "workspace/controls.h"
#include "workspace/workspace.h"

namespace qmx {

/// What the Workspace may hold, in the order of a project file.
enum Result : int {
  kResultA,
  kResultDeterminant,
  kResultTrace,
  kResultDefiniteness,
  kResultSymmetry,
  kResultB,
  kResultSum,
  kResultDifference,
  kResultProduct,
  kResultLU,
  kResultExchanges,
  kResultQR,
  kResultInverse,
  kResultAdjoint,
  kResultTranspose,
  kResultEigenvalues,
  kResultEigenvectors,
  kResultCreated,
  kResultSystem,
  kResultSolution,
};
inline constexpr auto kNoResult = static_cast<Result>(-1);

/// What a result is, which decides how files hold it.
enum class ResultKind { kMatrices, kNumber, kVerdict, kEigenvalues, kEigenvectors, kSystem };

/// What a result is computed from: any of these together.
enum Origin : unsigned { kFromNothing = 0, kFromA = 1, kFromB = 2, kFromSystem = 4 };

/// All that is fixed about one result.
struct ResultInfo {
  Result result;
  std::string_view name;  ///< For messages.
  bool Workspace::*flag;  ///< Set while the Workspace holds it.
  ResultKind kind;
  unsigned operands = kFromNothing;
  /// Its matrices; two of them, or the same one twice.
  Slot firstSlot = kSlotA;
  Slot lastSlot = kSlotA;
  /// What goes when it is reset.
  Result takesAlong = kNoResult;
  // A number or a verdict: where the Workspace keeps it, and the label that shows it.
  double Workspace::*number = nullptr;
  std::string Workspace::*verdict = nullptr;
  Control label{};
  std::string_view printed{};  ///< What stands before it in the printed report.
  Control stale{};             ///< The mark that its operands have changed.

  constexpr bool HasMatrices() const { return label.name.empty(); }
};

namespace result_table {

constexpr ResultInfo OneMatrix(Result result, std::string_view name, bool Workspace::*flag,
                               unsigned operands, Slot slot,
                               ResultKind kind = ResultKind::kMatrices,
                               Result takesAlong = kNoResult) {
  return {result, name, flag, kind, operands, slot, slot, takesAlong};
}
constexpr ResultInfo TwoMatrices(Result result, std::string_view name, bool Workspace::*flag,
                                 Slot first, Slot last, Result takesAlong = kNoResult) {
  return {result, name, flag, ResultKind::kMatrices, kFromA, first, last, takesAlong};
}
constexpr ResultInfo Number(Result result, std::string_view name, bool Workspace::*flag,
                            double Workspace::*number, const Control& label,
                            std::string_view printed, const Control& stale) {
  return {result, name,    flag,   ResultKind::kNumber,
          kFromA, kSlotA,  kSlotA, kNoResult,
          number, nullptr, label,  printed,
          stale};
}
constexpr ResultInfo Verdict(Result result, std::string_view name, bool Workspace::*flag,
                             std::string Workspace::*text, const Control& label,
                             std::string_view printed, const Control& stale) {
  return {
      result, name,    flag, ResultKind::kVerdict, kFromA, kSlotA, kSlotA, kNoResult, nullptr, text,
      label,  printed, stale};
}

}  // namespace result_table

// clang-format off
inline constexpr auto kResults = [] {
  using namespace result_table;
  using W = Workspace;
  return std::array<ResultInfo, kResultCount>{
      OneMatrix(kResultA, "matrix A", &W::ACreated, kFromNothing, kSlotA),
      Number(kResultDeterminant, "the determinant", &W::DeterminantComputed, &W::determinant, lblDeterminantOfA,
             "Determinant of A=", {"lblStaleOfDeterminant"}),
      Number(kResultTrace, "the trace", &W::TraceComputed, &W::trace, lblTraceOfA, "Trace of A=", {"lblStaleOfTrace"}),
      Verdict(kResultDefiniteness, "the definiteness", &W::DefinitenessComputed, &W::definitenessText,
              lblDefiniteness, "Definiteness of A:", {"lblStaleOfDefiniteness"}),
      Verdict(kResultSymmetry, "the symmetry", &W::SymmetryComputed, &W::symmetryText, lblSymmetry,
              "Symmetric:", {"lblStaleOfSymmetry"}),
      OneMatrix(kResultB, "matrix B", &W::BCreated, kFromNothing, kSlotB),
      OneMatrix(kResultSum, "the sum", &W::SumComputed, kFromA | kFromB, kSlotSum),
      OneMatrix(kResultDifference, "the difference", &W::DifferenceComputed, kFromA | kFromB, kSlotDifference),
      OneMatrix(kResultProduct, "the product", &W::ProductComputed, kFromA | kFromB, kSlotProduct),
      TwoMatrices(kResultLU, "the factors L and U", &W::LUComputed, kSlotL, kSlotU, kResultExchanges),
      TwoMatrices(kResultExchanges, "the map of exchanges", &W::ExchangesPresent, kSlotPermutation, kSlotExchanges),
      TwoMatrices(kResultQR, "the factors Q and R", &W::QRComputed, kSlotQ, kSlotR),
      OneMatrix(kResultInverse, "the inverse", &W::InverseComputed, kFromA, kSlotInverse),
      OneMatrix(kResultAdjoint, "the adjoint", &W::AdjointComputed, kFromA, kSlotAdjoint),
      OneMatrix(kResultTranspose, "the transpose", &W::TransposeComputed, kFromA, kSlotTranspose),
      OneMatrix(kResultEigenvalues, "the eigenvalues", &W::EigenvaluesComputed, kFromA, kSlotEigenvalues,
                ResultKind::kEigenvalues, kResultEigenvectors),
      OneMatrix(kResultEigenvectors, "the eigenvectors", &W::EigenvectorsComputed, kFromA, kSlotEigenvectors,
                ResultKind::kEigenvectors),
      OneMatrix(kResultCreated, "the special matrix", &W::CreatedPresent, kFromNothing, kSlotCreated),
      OneMatrix(kResultSystem, "the system", &W::SystemPresent, kFromNothing, kSlotSystem, ResultKind::kSystem,
                kResultSolution),
      OneMatrix(kResultSolution, "the solution", &W::SolutionComputed, kFromSystem, kSlotSolution),
  };
}();
// clang-format on

static_assert([] {
  for (int i = 0; i < kResultCount; ++i) {
    if (kResults[i].result != i) return false;
  }
  return true;
}());

constexpr const ResultInfo& InfoOf(Result result) { return kResults[result]; }

/// The result that a slot's matrix belongs to.
constexpr const ResultInfo& ResultOf(Slot slot) {
  for (const ResultInfo& info : kResults) {
    if (info.HasMatrices() && (info.firstSlot == slot || info.lastSlot == slot)) return info;
  }
  return kResults.front();
}

/// Runs through a result's matrices in their order.
template <typename Action>
constexpr void ForEachSlot(const ResultInfo& info, Action action) {
  if (!info.HasMatrices()) return;
  action(info.firstSlot);
  if (info.lastSlot != info.firstSlot) action(info.lastSlot);
}

/// One flag for each result.
using ResultFlags = std::array<bool, kResultCount>;

inline ResultFlags FlagsOf(const Workspace& workspace) {
  ResultFlags flags{};
  for (const ResultInfo& info : kResults) flags[info.result] = workspace.*info.flag;
  return flags;
}
inline void SetFlags(Workspace& workspace, const ResultFlags& flags) {
  for (const ResultInfo& info : kResults) workspace.*info.flag = flags[info.result];
}

}  // namespace qmx
