// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace qmx::test {

/// The files of a folder in fuzz/corpus in a fixed order.
std::vector<std::string> Corpus(const std::string& folder);

/// Changes bytes as a fuzzer does, the same way in every run.
class Mutator {
 public:
  /// `tokens` are what a reader would take notice of.
  explicit Mutator(std::vector<std::string> tokens) : tokens_(std::move(tokens)) {}

  std::string Mutate(std::string bytes, const std::string& other);
  std::size_t Below(std::size_t limit) { return random_() % limit; }

 private:
  void MutateOnce(std::string& bytes, const std::string& other);

  std::vector<std::string> tokens_;
  std::mt19937 random_{99};
};

}  // namespace qmx::test
