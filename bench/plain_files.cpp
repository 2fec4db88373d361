// SPDX-License-Identifier: MIT
#include "plain_files.h"

#include <cstdio>
#include <cstdlib>

namespace qmx::bench {

std::string PlainText(const Matrix& A) {
  std::string text;
  for (std::size_t k = 0; k < A.Size(); ++k) {
    char number[32];
    const int length = std::snprintf(number, sizeof number, "%.17g\n", A.Data()[k]);
    text.append(number, static_cast<std::size_t>(length));
  }
  return text;
}

void ReadPlainText(const std::string& text, Matrix& A) {
  const char* place = text.c_str();
  for (std::size_t k = 0; k < A.Size(); ++k) {
    char* end = nullptr;
    A.Data()[k] = std::strtod(place, &end);
    place = end;
  }
}

}  // namespace qmx::bench
