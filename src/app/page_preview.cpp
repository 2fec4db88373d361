// SPDX-License-Identifier: MIT
#include "app/page_preview.h"

#include <QPrinterInfo>
#include <QScreen>
#include <algorithm>

#include "desktop/table_pages.h"

namespace qmx {
namespace {

constexpr QSize kUsual(900, 640);
constexpr QSize kAround(40, 80);  // What is to be left of the screen.

}  // namespace

PagePrinter::PagePrinter(const QString& document)
    : QPrinter(QPrinterInfo::defaultPrinter(), HighResolution) {
  setDocName(document);
  setPageLayout(TablePage());
}

bool PagePrinter::HasFailed() const { return printerState() == Error || printerState() == Aborted; }

std::pair<int, int> WantedPages(const QPrinter& printer, int pages) {
  if (printer.printRange() != QPrinter::PageRange || printer.fromPage() <= 0) return {1, pages};
  const int first = std::clamp(printer.fromPage(), 1, pages);
  return {first, std::clamp(printer.toPage(), first, pages)};
}

void ShowPreview(QPrintPreviewDialog& preview, const QWidget& window) {
  const QSize room = window.screen()->availableSize() - kAround;
  preview.resize(preview.sizeHint().expandedTo(kUsual).boundedTo(room));
  preview.exec();
}

}  // namespace qmx
