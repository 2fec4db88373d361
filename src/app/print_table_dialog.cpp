// SPDX-License-Identifier: MIT
#include "app/print_table_dialog.h"

#include <QAction>
#include <QBoxLayout>
#include <QCoreApplication>
#include <QEvent>
#include <QGraphicsView>
#include <QPaintEngine>
#include <utility>

#include "app/page_preview.h"
#include "desktop/patience.h"
#include "desktop/table_pages.h"
#include "desktop/window_front.h"
#include "grids/qt_text.h"
#include "workspace/dialogs.h"

namespace qmx {
namespace {

constexpr int kUsualDigits = 7;

/// The toolkit's preview keeps what is painted in pictures.
bool IsPreview(const QPrinter& printer) {
  return printer.paintEngine()->type() == QPaintEngine::Picture;
}

}  // namespace

PrintTableDialog::PrintTableDialog(QPrinter& printer, const Workspace& workspace,
                                   const std::vector<Slot>& slots, Slot first, QWidget* parent)
    : QPrintPreviewDialog(&printer, parent),
      workspace_(workspace),
      slot_(new QComboBox(this)),
      digits_(new QSpinBox(this)),
      pages_(new QLabel(this)),
      preview_(findChild<QPrintPreviewWidget*>()),
      tools_(findChild<QToolBar*>()) {
  setObjectName("frmPrintTable");
  setWindowTitle(tr("Print table"));
  AddRow(slots, first);
  connect(slot_, &QComboBox::currentIndexChanged, this, &PrintTableDialog::Count);
  connect(digits_, &QSpinBox::valueChanged, this, &PrintTableDialog::Count);
  connect(this, &QPrintPreviewDialog::paintRequested, this, &PrintTableDialog::Paint);
  preview_->findChild<QGraphicsView*>()->viewport()->installEventFilter(this);
  Count();
}

void PrintTableDialog::AddRow(const std::vector<Slot>& slots, Slot first) {
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
}

void PrintTableDialog::reject() {
  if (painting_ != Painting::kPrinter) QPrintPreviewDialog::reject();
}

bool PrintTableDialog::eventFilter(QObject* watched, QEvent* event) {
  // While pages are painted the preview's old pictures are gone, the new ones not there.
  return (IsPainting() && event->type() == QEvent::Paint) ||
         QPrintPreviewDialog::eventFilter(watched, event);
}

void PrintTableDialog::Count() {
  table_ = nullptr;
  const Slot slot = static_cast<Slot>(slot_->currentData().toInt());
  auto table = std::make_shared<PrintedTable>(std::string(InfoOf(slot).title),
                                              workspace_.At(slot).array.Shared(), digits_->value());
  counting_ = runs_.Start(
      [&table]() -> BackgroundRuns::Work {
        return [table](const BackgroundRuns::Look& look) { table->Measure(look); };
      },
      [this, table](BackgroundRuns::End end) { Take(end, table); });
  if (runs_.WaitFor(kPatience)) return;
  pages_->setText(tr("Counting the pages..."));
  HoldTools(true);
}

void PrintTableDialog::Take(BackgroundRuns::End end, std::shared_ptr<PrintedTable> table) {
  if (end == BackgroundRuns::End::kNoMemory) {
    pages_->setText(tr("There is not enough memory for this table."));
    return HoldTools(true);
  }
  table_ = std::move(table);
  if (!IsPainting()) HoldTools(false);
  Refresh();
}

void PrintTableDialog::Refresh() {
  // Before it is shown for the first time it asks for the pages by itself.
  if (!isVisible()) return;
  if (IsPainting()) {
    again_ = true;
  } else {
    preview_->updatePreview();
  }
}

// The preview asks for this, and the printer: each time for a device with its own paper.
void PrintTableDialog::Paint(QPrinter* printer) {
  const std::shared_ptr<PrintedTable> table = table_;
  if (table == nullptr || IsPainting()) return;
  table->LayOut(PaperOf(*printer));
  const int pages = table->Pages();
  // The last tool prints.
  tools_->actions().constLast()->setEnabled(pages <= kMostPages);
  if (pages > kMostPages) {
    pages_->setText(tr("%L1 pages are too many to show. Choose fewer digits.").arg(pages));
    return;
  }
  PaintPages(*printer, *table);
  if (again_) {
    again_ = false;
    // Not until the preview has what was painted now.
    QMetaObject::invokeMethod(this, "Refresh", Qt::QueuedConnection);
  } else if (table == table_) {
    pages_->setText(pages == 1 ? tr("1 page") : tr("%L1 pages").arg(pages));
  }
}

void PrintTableDialog::PaintPages(QPrinter& printer, const PrintedTable& table) {
  painting_ = IsPreview(printer) ? Painting::kPreview : Painting::kPrinter;
  sinceTurn_.start();
  const auto [first, last] = WantedPages(printer, table.Pages());
  const bool isPainted =
      PaintTable(printer, table, first, last, [&](int page) { return GoesOn(table, page); });
  if (!isPainted) failed_ = true;
  painting_ = Painting::kNothing;
  slot_->setEnabled(true);
  digits_->setEnabled(true);
  if (table_ != nullptr) HoldTools(false);
}

bool PrintTableDialog::GoesOn(const PrintedTable& table, int page) {
  if (sinceTurn_.elapsed() < kPatience.count()) return true;
  const bool isPrinted = painting_ == Painting::kPrinter;
  pages_->setText((isPrinted ? tr("Printing page %L1 of %L2...") : tr("Page %L1 of %L2..."))
                      .arg(page)
                      .arg(table.Pages()));
  if (!isPrinted && !isVisible()) {
    // Nobody sees yet that it takes long: the rest follows once it is shown.
    again_ = true;
    return false;
  }
  HoldTools(true);
  slot_->setEnabled(!isPrinted);
  digits_->setEnabled(!isPrinted);
  QCoreApplication::processEvents();
  sinceTurn_.start();
  return isPrinted || (isVisible() && table_.get() == &table);
}

void PrintTableDialog::HoldTools(bool held) {
  if (held == !tools_->isEnabled()) return;
  QWidget* keyboard = focusWidget();
  if (held) hadKeyboard_ = tools_->isAncestorOf(keyboard) ? keyboard : nullptr;
  tools_->setEnabled(!held);
  if (!held && hadKeyboard_ != nullptr) hadKeyboard_->setFocus();
}

bool DesktopPrintPreview::Show(const Workspace& workspace, const std::vector<Slot>& slots,
                               Slot first) {
  PagePrinter printer(ToQString(kProgramTitle));
  PrintTableDialog dialog(printer, workspace, slots, first, &FrontWindow(main_));
  ShowPreview(dialog, main_);
  return !dialog.HasFailed() && !printer.HasFailed();
}

}  // namespace qmx
