// SPDX-License-Identifier: MIT
#include "grids/dropped_file.h"

#include <QMimeData>
#include <QUrl>

namespace qmx {

QString DroppedFile(const QDropEvent& drop) {
  const QList<QUrl> urls = drop.mimeData()->urls();
  return !urls.isEmpty() && urls.front().isLocalFile() ? urls.front().toLocalFile() : QString();
}

}  // namespace qmx
