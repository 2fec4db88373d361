// SPDX-License-Identifier: MIT
#include "app/background_runs.h"

#include <algorithm>
#include <new>
#include <utility>

#include "base/fault.h"

namespace qmx {
namespace {

/// What work that nobody waits for any more is left by.
struct Dropped {};

}  // namespace

void BackgroundRuns::Drop::operator()(std::shared_ptr<Run>* run) const {
  (*run)->dropped_ = true;
  delete run;
}

BackgroundRuns::Ticket BackgroundRuns::Start(const Prepare& prepare, const Then& then) {
  std::shared_ptr<Run> run;
  try {
    run = std::make_shared<Run>(prepare(), then);
  } catch (const std::bad_alloc&) {
    then(End::kNoMemory);
    return nullptr;
  }
  Ticket ticket(new std::shared_ptr<Run>(run));
  if (ended_) return ticket;
  waiting_.push_back(std::move(run));
  StartNext();
  return ticket;
}

void BackgroundRuns::StopAll() {
  ended_ = true;
  waiting_.clear();
  if (running_ != nullptr) running_->dropped_ = true;
}

void BackgroundRuns::StartNext() {
  if (running_ != nullptr) return;
  while (running_ == nullptr && !waiting_.empty()) {
    const std::shared_ptr<Run> next = std::move(waiting_.front());
    waiting_.pop_front();
    if (!next->dropped_) running_ = next;
  }
  if (running_ == nullptr) return;
  worker_.Start([run = running_.get()] { Do(*run); },
                [this] { QMetaObject::invokeMethod(this, "AfterRun", Qt::QueuedConnection); });
}

void BackgroundRuns::Do(Run& run) {
  try {
    run.work_([&run] {
      if (run.dropped_.load(std::memory_order_relaxed)) throw Dropped{};
    });
  } catch (const Dropped&) {
  } catch (const std::bad_alloc&) {
    run.end_ = End::kNoMemory;
  } catch (const RuntimeFault&) {
    run.end_ = End::kNoMemory;
  }
}

void BackgroundRuns::Follow(const Run& run) {
  try {
    run.then_(run.end_);
  } catch (const std::bad_alloc&) {
    run.then_(End::kNoMemory);
  }
}

void BackgroundRuns::AfterRun() {
  // Whoever waited may have taken what ended before this call came.
  TakeEnded(std::chrono::milliseconds(0));
}

bool BackgroundRuns::TakeEnded(std::chrono::milliseconds longest) {
  // By the worker's lock, what it has written is seen here.
  if (running_ == nullptr || !worker_.WaitFor(longest)) return false;
  const std::shared_ptr<Run> run = std::move(running_);
  running_ = nullptr;
  if (!run->dropped_) Follow(*run);
  if (!ended_) StartNext();
  return true;
}

bool BackgroundRuns::WaitFor(std::chrono::milliseconds longest) {
  using Clock = std::chrono::steady_clock;
  const Clock::time_point until = Clock::now() + longest;
  while (running_ != nullptr) {
    const auto rest = std::chrono::ceil<std::chrono::milliseconds>(until - Clock::now());
    if (!TakeEnded(std::max(rest, std::chrono::milliseconds(0)))) return false;
  }
  return true;
}

}  // namespace qmx
