#pragma once

#include <array>
#include <string_view>

#include "workspace/slot_table.h"
#include "workspace/workspace.h"

namespace qmx {

/// The flags of a project file, in their order there.
enum ProjectFlag : int {
  kFlagA,
  kFlagDeterminant,
  kFlagTrace,
  kFlagDefiniteness,
  kFlagSymmetry,
  kFlagB,
  kFlagSum,
  kFlagDifference,
  kFlagProduct,
  kFlagLU,
  kFlagExchanges,
  kFlagQR,
  kFlagInverse,
  kFlagAdjoint,
  kFlagTranspose,
  kFlagEigenvalues,
  kFlagEigenvectors,
  kFlagCreated,
  kFlagSystem,
  kFlagSolution,
};
inline constexpr int kProjectFlagCount = 20;

/// Where a flag stands in the Workspace: a member of its own, or the present flag of a slot.
struct ProjectFlagInfo {
  ProjectFlag flag;
  std::string_view name;  ///< For messages.
  bool Workspace::*member;
  int presentSlot;
  bool endsRecord;
};

inline constexpr std::array<ProjectFlagInfo, kProjectFlagCount> kProjectFlags{{
    {kFlagA, "matrix A", &Workspace::ACreated, -1, false},
    {kFlagDeterminant, "the determinant", &Workspace::DeterminantComputed, -1, false},
    {kFlagTrace, "the trace", &Workspace::TraceComputed, -1, false},
    {kFlagDefiniteness, "the definiteness", &Workspace::DefinitenessComputed, -1, false},
    {kFlagSymmetry, "the symmetry", &Workspace::SymmetryComputed, -1, false},
    {kFlagB, "matrix B", &Workspace::BCreated, -1, true},
    {kFlagSum, "the sum", &Workspace::SumComputed, -1, false},
    {kFlagDifference, "the difference", &Workspace::DifferenceComputed, -1, false},
    {kFlagProduct, "the product", &Workspace::ProductComputed, -1, false},
    {kFlagLU, "the factors L and U", &Workspace::LUComputed, -1, false},
    {kFlagExchanges, "the map of exchanges", nullptr, kSlotExchanges, false},
    {kFlagQR, "the factors Q and R", &Workspace::QRComputed, -1, true},
    {kFlagInverse, "the inverse", &Workspace::InverseComputed, -1, false},
    {kFlagAdjoint, "the adjoint", &Workspace::AdjointComputed, -1, false},
    {kFlagTranspose, "the transpose", &Workspace::TransposeComputed, -1, false},
    {kFlagEigenvalues, "the eigenvalues", &Workspace::EigenvaluesComputed, -1, false},
    {kFlagEigenvectors, "the eigenvectors", &Workspace::EigenvectorsComputed, -1, false},
    {kFlagCreated, "the special matrix", nullptr, kSlotCreated, false},
    {kFlagSystem, "the system", nullptr, kSlotSystem, false},
    {kFlagSolution, "the solution", &Workspace::SolutionComputed, -1, true},
}};

/// What a section of a project file holds.
enum class SectionKind {
  kMatrix,
  kDeterminant,
  kTrace,
  kDefiniteness,
  kSymmetry,
  kEigen,
  kSystem,
};

/// One section, which the file holds where both of its flags are set.
struct ProjectSectionInfo {
  SectionKind kind;
  ProjectFlag flag;
  ProjectFlag secondFlag;
  int slot = -1;
};

constexpr ProjectSectionInfo MatrixOf(ProjectFlag flag, int slot) {
  return {SectionKind::kMatrix, flag, flag, slot};
}
constexpr ProjectSectionInfo SectionOf(ProjectFlag flag, SectionKind kind) {
  return {kind, flag, flag};
}

/// The sections in the order of the file, which is not quite the order of their flags.
inline constexpr std::array<ProjectSectionInfo, 21> kProjectSections{{
    MatrixOf(kFlagA, kSlotA),
    SectionOf(kFlagDeterminant, SectionKind::kDeterminant),
    SectionOf(kFlagTrace, SectionKind::kTrace),
    SectionOf(kFlagDefiniteness, SectionKind::kDefiniteness),
    SectionOf(kFlagSymmetry, SectionKind::kSymmetry),
    MatrixOf(kFlagB, kSlotB),
    MatrixOf(kFlagSum, kSlotSum),
    MatrixOf(kFlagDifference, kSlotDifference),
    MatrixOf(kFlagProduct, kSlotProduct),
    MatrixOf(kFlagLU, kSlotL),
    MatrixOf(kFlagLU, kSlotU),
    {SectionKind::kMatrix, kFlagLU, kFlagExchanges, kSlotExchanges},
    MatrixOf(kFlagQR, kSlotQ),
    MatrixOf(kFlagQR, kSlotR),
    MatrixOf(kFlagInverse, kSlotInverse),
    MatrixOf(kFlagAdjoint, kSlotAdjoint),
    MatrixOf(kFlagTranspose, kSlotTranspose),
    SectionOf(kFlagEigenvalues, SectionKind::kEigen),
    MatrixOf(kFlagCreated, kSlotCreated),
    SectionOf(kFlagSystem, SectionKind::kSystem),
    MatrixOf(kFlagSolution, kSlotSolution),
}};

consteval bool ProjectFlagsAreInOrder() {
  for (int i = 0; i < kProjectFlagCount; ++i) {
    const ProjectFlagInfo& info = kProjectFlags[i];
    if (info.flag != i || (info.member == nullptr) != (info.presentSlot >= 0)) return false;
  }
  return kProjectFlags.back().endsRecord;
}
static_assert(ProjectFlagsAreInOrder());

using ProjectFlags = std::array<bool, kProjectFlagCount>;

/// True if a file with these flags holds the section.
constexpr bool Holds(const ProjectFlags& flags, const ProjectSectionInfo& section) {
  return flags[section.flag] && flags[section.secondFlag];
}

ProjectFlags FlagsOf(const Workspace& workspace);
void SetFlags(Workspace& workspace, const ProjectFlags& flags);

}  // namespace qmx
