// SPDX-License-Identifier: MIT
#pragma once

#include <random>

#include "workspace/ports.h"

namespace qmx {

/// Uniform numbers k / 2^24, 0 <= k < 2^24: every step of single precision in [0.5, 1), and 1 is
/// never reached. The same seed gives the same sequence on every machine.
class RandomSource : public Random {
 public:
  void Seed(std::uint64_t seed) override;
  float Next() override;

 private:
  std::mt19937 engine_;
};

}  // namespace qmx
