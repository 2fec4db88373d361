// SPDX-License-Identifier: MIT
#pragma once

#include <QPointer>
#include <array>
#include <functional>

#include "grids/grid_window.h"
#include "grids/picture_window.h"
#include "workspace/workspace.h"

namespace qmx {

/// The pictures of the matrices: each is opened from the window of its matrix, follows what the
/// Workspace holds, and closes with that window.
class Pictures {
 public:
  /// Gives a new window of a slot its place on the screen.
  using Place = std::function<void(QWidget& window, Slot slot)>;

  Pictures(const Workspace& workspace, Place place);
  Pictures(const Pictures&) = delete;
  Pictures& operator=(const Pictures&) = delete;
  ~Pictures() { CloseAll(); }

  /// Adds what opens the picture to a matrix's window: `mnuPicture`, its key, and `cmdPicture`.
  void Attach(GridWindow& window);
  /// Something may have changed in the Workspace.
  void Refresh();
  void CloseAll();
  /// The picture of a slot; null while there is none.
  PictureWindow* Window(Slot slot) const { return windows_[slot].data(); }

 private:
  void Show(GridWindow& matrix);
  PictureWindow* Make(GridWindow& matrix);
  /// True if the picture of a slot showed already what the slot holds; from now on it does.
  bool WasDrawn(Slot slot);

  const Workspace& workspace_;
  Place place_;
  std::array<QPointer<PictureWindow>, kSlotCount> windows_;
  /// The results that the open pictures show.
  std::array<Matrix, kSlotCount> drawn_;
};

/// Asks for a file and saves the picture there, as PNG or SVG by the ending. A file that cannot be
/// written is told in a box.
void SavePicture(PictureWindow& window);

/// Writes the picture into a file, as SVG where its name ends so, else as PNG. Returns what went
/// wrong; empty where nothing did.
QString WritePicture(const PictureView& view, const QString& name);

}  // namespace qmx
