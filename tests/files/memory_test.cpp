#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <string>

#include "files/matrix_file.h"
#include "workspace/slot_table.h"

namespace qmx {
namespace {

#if defined(__SANITIZE_ADDRESS__)
constexpr bool kMemoryIsItsOwn = false;
#else
constexpr bool kMemoryIsItsOwn = true;
#endif

/// A figure in kilobytes that the system keeps about this process.
long Kilobytes(const std::string& key) {
  std::ifstream status("/proc/self/status");
  std::string line;
  while (std::getline(status, line)) {
    if (line.starts_with(key + ":")) return std::atol(line.c_str() + key.size() + 1);
  }
  return 0;
}

std::string WholeFile(const std::string& name) {
  std::ifstream file(name, std::ios::binary | std::ios::ate);
  std::string bytes(static_cast<std::size_t>(file.tellg()), '\0');
  file.seekg(0);
  file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
  return bytes;
}

/// The most memory, in kilobytes, that reading a matrix file takes in a process of its own.
long MemoryForReading(const std::string& name) {
  int channel[2];
  if (pipe(channel) != 0) return -1;
  const pid_t child = fork();
  if (child == 0) {
    const long before = Kilobytes("VmRSS");
    const auto reading = ReadMatrixFile(kSlotA, WholeFile(name));
    const long most = reading.Ok() ? Kilobytes("VmHWM") - before : -1;
    _exit(write(channel[1], &most, sizeof(most)) == sizeof(most) ? 0 : 1);
  }
  long most = -1;
  if (read(channel[0], &most, sizeof(most)) != sizeof(most)) most = -1;
  close(channel[0]);
  close(channel[1]);
  waitpid(child, nullptr, 0);
  return most;
}

TEST(Memory, ReadingTakesAtMostThreeTimesTheFile) {
  if (!kMemoryIsItsOwn) GTEST_SKIP() << "the sanitizer has memory of its own";
  const std::string name = testing::TempDir() + "qmx_memory_" + std::to_string(getpid());
  for (const double value : {0.0, 1.0 / 3}) {
    Matrix values(1500, 1500);
    for (std::size_t i = 0; i < values.Size(); ++i) values.Data()[i] = value;
    const std::string bytes = MatrixFile(kSlotA, values);
    std::ofstream(name, std::ios::binary) << bytes;
    const long most = MemoryForReading(name);
    std::remove(name.c_str());
    const long size = static_cast<long>(bytes.size() / 1024);
    EXPECT_GT(most, size);
    EXPECT_LE(most, 3 * size) << value;
  }
}

}  // namespace
}  // namespace qmx
