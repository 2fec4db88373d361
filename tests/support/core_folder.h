// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace qmx::test {

/// The folder of the sources, without a separator at its end.
std::string SourceFolder();

}  // namespace qmx::test
