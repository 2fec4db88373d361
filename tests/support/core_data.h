// SPDX-License-Identifier: MIT
#pragma once

#include <string>

namespace qmx::test {

/// The bytes of a file in tests/data; a test that asks for a missing one fails.
std::string DataFile(const std::string& name);

}  // namespace qmx::test
