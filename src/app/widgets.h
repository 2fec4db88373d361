// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include "workspace/field_table.h"

namespace qmx {

/// A button that is no wider than its caption needs. One that has an icon may show that in place of
/// its caption, which then is its text all the same; where it has no tool tip the caption is shown
/// in the manner of one.
class CommandButton : public QPushButton {
  Q_OBJECT

 public:
  CommandButton(const Control& control, const QString& caption, QWidget* parent);

  void ShowCaption(bool shows);
  bool ShowsCaption() const { return showsCaption_ || icon().isNull(); }
  QSize CaptionSize() const;
  /// The size with the icon, where there is one.
  QSize SmallestSize() const;
  QSize sizeHint() const override { return ShowsCaption() ? CaptionSize() : SmallestSize(); }
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  bool showsCaption_ = true;
};

/// A text field whose whole text is selected when it receives the focus, so that typing replaces
/// it. The first click into it keeps that selection; the next one places the caret. Where it has
/// nothing to undo or redo, these keys are the program's.
class Field : public QLineEdit {
  Q_OBJECT

 public:
  Field(const FieldInfo& info, QWidget* parent);
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  bool event(QEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void dragEnterEvent(QDragEnterEvent* event) override;

 private:
  bool untouched_ = false;   ///< Nothing was typed or clicked since the focus came.
  bool keepsWhole_ = false;  ///< The press that is under way keeps the whole text selected.
};

/// A field of the table with its name, tool tip and, for people who hear it, its meaning.
Field* MakeField(const Control& control, QWidget* parent);

/// The caption that stands beside a field.
QLabel* MakeCaption(Field* field, const Control& control, const Control& label, QWidget* parent);

/// An option of the table as radio button or check box, selected if it is at the start.
QAbstractButton* MakeOption(const Control& control, QWidget* parent);

/// A label with a name and a text that is shown as it is.
QLabel* MakeLabel(const Control& control, const QString& text, QWidget* parent);

/// A label whose text is a result. It is announced by what the result means and the result itself.
QLabel* MakeResultLabel(const Control& control, const QString& meaning, QWidget* parent);
/// A mark that stays hidden, and keeps its room, until ShowStale has something to tell.
QLabel* MakeStaleMark(const Control& control, QWidget* parent);
/// Shows the mark with the reason, or hides it where there is none.
void ShowStale(QLabel* mark, const QString& why);
/// Sets the text of a label and, if it is one for a result, how it is announced.
void SetLabelText(QLabel* label, const QString& text);

}  // namespace qmx
