// SPDX-License-Identifier: MIT
#include "support/core_corpus.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "support/core_folder.h"

namespace qmx::test {

namespace fs = std::filesystem;

std::vector<std::string> Corpus(const std::string& folder) {
  std::vector<fs::path> names;
  for (const auto& entry : fs::directory_iterator(SourceFolder() + "/fuzz/corpus/" + folder))
    names.push_back(entry.path());
  std::sort(names.begin(), names.end());
  std::vector<std::string> files;
  for (const fs::path& name : names) {
    std::ifstream file(name, std::ios::binary);
    files.emplace_back(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
  }
  return files;
}

std::string Mutator::Mutate(std::string bytes, const std::string& other) {
  for (std::size_t times = 1 + Below(4); times > 0; --times) MutateOnce(bytes, other);
  return bytes;
}

void Mutator::MutateOnce(std::string& bytes, const std::string& other) {
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
      bytes.insert(at, tokens_[Below(tokens_.size())]);
      return;
    case 3:
      bytes.replace(at, std::min(length, bytes.size() - at), tokens_[Below(tokens_.size())]);
      return;
    case 4:
      bytes.insert(at, bytes.substr(Below(bytes.size() + 1), length * 4));
      return;
    default:
      bytes = bytes.substr(0, at) + other.substr(Below(other.size() + 1));
  }
}

}  // namespace qmx::test
