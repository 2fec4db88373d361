// SPDX-License-Identifier: MIT
#include "support/core_memory.h"

#include <fstream>

namespace qmx::test {

std::string WholeFile(const std::string& name) {
  std::ifstream file(name, std::ios::binary | std::ios::ate);
  std::string bytes(static_cast<std::size_t>(file.tellg()), '\0');
  file.seekg(0);
  file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  return bytes;
}

}  // namespace qmx::test
