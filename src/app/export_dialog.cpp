// SPDX-License-Identifier: MIT
#include "app/export_dialog.h"

#include <QDialogButtonBox>
#include <QFormLayout>
#include <algorithm>

#include "grids/qt_text.h"

namespace qmx {

ExportDialog::ExportDialog(const QString& title, const ForeignChoice& choice, QWidget* parent)
    : QDialog(parent), proposed_(choice) {
  setObjectName("frmExport");
  setWindowTitle(tr("Export of %1").arg(title));
  auto* form = new QFormLayout(this);
  format_ = MakeBox("cboFormat");
  for (const ForeignFormatInfo& info : kForeignFormats) {
    format_->addItem(tr("%1, *%2").arg(ToQString(info.title), ToQString(info.ending)),
                     static_cast<int>(info.format));
  }
  format_->setCurrentIndex(std::max(format_->findData(static_cast<int>(choice.format)), 0));
  form->addRow(tr("&Format:"), format_);
  separator_ = MakeBox("cboSeparator");
  separator_->addItem(tr("Comma"), QChar(','));
  separator_->addItem(tr("Semicolon"), QChar(';'));
  separator_->addItem(tr("Tab"), QChar('\t'));
  separator_->addItem(tr("Blank"), QChar(' '));
  separator_->setCurrentIndex(std::max(separator_->findData(QChar(choice.separator)), 0));
  form->addRow(tr("&Separator:"), separator_);
  decimal_ = MakeBox("cboDecimalSign");
  decimal_->addItem(tr("Point"), QChar('.'));
  decimal_->addItem(tr("Comma"), QChar(','));
  decimal_->setCurrentIndex(std::max(decimal_->findData(QChar(choice.decimalSign)), 0));
  form->addRow(tr("&Decimal sign:"), decimal_);
  remark_ = new QLabel(this);
  remark_->setObjectName("lblExportRemark");
  remark_->setWordWrap(true);
  // Its room is kept free, so that a remark moves nothing.
  remark_->setMinimumSize(fontMetrics().averageCharWidth() * 44, fontMetrics().lineSpacing() * 2);
  remark_->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  form->addRow(remark_);
  auto* buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel, this);
  export_ = buttons->button(QDialogButtonBox::Ok);
  export_->setText(tr("&Export..."));
  export_->setObjectName("cmdExport");
  export_->setToolTip(tr("Asks for the name of the file and writes it"));
  buttons->button(QDialogButtonBox::Cancel)->setToolTip(tr("Writes nothing"));
  form->addRow(buttons);
  connect(buttons, &QDialogButtonBox::accepted, this, &ExportDialog::accept);
  connect(buttons, &QDialogButtonBox::rejected, this, &ExportDialog::reject);
  Check();
}

QComboBox* ExportDialog::MakeBox(const char* name) {
  auto* box = new QComboBox(this);
  box->setObjectName(name);
  connect(box, &QComboBox::currentIndexChanged, this, &ExportDialog::Check);
  return box;
}

ForeignChoice ExportDialog::Choice() const {
  ForeignChoice choice = proposed_;
  choice.format = static_cast<ForeignFormat>(format_->currentData().toInt());
  choice.separator = separator_->currentData().toChar().toLatin1();
  choice.decimalSign = decimal_->currentData().toChar().toLatin1();
  return choice;
}

void ExportDialog::Check() {
  if (export_ == nullptr) return;
  const ForeignChoice choice = Choice();
  const bool isTable = choice.format == ForeignFormat::kTextTable;
  separator_->setEnabled(isTable);
  decimal_->setEnabled(isTable);
  const bool conflict = isTable && choice.separator == ',' && choice.decimalSign == ',';
  export_->setEnabled(!conflict);
  remark_->setText(conflict ? tr("A comma cannot separate numbers and be their decimal sign, too.")
                   : InfoOf(choice.format).named
                       ? tr("The variable is called %1.").arg(ToQString(choice.name))
                       : tr("Every number is written with all of its digits."));
}

}  // namespace qmx
