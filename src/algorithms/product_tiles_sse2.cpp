#include "algorithms/elimination_tiles_inl.h"

namespace qmx {
namespace {

template <class Sign>
void Run(const ProductJob& job) {
  Panels<4>(job, [](const ProductJob& panel) {
    int col = Strips<Sign, 4, 2, Lanes2>(panel, 0);
    col = Strips<Sign, 4, 1, Lanes2>(panel, col);
    Strips<Sign, 4, 1, Lanes1>(panel, col);
  });
}

template <class Sign>
void RunPacked(const ProductJob& block) {
  PackedBlock<Sign, 4, 2, Lanes2>(block, Run<Sign>);
}

template <bool kExchange>
void TakePivotRowSteps(const PivotRowsJob& job) {
  const int col = PivotRowStrips<kExchange, 1, Lanes2>(job, 0);
  PivotRowStrips<kExchange, 1, Lanes1>(job, col);
}

}  // namespace

const Kernels kSse2Kernels{.tileRows = 4,
                           .tileCols = 4,
                           .add = Run<Plus>,
                           .subtract = Run<Minus>,
                           .addPacked = RunPacked<Plus>,
                           .subtractPacked = RunPacked<Minus>,
                           .eliminate = Eliminate<Lanes2, Lanes1>,
                           .divide = Divide<Lanes2>,
                           .divideByEach = DivideByEach<Lanes2>,
                           .largestMagnitude = LargestMagnitude<Lanes2>,
                           .placeOf = PlaceOf<Lanes2>,
                           .swap = Swap<Lanes2>,
                           .transpose = Transpose<Lanes2>,
                           .panelStep = TakePanelStep<Lanes2>,
                           .eliminatePivotRows = TakePivotRowSteps<false>,
                           .exchangePivotRows = TakePivotRowSteps<true>};

}  // namespace qmx
