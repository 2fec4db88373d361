// SPDX-License-Identifier: MIT
#pragma once

namespace qmx {

/// Mends what the toolkit makes of the dark colours of Windows: boxes and rounds are filled only
/// where they are set, as in the light, and links can be read on what they stand on. Changes
/// nothing where that is so already, so it can be done again.
void MendSystemPalette();

}  // namespace qmx
