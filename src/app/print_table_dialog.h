// SPDX-License-Identifier: MIT
#pragma once

#include <QComboBox>
#include <QElapsedTimer>
#include <QLabel>
#include <QPointer>
#include <QPrintPreviewDialog>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QSpinBox>
#include <QToolBar>
#include <memory>

#include "app/background_runs.h"
#include "commands/table_commands.h"
#include "output/printed_table.h"

namespace qmx {

/// The preview of matrices as tables: which one, with how many digits, on what paper. Its Print
/// button prints what it shows.
///
/// A table is measured beside the windows, and its pages are painted a few at a time: between them
/// events are handled, so that another matrix can be chosen and the window be closed meanwhile.
/// What goes to the printer cannot be taken back; while it does the window stays open.
class PrintTableDialog : public QPrintPreviewDialog {
  Q_OBJECT

 public:
  /// More pages than this are not shown: nobody prints them, and the preview would not come.
  static constexpr int kMostPages = 1000;

  PrintTableDialog(QPrinter& printer, const Workspace& workspace, const std::vector<Slot>& slots,
                   Slot first, QWidget* parent);

  /// True if the printer has failed.
  bool HasFailed() const { return failed_; }

  /// True while pages are being painted, also while events are handled in between.
  bool IsPainting() const { return painting_ != Painting::kNothing; }

  void reject() override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  /// What pages are being painted for.
  enum class Painting { kNothing, kPreview, kPrinter };

  void AddRow(const std::vector<Slot>& slots, Slot first);
  void Count();
  void Take(BackgroundRuns::End end, std::shared_ptr<PrintedTable> table);
  Q_INVOKABLE void Refresh();
  void Paint(QPrinter* printer);
  void PaintPages(QPrinter& printer, const PrintedTable& table);
  bool GoesOn(const PrintedTable& table, int page);
  void HoldTools(bool held);

  const Workspace& workspace_;
  QComboBox* slot_;
  QSpinBox* digits_;
  QLabel* pages_;
  QPrintPreviewWidget* preview_;
  QToolBar* tools_;
  QPointer<QWidget> hadKeyboard_;        ///< The tool that had it before they were held.
  std::shared_ptr<PrintedTable> table_;  ///< Nothing while it is being counted.
  Painting painting_ = Painting::kNothing;
  bool again_ = false;  ///< The preview is to be painted once more, since this time it was cut off.
  QElapsedTimer sinceTurn_;
  bool failed_ = false;
  BackgroundRuns::Ticket counting_;
  BackgroundRuns runs_;
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
