// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>

namespace qmx {

/// An icon of the program by its name: a drawing of lines in the colour that the palette has for
/// the text of buttons, enabled or disabled, light or dark.
QIcon DrawnIcon(const char* name);

}  // namespace qmx
