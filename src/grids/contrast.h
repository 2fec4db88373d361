// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>

namespace qmx {

/// The contrast of two colours: the ratio of their luminances, each brighter by what a lit room
/// adds to a screen. From 1, where they are alike, to 21 for black on white. Most people read a
/// text with 4.5, and see a shape with 3.
double Contrast(const QColor& one, const QColor& other);

/// A colour with a share, 0 to 1, of another one, as the screen has it: its contrast is that of
/// whole numbers.
QColor Mixed(const QColor& plain, const QColor& other, double share);

}  // namespace qmx
