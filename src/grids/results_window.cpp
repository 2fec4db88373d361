// SPDX-License-Identifier: MIT
#include "grids/results_window.h"

#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QPushButton>
#include <QShortcut>
#include <QStyle>
#include <QVBoxLayout>

namespace qmx {
namespace {

constexpr int kReportColumns = 82;  // A separator has 80 characters.
constexpr int kReportLines = 24;

}  // namespace

ResultsWindow::ResultsWindow() : list_(new QListWidget(this)) {
  setObjectName("frmResults");
  setWindowTitle(tr("Results"));
  list_->setObjectName("lstResults");
  list_->setAccessibleName(tr("Reports"));
  list_->setSelectionMode(QAbstractItemView::ExtendedSelection);
  list_->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
  list_->setUniformItemSizes(false);
  auto* clear = new QPushButton(tr("&Clear"), this);
  clear->setObjectName("cmdClearResults");
  clear->setAutoDefault(true);  // Enter presses it, as Space does.
  clear->setToolTip(tr("Removes all reports from this list"));
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(list_);
  layout->addWidget(clear, 0, Qt::AlignLeft);
  connect(clear, &QPushButton::clicked, this, &ResultsWindow::Clear);
  auto* copy = new QShortcut(QKeySequence::Copy, list_, nullptr, nullptr, Qt::WidgetShortcut);
  connect(copy, &QShortcut::activated, this, &ResultsWindow::CopySelected);
  UseReportFont();
  const QFontMetrics metrics(list_->font());
  // The scroll bar of a long list must not take the room of a separator.
  const int scrollBar = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, list_);
  resize(metrics.horizontalAdvance(QChar(0x2014)) * kReportColumns + 40 + scrollBar,
         metrics.lineSpacing() * kReportLines);
}

void ResultsWindow::UseReportFont() {
  QFont font = list_->font();
  font.setFamily("Courier New");
  font.setStyleHint(QFont::Monospace);
  list_->setFont(font);
}

void ResultsWindow::AddLine(const QString& line) {
  list_->addItem(line);
  list_->scrollToBottom();
}

void ResultsWindow::CutTo(int lines) {
  while (list_->count() > lines) delete list_->takeItem(list_->count() - 1);
}

void ResultsWindow::Clear() { list_->clear(); }

void ResultsWindow::CopySelected() {
  QStringList lines;
  for (int row = 0; row < list_->count(); ++row) {
    if (list_->item(row)->isSelected()) lines.append(list_->item(row)->text());
  }
  if (!lines.isEmpty()) QApplication::clipboard()->setText(lines.join('\n'));
}

void ResultsWindow::closeEvent(QCloseEvent* event) {
  if (!event->spontaneous()) return;
  event->ignore();
  hide();
}

}  // namespace qmx
