// SPDX-License-Identifier: MIT
#pragma once

#include <cmath>

namespace qmx {

/// The largest magnitude in a column.
struct LargestElement {
  int place = 0;         ///< The first of equals, from 0.
  double magnitude = 0;  ///< What stands there.
  bool only = true;      ///< Whether no other element has the same.
};

/// Searches element(0) to element(count - 1), at least one, from the first to the last and keeps
/// what is strictly larger. A NaN in the first place is therefore the largest, and is none
/// elsewhere. Up to kForeseen elements are searched with branches: where the same few columns are
/// searched over and over, what follows begins before the search is over.
template <int kForeseen = 0, class Element>
inline LargestElement FindLargest(int count, Element element) {
  LargestElement largest{0, std::abs(element(0)), true};
  if (count <= kForeseen) {
    for (int k = 1; k < count; ++k) {
      const double magnitude = std::abs(element(k));
      if (magnitude > largest.magnitude) {
        asm("");  // Keeps the branch.
        largest = {k, magnitude, true};
      } else if (magnitude == largest.magnitude) {
        largest.only = false;
      }
    }
    return largest;
  }
  for (int k = 1; k < count; ++k) {
    const double magnitude = std::abs(element(k));
    const bool larger = magnitude > largest.magnitude;
    largest.only = larger || (largest.only && magnitude != largest.magnitude);
    largest.place = larger ? k : largest.place;
    largest.magnitude = larger ? magnitude : largest.magnitude;
  }
  return largest;
}

}  // namespace qmx
