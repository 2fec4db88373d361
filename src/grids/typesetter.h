// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QFont>
#include <QFontMetricsF>
#include <QPainter>
#include <QPalette>
#include <QString>
#include <array>
#include <string_view>
#include <vector>

#include "derivation/document.h"

namespace qmx {

/// The room that a piece takes: across, and above and below the line that it stands on.
struct Extent {
  qreal width = 0;
  qreal ascent = 0;
  qreal descent = 0;

  qreal Height() const { return ascent + descent; }
};

/// The fonts of a document, made of one.
enum class Face {
  kText,
  kItalic,
  kBold,
  kSmall,  ///< Of fractions, indices and powers.
  kSmallItalic,
  kSmallBold,
  kStep,  ///< The headings, by their levels from the lowest.
  kPart,
  kTitle
};
inline constexpr std::size_t kFaceCount = 9;

/// The colours of a document. A printer has those of paper.
struct PageColours {
  explicit PageColours(const QPalette& palette);
  static PageColours OfPaper();

  QColor ground;
  QColor text;
  QColor muted;  ///< Digits that do not hold.
  /// The frame of a pivot, the marks of what has changed, and the line below what was asked about.
  QColor accent;
  QColor tint;  ///< The ground of elements that have changed.

 private:
  PageColours() = default;
};

/// True where the decimals of a number are its exact value: 0.5 of 1/2. Decimals with an exponent,
/// and more than 18 digits, count as rounded.
bool IsDecimalExact(const ShownNumber& number);

/// How a piece is set.
struct Setting {
  bool isFormula = false;      ///< Fractions are stacked, not written in a row.
  bool inParentheses = false;  ///< A negative number behind a sign.
  Face face = Face::kText;
};

/// Sets the pieces of documents. What sets a piece measures it as well: without a painter nothing
/// is drawn. Both go one way, so that no piece is larger than its room.
class Typesetter {
 public:
  Typesetter(const QFont& font, NumberForm form, const PageColours& colours);

  /// Sets a piece at the left end of the line that it stands on. Words are set as texts.
  Extent Set(QPainter* painter, QPointF at, const Piece& piece, const Setting& setting) const;
  Extent SetText(QPainter* painter, QPointF at, Face face, const QString& text) const;

  /// The width of an M, more or less, by which distances are measured.
  qreal Em() const { return em_; }
  NumberForm Form() const { return form_; }
  const PageColours& Colours() const { return colours_; }
  /// What stands between an operator and an operand.
  qreal Blank() const { return em_ * 0.28; }
  /// The room of an empty line.
  Extent EmptyLine(Face face) const;

 private:
  struct Metrics {
    QFont font;
    QFontMetricsF all;
    std::array<qreal, 128> widths;  ///< Of the characters that numbers are made of.
  };
  /// A matrix that has been measured.
  struct MatrixShape {
    std::vector<qreal> columns;
    std::vector<Extent> rows;
    std::vector<Extent> cells;
    qreal bracket = 0;
    qreal margin = 0;  ///< Right of it, for marks.
    qreal above = 0;   ///< From the line that it stands on up to its upper end.
    Extent all;
  };
  struct Digits {
    std::string_view text;
    std::size_t held;
  };

  const Metrics& Of(Face face) const { return faces_[static_cast<std::size_t>(face)]; }
  qreal Axis() const { return axis_; }
  void Pen(QPainter& painter, const QColor& colour, qreal share) const;

  Extent SetDigits(QPainter* painter, QPointF at, Face face, const Digits& digits) const;
  Extent SetExact(QPainter* painter, QPointF at, Face face, const ExactNumber& number,
                  bool isStacked) const;
  Extent SetRoot(QPainter* painter, QPointF at, Face face, std::string_view factor,
                 std::string_view radicand) const;
  Extent SetFraction(QPainter* painter, QPointF at, Face face, const ExactNumber& number) const;
  Extent SetNumber(QPainter* painter, QPointF at, const ShownNumber& number,
                   const Setting& setting) const;
  Extent SetName(QPainter* painter, QPointF at, const Name& name) const;
  Extent SetOperator(QPainter* painter, QPointF at, std::string_view sign) const;

  Extent SetCell(QPainter* painter, QPointF at, const ShownCell& cell) const;
  MatrixShape Shape(const ShownMatrix& matrix) const;
  Extent SetMatrix(QPainter* painter, QPointF at, const ShownMatrix& matrix) const;
  void DrawCells(QPainter& painter, QPointF corner, const ShownMatrix& matrix,
                 const MatrixShape& shape) const;
  void DrawGround(QPainter& painter, const QRectF& place, CellMark mark) const;
  /// A thick line below a cell that is set at `at`, within the gap to what follows.
  void Underline(QPainter& painter, QPointF at, const Extent& extent) const;
  void DrawBrackets(QPainter& painter, QPointF corner, const ShownMatrix& matrix,
                    const MatrixShape& shape) const;
  void DrawBars(QPainter& painter, QPointF corner, const ShownMatrix& matrix,
                const MatrixShape& shape) const;
  void DrawMarks(QPainter& painter, QPointF corner, const ShownMatrix& matrix,
                 const MatrixShape& shape) const;

  std::vector<Metrics> faces_;
  NumberForm form_;
  PageColours colours_;
  qreal em_ = 0;
  qreal axis_ = 0;
};

}  // namespace qmx
