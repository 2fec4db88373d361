// SPDX-License-Identifier: MIT
#pragma once

#include "app/frm_qmx.h"
#include "grids/zoom.h"

namespace qmx {

/// Brings back the size of texts that the user chose last, keeps it from now on, and adds its
/// entries to the menu of the windows.
void AddZoomMenu(frmQMX& window, Zoom& zoom);

}  // namespace qmx
