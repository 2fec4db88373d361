// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "base/matrix.h"

namespace qmx::bench {

/// The numbers of a matrix as text, one a line, as the standard C library writes them.
std::string PlainText(const Matrix& A);
/// Reads as many numbers as A has into it, as the standard C library reads them.
void ReadPlainText(const std::string& text, Matrix& A);

}  // namespace qmx::bench
