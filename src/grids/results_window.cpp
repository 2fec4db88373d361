// SPDX-License-Identifier: MIT
#include "grids/results_window.h"

#include <QApplication>
#include <QClipboard>
#include <QCloseEvent>
#include <QMenu>
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
  auto* layout = new QVBoxLayout(this);
  layout->addWidget(list_);
  buttons_ = new QHBoxLayout;
  layout->addLayout(buttons_);
  QPushButton* clear =
      AddButton("cmdClearResults", tr("&Clear"), tr("Removes all reports from this list"));
  QPushButton* save = AddButton("cmdSaveResults", tr("&Save..."),
                                tr("Writes all reports of this list to a text file"));
  QPushButton* print =
      AddButton("cmdPrintResults", tr("&Print"), tr("Prints all reports of this list"));
  buttons_->addStretch(1);
  whole_ = {save, print};
  connect(clear, &QPushButton::clicked, this, &ResultsWindow::Clear);
  connect(save, &QPushButton::clicked, this, &ResultsWindow::SaveRequested);
  connect(print, &QPushButton::clicked, this, &ResultsWindow::PrintRequested);
  AddEntries();
  auto* copy = new QShortcut(QKeySequence::Copy, list_, nullptr, nullptr, Qt::WidgetShortcut);
  connect(copy, &QShortcut::activated, this, &ResultsWindow::CopySelected);
  UseReportFont();
  scroll_.setSingleShot(true);
  connect(&scroll_, &QTimer::timeout, list_, &QListWidget::scrollToBottom);
  const QFontMetrics metrics(list_->font());
  // The scroll bar of a long list must not take the room of a separator.
  const int scrollBar = style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, list_);
  resize(metrics.horizontalAdvance(QChar(0x2014)) * kReportColumns + 40 + scrollBar,
         metrics.lineSpacing() * kReportLines);
}

QPushButton* ResultsWindow::AddButton(const char* name, const QString& text,
                                      const QString& toolTip) {
  auto* button = new QPushButton(text, this);
  button->setObjectName(name);
  button->setAutoDefault(true);  // Enter presses it, as Space does.
  button->setToolTip(toolTip);
  buttons_->addWidget(button);
  return button;
}

QAction* ResultsWindow::AddEntry(const char* name, const QString& text, const QKeySequence& key) {
  auto* entry = new QAction(text, this);
  entry->setObjectName(name);
  // The list answers the keys itself; the menu only tells them.
  entry->setShortcut(key);
  entry->setShortcutVisibleInContextMenu(true);
  return entry;
}

void ResultsWindow::AddEntries() {
  copy_ = AddEntry("mnuCopyResults", tr("&Copy"), QKeySequence::Copy);
  selectAll_ = AddEntry("mnuSelectAllResults", tr("Select &all"), QKeySequence::SelectAll);
  save_ = AddEntry("mnuSaveResults", tr("&Save as text..."));
  print_ = AddEntry("mnuPrintResults", tr("&Print"));
  connect(copy_, &QAction::triggered, this, &ResultsWindow::CopySelected);
  connect(selectAll_, &QAction::triggered, list_, &QListWidget::selectAll);
  connect(save_, &QAction::triggered, this, &ResultsWindow::SaveRequested);
  connect(print_, &QAction::triggered, this, &ResultsWindow::PrintRequested);
  list_->setContextMenuPolicy(Qt::CustomContextMenu);
  connect(list_, &QWidget::customContextMenuRequested, this,
          [this](const QPoint& at) { ShowMenu(list_->viewport()->mapToGlobal(at)); });
  Update();
}

void ResultsWindow::ShowMenu(const QPoint& where) {
  auto* menu = new QMenu(this);
  menu->setObjectName("mnuResults");
  menu->setAccessibleName(tr("Reports"));
  menu->setAttribute(Qt::WA_DeleteOnClose);
  copy_->setEnabled(!list_->selectedItems().isEmpty());
  menu->addActions({copy_, selectAll_});
  menu->addSeparator();
  menu->addActions({save_, print_});
  menu->popup(where);
}

void ResultsWindow::Update() {
  const bool hasLines = list_->count() > 0;
  for (QPushButton* button : whole_) button->setEnabled(hasLines);
  for (QAction* entry : {selectAll_, save_, print_}) entry->setEnabled(hasLines);
}

std::vector<std::string> ResultsWindow::Lines() const {
  std::vector<std::string> lines;
  lines.reserve(static_cast<std::size_t>(list_->count()));
  for (int row = 0; row < list_->count(); ++row)
    lines.push_back(list_->item(row)->text().toStdString());
  return lines;
}

void ResultsWindow::UseReportFont() {
  QFont font = list_->font();
  font.setFamily("Courier New");
  font.setStyleHint(QFont::Monospace);
  list_->setFont(font);
}

// To scroll means to lay out all lines: done for each of them it would take seconds.
void ResultsWindow::AddLines(const QStringList& lines) {
  const bool wasEmpty = list_->count() == 0;
  list_->addItems(lines);
  if (wasEmpty) Update();
  scroll_.start();
}

void ResultsWindow::CutTo(int lines) {
  while (list_->count() > lines) delete list_->takeItem(list_->count() - 1);
  Update();
}

void ResultsWindow::Clear() {
  list_->clear();
  Update();
}

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
