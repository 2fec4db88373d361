// SPDX-License-Identifier: MIT
#include "grids/go_to_dialog.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <QPushButton>

#include "base/number_text.h"
#include "commands/entry_advice.h"
#include "grids/one_line.h"
#include "grids/reading_mark.h"

namespace qmx {

GoToDialog::GoToDialog(int rows, int cols, GridCell current, QWidget* parent)
    : QDialog(parent), rows_(rows), cols_(cols) {
  setObjectName("frmGoTo");
  setWindowTitle(tr("Go to"));
  setAttribute(Qt::WA_DeleteOnClose);
  setModal(true);
  auto* form = new QFormLayout(this);
  row_ = AddField("txtGoToRow", tr("&Row (1 to %1):"), current.row, rows);
  col_ = AddField("txtGoToColumn", tr("C&olumn (1 to %1):"), current.col, cols);
  refusal_ = new QLabel(this);
  refusal_->setObjectName("lblGoToRefusal");
  refusal_->setWordWrap(true);
  // Its room is kept free, so that a refusal moves nothing.
  refusal_->setMinimumSize(fontMetrics().averageCharWidth() * 36, fontMetrics().lineSpacing() * 2);
  refusal_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  form->addRow(refusal_);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  QPushButton* go = buttons->button(QDialogButtonBox::Ok);
  go->setText(tr("&Go"));
  go->setObjectName("cmdGo");
  go->setToolTip(tr("Goes to the cell"));
  buttons->button(QDialogButtonBox::Cancel)->setToolTip(tr("Stays where you are"));
  form->addRow(buttons);
  connect(buttons, &QDialogButtonBox::accepted, this, &GoToDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &GoToDialog::reject);
  row_->setFocus();
  row_->selectAll();
}

QLineEdit* GoToDialog::AddField(const char* name, const QString& label, int proposed, int most) {
  auto* field = new QLineEdit(QString::number(proposed), this);
  field->setObjectName(name);
  field->setAlignment(Qt::AlignRight);
  field->setToolTip(tr("A whole number"));
  TakeOneLine(*field, nullptr, tr("A field holds one line; several were not taken."));
  MarkReading(*field, [most](const QString& text) {
    return QString::fromStdString(CountNote(text.toStdString(), 1, most));
  });
  static_cast<QFormLayout*>(layout())->addRow(label.arg(most), field);
  return field;
}

int GoToDialog::Read(QLineEdit* field, const QString& what, int most) {
  const auto number = ParseDimension(field->text().toStdString());
  if (number && *number <= most) return *number;
  refusal_->setText(tr("There is no %1 \"%2\": a whole number from 1 to %3 is needed.")
                        .arg(what, field->text())
                        .arg(most));
  // Who cannot see the words hears them with the field.
  field->setAccessibleDescription(refusal_->text());
  field->setFocus();
  field->selectAll();
  return 0;
}

void GoToDialog::accept() {
  const int row = Read(row_, tr("row"), rows_);
  if (row == 0) return;
  const int col = Read(col_, tr("column"), cols_);
  if (col == 0) return;
  QDialog::accept();
  Q_EMIT Chosen({row, col});
}

}  // namespace qmx
