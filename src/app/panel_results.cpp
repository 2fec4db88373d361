// SPDX-License-Identifier: MIT
// The panel of the results.

#include <array>

#include "app/panel_kit.h"
#include "app/panels.h"
#include "app/result_frame.h"
#include "grids/qt_text.h"
#include "workspace/slot_table.h"

namespace qmx {
namespace {

constexpr int kGroupGap = 6;

constexpr auto kNone = static_cast<Slot>(-1);

/// The results in the order of the tasks that find them, in groups.
constexpr std::array<std::array<Slot, 4>, 5> kGroups{{
    {kSlotSum, kSlotDifference, kSlotProduct, kNone},
    {kSlotInverse, kSlotAdjoint, kSlotTranspose, kNone},
    {kSlotL, kSlotU, kSlotPermutation, kSlotExchanges},
    {kSlotQ, kSlotR, kNone, kNone},
    {kSlotEigenvalues, kSlotEigenvectors, kSlotSolution, kNone},
}};

void AddResult(QBoxLayout* row, Slot slot, QWidget* parent) {
  auto* title = new QLabel(ToQString(InfoOf(slot).title), parent);
  title->setTextFormat(Qt::PlainText);
  row->addWidget(title, 1);
  row->addWidget(new ResultFrame(slot, title, parent));
}

}  // namespace

QWidget* BuildResultsPanel(QWidget* parent) {
  QGroupBox* frame = MakeFrame({"fraResults"}, "Result matrices", parent);
  QVBoxLayout* rows = MakeRows(frame);
  for (const auto& group : kGroups) {
    for (const Slot slot : group) {
      if (slot != kNone) AddResult(AddRow(rows), slot, frame);
    }
    rows->addSpacing(kGroupGap);
  }
  rows->addStretch(1);
  AddButton(AddRow(rows), cmdShowResults, "Show Results", frame,
            "Shows the reports of the tasks and of solving");
  return frame;
}

}  // namespace qmx
