// SPDX-License-Identifier: MIT
#include "desktop/worker.h"

#include <cassert>
#include <utility>

namespace qmx {

Worker::Worker() : thread_([this] { Loop(); }) {}

Worker::~Worker() {
  {
    const std::lock_guard lock(mutex_);
    ends_ = true;
  }
  changed_.notify_all();
  thread_.join();
}

void Worker::Start(std::function<void()> work, std::function<void()> onEnd) {
  {
    const std::lock_guard lock(mutex_);
    assert(!busy_);
    work_ = std::move(work);
    onEnd_ = std::move(onEnd);
    busy_ = true;
  }
  changed_.notify_all();
}

bool Worker::WaitFor(std::chrono::milliseconds longest) {
  std::unique_lock lock(mutex_);
  return changed_.wait_for(lock, longest, [this] { return !busy_; });
}

void Worker::Loop() {
  std::unique_lock lock(mutex_);
  for (;;) {
    changed_.wait(lock, [this] { return ends_ || busy_; });
    if (!busy_) return;
    lock.unlock();
    work_();
    const std::function<void()> onEnd = std::move(onEnd_);
    lock.lock();
    busy_ = false;
    work_ = nullptr;
    // Under the lock: once it is free, whoever waits may let the receiver of this go.
    if (onEnd) onEnd();
    changed_.notify_all();
  }
}

}  // namespace qmx
