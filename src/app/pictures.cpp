// SPDX-License-Identifier: MIT
#include "app/pictures.h"

#include <QAction>
#include <QPushButton>
#include <QSaveFile>

#include "app/drawn_icon.h"
#include "app/file_dialog.h"
#include "app/plain_box.h"
#include "desktop/window_front.h"

namespace qmx {

Pictures::Pictures(const Workspace& workspace, Place place)
    : workspace_(workspace), place_(std::move(place)) {}

void Pictures::Attach(GridWindow& window) {
  auto* entry = new QAction(QObject::tr("P&icture"), &window);
  entry->setObjectName("mnuPicture");
  entry->setToolTip(QObject::tr("Shows the matrix as a picture"));
  entry->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_H));
  entry->setShortcutVisibleInContextMenu(true);
  window.addAction(entry);
  window.AddViewEntries({entry});
  QObject::connect(entry, &QAction::triggered, &window, [this, &window] { Show(window); });
  auto* button = new QPushButton(DrawnIcon("picture"), {}, &window);
  button->setObjectName("cmdPicture");
  button->setAccessibleName(QObject::tr("Picture"));
  button->setToolTip(QObject::tr("Shows the matrix as a picture (Ctrl+H)"));
  button->setAutoDefault(true);  // Enter presses it, as Space does.
  window.AddToLowerLine(*button);
  QObject::connect(button, &QPushButton::clicked, entry, &QAction::trigger);
}

void Pictures::Show(GridWindow& matrix) {
  matrix.HideEntryBox();
  PictureWindow* picture = Window(matrix.Slot());
  if (picture == nullptr) {
    picture = Make(matrix);
  } else {
    picture->View().Refresh();
  }
  BringToFront(*picture);
}

PictureWindow* Pictures::Make(GridWindow& matrix) {
  const Slot slot = matrix.Slot();
  auto* picture = new PictureWindow(
      slot, [this, slot]() -> const Matrix& { return workspace_.At(slot).array; });
  picture->setAttribute(Qt::WA_DeleteOnClose);
  windows_[slot] = picture;
  QObject::connect(&picture->View(), &PictureView::Chosen, &matrix, &GridWindow::GoToElement);
  QObject::connect(picture, &PictureWindow::SaveRequested, picture,
                   [picture] { SavePicture(*picture); });
  // A reset closes the window of its matrix.
  QObject::connect(&matrix, &QObject::destroyed, picture, [picture] { delete picture; });
  picture->adjustSize();
  place_(*picture, slot);
  WasDrawn(slot);
  return picture;
}

void Pictures::Refresh() {
  for (const Slot slot : kAllSlots) {
    PictureWindow* picture = Window(slot);
    if (picture == nullptr) {
      drawn_[slot] = Matrix();
    } else if (!WasDrawn(slot)) {
      picture->View().Refresh();
    }
  }
}

bool Pictures::WasDrawn(Slot slot) {
  const Matrix& matrix = workspace_.At(slot).array;
  // An editor's elements change one by one; a result's are others as a whole, or none is.
  if (InfoOf(slot).IsEditor()) return false;
  if (drawn_[slot].SharesWith(matrix)) return true;
  drawn_[slot] = matrix.Shared();
  return false;
}

void Pictures::CloseAll() {
  for (const auto& picture : windows_) delete picture.data();
}

QString WritePicture(const PictureView& view, const QString& name) {
  QSaveFile file(name);
  if (!file.open(QIODevice::WriteOnly)) return file.errorString();
  if (name.endsWith(".svg", Qt::CaseInsensitive)) {
    file.write(PictureDrawing(view));
  } else if (!PictureImage(view).save(&file, "PNG")) {
    return file.errorString();
  }
  return file.commit() ? QString() : file.errorString();
}

void SavePicture(PictureWindow& window) {
  FileDialog dialog(QFileDialog::AcceptSave, {}, &window);
  dialog.setObjectName("dlgSavePicture");
  dialog.setWindowTitle(QObject::tr("Save picture"));
  dialog.OfferKinds(
      {{QObject::tr("PNG picture (*.png)"), ".png"}, {QObject::tr("SVG drawing (*.svg)"), ".svg"}});
  const QString path = dialog.Ask();
  if (path.isEmpty()) return;
  const QString name = dialog.WithEnding(path);
  const QString problem = WritePicture(window.View(), name);
  if (problem.isEmpty()) return;
  Complain(window, QObject::tr("%1\nThe picture cannot be written: %2").arg(name, problem));
}

}  // namespace qmx
