// SPDX-License-Identifier: MIT
#include "base/memory.h"

#include <fstream>
#include <limits>
#include <string>

#ifdef _WIN32
#include <windows.h>
#endif
#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace qmx {

#ifdef _WIN32
std::size_t Memory::Available() const {
  MEMORYSTATUSEX status{};
  status.dwLength = sizeof(status);
  return GlobalMemoryStatusEx(&status) != 0 ? static_cast<std::size_t>(status.ullAvailPhys)
                                            : std::numeric_limits<std::size_t>::max();
}
#else
std::size_t Memory::Available() const {
  std::ifstream info("/proc/meminfo");
  std::string key;
  std::size_t kilobytes = 0;
  std::string unit;
  while (info >> key >> kilobytes) {
    if (key == "MemAvailable:") return kilobytes * 1024;
    std::getline(info, unit);
  }
  return std::numeric_limits<std::size_t>::max();
}
#endif

const Memory& SystemMemory() {
  static const Memory memory;
  return memory;
}

void KeepFreedMemory() {
#ifdef __GLIBC__
  constexpr int kMegabyte = 1 << 20;
  mallopt(M_TRIM_THRESHOLD, 64 * kMegabyte);
  // What is larger goes back to the system by itself.
  mallopt(M_MMAP_THRESHOLD, 32 * kMegabyte);
#endif
}

}  // namespace qmx
