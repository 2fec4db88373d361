// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace qmx {

/// A thread beside that of the windows, which runs one piece of work at a time. The thread that
/// gives it work waits for it, or does something else and asks now and then.
class Worker {
 public:
  Worker();
  Worker(const Worker&) = delete;
  Worker& operator=(const Worker&) = delete;
  /// Waits until what is under way is done.
  ~Worker();

  /// Begins a piece of work, which must not throw; none may be under way. `onEnd` is called by the
  /// worker when it is done.
  void Start(std::function<void()> work, std::function<void()> onEnd);
  /// Waits until the work is done, but no longer than this. True if it is.
  bool WaitFor(std::chrono::milliseconds longest);

 private:
  void Loop();

  std::mutex mutex_;
  std::condition_variable changed_;
  std::function<void()> work_;
  std::function<void()> onEnd_;
  bool busy_ = false;
  bool ends_ = false;
  std::thread thread_;
};

}  // namespace qmx
