// SPDX-License-Identifier: MIT
#include "app/muted_text.h"

#include <algorithm>
#include <cmath>

namespace qmx {
namespace {

constexpr double kReadable = 4.5;
constexpr double kMost = 0.5;  // Of the window's colour in the mixture.
constexpr double kStep = 0.05;

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

QColor MutedText(const QPalette& palette) {
  const QColor text = palette.color(QPalette::Active, QPalette::WindowText);
  const QColor ground = palette.color(QPalette::Active, QPalette::Window);
  const auto mixed = [&](double share) {
    const auto part = [&](double own, double other) { return own + (other - own) * share; };
    // As the screen has it: its contrast is that of whole numbers.
    return QColor(QColor::fromRgbF(static_cast<float>(part(text.redF(), ground.redF())),
                                   static_cast<float>(part(text.greenF(), ground.greenF())),
                                   static_cast<float>(part(text.blueF(), ground.blueF())))
                      .rgb());
  };
  double share = kMost;
  while (share > 0 && Contrast(mixed(share), ground) < kReadable) share -= kStep;
  return mixed(std::max(share, 0.0));
}

}  // namespace qmx
