// SPDX-License-Identifier: MIT
#pragma once

#include <sys/types.h>

#include <cstddef>
#include <functional>

namespace qmx {

/// Work on bytes that nobody vouches for, by a library that may crash over them, run for minutes or
/// ask for all memory: it is done by a process of its own, a copy of this one, whose end harms
/// nobody. The copy has little memory and time, writes nothing to the terminal and leaves no core.
///
/// The work must not touch locks that another thread of this process may have held, nor windows; it
/// reads what this process has in memory and writes what it found into the channel.
class Apart {
 public:
  /// The end of the channel that the work writes to.
  class Channel {
   public:
    explicit Channel(int file) : file_(file) {}
    /// Ends the process where nobody listens any more.
    void Send(const void* bytes, std::size_t size) const;

   private:
    int file_;
  };

  /// Starts the work. `memory` is what it may use beyond what this process has. Refuses where the
  /// system gives no further process.
  Apart(const std::function<void(const Channel&)>& work, std::size_t memory);
  Apart(const Apart&) = delete;
  Apart& operator=(const Apart&) = delete;
  /// Ends the process if it still runs.
  ~Apart();

  /// Waits for so many bytes; false where the work ended before they came.
  bool Receive(void* bytes, std::size_t size) const;

 private:
  int file_ = -1;
  pid_t process_ = -1;
};

}  // namespace qmx
