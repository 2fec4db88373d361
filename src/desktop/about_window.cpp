// SPDX-License-Identifier: MIT
#include "desktop/about_window.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

#include "desktop/window_front.h"

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
  AddLicences();
}

// The licences are of no use without the window they were asked for in.
AboutWindow::~AboutWindow() { delete frmLicences_.data(); }

void AboutWindow::AddLicences() {
  auto* licences = new QPushButton(tr("&Licences..."), this);
  licences->setObjectName("cmdLicences");
  licences->setToolTip(tr("Licences of the program and of what it rests on"));
  licences->setFont(QApplication::font());
  licences->setAutoDefault(true);  // Enter presses it, as Space does.
  connect(licences, &QPushButton::clicked, this, [this] { ShowLicences(); });
  auto* layout = new QVBoxLayout(this);
  layout->addStretch(1);
  layout->addWidget(licences, 0, Qt::AlignRight);
}

void AboutWindow::ShowLicences() {
  if (frmLicences_ == nullptr) frmLicences_ = new LicencesWindow;
  BringToFront(*frmLicences_);
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
