// SPDX-License-Identifier: MIT
#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <exception>
#include <mutex>
#include <string_view>
#include <thread>
#include <vector>

#include "base/experience.h"
#include "base/function_ref.h"
#include "base/machine_load.h"

namespace qmx {

/// The most threads that ever share a computation.
inline constexpr int kMostMembers = 64;

/// Threads that share the independent pieces of a computation. Whoever has pieces takes part itself
/// and waits only for pieces that somebody has begun, never for a thread that sleeps.
///
/// A begun piece may still be one whose member lost its core to another program, and then the
/// caller waits for as long as the system lets that program run, which may be longer than the whole
/// computation. A team that is told of the load therefore shares only with as many members as there
/// are cores that nobody wants, and works alone for a while where sharing did not pay: so long that
/// what was lost is a small part of it.
///
/// The pieces that are left stand in one word, {generation, pieces, next piece}, and are claimed by
/// compare and swap. A member that comes late cannot claim a piece of a newer job by the word of an
/// older one. What a job consists of is read only with a piece in hand: until that one is done the
/// job cannot end.
class Team {
 public:
  using Work = FunctionRef<void(int piece)>;
  using WhileWaiting = FunctionRef<void()>;
  using Clock = std::chrono::steady_clock;

  /// With the caller itself, 1..kMostMembers. Threads are started when they are first needed;
  /// where the system has none, the team stays smaller. Without a load it shares whatever else
  /// happens on the machine, which tests need in which pieces meet.
  explicit Team(int members, const MachineLoad* load = nullptr);
  /// No job may be running.
  ~Team();
  Team(const Team&) = delete;
  Team& operator=(const Team&) = delete;

  int Members() const { return members_; }
  /// Which member the running thread is: 0 for all that belong to no team, else 1..Members() - 1.
  /// Storage of its own for each of them is never used by two at a time, as long as not more than
  /// one thread outside the team computes.
  static int Member();
  /// Whether a job of the running thread may ever be shared: not where there are no others, within
  /// a piece, nor where the thread stays alone.
  bool CanShare() const;
  /// Whether it would be shared now, so that it is worth cutting into more pieces. That changes at
  /// any time: what pieces need to run side by side has to be there wherever CanShare is true.
  bool WouldShare();

  /// Runs work(0), work(1), ... work(pieces - 1), side by side as far as members are free, and
  /// returns when all are done. They are begun in this order. `whileWaiting` is called every few
  /// milliseconds while the caller has nothing left to do; it may throw.
  ///
  /// The arithmetic faults of all pieces are raised in the caller. Of several pieces that throw the
  /// first one counts, as in a loop; pieces behind it are not begun any more. Where Stopped is
  /// thrown, by a piece or while waiting, nothing else is begun and Stopped is thrown on.
  ///
  /// Called by a piece, while another thread's job is running, or where WouldShare is false, it is
  /// a plain loop.
  void Share(int pieces, Work work, WhileWaiting whileWaiting);

  /// Wakes members that sleep where an Attempt at this computation would be shared, so that they
  /// are there when it begins in a moment.
  void Wake(std::string_view name, double work);

  /// The caller of the running job waited for so long for pieces of others, with `longest` the
  /// longest that it had itself. Where that is too long, sharing does not pay for a while.
  void NoteWait(Clock::duration waited, Clock::duration longest);

  /// Whether somebody has stopped the running job: pieces may then end by throwing Stopped.
  bool IsStopped() const { return stopped_.load(std::memory_order_relaxed); }

  /// The most pieces of one job.
  static constexpr int kMostPieces = (1 << 16) - 1;

 private:
  friend class Attempt;

  void Start();
  void Serve(int member);
  void Sleep(std::unique_lock<std::mutex>& lock);
  void WakeAll();
  bool IsThereWork() const;
  bool TakePiece();
  void RunPiece(int piece);
  void NoteFailure(int piece, std::exception_ptr failure);
  void WaitForOthers(WhileWaiting whileWaiting);
  bool AllDone() const { return done_.load(std::memory_order_acquire) == pieces_; }
  int FreeCores() const;
  bool Learns(double work) const;
  void Open(int pieces, const Work& work);
  void Close();

  const int wanted_;
  const MachineLoad* const load_;
  std::atomic<int> members_;
  std::once_flag started_;
  std::vector<std::thread> threads_;
  std::atomic<bool> areStarted_ = false;

  std::atomic<bool> busy_ = false;       ///< Somebody's job is running.
  std::atomic<std::uint64_t> left_ = 0;  ///< {generation 32, pieces 16, next piece 16}.
  std::atomic<int> done_ = 0;
  std::atomic<bool> stopped_ = false;
  std::atomic<int> failed_ = 0;  ///< The first piece that threw, or behind the last.
  std::atomic<int> faults_ = 0;  ///< Arithmetic faults of the other members.
  int pieces_ = 0;
  const Work* work_ = nullptr;

  std::mutex mutex_;  ///< Of what follows; the number of sleepers is read without it.
  std::condition_variable wake_;
  std::condition_variable ended_;
  std::atomic<int> sleeping_ = 0;
  unsigned calls_ = 0;  ///< Of WakeAll.
  int avoided_ = -1;    ///< The core that the members keep off.
  bool callerSleeps_ = false;
  bool ends_ = false;
  std::exception_ptr failure_;  ///< Of piece failed_.

  // What a team with a load knows of it. Times are counts of the clock.
  std::atomic<int> takePart_;               ///< Only members below it take pieces.
  std::atomic<Clock::rep> lookAgain_ = 0;   ///< Before, takePart_ holds.
  std::atomic<Clock::rep> aloneUntil_ = 0;  ///< Before, jobs are plain loops.
  Clock::duration aloneFor_{};              ///< The last time.
  Experience experience_;
};

/// The team that computations are shared with: by default as many members as the process may use
/// cores, at most as many as the environment's QMX_THREADS says where that is a number from 1 on.
Team& SharedTeam();

/// A whole computation that takes another form where it is shared, from its beginning to its end.
/// Where it would be shared but is short, the team's experience with such ones decides, and learns;
/// that of a team without a load does not.
class Attempt {
 public:
  /// As in Experience, and the work is in multiplications.
  Attempt(Team& team, std::string_view name, double work);
  /// An attempt that ends by an exception has taught nothing.
  ~Attempt();
  Attempt(const Attempt&) = delete;
  Attempt& operator=(const Attempt&) = delete;

  bool IsShared() const { return isShared_; }

 private:
  Team& team_;
  const std::string_view name_;
  const double work_;
  const int exceptions_;
  bool isShared_;
  bool learns_ = false;
  Team::Clock::time_point begin_;
};

/// While it lives, jobs of the running thread are plain loops: for what is done in the background
/// and must take no other core.
class StayAlone {
 public:
  StayAlone();
  ~StayAlone();
  StayAlone(const StayAlone&) = delete;
  StayAlone& operator=(const StayAlone&) = delete;

 private:
  bool before_;
};

/// For tests and benchmarks: while it lives, SharedTeam is this one.
class UseTeam {
 public:
  explicit UseTeam(Team& team);
  ~UseTeam();
  UseTeam(const UseTeam&) = delete;
  UseTeam& operator=(const UseTeam&) = delete;

 private:
  Team* before_;
};

/// The members that SharedTeam has for this text of QMX_THREADS, which may be null, on so many
/// cores.
int MembersFor(const char* limit, int cores);

}  // namespace qmx
