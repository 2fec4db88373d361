#include "algorithms/elimination_tiles_inl.h"

namespace qmx {
namespace {

template <class Sign>
void Run(const ProductJob& job) {
  Panels<4>(job, [](const ProductJob& panel) {
    const int col = Strips<Sign, 4, 4, Lanes1>(panel, 0);
    Strips<Sign, 4, 1, Lanes1>(panel, col);
  });
}

template <class Sign>
void RunPacked(const ProductJob& block) {
  PackedBlock<Sign, 4, 4, Lanes1>(block, Run<Sign>);
}

template <bool kExchange>
void TakePivotRowSteps(const PivotRowsJob& job) {
  const int col = PivotRowStrips<kExchange, 2, Lanes1>(job, 0);
  PivotRowStrips<kExchange, 1, Lanes1>(job, col);
}

}  // namespace

const Kernels kPlainKernels{.tileRows = 4,
                            .tileCols = 4,
                            .add = Run<Plus>,
                            .subtract = Run<Minus>,
                            .addPacked = RunPacked<Plus>,
                            .subtractPacked = RunPacked<Minus>,
                            .eliminate = Eliminate<Lanes1>,
                            .divide = Divide<Lanes1>,
                            .divideByEach = DivideByEach<Lanes1>,
                            .largestMagnitude = LargestMagnitude<Lanes1>,
                            .placeOf = PlaceOf<Lanes1>,
                            .swap = Swap<Lanes1>,
                            .transpose = Transpose<Lanes1>,
                            .panelStep = TakePanelStep<Lanes1>,
                            .eliminatePivotRows = TakePivotRowSteps<false>,
                            .exchangePivotRows = TakePivotRowSteps<true>};

}  // namespace qmx
