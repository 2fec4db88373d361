// SPDX-License-Identifier: MIT
// Matrices and determinants.

#include <QPolygonF>
#include <algorithm>

#include "derivation/document_reading.h"
#include "grids/typesetter.h"

namespace qmx {
namespace {

// In parts of an em.
constexpr qreal kColumnGap = 1.1;
constexpr qreal kRowGap = 0.36;
constexpr qreal kBracket = 0.34;
constexpr qreal kMark = 0.62;
constexpr qreal kUnderline = 0.12;

bool IsBold(CellMark mark) { return mark == CellMark::kFound || mark == CellMark::kAsked; }

}  // namespace

/// A number of a matrix: exact above, decimals below where both are wanted.
Extent Typesetter::SetCell(QPainter* painter, QPointF at, const ShownCell& cell) const {
  if (cell.isBlank) return SetText(nullptr, {}, Face::kText, QString(QChar(0x00b7)));
  const Face face = IsBold(cell.mark) ? Face::kBold : Face::kText;
  const ShownNumber& number = cell.number;
  const ShownForms forms = FormsOf(number, form_);
  if (!forms.exact || !forms.decimal) return SetNumber(painter, at, number, {true, false, face});
  const Face small = face == Face::kBold ? Face::kSmallBold : Face::kSmall;
  const Digits decimal{number.decimal, number.held};
  const Extent upper = SetExact(nullptr, {}, face, number.exact, true);
  const Extent lower = SetDigits(nullptr, {}, small, decimal);
  const qreal width = std::max(upper.width, lower.width);
  const qreal drop = upper.descent + lower.ascent;
  if (painter != nullptr) {
    SetExact(painter, at + QPointF((width - upper.width) / 2, 0), face, number.exact, true);
    SetDigits(painter, at + QPointF((width - lower.width) / 2, drop), small, decimal);
  }
  return {width, upper.ascent, drop + lower.descent};
}

Typesetter::MatrixShape Typesetter::Shape(const ShownMatrix& matrix) const {
  MatrixShape shape;
  shape.columns.assign(matrix.cols, 0);
  shape.rows.assign(matrix.rows, EmptyLine(Face::kText));
  shape.cells.reserve(matrix.cells.size());
  for (int i = 0; i < matrix.rows; ++i) {
    for (int j = 0; j < matrix.cols; ++j) {
      const ShownCell& cell = matrix.At(i + 1, j + 1);
      const Extent extent = SetCell(nullptr, {}, cell);
      shape.cells.push_back(extent);
      shape.columns[j] = std::max(shape.columns[j], extent.width);
      shape.rows[i].ascent = std::max(shape.rows[i].ascent, extent.ascent);
      shape.rows[i].descent = std::max(shape.rows[i].descent, extent.descent);
      if (cell.mark == CellMark::kChanged) shape.margin = em_ * kMark * 1.4;
    }
  }
  shape.bracket = em_ * (matrix.isDeterminant ? kBracket * 0.6 : kBracket);
  qreal height = 0;
  for (const Extent& row : shape.rows) height += row.Height() + em_ * kRowGap;
  // Half a gap stands left and right of each column.
  qreal width = 2 * shape.bracket + shape.margin;
  for (const qreal column : shape.columns) width += column + em_ * kColumnGap;
  shape.above = height / 2 + Axis();
  const qreal air = em_ * 0.15;  // To what stands above and below.
  shape.all = {width + em_ * 0.1, shape.above + air, height - shape.above + air};
  return shape;
}

void Typesetter::DrawGround(QPainter& painter, const QRectF& place, CellMark mark) const {
  if (mark == CellMark::kChanged) painter.fillRect(place, colours_.tint);
  if (mark != CellMark::kPivot) return;
  Pen(painter, colours_.accent, 0.13);
  painter.drawRect(place.adjusted(1, 1, -1, -1));
}

void Typesetter::Underline(QPainter& painter, QPointF at, const Extent& extent) const {
  const qreal air = em_ * kUnderline / 2;
  const qreal thick = std::max(em_ * kUnderline, 1.0);
  painter.fillRect(QRectF(at.x() - air, at.y() + extent.descent, extent.width + 2 * air, thick),
                   colours_.accent);
}

void Typesetter::DrawCells(QPainter& painter, QPointF corner, const ShownMatrix& matrix,
                           const MatrixShape& shape) const {
  const bool isRight = form_ == NumberForm::kDecimals;
  qreal y = corner.y();
  for (int i = 0; i < matrix.rows; ++i) {
    const Extent& row = shape.rows[i];
    const qreal gap = em_ * kRowGap;
    qreal x = corner.x() + shape.bracket;
    for (int j = 0; j < matrix.cols; ++j) {
      const ShownCell& cell = matrix.At(i + 1, j + 1);
      const Extent& extent = shape.cells[static_cast<std::size_t>(i) * matrix.cols + j];
      const qreal column = shape.columns[j] + em_ * kColumnGap;
      DrawGround(painter, {x, y, column, row.Height() + gap}, cell.mark);
      const qreal slack = shape.columns[j] - extent.width;
      const qreal left = x + em_ * kColumnGap / 2 + (isRight ? slack : slack / 2);
      if (cell.isBlank) {
        painter.setFont(Of(Face::kText).font);
        painter.setPen(colours_.muted);
        painter.drawText(QPointF(left, y + gap / 2 + row.ascent), QString(QChar(0x00b7)));
      } else {
        const QPointF at(left, y + gap / 2 + row.ascent);
        SetCell(&painter, at, cell);
        if (cell.mark == CellMark::kAsked) Underline(painter, at, extent);
      }
      x += column;
    }
    y += row.Height() + gap;
  }
}

void Typesetter::DrawBrackets(QPainter& painter, QPointF corner, const ShownMatrix& matrix,
                              const MatrixShape& shape) const {
  Pen(painter, colours_.text, 0.08);
  const qreal top = corner.y();
  const qreal bottom = top + shape.all.Height() - em_ * 0.3;
  const qreal right = corner.x() + shape.all.width - em_ * 0.1 - shape.margin;
  const qreal hook = matrix.isDeterminant ? 0 : em_ * kBracket * 0.75;
  for (const bool isLeft : {true, false}) {
    const qreal x = isLeft ? corner.x() + em_ * 0.06 : right - em_ * 0.06;
    const qreal tip = isLeft ? x + hook : x - hook;
    const QPointF line[] = {{tip, top}, {x, top}, {x, bottom}, {tip, bottom}};
    painter.drawPolyline(line, 4);
  }
}

void Typesetter::DrawBars(QPainter& painter, QPointF corner, const ShownMatrix& matrix,
                          const MatrixShape& shape) const {
  Pen(painter, colours_.text, 0.05);
  const qreal bottom = corner.y() + shape.all.Height() - em_ * 0.3;
  qreal x = corner.x() + shape.bracket;
  for (int j = 1; j <= matrix.cols; ++j) {
    x += shape.columns[j - 1] + em_ * kColumnGap;
    if (std::find(matrix.bars.begin(), matrix.bars.end(), j) != matrix.bars.end())
      painter.drawLine(QPointF(x, corner.y()), QPointF(x, bottom));
  }
}

/// A pointer beside each row that has changed, for those who see no colours.
void Typesetter::DrawMarks(QPainter& painter, QPointF corner, const ShownMatrix& matrix,
                           const MatrixShape& shape) const {
  painter.setPen(Qt::NoPen);
  painter.setBrush(colours_.accent);
  const qreal left = corner.x() + shape.all.width - em_ * 0.1 - shape.margin * 0.85;
  const qreal size = em_ * kMark;
  qreal y = corner.y();
  for (int i = 1; i <= matrix.rows; ++i) {
    const qreal height = shape.rows[i - 1].Height() + em_ * kRowGap;
    const qreal middle = y + height / 2;
    for (int j = 1; j <= matrix.cols; ++j) {
      if (matrix.At(i, j).mark != CellMark::kChanged) continue;
      painter.drawPolygon(QPolygonF(
          {{left, middle}, {left + size, middle - size / 2}, {left + size, middle + size / 2}}));
      break;
    }
    y += height;
  }
  painter.setBrush(Qt::NoBrush);
}

Extent Typesetter::SetMatrix(QPainter* painter, QPointF at, const ShownMatrix& matrix) const {
  const MatrixShape shape = Shape(matrix);
  if (painter != nullptr) {
    const QPointF corner(at.x(), at.y() - shape.above);
    DrawCells(*painter, corner, matrix, shape);
    DrawBrackets(*painter, corner, matrix, shape);
    if (!matrix.bars.empty()) DrawBars(*painter, corner, matrix, shape);
    if (shape.margin > 0) DrawMarks(*painter, corner, matrix, shape);
  }
  return shape.all;
}

}  // namespace qmx
