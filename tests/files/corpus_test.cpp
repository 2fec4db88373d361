// SPDX-License-Identifier: MIT
// Gives the stored corpus of the fuzzers, and many mutations of it, to the readers.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "reading.h"
#include "support/core_corpus.h"

namespace qmx {
namespace {

const std::vector<std::string> kTokens = {
    "#TRUE#", "#FALSE#", ",",          "\r\n", "\n",     " ",   "-1", "0",           "1",  "2,0",
    "0,0",    "2,2",     "2147483647", ".5",   "1E+999", "nan", "-",  "99999999999", "\"", "\r"};

class CorpusTest : public ::testing::TestWithParam<fuzz::Reader> {};

TEST_P(CorpusTest, EveryStoredFileIsReadOrRefusedAsAWhole) {
  const std::vector<std::string> files = test::Corpus(GetParam().name);
  ASSERT_GE(files.size(), 10U);
  for (const std::string& bytes : files) EXPECT_EQ(GetParam().run(bytes), "") << bytes;
}

TEST_P(CorpusTest, EveryMutationIsReadOrRefusedAsAWhole) {
  const std::vector<std::string> files = test::Corpus(GetParam().name);
  test::Mutator mutator(kTokens);
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
