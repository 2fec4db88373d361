// SPDX-License-Identifier: MIT
#include "commands/digit_keeper.h"

#include <algorithm>
#include <utility>

#include "commands/digit_question.h"
#include "workspace/staleness.h"

namespace qmx {
namespace {

/// True if there is something to prove, whatever has become of the operands.
bool HasDigits(const Workspace& workspace, Result result) {
  const Computation* computation = workspace.computations[result].get();
  if (computation == nullptr || !IsQuestioned(result, *computation)) return false;
  return result == kResultA ? IsChangedByNumber(workspace) : workspace.*InfoOf(result).flag;
}

bool IsStale(const Workspace& workspace, Result result) {
  return !ShortStaleness(workspace, result).empty();
}

bool IsPresent(const Workspace& workspace, const std::shared_ptr<const Computation>& computation) {
  const auto& all = workspace.computations;
  return std::find(all.begin(), all.end(), computation) != all.end();
}

}  // namespace

std::size_t DigitKeeper::Entry::Bytes() const {
  std::size_t bytes = 0;
  if (!finding) return bytes;
  for (const auto& cells : finding->matrices)
    bytes += cells->proof.elements.size() * sizeof(ElementProof);
  return bytes;
}

const DigitKeeper::Entry* DigitKeeper::Find(
    const std::shared_ptr<const Computation>& computation) const {
  const auto found = std::find_if(entries_.begin(), entries_.end(),
                                  [&](const Entry& entry) { return entry.IsAbout(computation); });
  return found == entries_.end() ? nullptr : &*found;
}

DigitKeeper::Entry& DigitKeeper::Ensure(const std::shared_ptr<const Computation>& computation) {
  const auto found = std::find_if(entries_.begin(), entries_.end(),
                                  [&](const Entry& entry) { return entry.IsAbout(computation); });
  if (found != entries_.end()) return *found;
  return entries_.emplace_back(Entry{computation, std::nullopt, false});
}

void DigitKeeper::Follow(const Workspace& workspace) {
  std::erase_if(entries_, [](const Entry& entry) { return entry.of.expired(); });
  DropOldest(workspace);
}

void DigitKeeper::DropOldest(const Workspace& workspace) {
  std::size_t bytes = 0;
  for (const Entry& entry : entries_) {
    if (!IsPresent(workspace, entry.of.lock())) bytes += entry.Bytes();
  }
  std::erase_if(entries_, [&](const Entry& entry) {
    if (bytes <= mostBytes_ || IsPresent(workspace, entry.of.lock())) return false;
    bytes -= entry.Bytes();
    return true;
  });
}

DigitStanding DigitKeeper::Of(const Workspace& workspace, Result result) const {
  if (!HasDigits(workspace, result)) return {};
  if (IsStale(workspace, result)) return {DigitState::kStale, nullptr};
  const Entry* entry = Find(workspace.computations[result]);
  if (entry == nullptr) return {DigitState::kWaiting, nullptr};
  const DigitFinding* finding = entry->finding ? &*entry->finding : nullptr;
  if (entry->asked) return {DigitState::kChecking, finding};
  if (finding == nullptr) return {DigitState::kWaiting, nullptr};
  return {finding->tooLong ? DigitState::kOffered : DigitState::kKnown, finding};
}

std::optional<DigitCheck> DigitKeeper::Next(const Workspace& workspace) const {
  Result next = kNoResult;
  const auto rank = [&](Result result) {
    const bool asked = Of(workspace, result).state == DigitState::kChecking;
    return std::pair(asked, workspace.computations[result]->serial);
  };
  for (const ResultInfo& info : kResults) {
    const DigitState state = Of(workspace, info.result).state;
    if (state != DigitState::kWaiting && state != DigitState::kChecking) continue;
    if (next == kNoResult || rank(info.result) > rank(next)) next = info.result;
  }
  if (next == kNoResult) return std::nullopt;
  const auto& of = workspace.computations[next];
  return DigitCheck{next, of, DigitQuestion(workspace, next, *of), rank(next).first};
}

bool DigitKeeper::IsWanted(const Workspace& workspace, const DigitCheck& check) const {
  if (workspace.computations[check.result] != check.of) return false;
  const DigitState state = Of(workspace, check.result).state;
  return state == (check.asked ? DigitState::kChecking : DigitState::kWaiting);
}

void DigitKeeper::Take(const Workspace& workspace, const DigitCheck& check, DigitFinding finding) {
  // The values that the vectors belong to are checked with them.
  const auto& values = workspace.computations[kResultEigenvalues];
  if (check.result == kResultEigenvectors && !finding.tooLong && values != nullptr &&
      check.of->eigenvalues.SharesWith(values->computed.front())) {
    DigitFinding ofValues = finding;
    if (!ofValues.matrices.empty()) ofValues.matrices.resize(1);
    Entry& entry = Ensure(values);
    entry.finding = std::move(ofValues);
    entry.asked = false;
  }
  Entry& entry = Ensure(check.of);
  entry.finding = std::move(finding);
  entry.asked = false;
}

void DigitKeeper::Ask(const Workspace& workspace, Result result) {
  if (HasDigits(workspace, result)) Ensure(workspace.computations[result]).asked = true;
}

void DigitKeeper::Withdraw(const Workspace& workspace, Result result) {
  if (!HasDigits(workspace, result)) return;
  Ensure(workspace.computations[result]).asked = false;
}

}  // namespace qmx
