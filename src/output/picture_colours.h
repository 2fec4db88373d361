// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace qmx {

/// A colour of the screen, red, green and blue from 0 to 255.
struct Rgb {
  std::uint8_t red;
  std::uint8_t green;
  std::uint8_t blue;

  bool operator==(const Rgb&) const = default;
};

/// The colour of a number in a picture whose largest magnitude is `largest`: from pale to strong
/// blue below 0, from pale to strong orange above it, which people who confuse red and green tell
/// apart. 0 is a grey of its own, that no other number comes near, however small. On a dark ground
/// pale is dark.
Rgb PictureColour(double value, double largest, bool dark);

}  // namespace qmx
