// SPDX-License-Identifier: MIT
#include "output/picture_colours.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace qmx {
namespace {

/// The colours of one sign, for the smallest, the middle and the largest magnitude.
using Ramp = std::array<Rgb, 3>;

struct Theme {
  Rgb zero;
  Ramp negative;
  Ramp positive;
};

constexpr Theme kLight{{190, 190, 190},
                       {{{232, 241, 252}, {91, 155, 213}, {8, 48, 107}}},
                       {{{255, 244, 228}, {240, 150, 50}, {127, 45, 0}}}};
constexpr Theme kDark{{105, 105, 105},
                      {{{18, 28, 44}, {44, 110, 180}, {178, 218, 255}}},
                      {{{44, 28, 14}, {190, 100, 20}, {255, 214, 150}}}};

std::uint8_t Between(std::uint8_t from, std::uint8_t to, double share) {
  return static_cast<std::uint8_t>(std::lround(from + (to - from) * share));
}

Rgb Between(const Rgb& from, const Rgb& to, double share) {
  return {Between(from.red, to.red, share), Between(from.green, to.green, share),
          Between(from.blue, to.blue, share)};
}

}  // namespace

Rgb PictureColour(double value, double largest, bool dark) {
  const Theme& theme = dark ? kDark : kLight;
  if (value == 0 || !(largest > 0)) return theme.zero;
  const Ramp& ramp = value < 0 ? theme.negative : theme.positive;
  const double share = std::min(1.0, std::abs(value) / largest);
  return share < 0.5 ? Between(ramp[0], ramp[1], 2 * share)
                     : Between(ramp[1], ramp[2], 2 * share - 1);
}

}  // namespace qmx
