// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <string>

#include "exchange/foreign_file.h"
#include "support/core_memory.h"

namespace qmx {
namespace {

bool ReadsWhole(const std::string& name) {
  const std::string bytes = test::WholeFile(name);
  const auto contents = InspectForeign(bytes);
  return contents.Ok() && ReadForeign(bytes, contents.content, 0).Ok();
}

TEST(ExchangeMemory, ReadingTakesAtMostThreeTimesTheFile) {
  if (!test::kMemoryIsItsOwn) GTEST_SKIP() << "the sanitizer has memory of its own";
  const std::string name = testing::TempDir() + "qmx_exchange_" + std::to_string(getpid());
  Matrix values(1500, 1500);
  for (std::size_t k = 0; k < values.Size(); ++k)
    values.Data()[k] = 1.0 / (3 + static_cast<double>(k));
  for (const ForeignFormatInfo& info : kForeignFormats) {
    const auto bytes = WriteForeign(values, {.format = info.format});
    std::ofstream(name, std::ios::binary) << bytes.content;
    const long most = test::MemoryOf([&] { return ReadsWhole(name); });
    std::remove(name.c_str());
    const long size = static_cast<long>(bytes.content.size() / 1024);
    EXPECT_GT(most, size) << info.title;
    EXPECT_LE(most, 3 * size) << info.title;
  }
}

/// What a file merely claims costs nothing.
TEST(ExchangeMemory, ClaimsTakeNoMemory) {
  if (!test::kMemoryIsItsOwn) GTEST_SKIP() << "the sanitizer has memory of its own";
  std::string npy("\x93NUMPY\x01\x00\x46\x00", 10);
  npy += "{'descr': '<f8', 'fortran_order': False, 'shape': (30000, 30000), }   \n";
  const std::string claims[] = {
      npy,
      "%%MatrixMarket matrix array real general\n30000 30000\n1\n",
      "%%MatrixMarket matrix coordinate real general\n30000 30000 1\n1 1 1\n",
      "# name: x\n# type: matrix\n# rows: 30000\n# columns: 30000\n 1\n",
      "# name: x\n# type: diagonal matrix\n# rows: 30000\n# columns: 30000\n1\n",
      "# name: x\n# type: range\n# base, limit, increment\n0 1e9 1\n",
  };
  for (const std::string& bytes : claims) {
    const long most = test::MemoryOf([&] {
      const auto contents = InspectForeign(bytes);
      return contents.Ok() && !ReadForeign(bytes, contents.content, 0).Ok();
    });
    EXPECT_GE(most, 0) << bytes;
    EXPECT_LE(most, 4096) << bytes;
  }
}

}  // namespace
}  // namespace qmx
