// SPDX-License-Identifier: MIT
#include "base/experience.h"

#include <algorithm>

namespace qmx {
namespace {

using std::chrono::milliseconds;

/// After so many shared runs one is done alone, since cores change their speed.
constexpr int kSharedInARow = 16;
/// What was lost is at most one part in so many of the time that is then spent alone.
constexpr int kSmallPart = 20;
constexpr milliseconds kAloneAtFirst(5);
constexpr milliseconds kAloneAtMost(200);

}  // namespace

bool Experience::ShouldShare(std::string_view name, double work, Clock::time_point now) {
  const std::lock_guard lock(mutex_);
  Computation& known = Find(name, work);
  return known.alone != Clock::duration{} && now >= known.aloneUntil &&
         known.sharedInARow < kSharedInARow;
}

void Experience::NoteAlone(std::string_view name, double work, Clock::duration took) {
  const std::lock_guard lock(mutex_);
  Computation& known = Find(name, work);
  // A single run that was interrupted says little; a core that has become slower says it again.
  const Clock::duration most = known.alone + known.alone / 8;
  known.alone = known.alone == Clock::duration{} ? took : std::min(took, most);
  known.sharedInARow = 0;
}

void Experience::NoteShared(std::string_view name, double work, Clock::duration took,
                            Clock::time_point now) {
  const std::lock_guard lock(mutex_);
  Computation& known = Find(name, work);
  ++known.sharedInARow;
  // A gain that is hardly there is none.
  const Clock::duration lost = took - known.alone + known.alone / 50;
  if (lost <= Clock::duration{}) {
    known.aloneFor /= 2;
    return;
  }
  known.aloneFor = std::clamp<Clock::duration>(std::max(2 * known.aloneFor, kSmallPart * lost),
                                               kAloneAtFirst, kAloneAtMost);
  known.aloneUntil = now + known.aloneFor;
}

/// What is known of it, nothing where it is new.
Experience::Computation& Experience::Find(std::string_view name, double work) {
  for (Computation& known : known_) {
    if (known.work == work && known.name == name) return known;
  }
  Computation& place = known_[next_];
  next_ = (next_ + 1) % known_.size();
  place = {name, work, {}, 0, {}, {}};
  return place;
}

}  // namespace qmx
