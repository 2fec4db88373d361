// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractScrollArea>
#include <memory>
#include <optional>

#include "grids/document_layout.h"

namespace qmx {

/// Shows a document: scrolled by keys and wheel, set anew for its width, its font and its palette.
/// Words, numbers and matrices can be selected by the mouse, or by the arrow keys with Shift.
/// Ctrl+Down and Ctrl+Up go from heading to heading. Screen readers meet the document as it is
/// read aloud, a line for each block; their caret is at the block that is on top, and goes on to
/// the last one where nothing is left to scroll.
class DocumentView : public QAbstractScrollArea {
  Q_OBJECT

 public:
  explicit DocumentView(QWidget* parent);

  /// Shows a document from its beginning; null for none.
  void Show(std::shared_ptr<const Document> document);
  const std::shared_ptr<const Document>& Shown() const { return document_; }
  /// The place stays where it is in the document.
  void SetForm(NumberForm form);
  NumberForm Form() const { return form_; }

  bool HasSelection() const { return anchor_ >= 0; }
  void SelectAll();
  void EndSelection();
  /// What is selected as a document of its own; all of it where nothing is.
  Document Selected() const;

  int CurrentBlock() const { return block_; }
  /// How the blocks are read aloud, one by one.
  const std::vector<QString>& Spoken() const;
  int BlockCount() const { return static_cast<int>(layout_.Blocks().size()); }
  /// Where a block is, in the coordinates of the viewport.
  QRect BlockRect(int block) const;
  int BlockNear(QPoint point) const;
  void GoToBlock(int block);

  QSize sizeHint() const override;

 Q_SIGNALS:
  /// The keys for copying, and the one or the click that asks for a menu.
  void CopyRequested();
  void MenuRequested(const QPoint& where);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;
  void focusInEvent(QFocusEvent* event) override;

 private:
  /// Sets the document anew. The block on top stays there.
  void SetAnew();
  /// What screen readers have been told of; nothing where none is there.
  QString HeardText() const;
  void TellChange(const QString& before);
  void UpdateBars();
  qreal Margin() const;
  QPointF Offset() const;
  std::optional<PieceRange> Selection() const;
  void Select(int from, int to);
  bool SelectByKey(const QKeyEvent& event);
  int PieceOnNextLine(int piece, bool down) const;
  void MoveCaret(int block);
  bool ScrollByKey(const QKeyEvent& event);
  void ScrollDown(int distance);
  void GoToHeading(bool next);
  void EnsureVisible(int piece);

  std::shared_ptr<const Document> document_;
  NumberForm form_ = NumberForm::kFractions;
  Typesetter setter_;
  DocumentLayout layout_;
  int anchor_ = -1;  ///< Of the selection, from here to `caret_`.
  int caret_ = -1;
  int pressed_ = -1;  ///< The piece that the mouse was pressed at.
  int block_ = 0;
  mutable std::vector<QString> spoken_;  ///< Once somebody has listened.
};

}  // namespace qmx
