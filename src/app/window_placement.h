#pragma once

#include <QRect>
#include <QWidget>
#include <vector>

namespace qmx {

/// Moves a window that is shown for the first time: to the right of the main window if there is
/// room, else as far to the right as the screen allows, not over the task area unless the screen
/// has no other place; and a step away from every window that is there already. It may be made
/// narrower to fit.
void PlaceBeside(const QRect& mainFrame, const QRect& taskArea, const std::vector<QWidget*>& others,
                 QWidget& window);

}  // namespace qmx
