// SPDX-License-Identifier: MIT
#include <windows.h>

#include <array>

#include "desktop/decimal_guard.h"
#include "desktop/wide_text.h"

namespace qmx {

namespace {

class WindowsRegionalSettings : public RegionalSettings {
 public:
  std::string DecimalSeparator() override {
    std::array<wchar_t, 32> buffer;
    buffer.fill(L' ');
    buffer.back() = L'\0';
    GetLocaleInfoW(GetUserDefaultLCID(), LOCALE_SDECIMAL, buffer.data(), kRoom);
    return Narrow(buffer.data());
  }

  void SetDecimalSeparator(const std::string& separator) override {
    SetLocaleInfoW(GetUserDefaultLCID(), LOCALE_SDECIMAL, Wide(separator).c_str());
  }

 private:
  static constexpr int kRoom = 31;  // The last place of the buffer always ends the text.
};

}  // namespace

std::unique_ptr<RegionalSettings> SystemRegionalSettings() {
  return std::make_unique<WindowsRegionalSettings>();
}

}  // namespace qmx
