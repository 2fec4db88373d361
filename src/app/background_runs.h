// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <atomic>
#include <chrono>
#include <deque>
#include <functional>
#include <memory>

#include "desktop/worker.h"

namespace qmx {

/// Does what takes long beside the windows, one thing after the other. Nobody ever waits for one
/// but the end of the program, which it reaches at its next look.
class BackgroundRuns : public QObject {
  Q_OBJECT

 public:
  enum class End {
    kDone,
    kNoMemory,
  };
  /// Called every few milliseconds; throws what ends the work.
  using Look = std::function<void()>;
  /// What is done on the worker. It owns what it reads; it is made and let go by the thread of the
  /// windows, so that whoever writes a shared element meanwhile takes a copy.
  using Work = std::function<void(const Look& look)>;
  /// Makes it. What it reads may be as large as a matrix.
  using Prepare = std::function<Work()>;
  /// What follows in the thread of the windows.
  using Then = std::function<void(End end)>;

  /// A run that somebody waits for. When it goes, the run is stopped, and nothing follows.
  class Run {
   public:
    Run(Work work, Then then) : work_(std::move(work)), then_(std::move(then)) {}

   private:
    friend class BackgroundRuns;
    Work work_;
    Then then_;
    std::atomic<bool> dropped_ = false;
    End end_ = End::kDone;
  };
  struct Drop {
    void operator()(std::shared_ptr<Run>* run) const;
  };
  using Ticket = std::unique_ptr<std::shared_ptr<Run>, Drop>;

  BackgroundRuns() = default;
  ~BackgroundRuns() override { StopAll(); }

  /// Has something done after what was begun before. Where there is no memory for what it reads,
  /// that follows at once.
  Ticket Start(const Prepare& prepare, const Then& then);
  /// Waits until all that was begun is done and has had what follows, but no longer than this. True
  /// if it has: what is done at once need not be announced.
  bool WaitFor(std::chrono::milliseconds longest);
  void StopAll();
  bool IsIdle() const { return running_ == nullptr && waiting_.empty(); }

 private:
  Q_INVOKABLE void AfterRun();
  bool TakeEnded(std::chrono::milliseconds longest);
  void StartNext();
  static void Do(Run& run);
  /// What follows a run; to show a large document may take more memory than there is.
  static void Follow(const Run& run);

  std::deque<std::shared_ptr<Run>> waiting_;
  std::shared_ptr<Run> running_;
  bool ended_ = false;
  Worker worker_;
};

}  // namespace qmx
