// SPDX-License-Identifier: MIT
// The panel of the tasks.

#include <QFrame>
#include <QGridLayout>
#include <array>

#include "app/panel_kit.h"
#include "app/panels.h"
#include "app/scalar_proof.h"
#include "app/steps_button.h"
#include "workspace/result_table.h"

namespace qmx {
namespace {

/// A calm line between two groups of tasks.
void AddLine(QVBoxLayout* rows, QWidget* parent) {
  auto* line = new QFrame(parent);
  line->setFrameShape(QFrame::HLine);
  line->setFrameShadow(QFrame::Sunken);
  rows->addWidget(line);
}

void AddTasks(QBoxLayout* row, std::initializer_list<Task> tasks, QWidget* parent) {
  for (const Task task : tasks) row->addWidget(MakeTaskButton(task, parent));
}

/// A task that finds one number or one word, and the label where it is shown.
struct ScalarTask {
  Task task;
  Control equals;
  const char* sign;
  const char* meaning;
  Result result;
};

constexpr std::array<ScalarTask, 4> kScalarTasks{{
    {kTaskDeterminant, {"lblDeterminantOfAequals"}, "=", "Determinant of A", kResultDeterminant},
    {kTaskTrace, {"lblTraceOfAequals"}, "=", "Trace of A", kResultTrace},
    {kTaskDefiniteness, {"lblDefinitenessIs"}, ":", "Definiteness of A", kResultDefiniteness},
    {kTaskSymmetry, {"lblSymmetryIs"}, ":", "A is symmetric", kResultSymmetry},
}};

/// Where a scalar is shown: below its button, so that all of its digits find room. Labels beside
/// the value go into the columns before the mark.
void AddScalarTask(QGridLayout* table, int row, const ScalarTask& entry, QWidget* parent) {
  QLabel* value = MakeResultLabel(InfoOf(entry.result).label, entry.meaning, parent);
  value->setTextInteractionFlags(Qt::TextSelectableByMouse);
  auto* upper = new QHBoxLayout;
  upper->setSpacing(2);
  upper->addWidget(MakeTaskButton(entry.task, parent), 1);
  upper->addWidget(MakeScalarStepsButton(entry.result, parent));
  table->addLayout(upper, row, 0, 1, 4);
  table->addWidget(MakeLabel(entry.equals, entry.sign, parent), row + 1, 0);
  table->addWidget(value, row + 1, 1);
  table->addWidget(new ScalarProof(entry.result, value, parent), row + 1, 2);
  table->addWidget(MakeStaleMark(InfoOf(entry.result).stale, parent), row + 1, 3);
}

void AddScalarTasks(QVBoxLayout* rows, QWidget* parent) {
  auto* table = new QGridLayout;
  table->setHorizontalSpacing(4);
  table->setVerticalSpacing(1);
  table->setColumnStretch(2, 1);
  rows->addLayout(table);
  for (const ScalarTask& entry : kScalarTasks)
    AddScalarTask(table, table->rowCount(), entry, parent);
}

/// A task that changes A by a number, in a frame with the number's field.
QWidget* BuildScalarChange(const Control& frameName, const QString& title, const Control& label,
                           const Control& field, Task task, QWidget* parent) {
  QGroupBox* frame = MakeFrame(frameName, title, parent);
  QVBoxLayout* rows = MakeRows(frame);
  QHBoxLayout* row = AddRow(rows);
  Field* edit = MakeField(field, frame);
  row->addWidget(MakeCaption(edit, field, label, frame));
  row->addWidget(edit, 1);
  row->addWidget(MakeTaskButton(task, frame));
  return frame;
}

/// A label whose text takes two lines. A height that depended on the width would be asked of the
/// whole panel, which then would not become lower than it wants to be.
class TwoLines final : public QLabel {
 public:
  TwoLines(const QString& text, QWidget* parent) : QLabel(text, parent) {
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
  }
  bool hasHeightForWidth() const override { return false; }
  QSize minimumSizeHint() const override { return sizeHint(); }
  QSize sizeHint() const override {
    const QFontMetrics metrics = fontMetrics();
    return {metrics.horizontalAdvance(text()) * 2 / 3, 2 * metrics.lineSpacing()};
  }
};

QWidget* BuildPivotFrame(QWidget* parent) {
  QGroupBox* frame = MakeFrame({"fraPivot"}, "Partial pivoting", parent);
  QHBoxLayout* row = AddRow(MakeRows(frame));
  auto* question = new TwoLines("Allow pivoting for LU factors?", frame);
  question->setObjectName("lblPivot");
  row->addWidget(question, 1);
  for (int option = 0; option <= kPivotNo; ++option)
    row->addWidget(MakeOption(OptPivot(option), frame));
  return frame;
}

QWidget* BuildEigenFrame(QWidget* parent) {
  QGroupBox* frame =
      MakeFrame({"fraEigenControls"}, "Eigenvalues/eigenvectors computation", parent);
  auto* table = new QGridLayout;
  table->setSpacing(4);
  MakeRows(frame)->addLayout(table);
  int row = 0;
  for (const EigenParameter& parameter : kEigenParameters) {
    Field* field = MakeField(parameter.field, frame);
    table->addWidget(MakeCaption(field, parameter.field, parameter.label, frame), row, 0);
    table->addWidget(field, row, 1);
    ++row;
  }
  return frame;
}

}  // namespace

QWidget* BuildTaskPanel(QWidget* parent) {
  QGroupBox* frame = MakeFrame({"fraTask"}, "Tasks", parent);
  QVBoxLayout* rows = MakeRows(frame);
  AddTasks(AddRow(rows), {kTaskSum, kTaskDifference, kTaskProduct}, frame);
  AddLine(rows, frame);
  AddScalarTasks(rows, frame);
  AddLine(rows, frame);
  AddTasks(AddRow(rows), {kTaskInverse, kTaskTranspose}, frame);
  AddTasks(AddRow(rows), {kTaskAdjoint, kTaskAdjointByInverse}, frame);
  AddLine(rows, frame);
  rows->addWidget(BuildScalarChange({"fraScalar"}, "For scalar multiplication", {"lblScalar"},
                                    txtScalar, kTaskScale, frame));
  rows->addWidget(BuildScalarChange({"fraShift"}, "For scalar shift", {"lblShift"}, txtShift,
                                    kTaskShift, frame));
  AddLine(rows, frame);
  AddTasks(AddRow(rows), {kTaskLU, kTaskQR}, frame);
  rows->addWidget(BuildPivotFrame(frame));
  AddLine(rows, frame);
  AddTasks(AddRow(rows), {kTaskEigen}, frame);
  rows->addWidget(BuildEigenFrame(frame));
  rows->addStretch(1);
  return frame;
}

}  // namespace qmx
