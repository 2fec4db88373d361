// SPDX-License-Identifier: MIT
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>

#include "base/matrix.h"
#include "exchange/mat_direct.h"
#include "exchange/mat_file.h"

namespace qmx::test {

/// One of the two ways in which MAT files are read; where the program has no other they are one.
struct MatReading {
  const char* name;
  ForeignOutcome<std::vector<ForeignVariable>> (*list)(std::string_view);
  ForeignOutcome<Matrix> (*read)(std::string_view, std::size_t, const Memory&);

  ForeignOutcome<Matrix> Read(std::string_view bytes, std::size_t index) const {
    return read(bytes, index, SystemMemory());
  }
  /// The list in words, a line for each variable, or why there is none.
  std::string Listed(std::string_view bytes) const {
    const auto outcome = list(bytes);
    std::string names = outcome.problem;
    for (const ForeignVariable& variable : outcome.content) {
      names += variable.name + " (" + variable.kind + ", " + variable.shape + ")" +
               (variable.problem.empty() ? "" : " - " + variable.problem) + "\n";
    }
    return names;
  }
  Matrix ReadByName(std::string_view bytes, const std::string& variable) const {
    const auto outcome = list(bytes);
    for (std::size_t k = 0; k < outcome.content.size(); ++k) {
      if (outcome.content[k].name != variable) continue;
      auto matrix = Read(bytes, k);
      EXPECT_EQ(matrix.problem, "") << variable;
      return std::move(matrix.content);
    }
    ADD_FAILURE() << "no " << variable;
    return {};
  }
};

inline constexpr MatReading kAsTheProgram{"AsTheProgram", ListMat, ReadMat};
inline constexpr MatReading kDirectly{"Directly", ListMatDirectly, ReadMatDirectly};

}  // namespace qmx::test
