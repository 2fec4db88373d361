// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace qmx {

/// What is told after a stop of what goes by this name: "Inverse(A)", "Writing a.qmx".
inline std::string StoppedText(const std::string& name) {
  return name + " was stopped. Everything is as it was before.";
}

}  // namespace qmx
