// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>
#include <QWidget>
#include <optional>
#include <vector>

namespace qmx {

/// What a window finds on the screen that is shown for the first time. Rectangles are those of
/// windows with their frames.
struct Surroundings {
  QRect main;                  ///< The main window, which comes to the front after every task,
  QRect taskArea;              ///< and the part of it that is needed next.
  std::vector<QRect> others;   ///< The topmost ones last.
  std::optional<QRect> owner;  ///< The window that the new one belongs to.
};

/// Moves a window that is shown for the first time: to where it covers no other one, right of the
/// main window or below it; it may be made narrower for that, but not narrower than told. If there
/// is no such room: close to the window that it belongs to, where it covers as little as can be of
/// other windows, their titles least of all, and where the main window leaves a part of it in
/// sight.
void PlaceBeside(const Surroundings& around, QWidget& window, int narrowest);

}  // namespace qmx
