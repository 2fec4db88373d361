// SPDX-License-Identifier: MIT
#pragma once

#include <QPalette>

namespace qmx {

/// The contrast of two colours: from 1, where they are alike, to 21 for black on white (as the Web
/// Content Accessibility Guidelines define it).
double Contrast(const QColor& one, const QColor& other);

/// The colour of a text that steps back behind others and can still be read: a mixture of text and
/// window with a contrast of at least 4.5.
QColor MutedText(const QPalette& palette);

}  // namespace qmx
