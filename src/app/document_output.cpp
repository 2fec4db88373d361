// SPDX-License-Identifier: MIT
#include "app/document_output.h"

#include <QBuffer>
#include <QPdfWriter>
#include <utility>

#include "app/page_preview.h"
#include "app/plain_box.h"
#include "commands/file_boxes.h"
#include "desktop/table_pages.h"
#include "grids/document_pages.h"
#include "grids/qt_text.h"
#include "workspace/dialogs.h"

namespace qmx {
namespace {

constexpr const char* kPdfEnding = ".pdf";

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
  PagePrinter printer(window.windowTitle());
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
  ShowPreview(preview, window);
  if (failed || printer.HasFailed()) Complain(window, window.Texts().notPrinted);
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
