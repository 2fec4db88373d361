// SPDX-License-Identifier: MIT
#include "desktop/random_source.h"

namespace qmx {

void RandomSource::Seed(std::uint64_t seed) {
  std::seed_seq words{static_cast<std::uint32_t>(seed), static_cast<std::uint32_t>(seed >> 32)};
  engine_.seed(words);
}

float RandomSource::Next() {
  constexpr unsigned kBelowSingle = 8;  // The bits of a word that single precision cannot hold.
  return static_cast<float>(engine_() >> kBelowSingle) * 0x1p-24F;
}

}  // namespace qmx
