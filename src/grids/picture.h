// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>
#include <QPainter>
#include <QPalette>
#include <QString>
#include <memory>
#include <optional>

#include "base/matrix.h"
#include "grids/grid_selection.h"

namespace qmx {

/// What a picture is drawn with.
struct PictureStyle {
  QSize size;
  QFont font;
  QPalette palette;

  bool IsDark() const;
};

/// A matrix drawn for one size. Elements are named by their row and column, counted from 1.
class Picture {
 public:
  Picture() = default;
  Picture(const Picture&) = delete;
  Picture& operator=(const Picture&) = delete;
  virtual ~Picture() = default;

  virtual void Paint(QPainter& painter) const = 0;
  /// The element that is seen at a place.
  virtual std::optional<GridCell> ElementAt(const QPointF& place) const = 0;
  /// Where an element is seen.
  virtual QRectF RectOf(const GridCell& element) const = 0;
  /// Where an arrow key, Home, End, Page Up or Page Down leads to from an element.
  virtual GridCell Next(const GridCell& from, int key) const = 0;
  /// What is seen where an element is: "Row 2, column 3: 0.5".
  virtual QString Tell(const GridCell& element) const = 0;
};

/// Squares coloured by their elements, with numbers of rows and columns and a legend. A matrix that
/// is larger than the room for it has squares for several elements, each with the largest of them.
std::unique_ptr<Picture> MatrixPicture(const Matrix& matrix, const PictureStyle& style);

/// The elements of a matrix of one column as points on the real line, equal ones above each other.
std::unique_ptr<Picture> LinePicture(const Matrix& matrix, const PictureStyle& style);

}  // namespace qmx
