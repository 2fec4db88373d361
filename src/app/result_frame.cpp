// SPDX-License-Identifier: MIT
#include "app/result_frame.h"

#include <QEvent>

#include "app/panel_kit.h"
#include "grids/qt_text.h"
#include "workspace/slot_table.h"

namespace qmx {
namespace {

/// A label for a count, with room for four digits so that counts do not move what is beside them.
QLabel* MakeCount(const Control& control, const QString& meaning, Qt::Alignment alignment,
                  QWidget* parent) {
  QLabel* label = MakeResultLabel(control, meaning, parent);
  label->setText("0000");
  label->setMinimumWidth(label->sizeHint().width());
  label->clear();
  label->setAlignment(alignment | Qt::AlignVCenter);
  return label;
}

}  // namespace

ResultFrame::ResultFrame(Slot slot, QLabel* title, QWidget* parent)
    : QFrame(parent), title_(title) {
  const SlotInfo& info = InfoOf(slot);
  setObjectName(QString::fromStdString(fraFrame(slot).ObjectName()));
  setAccessibleName(ToQString(info.title));
  auto* row = new QHBoxLayout(this);
  row->setContentsMargins(0, 0, 0, 0);
  row->setSpacing(3);
  row->addWidget(MakeStaleMark({"lblStale", slot}, this));
  QLabel* rows = MakeCount(info.rows, tr("Rows"), Qt::AlignRight, this);
  times_ = new QLabel(QString(QChar(0x00d7)), this);
  QSizePolicy keepsWidth = times_->sizePolicy();
  keepsWidth.setRetainSizeWhenHidden(true);
  times_->setSizePolicy(keepsWidth);
  cols_ = MakeCount(info.cols, tr("Columns"), Qt::AlignLeft, this);
  for (QWidget* part : {rows, times_, cols_}) row->addWidget(part);
  AddSlotButtons(row, slot, this);
  QSizePolicy keepsPlace(QSizePolicy::Fixed, QSizePolicy::Fixed);
  keepsPlace.setRetainSizeWhenHidden(true);
  setSizePolicy(keepsPlace);
  setVisible(false);
}

void ResultFrame::setVisible(bool visible) {
  QFrame::setVisible(visible);
  title_->setEnabled(visible);
  ShowTimesIfNeeded();
}

void ResultFrame::ShowTimesIfNeeded() {
  // A column vector may show its rows alone.
  times_->setVisible(!cols_->text().isEmpty());
}

bool ResultFrame::event(QEvent* event) {
  // A label asks for a new layout when its text changes.
  if (event->type() == QEvent::LayoutRequest) ShowTimesIfNeeded();
  return QFrame::event(event);
}

}  // namespace qmx
