// SPDX-License-Identifier: MIT
#pragma once

#include <array>

#include "algorithms/ordered_product.h"

namespace qmx::testing {

inline constexpr std::array<InstructionSet, 4> kInstructionSets{
    InstructionSet::kPlain, InstructionSet::kSse2, InstructionSet::kAvx2, InstructionSet::kAvx512};

/// Runs `test` once with every instruction set that this processor has.
template <class Test>
void ForEachInstructionSet(Test test) {
  for (const InstructionSet set : kInstructionSets) {
    if (!HasInstructionSet(set)) continue;
    UseInstructionSet(set);
    test(set);
  }
  UseInstructionSet(BestInstructionSet());
}

}  // namespace qmx::testing
