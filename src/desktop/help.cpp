// SPDX-License-Identifier: MIT
#include "desktop/help.h"

#include <QApplication>
#include <QKeyEvent>

#include "desktop/help_window.h"
#include "desktop/window_front.h"

namespace qmx {

Help::Help(Dialogs& dialogs, std::string file) : dialogs_(dialogs), file_(std::move(file)) {}

Help::~Help() = default;

void Help::ShowContents() { ShowHelp({}); }

void Help::ShowHelp(const QString& topic) {
  if (window_ == nullptr) {
    std::unique_ptr<HelpBook> book = HelpBook::Open(file_);
    if (book == nullptr) {
      dialogs_.ShowMessage({"The help file is missing or cannot be read:\r" + file_});
      return;
    }
    window_ = std::make_unique<HelpWindow>(std::move(book));
  }
  const std::string page = topic.toStdString() + ".html";
  const HelpBook& book = window_->Book();
  window_->ShowPage(QString::fromStdString(book.Has(page) ? page : book.FirstPage()));
  BringToFront(*window_);
}

void Help::ShowWindowHelp() {
  const QWidget* window = QApplication::activeWindow();
  ShowHelp(window == nullptr ? QString() : window->objectName());
}

void Help::Close() { window_.reset(); }

// A modal box would keep the help window from being used, so F1 is left alone while one is open.
bool Help::eventFilter(QObject*, QEvent* event) {
  if (event->type() != QEvent::KeyPress) return false;
  const auto* key = static_cast<QKeyEvent*>(event);
  if (key->key() != Qt::Key_F1 || key->modifiers() != Qt::NoModifier) return false;
  if (QApplication::activeModalWidget() != nullptr) return false;
  ShowWindowHelp();
  return true;
}

}  // namespace qmx
