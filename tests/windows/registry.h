// SPDX-License-Identifier: MIT
#pragma once

#include <windows.h>

#include <optional>
#include <string>

#include "desktop/wide_text.h"

namespace qmx::test {

/// A text value of the registry; an empty name reads the key's default value. Nothing where there
/// is no such value, or it is no text.
inline std::optional<std::string> RegistryText(HKEY root, const std::string& key,
                                               const std::string& name = "") {
  wchar_t text[1024];
  DWORD size = sizeof text;
  const LSTATUS status = RegGetValueW(root, Wide(key).c_str(), Wide(name).c_str(), RRF_RT_REG_SZ,
                                      nullptr, text, &size);
  if (status != ERROR_SUCCESS) return std::nullopt;
  return Narrow(text);
}

}  // namespace qmx::test
