// SPDX-License-Identifier: MIT
#pragma once

#include <condition_variable>
#include <mutex>

namespace qmx::testing {

/// Lets nobody on before so many have come.
class Meeting {
 public:
  explicit Meeting(int wanted) : wanted_(wanted) {}
  void Come() {
    std::unique_lock lock(mutex_);
    ++here_;
    changed_.notify_all();
    changed_.wait(lock, [this] { return here_ >= wanted_; });
  }

 private:
  const int wanted_;
  int here_ = 0;
  std::mutex mutex_;
  std::condition_variable changed_;
};

}  // namespace qmx::testing
