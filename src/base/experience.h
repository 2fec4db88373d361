// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <mutex>
#include <string_view>

namespace qmx {

/// What sharing short computations among cores has given before. How far another core is away, and
/// whether it is there at all, changes under a program: the same computation on the same two cores
/// may take 0.8 of the time of one, and a second later twice as long. It is therefore tried, and
/// left alone for a while where it lost, so long that the loss is a small part of it.
class Experience {
 public:
  using Clock = std::chrono::steady_clock;

  /// Whether a computation that begins now should be shared. It is known by its name, which must
  /// live for ever, and its work; the first one of a kind is done alone, to compare with.
  bool ShouldShare(std::string_view name, double work, Clock::time_point now);
  /// It took so long.
  void NoteAlone(std::string_view name, double work, Clock::duration took);
  void NoteShared(std::string_view name, double work, Clock::duration took, Clock::time_point now);

 private:
  struct Computation {
    std::string_view name;
    double work = 0;
    Clock::duration alone{};  ///< What it takes on one core; 0 where that is not known.
    int sharedInARow = 0;
    Clock::time_point aloneUntil;
    Clock::duration aloneFor{};  ///< The last time.
  };
  Computation& Find(std::string_view name, double work);

  std::mutex mutex_;
  std::array<Computation, 16> known_;
  std::size_t next_ = 0;  ///< That is forgotten when another one comes.
};

}  // namespace qmx
