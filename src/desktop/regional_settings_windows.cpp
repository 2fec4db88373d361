// SPDX-License-Identifier: MIT
#include <windows.h>

#include <array>

#include "desktop/decimal_guard.h"

namespace qmx {

namespace {

class WindowsRegionalSettings : public RegionalSettings {
 public:
  std::string DecimalSeparator() override {
    std::array<char, 32> buffer;
    buffer.fill(' ');
    buffer.back() = '\0';
    GetLocaleInfoA(GetUserDefaultLCID(), LOCALE_SDECIMAL, buffer.data(), kRoom);
    return buffer.data();
  }

  void SetDecimalSeparator(const std::string& separator) override {
    SetLocaleInfoA(GetUserDefaultLCID(), LOCALE_SDECIMAL, separator.c_str());
  }

 private:
  static constexpr int kRoom = 31;  // The last place of the buffer always ends the text.
};

}  // namespace

std::unique_ptr<RegionalSettings> SystemRegionalSettings() {
  return std::make_unique<WindowsRegionalSettings>();
}

}  // namespace qmx
