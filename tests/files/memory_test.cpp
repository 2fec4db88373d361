// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <string>

#include "files/matrix_file.h"
#include "support/core_memory.h"
#include "workspace/slot_table.h"

namespace qmx {
namespace {

TEST(Memory, ReadingTakesAtMostThreeTimesTheFile) {
  if (!test::kMemoryIsItsOwn) GTEST_SKIP() << "the sanitizer has memory of its own";
  const std::string name = testing::TempDir() + "qmx_memory_" + std::to_string(getpid());
  for (const double value : {0.0, 1.0 / 3}) {
    Matrix values(1500, 1500);
    for (std::size_t i = 0; i < values.Size(); ++i) values.Data()[i] = value;
    const std::string bytes = MatrixFile(kSlotA, values);
    std::ofstream(name, std::ios::binary) << bytes;
    const long most =
        test::MemoryOf([&] { return ReadMatrixFile(kSlotA, test::WholeFile(name)).Ok(); });
    std::remove(name.c_str());
    const long size = static_cast<long>(bytes.size() / 1024);
    EXPECT_GT(most, size);
    EXPECT_LE(most, 3 * size) << value;
  }
}

}  // namespace
}  // namespace qmx
