// SPDX-License-Identifier: MIT
#pragma once

#include <QPageLayout>
#include <QPagedPaintDevice>

#include "base/function_ref.h"
#include "output/printed_table.h"

namespace qmx {

/// The page of the country, upright, with the margins of a table.
QPageLayout TablePage();

/// The room within the margins of a device.
Paper PaperOf(const QPagedPaintDevice& device);

/// Paints pages of a table, which is laid out for the paper of the device; false where the device
/// fails. `goesOn` is asked before each page, which is not painted any more where it says false.
bool PaintTable(QPagedPaintDevice& device, const PrintedTable& table, int firstPage, int lastPage,
                FunctionRef<bool(int page)> goesOn);

}  // namespace qmx
