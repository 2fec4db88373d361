// SPDX-License-Identifier: MIT
#pragma once

#include <QDropEvent>
#include <QString>

namespace qmx {

/// The first of the files that are dragged; empty where there is none of this computer.
QString DroppedFile(const QDropEvent& drop);

}  // namespace qmx
