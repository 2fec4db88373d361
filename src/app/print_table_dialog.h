// SPDX-License-Identifier: MIT
#pragma once

#include <QComboBox>
#include <QLabel>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QSpinBox>
#include <memory>

#include "commands/table_commands.h"
#include "output/printed_table.h"

namespace qmx {

/// The preview of matrices as tables: which one, with how many digits, on what paper. Its Print
/// button prints what it shows.
class PrintTableDialog : public QPrintPreviewDialog {
  Q_OBJECT

 public:
  /// More pages than this are not shown: nobody prints them, and the preview would not come.
  static constexpr int kMostPages = 1000;

  PrintTableDialog(QPrinter& printer, const Workspace& workspace, const std::vector<Slot>& slots,
                   Slot first, QWidget* parent);

  /// True if the printer has failed.
  bool HasFailed() const { return failed_; }

 private:
  void Choose();
  void Paint(QPrinter* printer);

  const Workspace& workspace_;
  QComboBox* slot_;
  QSpinBox* digits_;
  QLabel* pages_;
  std::unique_ptr<PrintedTable> table_;
  bool failed_ = false;
};

/// Shows that dialog over the active window.
class DesktopPrintPreview : public PrintPreview {
 public:
  explicit DesktopPrintPreview(QWidget& mainWindow) : main_(mainWindow) {}

  bool Show(const Workspace& workspace, const std::vector<Slot>& slots, Slot first) override;

 private:
  QWidget& main_;
};

}  // namespace qmx
