// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

#include "desktop/decimal_guard.h"

namespace qmx::test {

/// A regional setting in memory that keeps every value written to it.
class FakeSettings : public RegionalSettings {
 public:
  explicit FakeSettings(std::string start = ".") : separator(std::move(start)) {}

  std::string separator;
  std::vector<std::string> written;

  std::string DecimalSeparator() override { return separator; }
  void SetDecimalSeparator(const std::string& text) override {
    written.push_back(text);
    separator = text;
  }
};

}  // namespace qmx::test
