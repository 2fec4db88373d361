// SPDX-License-Identifier: MIT
#pragma once

#include <QPageLayout>
#include <QPagedPaintDevice>

#include "output/printed_table.h"

namespace qmx {

/// The page of the country, upright, with the margins of a table.
QPageLayout TablePage();

/// The room within the margins of a device.
Paper PaperOf(const QPagedPaintDevice& device);

/// Paints pages of a table, which is laid out for the paper of the device; false where the device
/// fails.
bool PaintTable(QPagedPaintDevice& device, const PrintedTable& table, int firstPage, int lastPage);

}  // namespace qmx
