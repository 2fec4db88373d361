// SPDX-License-Identifier: MIT
#include "app/document_output.h"

#include <QBuffer>
#include <QMessageBox>
#include <QPdfWriter>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QScreen>
#include <algorithm>
#include <utility>

#include "commands/file_boxes.h"
#include "desktop/table_pages.h"
#include "grids/document_pages.h"
#include "grids/qt_text.h"
#include "workspace/dialogs.h"

namespace qmx {
namespace {

constexpr const char* kPdfEnding = ".pdf";

void Complain(QWidget& window, const QString& what) {
  QMessageBox box(QMessageBox::Critical, ToQString(kProgramTitle), what, QMessageBox::Ok, &window);
  box.setTextFormat(Qt::PlainText);
  box.exec();
}

/// The pages that the user wants of those that there are.
std::pair<int, int> WantedPages(const QPrinter& printer, int pages) {
  if (printer.printRange() != QPrinter::PageRange || printer.fromPage() <= 0) return {1, pages};
  const int first = std::clamp(printer.fromPage(), 1, pages);
  return {first, std::clamp(printer.toPage(), first, pages)};
}

std::string PdfBytes(DocumentWindow& window) {
  QBuffer bytes;
  bytes.open(QIODevice::WriteOnly);
  QPdfWriter pdf(&bytes);
  pdf.setTitle(window.windowTitle());
  pdf.setCreator(ToQString(kProgramTitle));
  pdf.setPageLayout(TablePage());
  const DocumentPages pages(window.View().Shown(), window.View().Form(), pdf);
  if (!pages.Paint(pdf, 1, pages.Count())) return {};
  return bytes.data().toStdString();
}

}  // namespace

void PrintDocument(DocumentWindow& window) {
  if (window.View().Shown() == nullptr) return;
  QPrinter printer(QPrinterInfo::defaultPrinter(), QPrinter::HighResolution);
  printer.setDocName(window.windowTitle());
  printer.setPageLayout(TablePage());
  QPrintPreviewDialog preview(&printer, &window);
  preview.setObjectName("frmPrintSteps");
  preview.setWindowTitle(QObject::tr("Print: %1").arg(window.windowTitle()));
  // The window may get another document meanwhile.
  const std::shared_ptr<const Document> document = window.View().Shown();
  const NumberForm form = window.View().Form();
  bool failed = false;
  QObject::connect(&preview, &QPrintPreviewDialog::paintRequested, &preview, [&](QPrinter* on) {
    const DocumentPages pages(document, form, *on);
    const auto [first, last] = WantedPages(*on, pages.Count());
    if (!pages.Paint(*on, first, last)) failed = true;
  });
  preview.resize(preview.sizeHint()
                     .expandedTo(QSize(900, 640))
                     .boundedTo(window.screen()->availableSize() - QSize(40, 80)));
  preview.exec();
  const bool aborted =
      printer.printerState() == QPrinter::Error || printer.printerState() == QPrinter::Aborted;
  if (failed || aborted) Complain(window, QObject::tr("The steps could not be printed."));
}

void SaveDocument(DocumentWindow& window, CommandRunner& commands) {
  if (window.View().Shown() == nullptr) return;
  commands.Do([&window](Context& context) {
    std::string name = context.dialogs.AskSaveFile(kPdfEnding);
    if (name.empty()) return;
    if (!name.ends_with(kPdfEnding)) name += kPdfEnding;
    // Fonts belong to the thread of the windows.
    std::string bytes = PdfBytes(window);
    if (bytes.empty()) {
      context.dialogs.ShowMessage({"The document could not be made.", Icon::kCritical});
    } else if (WriteFile(context, name, [&](Progress&) { return std::move(bytes); })) {
      context.view.SetStatus("Saved as " + name);
    }
  });
}

}  // namespace qmx
