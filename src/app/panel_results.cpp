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

/// The results in the order of the tasks that find them, in groups.
constexpr std::array<std::array<int, 4>, 5> kGroups{{
    {kSlotSum, kSlotDifference, kSlotProduct, -1},
    {kSlotInverse, kSlotAdjoint, kSlotTranspose, -1},
    {kSlotL, kSlotU, kSlotPermutation, kSlotExchanges},
    {kSlotQ, kSlotR, -1, -1},
    {kSlotEigenvalues, kSlotEigenvectors, kSlotSolution, -1},
}};

void AddResult(QBoxLayout* row, int slot, QWidget* parent) {
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
    for (const int slot : group) {
      if (slot >= 0) AddResult(AddRow(rows), slot, frame);
    }
    rows->addSpacing(kGroupGap);
  }
  rows->addStretch(1);
  AddButton(AddRow(rows), cmdShowResults, "Show Results", frame,
            "Shows the reports of the tasks and of solving");
  return frame;
}

}  // namespace qmx
