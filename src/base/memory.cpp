#include "base/memory.h"

#include <fstream>
#include <limits>
#include <string>

#ifdef _WIN32
#include <windows.h>
#endif

namespace qmx {

#ifdef _WIN32
std::size_t AvailableMemory() {
  MEMORYSTATUSEX status{};
  status.dwLength = sizeof(status);
  return GlobalMemoryStatusEx(&status) != 0 ? static_cast<std::size_t>(status.ullAvailPhys)
                                            : std::numeric_limits<std::size_t>::max();
}
#else
std::size_t AvailableMemory() {
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

}  // namespace qmx
