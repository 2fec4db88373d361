// SPDX-License-Identifier: MIT
// The panel of the results.

#include <QGridLayout>
#include <array>

#include "app/latest_result.h"
#include "app/panel_kit.h"
#include "app/panels.h"
#include "app/result_frame.h"
#include "grids/qt_text.h"
#include "workspace/slot_table.h"

namespace qmx {
namespace {

constexpr int kRowGap = 2;
constexpr int kGroupGap = 3;

constexpr auto kNone = static_cast<Slot>(-1);

/// The results in the order of the tasks that find them, in groups.
constexpr std::array<std::array<Slot, 4>, 5> kGroups{{
    {kSlotSum, kSlotDifference, kSlotProduct, kNone},
    {kSlotInverse, kSlotAdjoint, kSlotTranspose, kNone},
    {kSlotL, kSlotU, kSlotPermutation, kSlotExchanges},
    {kSlotQ, kSlotR, kNone, kNone},
    {kSlotEigenvalues, kSlotEigenvectors, kSlotSolution, kNone},
}};

/// The frame of a result takes the whole row; its title stands over it, where the frame leaves
/// room.
void AddResult(QVBoxLayout* rows, Slot slot, QWidget* parent) {
  auto* title = new ResultTitle(ToQString(InfoOf(slot).title), parent);
  auto* row = new QGridLayout;
  rows->addLayout(row);
  row->addWidget(new ResultFrame(slot, title, parent), 0, 0);
  row->addWidget(title, 0, 0, Qt::AlignLeft | Qt::AlignTop);
  title->raise();
}

}  // namespace

QWidget* BuildResultsPanel(QWidget* parent) {
  QGroupBox* frame = MakeFrame({"fraResults"}, "Result matrices", parent);
  QVBoxLayout* rows = MakeRows(frame);
  rows->setSpacing(kRowGap);
  for (const auto& group : kGroups) {
    for (const Slot slot : group) {
      if (slot != kNone) AddResult(rows, slot, frame);
    }
    rows->addSpacing(kGroupGap);
  }
  rows->addWidget(new LatestResult(frame), 1);
  rows->addWidget(MakeButton(cmdShowResults, "Show Results", frame,
                             "Shows the reports of the tasks and of solving"));
  return frame;
}

}  // namespace qmx
