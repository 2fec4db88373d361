// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>
#include <QWidget>

#include "grids/picture_view.h"
#include "workspace/slot_table.h"

namespace qmx {

/// The window that shows a matrix as a picture: a square for each element, or the eigenvalues on
/// the real line. It tells what is at the current element, and copies and saves the picture.
class PictureWindow : public QWidget {
  Q_OBJECT

 public:
  PictureWindow(qmx::Slot slot, PictureView::Source matrix);

  PictureView& View() { return *view_; }
  /// The matrix that it shows.
  qmx::Slot Slot() const { return slot_; }

 Q_SIGNALS:
  /// The picture is to be saved to a file that the user names.
  void SaveRequested();

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  void Tell(const QString& text);
  void Copy();

  qmx::Slot slot_;
  PictureView* view_;
  QLabel* told_;
};

/// The picture as an image, and as a drawing in SVG, both as large as the view.
QImage PictureImage(const PictureView& view);
QByteArray PictureDrawing(const PictureView& view);

}  // namespace qmx
