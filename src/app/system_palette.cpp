// SPDX-License-Identifier: MIT
#include "app/system_palette.h"

#include <QApplication>
#include <QPalette>

#include "grids/contrast.h"

namespace qmx {
namespace {

constexpr double kReadable = 4.5;
constexpr int kSteps = 10;

/// A colour, or what comes nearest to it among those that can be read on another one.
QColor Readable(const QColor& colour, const QColor& ground) {
  const QColor away =
      Contrast(Qt::white, ground) > Contrast(Qt::black, ground) ? Qt::white : Qt::black;
  for (int step = 0; step < kSteps; ++step) {
    const QColor mixed = Mixed(colour, away, static_cast<double>(step) / kSteps);
    if (Contrast(mixed, ground) >= kReadable) return mixed;
  }
  return away;
}

}  // namespace

void MendSystemPalette() {
  QPalette palette = QApplication::palette();
  const QColor link = Readable(palette.color(QPalette::Link), palette.color(QPalette::Base));
  if (link != palette.color(QPalette::Link)) {
    // The palette knows that only this one was set, so that all others go on following the system.
    palette.setColor(QPalette::Link, link);
    QApplication::setPalette(palette);
    palette = QApplication::palette();
  }
  for (const char* kind : {"QCheckBox", "QRadioButton"}) {
    if (QApplication::palette(kind).color(QPalette::Base) != palette.color(QPalette::Base))
      QApplication::setPalette(palette, kind);
  }
}

}  // namespace qmx
