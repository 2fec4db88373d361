// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QWidget>
#include <functional>
#include <memory>

#include "grids/picture.h"

namespace qmx {

/// Shows the picture of a matrix. The pointer is told what lies below it; a click, or Enter,
/// chooses an element, and arrows, Home, End, Page Up and Page Down go from one to the next.
class PictureView : public QWidget {
  Q_OBJECT

 public:
  /// Where the matrix is to be found, and how it is drawn.
  using Source = std::function<const Matrix&()>;
  using Maker = std::unique_ptr<Picture> (*)(const Matrix& matrix, const PictureStyle& style);

  PictureView(Source source, Maker maker, QWidget* parent);

  /// The matrix may have changed.
  void Refresh();
  /// What is seen at the current element.
  QString CurrentText() const;
  /// Draws the picture in another size, on a ground of its own.
  void Draw(QPainter& painter, const QSize& size) const;

  QSize sizeHint() const override { return {420, 360}; }

 Q_SIGNALS:
  void CurrentChanged(const QString& text);
  void Chosen(int row, int col);

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  bool IsEmpty() const { return source_().Size() == 0; }
  void GoTo(const GridCell& element);

  Source source_;
  Maker maker_;
  std::unique_ptr<Picture> picture_;
  GridCell current_{1, 1};
};

}  // namespace qmx
