// SPDX-License-Identifier: MIT
#include "desktop/about_window.h"

#include <QKeyEvent>
#include <QPainter>

namespace qmx {

namespace {

constexpr int kLinesShown = 12;
constexpr int kCharactersShown = 44;

}  // namespace

AboutWindow::AboutWindow() {
  setObjectName("frmAbout");
  setWindowTitle(tr("About Orvane"));
  setAttribute(Qt::WA_DeleteOnClose);
  QFont large = font();
  large.setPointSizeF(large.pointSizeF() * 1.4);
  setFont(large);
  resize(fontMetrics().averageCharWidth() * kCharactersShown,
         fontMetrics().lineSpacing() * kLinesShown);
}

void AboutWindow::PrintVersion() {
  for (const char* line : {"", "", "", "Orvane 2", ""}) Print(tr(line));
}

void AboutWindow::Print(const QString& line) {
  lines_ += line;
  // What is painted is no text to a screen reader; the name of the window is.
  setAccessibleName(lines_.join(' ').simplified());
  update();
}

void AboutWindow::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  const QFontMetrics metrics = fontMetrics();
  const int margin = metrics.averageCharWidth() * 3;
  for (int i = 0; i < lines_.size(); ++i) {
    painter.drawText(margin, metrics.lineSpacing() * i + metrics.ascent(), lines_[i]);
  }
}

void AboutWindow::mousePressEvent(QMouseEvent*) { close(); }

void AboutWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    close();
  } else {
    QWidget::keyPressEvent(event);
  }
}

void ShowAbout(QPointer<AboutWindow>& frmAbout) {
  if (frmAbout == nullptr) frmAbout = new AboutWindow;
  frmAbout->setWindowState(frmAbout->windowState() & ~Qt::WindowMinimized);
  frmAbout->show();
  frmAbout->PrintVersion();
}

}  // namespace qmx
