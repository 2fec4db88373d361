#include "algorithms/elimination_tiles_inl.h"

namespace qmx {
namespace {

template <class Sign>
void Run(const ProductJob& job) {
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

template <class Sign>
void RunPacked(const ProductJob& block) {
  PackedBlock<Sign, 6, 2, Lanes4>(block, Run<Sign>);
}

template <bool kExchange>
void TakePivotRowSteps(const PivotRowsJob& job) {
  int col = PivotRowStrips<kExchange, 1, Lanes4>(job, 0);
  col = PivotRowStrips<kExchange, 1, Lanes2>(job, col);
  PivotRowStrips<kExchange, 1, Lanes1>(job, col);
}

}  // namespace

const Kernels kAvx2Kernels{.tileRows = 6,
                           .tileCols = 8,
                           .add = Run<Plus>,
                           .subtract = Run<Minus>,
                           .addPacked = RunPacked<Plus>,
                           .subtractPacked = RunPacked<Minus>,
                           .eliminate = Eliminate<Lanes4, Lanes1, Lanes2>,
                           .divide = Divide<Lanes4>,
                           .divideByEach = DivideByEach<Lanes4>,
                           .largestMagnitude = LargestMagnitude<Lanes4>,
                           .placeOf = PlaceOf<Lanes4>,
                           .swap = Swap<Lanes4>,
                           .transpose = Transpose<Lanes4>,
                           .panelStep = TakePanelStep<Lanes4>,
                           .eliminatePivotRows = TakePivotRowSteps<false>,
                           .exchangePivotRows = TakePivotRowSteps<true>};

}  // namespace qmx
