// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QPalette>

namespace qmx {

/// The colour of a text that steps back behind others and can still be read: a mixture of text and
/// window with a contrast of at least 4.5.
QColor MutedText(const QPalette& palette);

}  // namespace qmx
