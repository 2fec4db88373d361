// SPDX-License-Identifier: MIT
#include "algorithms/elimination_tiles_inl.h"

namespace qmx {
namespace {

struct Plain {
  using Lanes = Lanes1;
  static constexpr int kTileRows = 4;
  static constexpr int kTileVectors = 4;
  static constexpr ProductSizes kSizes{};

  template <class Sign>
  static void Run(const ProductJob& job) {
    Panels<4>(job, [](const ProductJob& panel) {
      const int col = Strips<Sign, 4, 4, Lanes1>(panel, 0);
      Strips<Sign, 4, 1, Lanes1>(panel, col);
    });
  }

  static void Eliminate(const EliminationStep& step) { EliminateRows<Lanes1>(step); }

  static double TakePanelStep(const PanelStep& step) { return TakeStepIn<Lanes1>(step); }

  template <bool kExchange>
  static void TakePivotRowSteps(const PivotRowsJob& job) {
    const int col = PivotRowStrips<kExchange, 2, Lanes1>(job, 0);
    PivotRowStrips<kExchange, 1, Lanes1>(job, col);
  }
};

}  // namespace

const Kernels kPlainKernels = TableOf<Plain>();

}  // namespace qmx
