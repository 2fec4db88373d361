// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QRect>

namespace qmx {

// Where several windows go on a screen. All rectangles are those of the windows with their frames.

/// Divides an area among a number of windows, in rows of as equal a length as can be. Of the ways
/// to do so the one is taken whose windows are closest to the shape of a sheet that lies on its
/// side.
QList<QRect> Tiles(const QRect& area, int count);

/// Windows of these sizes one upon the other, each a step to the right and down from the one before
/// so that all titles are seen. What does not fit into the area is made smaller; where the steps
/// reach its end they begin anew, further to the right.
QList<QRect> Cascade(const QRect& area, const QList<QSize>& sizes, int step);

/// The rectangle that is as close to a wanted one as the screens allow: on the screen that has most
/// of it, or the nearest one, no larger than that, and with no part outside.
QRect OntoScreen(const QRect& wanted, const QList<QRect>& screens);

}  // namespace qmx
