// SPDX-License-Identifier: MIT
#include "algorithms/special_matrix.h"

#include <algorithm>
#include <cmath>

#include "algorithms/work_meter.h"

namespace qmx {

void FillOnes(Matrix& created) { std::fill_n(created.Data(), created.Size(), 1.0); }

bool FillIdentity(Matrix& created) {
  for (int i = 1; i <= created.Rows(); ++i) {
    if (!created.Contains(i, i)) return false;
    created(i, i) = 1.0;
  }
  return true;
}

bool FillRandom(Matrix& created, const RandomKind& kind, const std::function<float()>& draw,
                Progress& progress) {
  const double range = kind.high - kind.low;
  WorkMeter meter(progress, kMovedNumber * static_cast<double>(created.Size()));
  for (int i = 1; i <= created.Rows(); ++i) {
    for (int j = kind.symmetric ? i : 1; j <= created.Cols(); ++j) {
      const double x = static_cast<double>(draw()) * range + kind.low;
      // nearbyint rounds halves to even.
      created(i, j) = kind.integers ? std::nearbyint(x) : x;
      if (!kind.symmetric) continue;
      if (!created.Contains(j, i)) return false;
      created(j, i) = created(i, j);
    }
    meter.Add(kMovedNumber * created.Cols());
  }
  meter.End();
  return true;
}

}  // namespace qmx
