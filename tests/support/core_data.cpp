// SPDX-License-Identifier: MIT
#include "support/core_data.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

#include "support/core_folder.h"

namespace qmx::test {

std::string DataFile(const std::string& name) {
  std::ifstream file(SourceFolder() + "/tests/data/" + name, std::ios::binary);
  if (!file) ADD_FAILURE() << "tests/data/" << name << " is missing";
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace qmx::test
