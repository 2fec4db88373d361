// SPDX-License-Identifier: MIT
#include "base/team.h"

#include <algorithm>
#include <cassert>
#include <cfenv>
#include <charconv>
#include <cstdlib>
#include <string_view>
#include <system_error>
#include <utility>

#include "base/core_choice.h"
#include "base/progress.h"
#include "base/spin.h"

namespace qmx {
namespace {

using std::chrono::microseconds;
using std::chrono::milliseconds;

/// So long cores that nobody wanted are taken to be free, and those that somebody wanted only for
/// this once.
constexpr microseconds kBetweenLoads(200);
/// A caller that waited so much longer than twice its longest piece was kept waiting by a member
/// that did not get its core.
constexpr microseconds kPatience(100);
/// What was lost is at most one part in so many of the time that is then spent alone.
constexpr int kSmallPart = 20;
constexpr milliseconds kAloneAtFirst(20);
constexpr milliseconds kAloneAtMost(1000);
/// Multiplications, of some forty milliseconds.
constexpr double kShort = 2e9;

thread_local int thisMember = 0;
thread_local bool staysAlone = false;

constexpr std::uint64_t kOnePieceOn = 1;
constexpr int PiecesOf(std::uint64_t left) { return static_cast<int>(left >> 16 & 0xffff); }
constexpr int NextOf(std::uint64_t left) { return static_cast<int>(left & 0xffff); }

}  // namespace

Team::Team(int members, const MachineLoad* load)
    : wanted_(members), load_(load), members_(members), takePart_(members) {
  assert(members >= 1 && members <= kMostMembers);
}

Team::~Team() {
  {
    const std::lock_guard lock(mutex_);
    ends_ = true;
  }
  wake_.notify_all();
  for (std::thread& thread : threads_) thread.join();
}

int Team::Member() { return thisMember; }

bool Team::CanShare() const { return Members() > 1 && thisMember == 0 && !staysAlone; }

bool Team::WouldShare() {
  if (!CanShare()) return false;
  if (load_ == nullptr) return true;
  const Clock::rep now = Clock::now().time_since_epoch().count();
  if (now < aloneUntil_.load(std::memory_order_relaxed)) return false;
  if (now < lookAgain_.load(std::memory_order_relaxed)) return true;
  const int free = std::min(Members(), FreeCores());
  if (free < 2) return false;
  takePart_.store(free, std::memory_order_relaxed);
  const Clock::rep until = now + Clock::duration(kBetweenLoads).count();
  lookAgain_.store(until, std::memory_order_relaxed);
  return true;
}

/// Cores that no other thread than the caller and the members wants; at least all of the team's
/// where the system does not say.
int Team::FreeCores() const {
  const std::optional<int> running = load_->Running();
  if (!running) return wanted_;
  const int awake = areStarted_ ? Members() - 1 - sleeping_.load(std::memory_order_relaxed) : 0;
  return load_->Cores() - std::max(0, *running - 1 - awake);
}

void Team::Start() {
  std::call_once(started_, [this] {
    try {
      threads_.reserve(wanted_ - 1);
      for (int member = 1; member < wanted_; ++member) {
        threads_.emplace_back([this, member] { Serve(member); });
      }
    } catch (const std::exception&) {
      // Without memory or threads for all of them fewer do the same.
      members_ = static_cast<int>(threads_.size()) + 1;
    }
    areStarted_ = true;
  });
}

void Team::Share(int pieces, Work work, WhileWaiting whileWaiting) {
  assert(pieces <= kMostPieces);
  const bool alone = pieces < 2 || !WouldShare() || busy_.exchange(true, std::memory_order_acquire);
  if (alone) {
    for (int piece = 0; piece < pieces; ++piece) work(piece);
    return;
  }
  struct Release {
    std::atomic<bool>& busy;
    ~Release() { busy.store(false, std::memory_order_release); }
  } const release{busy_};
  Start();
  Open(pieces, work);
  Clock::duration longest{};
  Clock::time_point since = Clock::now();
  while (TakePiece()) {
    const Clock::time_point now = Clock::now();
    longest = std::max(longest, now - since);
    since = now;
  }
  WaitForOthers(whileWaiting);
  NoteWait(Clock::now() - since, longest);
  // One good job does not make an idle machine.
  if (load_ != nullptr &&
      Clock::now().time_since_epoch().count() >= aloneUntil_.load(std::memory_order_relaxed))
    aloneFor_ /= 2;
  Close();
}

/// Whether it learns from computations of so much work.
bool Team::Learns(double work) const { return load_ != nullptr && work < kShort; }

void Team::Wake(std::string_view name, double work) {
  if (!WouldShare() || (Learns(work) && !experience_.ShouldShare(name, work, Clock::now()))) return;
  Start();
  WakeAll();
}

void Team::WakeAll() {
  const std::lock_guard lock(mutex_);
  if (sleeping_ == 0) return;
  // The system often wakes a thread on the core of the one that wakes it, where it would wait until
  // all is done. A load has said that there are others.
  const int core = load_ == nullptr ? avoided_ : RunningCore();
  if (core != avoided_) {
    for (std::thread& thread : threads_) KeepOff(core, thread);
    avoided_ = core;
  }
  ++calls_;
  // From now on they want a core.
  sleeping_ = 0;
  wake_.notify_all();
}

void Team::Open(int pieces, const Work& work) {
  pieces_ = pieces;
  work_ = &work;
  done_.store(0, std::memory_order_relaxed);
  failed_.store(pieces, std::memory_order_relaxed);
  faults_.store(0, std::memory_order_relaxed);
  stopped_.store(false, std::memory_order_relaxed);
  const std::uint64_t generation = (left_.load(std::memory_order_relaxed) >> 32) + 1;
  left_.store(generation << 32 | static_cast<std::uint64_t>(pieces) << 16);
  WakeAll();
}

void Team::Close() {
  work_ = nullptr;
  std::feraiseexcept(faults_.load(std::memory_order_relaxed));
  std::exception_ptr failure;
  {
    const std::lock_guard lock(mutex_);
    failure = std::exchange(failure_, nullptr);
  }
  if (stopped_.load(std::memory_order_relaxed)) throw Stopped();
  if (failure != nullptr) std::rethrow_exception(failure);
}

void Team::Serve(int member) {
  thisMember = member;
  for (;;) {
    while (TakePiece()) {
    }
    if (SpinFor([this] { return IsThereWork(); })) continue;
    std::unique_lock lock(mutex_);
    if (!ends_ && !IsThereWork()) Sleep(lock);
    if (ends_) return;
  }
}

/// Until the next call.
void Team::Sleep(std::unique_lock<std::mutex>& lock) {
  ++sleeping_;
  wake_.wait(lock, [this, calls = calls_] { return ends_ || calls_ != calls; });
}

/// For the running member.
bool Team::IsThereWork() const {
  const std::uint64_t left = left_.load(std::memory_order_acquire);
  return NextOf(left) < PiecesOf(left) && thisMember < takePart_.load(std::memory_order_relaxed);
}

/// Runs the next piece; false where there is none.
bool Team::TakePiece() {
  if (thisMember >= takePart_.load(std::memory_order_relaxed)) return false;
  std::uint64_t left = left_.load(std::memory_order_acquire);
  do {
    if (NextOf(left) >= PiecesOf(left)) return false;
  } while (!left_.compare_exchange_weak(left, left + kOnePieceOn, std::memory_order_acq_rel,
                                        std::memory_order_acquire));
  RunPiece(NextOf(left));
  return true;
}

void Team::RunPiece(int piece) {
  const int pieces = pieces_;  // The job may be gone once this piece is done.
  if (!IsStopped() && piece < failed_.load(std::memory_order_relaxed)) {
    if (thisMember != 0) std::feclearexcept(FE_ALL_EXCEPT);
    try {
      (*work_)(piece);
    } catch (const Stopped&) {
      stopped_.store(true, std::memory_order_relaxed);
    } catch (...) {
      NoteFailure(piece, std::current_exception());
    }
    if (thisMember != 0) {
      faults_.fetch_or(std::fetestexcept(FE_ALL_EXCEPT), std::memory_order_relaxed);
    }
  }
  const bool last = done_.fetch_add(1, std::memory_order_acq_rel) == pieces - 1;
  if (!last || thisMember == 0) return;
  const std::lock_guard lock(mutex_);
  if (callerSleeps_) ended_.notify_one();
}

void Team::NoteFailure(int piece, std::exception_ptr failure) {
  const std::lock_guard lock(mutex_);
  if (piece >= failed_.load(std::memory_order_relaxed)) return;
  failed_.store(piece, std::memory_order_relaxed);
  failure_ = std::move(failure);
}

void Team::WaitForOthers(WhileWaiting whileWaiting) {
  if (SpinFor([this] { return AllDone(); })) return;
  std::unique_lock lock(mutex_);
  callerSleeps_ = true;
  while (!ended_.wait_for(lock, kLook, [this] { return AllDone(); })) {
    lock.unlock();
    try {
      if (!IsStopped()) whileWaiting();
    } catch (const Stopped&) {
      stopped_.store(true, std::memory_order_relaxed);
    } catch (...) {
      constexpr int kBeforeAll = -1;
      NoteFailure(kBeforeAll, std::current_exception());
    }
    lock.lock();
  }
  callerSleeps_ = false;
}

void Team::NoteWait(Clock::duration waited, Clock::duration longest) {
  if (load_ == nullptr) return;
  // Another member's piece may take somewhat longer than the longest of the caller's.
  const Clock::duration lost = waited - 2 * longest;
  if (lost <= kPatience) return;
  aloneFor_ = std::clamp<Clock::duration>(std::max(2 * aloneFor_, kSmallPart * lost), kAloneAtFirst,
                                          kAloneAtMost);
  aloneUntil_ = (Clock::now() + aloneFor_).time_since_epoch().count();
}

Attempt::Attempt(Team& team, std::string_view name, double work)
    : team_(team),
      name_(name),
      work_(work),
      exceptions_(std::uncaught_exceptions()),
      isShared_(team.WouldShare()) {
  learns_ = isShared_ && team.Learns(work);
  if (!learns_) return;
  begin_ = Team::Clock::now();
  isShared_ = team.experience_.ShouldShare(name, work, begin_);
}

Attempt::~Attempt() {
  if (!learns_ || std::uncaught_exceptions() != exceptions_) return;
  const Team::Clock::time_point end = Team::Clock::now();
  if (isShared_) {
    team_.experience_.NoteShared(name_, work_, end - begin_, end);
  } else {
    team_.experience_.NoteAlone(name_, work_, end - begin_);
  }
}

namespace {

Team*& TeamInUse() {
  // It outlives everything, also what ends the process without a word to its threads.
  static Team* team = new Team(
      MembersFor(std::getenv("QMX_THREADS"), static_cast<int>(std::thread::hardware_concurrency())),
      &SystemLoad());
  return team;
}

}  // namespace

Team& SharedTeam() { return *TeamInUse(); }

StayAlone::StayAlone() : before_(std::exchange(staysAlone, true)) {}

StayAlone::~StayAlone() { staysAlone = before_; }

UseTeam::UseTeam(Team& team) : before_(std::exchange(TeamInUse(), &team)) {}
UseTeam::~UseTeam() { TeamInUse() = before_; }

int MembersFor(const char* limit, int cores) {
  const int all = std::clamp(cores, 1, kMostMembers);
  if (limit == nullptr) return all;
  const std::string_view text = limit;
  int members = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), members);
  const bool isNumber = error == std::errc() && end == text.data() + text.size();
  return isNumber && members > 0 ? std::min(members, all) : all;
}

}  // namespace qmx
