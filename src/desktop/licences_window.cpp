// SPDX-License-Identifier: MIT
#include "desktop/licences_window.h"

#include <QFile>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QVBoxLayout>

// What lies in a static library has to be asked for, from outside of any namespace.
static void LoadLicences() { Q_INIT_RESOURCE(licences); }

namespace qmx {
namespace {

constexpr int kLinesShown = 30;
constexpr int kCharactersShown = 82;

QString Contents(const char* name) {
  QFile file(QString(":/licences/") + name);
  return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

}  // namespace

LicencesWindow::LicencesWindow() : text_(new QPlainTextEdit(this)) {
  LoadLicences();
  setObjectName("frmLicences");
  setWindowTitle(tr("Licences"));
  setAttribute(Qt::WA_DeleteOnClose);
  text_->setObjectName("txtLicences");
  text_->setAccessibleName(windowTitle());
  text_->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
  text_->setReadOnly(true);
  text_->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  text_->setTabChangesFocus(true);
  text_->setPlainText(Contents("libraries.txt") + Contents("orvane.txt"));
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(6, 6, 6, 6);
  layout->addWidget(text_);
  const QFontMetrics metrics(text_->font());
  resize(metrics.averageCharWidth() * kCharactersShown, metrics.lineSpacing() * kLinesShown);
}

void LicencesWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    close();
  } else {
    QWidget::keyPressEvent(event);
  }
}

}  // namespace qmx
