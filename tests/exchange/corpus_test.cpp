// SPDX-License-Identifier: MIT
// Gives the stored corpus of the fuzzers, and many mutations of it, to the readers of foreign
// formats.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "foreign_reading.h"
#include "support/core_corpus.h"

namespace qmx {
namespace {

const std::vector<std::string> kTokens = {",",
                                          ";",
                                          "\t",
                                          "\r\n",
                                          "\n",
                                          " ",
                                          "-1",
                                          "0",
                                          "1",
                                          "2 2",
                                          ".5",
                                          "1E+999",
                                          "nan",
                                          "-",
                                          "\"",
                                          "\r",
                                          "#",
                                          "%",
                                          "0,5",
                                          "# name: ",
                                          "matrix",
                                          "integer",
                                          "99999999",
                                          "18446744073709551615",
                                          "(1, 2)",
                                          "<i8",
                                          "True",
                                          std::string(4, '\0'),
                                          "\xFF\xFF\xFF\xFF"};

class ForeignCorpusTest : public ::testing::TestWithParam<fuzz::Reader> {};

TEST_P(ForeignCorpusTest, EveryStoredFileIsReadOrRefusedAsAWhole) {
  const std::vector<std::string> files = test::Corpus(GetParam().name);
  ASSERT_GE(files.size(), 5U);
  for (const std::string& bytes : files) EXPECT_EQ(GetParam().run(bytes), "") << bytes;
}

TEST_P(ForeignCorpusTest, EveryMutationIsReadOrRefusedAsAWhole) {
  const std::vector<std::string> files = test::Corpus(GetParam().name);
  test::Mutator mutator(kTokens);
  constexpr int kRuns = 3000;
  for (int i = 0; i < kRuns; ++i) {
    const std::string& one = files[mutator.Below(files.size())];
    const std::string bytes = mutator.Mutate(one, files[mutator.Below(files.size())]);
    ASSERT_EQ(GetParam().run(bytes), "") << bytes;
  }
}

/// A file may end anywhere.
TEST_P(ForeignCorpusTest, EveryStoredFileMayBeCutAnywhere) {
  for (const std::string& bytes : test::Corpus(GetParam().name)) {
    for (std::size_t size = 0; size<bytes.size(); size += bytes.size()> 500 ? 7 : 1)
      ASSERT_EQ(GetParam().run(bytes.substr(0, size)), "") << bytes.substr(0, size);
  }
}

INSTANTIATE_TEST_SUITE_P(Readers, ForeignCorpusTest, ::testing::ValuesIn(fuzz::kForeignReaders),
                         [](const auto& reader) { return std::string(reader.param.name); });

}  // namespace
}  // namespace qmx
