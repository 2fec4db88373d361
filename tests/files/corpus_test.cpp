// Gives the stored corpus of the fuzzers, and many mutations of it, to the readers.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <vector>

#include "reading.h"

namespace qmx {
namespace {

namespace fs = std::filesystem;

constexpr const char* kTokens[] = {
    "#TRUE#", "#FALSE#", ",",          "\r\n", "\n",     " ",   "-1", "0",           "1",  "2,0",
    "0,0",    "2,2",     "2147483647", ".5",   "1E+999", "nan", "-",  "99999999999", "\"", "\r"};

/// The files of a reader's corpus in a fixed order.
std::vector<std::string> Corpus(const fuzz::Reader& reader) {
  std::vector<fs::path> names;
  for (const auto& entry :
       fs::directory_iterator(std::string(QMX_SOURCE_DIR) + "/fuzz/corpus/" + reader.name))
    names.push_back(entry.path());
  std::sort(names.begin(), names.end());
  std::vector<std::string> files;
  for (const fs::path& name : names) {
    std::ifstream file(name, std::ios::binary);
    files.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
  }
  return files;
}

class Mutator {
 public:
  std::string Mutate(std::string bytes, const std::string& other) {
    for (std::size_t times = 1 + Below(4); times > 0; --times) MutateOnce(bytes, other);
    return bytes;
  }
  std::size_t Below(std::size_t limit) { return random_() % limit; }

 private:
  void MutateOnce(std::string& bytes, const std::string& other) {
    const std::size_t at = Below(bytes.size() + 1);
    const std::size_t length = Below(12);
    switch (Below(6)) {
      case 0:
        if (at < bytes.size()) bytes[at] = static_cast<char>(random_());
        return;
      case 1:
        bytes.erase(at, length);
        return;
      case 2:
        bytes.insert(at, kTokens[Below(std::size(kTokens))]);
        return;
      case 3:
        bytes.replace(at, std::min(length, bytes.size() - at), kTokens[Below(std::size(kTokens))]);
        return;
      case 4:
        bytes.insert(at, bytes.substr(Below(bytes.size() + 1), length * 4));
        return;
      default:
        bytes = bytes.substr(0, at) + other.substr(Below(other.size() + 1));
    }
  }

  std::mt19937 random_{99};
};

class CorpusTest : public ::testing::TestWithParam<fuzz::Reader> {};

TEST_P(CorpusTest, EveryStoredFileIsReadOrRefusedAsAWhole) {
  const std::vector<std::string> files = Corpus(GetParam());
  ASSERT_GE(files.size(), 10U);
  for (const std::string& bytes : files) EXPECT_EQ(GetParam().run(bytes), "") << bytes;
}

TEST_P(CorpusTest, EveryMutationIsReadOrRefusedAsAWhole) {
  const std::vector<std::string> files = Corpus(GetParam());
  Mutator mutator;
  constexpr int kRuns = 5000;
  for (int i = 0; i < kRuns; ++i) {
    const std::string& one = files[mutator.Below(files.size())];
    const std::string bytes = mutator.Mutate(one, files[mutator.Below(files.size())]);
    ASSERT_EQ(GetParam().run(bytes), "") << bytes;
  }
}

INSTANTIATE_TEST_SUITE_P(Readers, CorpusTest, ::testing::ValuesIn(fuzz::kReaders),
                         [](const auto& reader) { return std::string(reader.param.name); });

}  // namespace
}  // namespace qmx
