// SPDX-License-Identifier: MIT
#include "workspace/staleness.h"

#include <array>
#include <string_view>

#include "workspace/computation.h"

namespace qmx {
namespace {

struct OperandInfo {
  Origin origin;
  Slot slot;
  std::uint32_t Revisions::*revision;
  std::string_view name;
};

constexpr std::array<OperandInfo, 3> kOperands{{
    {kFromA, kSlotA, &Revisions::a, "A"},
    {kFromB, kSlotB, &Revisions::b, "B"},
    {kFromSystem, kSlotSystem, &Revisions::system, "The system"},
}};

}  // namespace

void NoteChange(Workspace& workspace, Slot slot) {
  for (const OperandInfo& operand : kOperands) {
    if (operand.slot == slot) ++(workspace.revisions.*operand.revision);
  }
}

void NoteComputed(Workspace& workspace, Result result) {
  workspace.computedFrom[result] = workspace.revisions;
  workspace.computedNow[result] = true;
  KeepComputation(workspace, result);
}

std::string Staleness(const Workspace& workspace, Result result) {
  const std::string changed = ShortStaleness(workspace, result);
  return changed.empty() ? changed : changed + " this was computed";
}

std::string ShortStaleness(const Workspace& workspace, Result result) {
  const ResultInfo& info = InfoOf(result);
  std::string names;
  int count = 0;
  for (const OperandInfo& operand : kOperands) {
    const bool takesPart = (info.operands & operand.origin) != 0;
    const Revisions& then = workspace.computedFrom[result];
    if (!takesPart || then.*operand.revision == workspace.revisions.*operand.revision) continue;
    names += (count++ > 0 ? " and " : "") + std::string(operand.name);
  }
  if (count == 0 || !(workspace.*info.flag)) return {};
  return names + (count == 1 ? " has" : " have") + " changed since";
}

}  // namespace qmx
