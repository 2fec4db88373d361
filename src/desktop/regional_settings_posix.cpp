// SPDX-License-Identifier: MIT
#include <langinfo.h>
#include <locale.h>

#include "desktop/decimal_guard.h"

namespace qmx {

namespace {

class PosixRegionalSettings : public RegionalSettings {
 public:
  // Asks a locale object of its own, so that the conversions of this process stay as they are. An
  // environment that names a locale which is not installed gives none: such a process converts
  // numbers in the "C" locale, with a point.
  std::string DecimalSeparator() override {
    const locale_t user = newlocale(LC_NUMERIC_MASK, "", locale_t{});
    if (user == locale_t{}) return ".";
    std::string separator = nl_langinfo_l(RADIXCHAR, user);
    freelocale(user);
    return separator;
  }

  void SetDecimalSeparator(const std::string& separator) override {
    const bool usersOwn = separator == DecimalSeparator();
    if (!usersOwn && separator != ".") return;
    setlocale(LC_NUMERIC, usersOwn ? "" : "C");
  }
};

}  // namespace

std::unique_ptr<RegionalSettings> SystemRegionalSettings() {
  return std::make_unique<PosixRegionalSettings>();
}

}  // namespace qmx
