// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <string_view>

namespace qmx {

/// The texts of the core's tables, which are UTF-8, as Qt wants them.
inline QString ToQString(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace qmx
