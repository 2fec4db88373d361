// SPDX-License-Identifier: MIT
#pragma once

#include <QTextBrowser>
#include <QWidget>
#include <memory>

#include "desktop/help_book.h"

class QLineEdit;
class QListWidget;
class QTabWidget;
class QToolBar;
class QTreeWidget;

namespace qmx {

/// Shows the pages of a help file. It is the source of its own pages: no file or network is asked.
class HelpBrowser : public QTextBrowser {
 public:
  explicit HelpBrowser(const HelpBook& book) : book_(book) {}
  void ShowPage(const QString& page);
  QVariant loadResource(int type, const QUrl& name) override;

 private:
  const HelpBook& book_;
};

/// The help window: contents, index and search on the left, a page on the right.
class HelpWindow : public QWidget {
  Q_OBJECT

 public:
  explicit HelpWindow(std::unique_ptr<HelpBook> book);

  const HelpBook& Book() const { return *book_; }
  /// Shows a page with the contents beside it.
  void ShowPage(const QString& page);

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QToolBar* MakeToolBar();
  QTabWidget* MakeTabs();
  QWidget* MakeContents();
  QWidget* MakeIndex();
  QWidget* MakeSearch();
  QListWidget* MakePageList(const char* name, const QString& accessibleName);
  void FillIndex(const QString& start);
  void FillFound();
  /// Marks the line of the page on show in the contents.
  void FollowPage(const QUrl& address);
  void StartSearch();
  /// A tab that was chosen by its letter or the mouse can be typed into at once.
  void EnterTab();

  std::unique_ptr<HelpBook> book_;
  HelpBrowser* browser_;
  QTreeWidget* contents_ = nullptr;
  QListWidget* index_ = nullptr;
  QLineEdit* query_ = nullptr;
  QListWidget* found_ = nullptr;
  QTabWidget* tabs_ = nullptr;
};

}  // namespace qmx
