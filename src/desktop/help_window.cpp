// SPDX-License-Identifier: MIT
#include "desktop/help_window.h"

#include <QAction>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QSplitter>
#include <QStyle>
#include <QTabBar>
#include <QTabWidget>
#include <QToolBar>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QUrl>
#include <QVBoxLayout>

namespace qmx {

namespace {

constexpr int kPageRole = Qt::UserRole;
constexpr const char* kScheme = "help:/";

QString ToText(const std::string& text) { return QString::fromStdString(text); }

/// A page as the help file names it.
QString PageOf(const QUrl& address) { return address.path().mid(1); }

}  // namespace

void HelpBrowser::ShowPage(const QString& page) { setSource(QUrl(kScheme + page)); }

QVariant HelpBrowser::loadResource(int, const QUrl& name) {
  const QUrl address = QUrl(kScheme).resolved(name);
  return ToText(book_.Read(PageOf(address).toStdString()));
}

HelpWindow::HelpWindow(std::unique_ptr<HelpBook> book)
    : book_(std::move(book)), browser_(new HelpBrowser(*book_)) {
  setObjectName("frmHelp");
  setWindowTitle(tr("Orvane Help"));
  browser_->setObjectName("txtPage");
  browser_->setAccessibleName(tr("Help page"));
  auto* splitter = new QSplitter;
  splitter->addWidget(MakeTabs());
  splitter->addWidget(browser_);
  splitter->setStretchFactor(1, 1);
  splitter->setSizes({fontMetrics().averageCharWidth() * 44, 1});
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(MakeToolBar());
  layout->addWidget(splitter, 1);
  connect(browser_, &QTextBrowser::sourceChanged, this, &HelpWindow::FollowPage);
  resize(fontMetrics().averageCharWidth() * 138, fontMetrics().height() * 36);
}

void HelpWindow::ShowPage(const QString& page) {
  tabs_->setCurrentIndex(0);
  browser_->ShowPage(page);
}

QToolBar* HelpWindow::MakeToolBar() {
  auto* bar = new QToolBar;
  bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
  const auto add = [&](const char* name, QStyle::StandardPixmap icon, const QString& text,
                       const QKeySequence& shortcut) {
    QAction* action = bar->addAction(style()->standardIcon(icon), text);
    action->setObjectName(name);
    action->setShortcut(shortcut);
    return action;
  };
  QAction* back = add("mnuBack", QStyle::SP_ArrowBack, tr("Back"), QKeySequence("Alt+Left"));
  QAction* forward =
      add("mnuForward", QStyle::SP_ArrowForward, tr("Forward"), QKeySequence("Alt+Right"));
  QAction* home =
      add("mnuContents", QStyle::SP_DirHomeIcon, tr("Contents"), QKeySequence("Alt+Home"));
  back->setEnabled(false);
  forward->setEnabled(false);
  connect(back, &QAction::triggered, browser_, &QTextBrowser::backward);
  connect(forward, &QAction::triggered, browser_, &QTextBrowser::forward);
  connect(browser_, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
  connect(browser_, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);
  connect(home, &QAction::triggered, this, [this] { ShowPage(ToText(book_->FirstPage())); });
  auto* search = new QAction(this);
  search->setShortcut(QKeySequence("Ctrl+F"));
  connect(search, &QAction::triggered, this, &HelpWindow::StartSearch);
  addAction(search);
  return bar;
}

QTabWidget* HelpWindow::MakeTabs() {
  tabs_ = new QTabWidget;
  tabs_->setObjectName("tabHelp");
  tabs_->addTab(MakeContents(), tr("&Contents"));
  tabs_->addTab(MakeIndex(), tr("&Index"));
  tabs_->addTab(MakeSearch(), tr("&Search"));
  connect(tabs_, &QTabWidget::currentChanged, this, &HelpWindow::EnterTab);
  return tabs_;
}

void HelpWindow::EnterTab() {
  // Who goes through the tabs with the arrow keys stays among them.
  if (!isActiveWindow() || tabs_->tabBar()->hasFocus()) return;
  auto* field = tabs_->currentWidget()->findChild<QLineEdit*>();
  if (field != nullptr) field->setFocus();
}

QWidget* HelpWindow::MakeContents() {
  contents_ = new QTreeWidget;
  contents_->setObjectName("lstContents");
  contents_->setAccessibleName(tr("Contents"));
  contents_->setHeaderHidden(true);
  std::vector<QTreeWidgetItem*> above;
  for (const HelpHeading& heading : book_->Contents()) {
    const std::size_t depth = std::min(above.size(), static_cast<std::size_t>(heading.depth));
    above.resize(depth);
    auto* item =
        depth == 0 ? new QTreeWidgetItem(contents_) : new QTreeWidgetItem(above[depth - 1]);
    item->setText(0, ToText(heading.name));
    item->setData(0, kPageRole, ToText(heading.page));
    above.push_back(item);
  }
  const auto open = [this](const QTreeWidgetItem* item) {
    const QString page = item == nullptr ? QString() : item->data(0, kPageRole).toString();
    if (!page.isEmpty()) browser_->ShowPage(page);
  };
  connect(contents_, &QTreeWidget::itemClicked, this, open);
  connect(contents_, &QTreeWidget::itemActivated, this, open);
  return contents_;
}

QListWidget* HelpWindow::MakePageList(const char* name, const QString& accessibleName) {
  auto* list = new QListWidget;
  list->setObjectName(name);
  list->setAccessibleName(accessibleName);
  const auto open = [this](const QListWidgetItem* item) {
    if (item != nullptr) browser_->ShowPage(item->data(kPageRole).toString());
  };
  connect(list, &QListWidget::itemClicked, this, open);
  connect(list, &QListWidget::itemActivated, this, open);
  return list;
}

QWidget* HelpWindow::MakeIndex() {
  auto* panel = new QWidget;
  auto* layout = new QVBoxLayout(panel);
  auto* start = new QLineEdit;
  start->setObjectName("txtKeyword");
  auto* label = new QLabel(tr("Key word begins with:"));
  label->setBuddy(start);
  index_ = MakePageList("lstIndex", tr("Key words"));
  layout->addWidget(label);
  layout->addWidget(start);
  layout->addWidget(index_);
  connect(start, &QLineEdit::textChanged, this, &HelpWindow::FillIndex);
  connect(start, &QLineEdit::returnPressed, this, [this] {
    if (index_->count() > 0) Q_EMIT index_->itemActivated(index_->item(0));
  });
  FillIndex({});
  return panel;
}

void HelpWindow::FillIndex(const QString& start) {
  index_->clear();
  QString last;
  for (const HelpKeyword& keyword : book_->Index()) {
    const QString word = ToText(keyword.word);
    if (!word.startsWith(start, Qt::CaseInsensitive)) continue;
    // A further page of the same key word is told apart by its title.
    const QString text = word == last ? word + ": " + ToText(book_->TitleOf(keyword.page)) : word;
    auto* item = new QListWidgetItem(text, index_);
    item->setData(kPageRole, ToText(keyword.page));
    last = word;
  }
}

QWidget* HelpWindow::MakeSearch() {
  auto* panel = new QWidget;
  auto* layout = new QVBoxLayout(panel);
  query_ = new QLineEdit;
  query_->setObjectName("txtSearch");
  auto* label = new QLabel(tr("Pages with all of these words:"));
  label->setBuddy(query_);
  found_ = MakePageList("lstFound", tr("Pages found"));
  layout->addWidget(label);
  layout->addWidget(query_);
  layout->addWidget(found_);
  connect(query_, &QLineEdit::textChanged, this, &HelpWindow::FillFound);
  connect(query_, &QLineEdit::returnPressed, this, [this] {
    if (found_->count() > 0) Q_EMIT found_->itemActivated(found_->item(0));
  });
  return panel;
}

void HelpWindow::FillFound() {
  found_->clear();
  for (const std::string& page : book_->Search(query_->text().toStdString())) {
    auto* item = new QListWidgetItem(ToText(book_->TitleOf(page)), found_);
    item->setData(kPageRole, ToText(page));
  }
}

void HelpWindow::FollowPage(const QUrl& address) {
  const QString page = PageOf(address);
  const QTreeWidgetItem* current = contents_->currentItem();
  if (current != nullptr && current->data(0, kPageRole).toString() == page) return;
  for (QTreeWidgetItemIterator item(contents_); *item != nullptr; ++item) {
    if ((*item)->data(0, kPageRole).toString() != page) continue;
    contents_->setCurrentItem(*item);
    contents_->scrollToItem(*item);
    return;
  }
}

void HelpWindow::StartSearch() {
  tabs_->setCurrentIndex(tabs_->indexOf(query_->parentWidget()));
  query_->setFocus();
  query_->selectAll();
}

void HelpWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    close();
  } else {
    QWidget::keyPressEvent(event);
  }
}

}  // namespace qmx
