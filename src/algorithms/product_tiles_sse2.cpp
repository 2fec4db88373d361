// SPDX-License-Identifier: MIT
#include "algorithms/elimination_tiles_inl.h"

namespace qmx {
namespace {

struct Sse2 {
  using Lanes = Lanes2;
  static constexpr int kTileRows = 4;
  static constexpr int kTileVectors = 2;
  static constexpr ProductSizes kSizes{};

  template <class Sign>
  static void Run(const ProductJob& job) {
    Panels<4>(job, [](const ProductJob& panel) {
      int col = Strips<Sign, 4, 2, Lanes2>(panel, 0);
      col = Strips<Sign, 4, 1, Lanes2>(panel, col);
      Strips<Sign, 4, 1, Lanes1>(panel, col);
    });
  }

  static void Eliminate(const EliminationStep& step) { EliminateRows<Lanes2, Lanes1>(step); }

  static double TakePanelStep(const PanelStep& step) { return TakeStepIn<Lanes2>(step); }

  template <bool kExchange>
  static void TakePivotRowSteps(const PivotRowsJob& job) {
    const int col = PivotRowStrips<kExchange, 1, Lanes2>(job, 0);
    PivotRowStrips<kExchange, 1, Lanes1>(job, col);
  }
};

}  // namespace

const Kernels kSse2Kernels = TableOf<Sse2>();

}  // namespace qmx
