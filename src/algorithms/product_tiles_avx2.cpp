// SPDX-License-Identifier: MIT
#include "algorithms/elimination_tiles_inl.h"

namespace qmx {
namespace {

struct Avx2 {
  using Lanes = Lanes4;
  static constexpr int kTileRows = 6;
  static constexpr int kTileVectors = 2;
  static constexpr ProductSizes kSizes{};

  template <class Sign>
  static void Run(const ProductJob& job) {
    Panels<6>(job, [](const ProductJob& panel) {
      int col = 0;
      // A low panel is done in wider tiles, so that there are always enough sums under way.
      if (panel.rows <= 2) col = Strips<Sign, 2, 4, Lanes4>(panel, col);
      col = Strips<Sign, 6, 2, Lanes4>(panel, col);
      col = Strips<Sign, 6, 1, Lanes4>(panel, col);
      col = Strips<Sign, 6, 1, Lanes2>(panel, col);
      Strips<Sign, 6, 1, Lanes1>(panel, col);
    });
  }

  static void Eliminate(const EliminationStep& step) {
    EliminateRows<Lanes4, Lanes1, Lanes2>(step);
  }

  static double TakePanelStep(const PanelStep& step) { return TakeStepIn<Lanes4>(step); }

  template <bool kExchange>
  static void TakePivotRowSteps(const PivotRowsJob& job) {
    int col = PivotRowStrips<kExchange, 1, Lanes4>(job, 0);
    col = PivotRowStrips<kExchange, 1, Lanes2>(job, col);
    PivotRowStrips<kExchange, 1, Lanes1>(job, col);
  }
};

}  // namespace

const Kernels kAvx2Kernels = TableOf<Avx2>();

}  // namespace qmx
