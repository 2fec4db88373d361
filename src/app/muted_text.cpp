// SPDX-License-Identifier: MIT
#include "app/muted_text.h"

#include <algorithm>

#include "grids/contrast.h"

namespace qmx {
namespace {

constexpr double kReadable = 4.5;
constexpr double kMost = 0.5;  // Of the window's colour in the mixture.
constexpr double kStep = 0.05;

}  // namespace

QColor MutedText(const QPalette& palette) {
  const QColor text = palette.color(QPalette::Active, QPalette::WindowText);
  const QColor ground = palette.color(QPalette::Active, QPalette::Window);
  double share = kMost;
  while (share > 0 && Contrast(Mixed(text, ground, share), ground) < kReadable) share -= kStep;
  return Mixed(text, ground, std::max(share, 0.0));
}

}  // namespace qmx
