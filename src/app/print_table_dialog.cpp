// SPDX-License-Identifier: MIT
#include "app/print_table_dialog.h"

#include <QApplication>
#include <QBoxLayout>
#include <QPrintPreviewWidget>

#include "app/page_preview.h"
#include "desktop/table_pages.h"
#include "grids/qt_text.h"
#include "workspace/dialogs.h"

namespace qmx {
namespace {

constexpr int kUsualDigits = 7;

}  // namespace

PrintTableDialog::PrintTableDialog(QPrinter& printer, const Workspace& workspace,
                                   const std::vector<Slot>& slots, Slot first, QWidget* parent)
    : QPrintPreviewDialog(&printer, parent),
      workspace_(workspace),
      slot_(new QComboBox(this)),
      digits_(new QSpinBox(this)),
      pages_(new QLabel(this)) {
  setObjectName("frmPrintTable");
  setWindowTitle(tr("Print table"));
  slot_->setObjectName("cboTable");
  for (const Slot slot : slots)
    slot_->addItem(ToQString(InfoOf(slot).title), static_cast<int>(slot));
  slot_->setCurrentIndex(slot_->findData(static_cast<int>(first)));
  digits_->setObjectName("spnDigits");
  digits_->setRange(PrintedTable::kLeastDigits, PrintedTable::kMostDigits);
  digits_->setValue(kUsualDigits);
  digits_->setKeyboardTracking(false);
  pages_->setObjectName("lblPages");
  auto* row = new QHBoxLayout;
  row->setContentsMargins(9, 6, 9, 2);
  auto* matrix = new QLabel(tr("&Matrix:"), this);
  matrix->setBuddy(slot_);
  auto* digits = new QLabel(tr("&Digits:"), this);
  digits->setBuddy(digits_);
  for (QWidget* part :
       {static_cast<QWidget*>(matrix), static_cast<QWidget*>(slot_), static_cast<QWidget*>(digits),
        static_cast<QWidget*>(digits_), static_cast<QWidget*>(pages_)}) {
    row->addWidget(part);
  }
  row->addStretch(1);
  static_cast<QBoxLayout*>(layout())->insertLayout(0, row);
  connect(slot_, &QComboBox::currentIndexChanged, this, &PrintTableDialog::Choose);
  connect(digits_, &QSpinBox::valueChanged, this, &PrintTableDialog::Choose);
  connect(this, &QPrintPreviewDialog::paintRequested, this, &PrintTableDialog::Paint);
}

void PrintTableDialog::Choose() {
  table_.reset();
  findChild<QPrintPreviewWidget*>()->updatePreview();
}

// The preview asks for this, and the printer: each time for a device with its own paper.
void PrintTableDialog::Paint(QPrinter* printer) {
  if (table_ == nullptr) {
    const Slot slot = static_cast<Slot>(slot_->currentData().toInt());
    table_ = std::make_unique<PrintedTable>(std::string(InfoOf(slot).title),
                                            workspace_.At(slot).array, digits_->value());
  }
  table_->LayOut(PaperOf(*printer));
  const int pages = table_->Pages();
  if (pages > kMostPages) {
    pages_->setText(tr("%L1 pages are too many to show. Choose fewer digits.").arg(pages));
    return;
  }
  pages_->setText(pages == 1 ? tr("1 page") : tr("%L1 pages").arg(pages));
  const auto [first, last] = WantedPages(*printer, pages);
  if (!PaintTable(*printer, *table_, first, last)) failed_ = true;
}

bool DesktopPrintPreview::Show(const Workspace& workspace, const std::vector<Slot>& slots,
                               Slot first) {
  PagePrinter printer(ToQString(kProgramTitle));
  QWidget* active = QApplication::activeWindow();
  PrintTableDialog dialog(printer, workspace, slots, first, active != nullptr ? active : &main_);
  ShowPreview(dialog, main_);
  return !dialog.HasFailed() && !printer.HasFailed();
}

}  // namespace qmx
