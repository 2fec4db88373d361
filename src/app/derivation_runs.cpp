// SPDX-License-Identifier: MIT
#include "app/derivation_runs.h"

#include <chrono>
#include <new>
#include <utility>

#include "base/fault.h"

namespace qmx {
namespace {

/// What a derivation that nobody waits for any more is left by.
struct Dropped {};

}  // namespace

void DerivationRuns::Drop::operator()(std::shared_ptr<Run>* run) const {
  (*run)->dropped_ = true;
  delete run;
}

DerivationRuns::Ticket DerivationRuns::Start(const Prepare& prepare, const Then& then) {
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

void DerivationRuns::StopAll() {
  ended_ = true;
  waiting_.clear();
  if (running_ != nullptr) running_->dropped_ = true;
}

void DerivationRuns::StartNext() {
  while (running_ == nullptr && !waiting_.empty()) {
    const std::shared_ptr<Run> next = std::move(waiting_.front());
    waiting_.pop_front();
    if (!next->dropped_) running_ = next;
  }
  if (running_ == nullptr) return;
  worker_.Start([run = running_.get()] { Do(*run); },
                [this] { QMetaObject::invokeMethod(this, "AfterRun", Qt::QueuedConnection); });
}

void DerivationRuns::Do(Run& run) {
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

void DerivationRuns::Follow(const Run& run) {
  try {
    run.then_(run.end_);
  } catch (const std::bad_alloc&) {
    run.then_(End::kNoMemory);
  }
}

void DerivationRuns::AfterRun() {
  // The worker is at its end; by its lock, what it has written is seen here.
  worker_.WaitFor(std::chrono::milliseconds(0));
  const std::shared_ptr<Run> run = std::move(running_);
  running_ = nullptr;
  if (!run->dropped_) Follow(*run);
  if (!ended_) StartNext();
}

}  // namespace qmx
