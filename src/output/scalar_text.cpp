// SPDX-License-Identifier: MIT
#include "output/scalar_text.h"

#include "base/number_text.h"

namespace qmx {

std::string ScalarText(double value) {
  constexpr int kMantissaPlaces = 10;
  std::string text = Str(value);
  const std::size_t exponentAt = text.find('E');
  if (exponentAt == std::string::npos) return text;
  const double mantissa = RoundDecimal(Val(text.substr(0, exponentAt)), kMantissaPlaces);
  return Str(mantissa) + text.substr(exponentAt);
}

}  // namespace qmx
