// SPDX-License-Identifier: MIT
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <string>

#include "support/core_memory.h"

namespace qmx::test {
namespace {

/// A figure in kilobytes that the system keeps about this process.
long Kilobytes(const std::string& key) {
  std::ifstream status("/proc/self/status");
  std::string line;
  while (std::getline(status, line)) {
    if (line.starts_with(key + ":")) return std::atol(line.c_str() + key.size() + 1);
  }
  return 0;
}

}  // namespace

long MemoryOf(const std::function<bool()>& work) {
  int channel[2];
  if (pipe(channel) != 0) return -1;
  const pid_t child = fork();
  if (child == 0) {
    const long before = Kilobytes("VmRSS");
    const long most = work() ? Kilobytes("VmHWM") - before : -1;
    _exit(write(channel[1], &most, sizeof(most)) == sizeof(most) ? 0 : 1);
  }
  long most = -1;
  if (read(channel[0], &most, sizeof(most)) != sizeof(most)) most = -1;
  close(channel[0]);
  close(channel[1]);
  waitpid(child, nullptr, 0);
  return most;
}

}  // namespace qmx::test
