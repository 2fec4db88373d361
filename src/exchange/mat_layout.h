// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

#include "exchange/element_kind.h"

namespace qmx {

/// Which of the forms of MAT files bytes have.
enum class MatVersion { kNone, k4, k5, k73 };

/// Tells the form from the first bytes. Versions 6 and 7 have form 5.
MatVersion MatVersionOf(std::string_view bytes);

/// Goes over the lengths that a file of form 4 or 5 says its variables have and refuses one that
/// ends too early or goes on too long. A file of version 7.3 tells that itself.
void CheckMatLayout(std::string_view bytes);

/// What a variable of form 4 holds: its digit in the file.
enum class Mat4Form { kFull, kText, kSparse };

/// How a variable of form 4 begins.
struct Mat4Start {
  bool bigEndian = false;
  ElementKind kind = ElementKind::kFloat64;
  Mat4Form form = Mat4Form::kFull;
  std::uint64_t rows = 0;
  std::uint64_t cols = 0;
  bool complex = false;
  std::string_view name;  ///< With the zero behind it, unless the bytes end before.
  /// Where the elements begin and end, counted from the first byte of the variable.
  std::uint64_t elements = 0;
  std::uint64_t end = 0;
};

/// The start of the variable that bytes begin with; nothing where none can begin so.
std::optional<Mat4Start> Mat4StartOf(std::string_view bytes);

/// What a file of form 5 or 7.3 begins with.
inline constexpr std::size_t kMat5Header = 128;

/// Four bytes of a file as an unsigned integer.
std::uint32_t MatWord(std::string_view bytes, std::size_t at, bool bigEndian);

}  // namespace qmx
