// SPDX-License-Identifier: MIT
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "commands/digit_check.h"
#include "workspace/workspace.h"

namespace qmx {

/// How it stands with the digits of a result.
enum class DigitState {
  kNone,      ///< There is nothing to check.
  kStale,     ///< The operands have changed since the result was computed.
  kWaiting,   ///< It will be checked.
  kChecking,  ///< The same, because the user asked for it.
  kOffered,   ///< It is checked only if the user asks for it. Something may be known already.
  kKnown,
};

struct DigitStanding {
  DigitState state = DigitState::kNone;
  const DigitFinding* finding = nullptr;  ///< What is known; null for nothing.
};

/// Keeps what is known about the digits of the results and tells what is to be checked next. It
/// knows no threads: whoever does the checks asks for the next one and brings what it found.
/// Findings belong to the result as it was computed, so that they are there again once undoing or
/// redoing brings that back.
class DigitKeeper {
 public:
  /// The most bytes that findings about results that are not there any more may hold.
  static constexpr std::size_t kMostBytes = std::size_t{64} << 20;

  explicit DigitKeeper(std::size_t mostBytes = kMostBytes) : mostBytes_(mostBytes) {}

  /// Forgets what cannot come back, after a command.
  void Follow(const Workspace& workspace);
  /// What is to be checked next: what was asked for, else the newest result.
  std::optional<DigitCheck> Next(const Workspace& workspace) const;
  /// True if what a check looks for is still to be found.
  bool IsWanted(const Workspace& workspace, const DigitCheck& check) const;
  void Take(const Workspace& workspace, const DigitCheck& check, DigitFinding finding);
  /// The user wants a result to be checked, or wants that no longer.
  void Ask(const Workspace& workspace, Result result);
  void Withdraw(const Workspace& workspace, Result result);

  DigitStanding Of(const Workspace& workspace, Result result) const;

 private:
  struct Entry {
    std::weak_ptr<const Computation> of;
    std::optional<DigitFinding> finding;
    bool asked = false;

    bool IsAbout(const std::shared_ptr<const Computation>& computation) const {
      return !of.owner_before(computation) && !computation.owner_before(of);
    }
    std::size_t Bytes() const;
  };

  const Entry* Find(const std::shared_ptr<const Computation>& computation) const;
  Entry& Ensure(const std::shared_ptr<const Computation>& computation);
  void DropOldest(const Workspace& workspace);

  std::size_t mostBytes_;
  std::vector<Entry> entries_;  ///< The oldest first.
};

}  // namespace qmx
