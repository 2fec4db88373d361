// SPDX-License-Identifier: MIT
#include "grids/digit_runs.h"

#include <algorithm>
#include <cmath>

#include "grids/contrast.h"

namespace qmx {
namespace {

constexpr double kClear = 3.05;  // Contrast, with room for colours being rounded.
constexpr int kHalvings = 20;

bool IsExponentMark(QChar character) { return character == 'E' || character == 'e'; }

/// Where the digits end that hold, in the part of a text before its exponent; 0 where there are
/// none.
int HeldEnd(QStringView mantissa, int held) {
  bool significant = false;
  int counted = 0;
  for (int at = 0; at < mantissa.size(); ++at) {
    if (!mantissa[at].isDigit()) continue;
    significant |= mantissa[at] != '0';
    if (significant && ++counted > held) {
      // A point before the first digit that does not hold belongs to the digits that do.
      return held > 0 ? at : 0;
    }
  }
  return held > 0 ? static_cast<int>(mantissa.size()) : 0;
}

QColor Between(const QColor& text, const QColor& ground) {
  const double all = Contrast(text, ground);
  const double wanted = std::max(std::sqrt(all), std::min(kClear, std::sqrt(all) * 1.1));
  double near = 0;
  double far = 1;
  for (int i = 0; i < kHalvings; ++i) {
    const double middle = (near + far) / 2;
    (Contrast(text, Mixed(text, ground, middle)) < wanted ? near : far) = middle;
  }
  return Mixed(text, ground, far);
}

}  // namespace

std::vector<DigitRun> DigitRuns(const QString& text, int held) {
  const int all = static_cast<int>(text.size());
  const auto mark = std::find_if(text.begin(), text.end(), IsExponentMark);
  const int mantissa = static_cast<int>(mark - text.begin());
  const int proved = HeldEnd(QStringView(text).left(mantissa), held);
  if (all == 0) return {};
  if (proved == 0) return {{0, all, false}};
  if (proved == mantissa) return {{0, all, true}};
  std::vector<DigitRun> runs{{0, proved, true}, {proved, mantissa - proved, false}};
  if (mantissa < all) runs.push_back({mantissa, all - mantissa, true});
  return runs;
}

QColor UnprovedColour(const QColor& text, const QColor& ground) {
  // A grid asks for the same two colours cell by cell.
  struct Found {
    QColor text;
    QColor ground;
    QColor colour;
  };
  static Found last;
  if (last.text != text || last.ground != ground) last = {text, ground, Between(text, ground)};
  return last.colour;
}

}  // namespace qmx
