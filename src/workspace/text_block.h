// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace qmx {

/// The texts of a block of cells, row by row, kept close together: a large block has millions.
struct TextBlock {
  int rows = 0;
  int cols = 0;
  std::string characters;         ///< All texts, one after the other, in UTF-8.
  std::vector<std::size_t> ends;  ///< Where each text ends.

  std::size_t Size() const { return ends.size(); }

  void Append(std::string_view text) {
    characters += text;
    ends.push_back(characters.size());
  }
  /// The text in row i, column j of the block, both counted from 0.
  std::string_view At(int i, int j) const {
    const std::size_t place =
        static_cast<std::size_t>(i) * static_cast<std::size_t>(cols) + static_cast<std::size_t>(j);
    const std::size_t start = place == 0 ? 0 : ends[place - 1];
    return std::string_view(characters).substr(start, ends[place] - start);
  }
};

}  // namespace qmx
