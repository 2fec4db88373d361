// SPDX-License-Identifier: MIT
#include "grids/contrast.h"

#include <algorithm>
#include <cmath>

namespace qmx {
namespace {

double Linear(double part) {
  return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
}

double Luminance(const QColor& colour) {
  return 0.2126 * Linear(colour.redF()) + 0.7152 * Linear(colour.greenF()) +
         0.0722 * Linear(colour.blueF());
}

}  // namespace

double Contrast(const QColor& one, const QColor& other) {
  const double first = Luminance(one) + 0.05;
  const double second = Luminance(other) + 0.05;
  return std::max(first, second) / std::min(first, second);
}

QColor Mixed(const QColor& plain, const QColor& other, double share) {
  const auto part = [share](double own, double others) {
    return static_cast<float>(own + (others - own) * share);
  };
  return QColor(QColor::fromRgbF(part(plain.redF(), other.redF()),
                                 part(plain.greenF(), other.greenF()),
                                 part(plain.blueF(), other.blueF()))
                    .rgb());
}

}  // namespace qmx
