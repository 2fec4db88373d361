// SPDX-License-Identifier: MIT
#include "grids/picture_window.h"

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QMimeData>
#include <QPushButton>
#include <QShortcut>
#include <QVBoxLayout>

#include "grids/qt_text.h"
#include "grids/svg_drawing.h"

namespace qmx {

PictureWindow::PictureWindow(qmx::Slot slot, PictureView::Source matrix)
    : QWidget(nullptr, Qt::Window),
      slot_(slot),
      view_(new PictureView(std::move(matrix),
                            slot == kSlotEigenvalues ? LinePicture : MatrixPicture, this)),
      told_(new QLabel(this)) {
  const SlotInfo& info = InfoOf(slot);
  setObjectName("frmPicture");
  setWindowTitle(tr("Picture: %1").arg(ToQString(info.caption)));
  view_->setObjectName("picMatrix");
  view_->setAccessibleName(windowTitle());
  told_->setObjectName("lblPicture");
  told_->setTextFormat(Qt::PlainText);
  // A long text must not make the window wider.
  told_->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  const auto button = [this](const char* name, const QString& text, const QString& toolTip) {
    auto* made = new QPushButton(text, this);
    made->setObjectName(name);
    made->setToolTip(toolTip);
    made->setAutoDefault(true);  // Enter presses it, as Space does.
    return made;
  };
  auto* copy = button("cmdCopyPicture", tr("&Copy"), tr("Copies the picture (Ctrl+C)"));
  auto* save =
      button("cmdSavePicture", tr("&Save picture..."), tr("Saves the picture as PNG or SVG"));
  auto* lower = new QHBoxLayout;
  lower->addWidget(copy);
  lower->addWidget(save);
  lower->addStretch(1);
  auto* layout = new QVBoxLayout(this);
  layout->setContentsMargins(6, 6, 6, 6);
  layout->addWidget(view_, 1);
  layout->addWidget(told_);
  layout->addLayout(lower);
  connect(view_, &PictureView::CurrentChanged, this, &PictureWindow::Tell);
  connect(copy, &QPushButton::clicked, this, &PictureWindow::Copy);
  connect(save, &QPushButton::clicked, this, &PictureWindow::SaveRequested);
  auto* copyKey = new QShortcut(QKeySequence::Copy, this);
  connect(copyKey, &QShortcut::activated, this, &PictureWindow::Copy);
  view_->setFocus();
}

void PictureWindow::Tell(const QString& text) {
  told_->setText(text);
  told_->setToolTip(text);
  view_->setAccessibleDescription(text);
}

void PictureWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Escape) {
    close();
  } else {
    QWidget::keyPressEvent(event);
  }
}

void PictureWindow::Copy() {
  auto* copied = new QMimeData;
  copied->setImageData(PictureImage(*view_));
  copied->setData("image/svg+xml", PictureDrawing(*view_));
  QApplication::clipboard()->setMimeData(copied);
}

QImage PictureImage(const PictureView& view) {
  // Twice as fine as it is seen: pictures go into papers.
  constexpr int kFineness = 2;
  QImage image(view.size() * kFineness, QImage::Format_RGB32);
  image.setDevicePixelRatio(kFineness);
  QPainter painter(&image);
  view.Draw(painter, view.size());
  return image;
}

QByteArray PictureDrawing(const PictureView& view) {
  return DrawSvg(view.size(), view.accessibleName(),
                 [&view](QPainter& painter) { view.Draw(painter, view.size()); });
}

}  // namespace qmx
