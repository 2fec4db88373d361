// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QPainter>
#include <QSize>
#include <QString>

#include "base/function_ref.h"

namespace qmx {

/// A drawing as SVG 1.1: rectangles, paths, texts and images as they are painted, in the colours
/// and the font of the painter. Meant for plain drawings: colours are whole (no gradients), and
/// nothing is clipped.
///
/// @param size   What the drawing takes, in the painter's units (pixels of a screen at 96 to the
/// inch).
/// @param title  What the drawing is called.
/// @param paint  Paints it; called once.
QByteArray DrawSvg(const QSize& size, const QString& title, FunctionRef<void(QPainter&)> paint);

}  // namespace qmx
