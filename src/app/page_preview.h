// SPDX-License-Identifier: MIT
#pragma once

#include <QPrintPreviewDialog>
#include <QPrinter>
#include <utility>

namespace qmx {

/// The system's printer, for a document of this name on pages like those of tables.
class PagePrinter : public QPrinter {
 public:
  explicit PagePrinter(const QString& document);

  /// True if the job was lost.
  bool HasFailed() const;
};

/// The first and the last page that the user wants of those that there are.
std::pair<int, int> WantedPages(const QPrinter& printer, int pages);

/// Shows a preview, as large as is good on the screen of a window, until it is closed.
void ShowPreview(QPrintPreviewDialog& preview, const QWidget& window);

}  // namespace qmx
