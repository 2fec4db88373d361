// SPDX-License-Identifier: MIT
#include "base/machine_load.h"

#include <thread>

#ifdef __linux__
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#endif

namespace qmx {

#ifdef __linux__
std::optional<int> MachineLoad::Running() const {
  // It stays open as long as the program runs: opening takes longer than reading.
  static const int file = open("/proc/loadavg", O_RDONLY | O_CLOEXEC);
  char text[64];
  const ssize_t size = file < 0 ? 0 : pread(file, text, sizeof(text), 0);
  // Three means, and then "running/all".
  const char* const end = text + std::max<ssize_t>(size, 0);
  const char* field = text;
  for (int blanks = 0; blanks < 3 && field != end; ++blanks) {
    field = std::find(field, end, ' ');
    if (field != end) ++field;
  }
  int running = 0;
  const auto [behind, error] = std::from_chars(field, end, running);
  if (error != std::errc() || behind == end || *behind != '/') return std::nullopt;
  return running;
}

int MachineLoad::Cores() const {
  static const int cores = static_cast<int>(sysconf(_SC_NPROCESSORS_ONLN));
  return cores;
}
#else
std::optional<int> MachineLoad::Running() const { return std::nullopt; }

int MachineLoad::Cores() const { return static_cast<int>(std::thread::hardware_concurrency()); }
#endif

const MachineLoad& SystemLoad() {
  static const MachineLoad load;
  return load;
}

}  // namespace qmx
