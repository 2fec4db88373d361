// The panel of the results.

#include <QGridLayout>
#include <array>

#include "app/panel_kit.h"
#include "app/panels.h"
#include "grids/qt_text.h"
#include "workspace/slot_table.h"

namespace qmx {
namespace {

constexpr int kGroupGap = 6;

QLabel* MakeTitle(int slot, QWidget* parent) {
  auto* title = new QLabel(ToQString(InfoOf(slot).title), parent);
  title->setTextFormat(Qt::PlainText);
  return title;
}

/// The results in the order of the tasks that find them, in groups.
constexpr std::array<std::array<int, 4>, 5> kGroups{{
    {kSlotSum, kSlotDifference, kSlotProduct, -1},
    {kSlotInverse, kSlotAdjoint, kSlotTranspose, -1},
    {kSlotL, kSlotU, kSlotPermutation, kSlotExchanges},
    {kSlotQ, kSlotR, -1, -1},
    {kSlotEigenvalues, kSlotEigenvectors, kSlotSolution, -1},
}};

/// The frame of a result: title, dimensions, buttons. It covers the muted title of its place.
QWidget* BuildResultFrame(int slot, QWidget* parent) {
  const SlotInfo& info = InfoOf(slot);
  auto* frame = new QFrame(parent);
  frame->setObjectName(QString::fromStdString(fraFrame(slot).ObjectName()));
  frame->setAutoFillBackground(true);
  frame->setAccessibleName(ToQString(info.title));
  auto* row = new QHBoxLayout(frame);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(4);
  row->addWidget(MakeTitle(slot, frame), 1);
  row->addWidget(MakeLabel(info.rows, {}, frame));
  row->addWidget(new QLabel(QString(QChar(0x00d7)), frame));
  row->addWidget(MakeLabel(info.cols, {}, frame));
  row->addSpacing(4);
  AddSlotButtons(row, slot, frame);
  QSizePolicy keepsPlace(QSizePolicy::Preferred, QSizePolicy::Fixed);
  keepsPlace.setRetainSizeWhenHidden(true);
  frame->setSizePolicy(keepsPlace);
  frame->hide();
  return frame;
}

/// The place of a result: its title, muted, and over it the frame once there is a result.
QLayout* BuildPlace(int slot, QWidget* parent) {
  auto* place = new QGridLayout;
  QLabel* awaited = MakeTitle(slot, parent);
  awaited->setEnabled(false);
  place->addWidget(awaited, 0, 0);
  place->addWidget(BuildResultFrame(slot, parent), 0, 0);
  return place;
}

}  // namespace

QWidget* BuildResultsPanel(QWidget* parent) {
  QGroupBox* frame = MakeFrame({"fraResults"}, "Result matrices", parent);
  QVBoxLayout* rows = MakeRows(frame);
  for (const auto& group : kGroups) {
    for (const int slot : group) {
      if (slot >= 0) rows->addLayout(BuildPlace(slot, frame));
    }
    rows->addSpacing(kGroupGap);
  }
  rows->addStretch(1);
  AddButton(AddRow(rows), cmdShowResults, "Show Results", frame,
            "Shows the reports of the tasks and of solving");
  return frame;
}

}  // namespace qmx
