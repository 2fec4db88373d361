// SPDX-License-Identifier: MIT
#pragma once

#include <QRect>
#include <QWidget>
#include <vector>

namespace qmx {

/// Moves a window that is shown for the first time: to where it covers no other one, right of the
/// main window or below it. If there is no such room: as far to the right as the screen allows, not
/// over the task area unless the screen has no other place, and a step away from every window that
/// is there already; it may be made narrower to fit, but not
/// narrower than told.
void PlaceBeside(const QRect& mainFrame, const QRect& taskArea, const std::vector<QWidget*>& others,
                 QWidget& window, int narrowest);

}  // namespace qmx
