// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>

namespace qmx {

/// The contrast of two colours: from 1, where they are alike, to 21 for black on white (as the Web
/// Content Accessibility Guidelines define it).
double Contrast(const QColor& one, const QColor& other);

/// A colour with a share, 0 to 1, of another one, as the screen has it: its contrast is that of
/// whole numbers.
QColor Mixed(const QColor& plain, const QColor& other, double share);

}  // namespace qmx
