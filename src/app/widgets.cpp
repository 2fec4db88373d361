// SPDX-License-Identifier: MIT
#include "app/widgets.h"

#include <QCheckBox>
#include <QDragEnterEvent>
#include <QFocusEvent>
#include <QHelpEvent>
#include <QMimeData>
#include <QRadioButton>
#include <QStyleOptionButton>
#include <QStylePainter>
#include <QToolTip>
#include <algorithm>

#include "commands/entry_advice.h"
#include "grids/one_line.h"
#include "grids/qt_text.h"
#include "grids/reading_mark.h"

namespace qmx {
namespace {

constexpr const char* kMeaning = "meaning";

QString NameOf(const Control& control) { return QString::fromStdString(control.ObjectName()); }

const OptionInfo& OptionOf(const Control& control) {
  for (const OptionInfo& info : kOptions) {
    if (info.control == control) return info;
  }
  return kOptions.front();
}

}  // namespace

CommandButton::CommandButton(const Control& control, const QString& caption, QWidget* parent)
    : QPushButton(caption, parent) {
  setObjectName(NameOf(control));
  setAutoDefault(true);  // Enter presses it, as Space does.
  setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void CommandButton::ShowCaption(bool shows) {
  if (showsCaption_ == shows) return;
  showsCaption_ = shows;
  update();
}

QSize CommandButton::CaptionSize() const {
  constexpr int kAcross = 12;
  constexpr int kDown = 9;
  const QFontMetrics metrics = fontMetrics();
  const int width = metrics.size(Qt::TextShowMnemonic, text()).width() + kAcross;
  const int height = metrics.height() + kDown;
  // What shows its icon or its caption is as high either way.
  return {width, icon().isNull() ? height : std::max(height, SmallestSize().height())};
}

QSize CommandButton::SmallestSize() const {
  if (icon().isNull()) return CaptionSize();
  // Large enough for a finger, in proportion to the font.
  const int height = fontMetrics().height();
  return {2 * height, 2 * height};
}

bool CommandButton::event(QEvent* event) {
  if (event->type() == QEvent::ToolTip && toolTip().isEmpty() && !ShowsCaption()) {
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(), QString(text()).remove('&'),
                       this);
    return true;
  }
  return QPushButton::event(event);
}

void CommandButton::paintEvent(QPaintEvent*) {
  QStylePainter painter(this);
  QStyleOptionButton option;
  initStyleOption(&option);
  if (ShowsCaption()) {
    option.icon = {};
  } else {
    option.text.clear();
    const int side = fontMetrics().height() * 9 / 7;
    option.iconSize = {side, side};
  }
  painter.drawControl(QStyle::CE_PushButton, option);
}

Field::Field(const FieldInfo& info, QWidget* parent) : QLineEdit(parent) {
  setObjectName(NameOf(info.control));
  setText(ToQString(info.start));
  setToolTip(ToQString(info.toolTip));
  setAccessibleName(ToQString(info.meaning));
  TakeOneLine(*this, nullptr, tr("A field holds one line; several were not taken."));
  MarkReading(*this, [kind = info.kind](const QString& text) {
    return QString::fromStdString(FieldNote(kind, text.toStdString()));
  });
}

QSize Field::sizeHint() const {
  constexpr int kDigits = 4;
  return {fontMetrics().horizontalAdvance(QString(kDigits, '0')) + 12,
          QLineEdit::sizeHint().height()};
}

bool Field::event(QEvent* event) {
  if (event->type() == QEvent::ShortcutOverride) {
    const auto* key = static_cast<QKeyEvent*>(event);
    const bool isProgram = (key->matches(QKeySequence::Undo) && !isUndoAvailable()) ||
                           (key->matches(QKeySequence::Redo) && !isRedoAvailable());
    if (isProgram) return false;
  }
  return QLineEdit::event(event);
}

void Field::focusInEvent(QFocusEvent* event) {
  QLineEdit::focusInEvent(event);
  untouched_ = true;
  selectAll();
}

void Field::keyPressEvent(QKeyEvent* event) {
  untouched_ = false;
  QLineEdit::keyPressEvent(event);
}

// A press that keeps the selection must not lose it to the slightest move of the mouse either.
void Field::mousePressEvent(QMouseEvent* event) {
  keepsWhole_ = untouched_ && event->button() == Qt::LeftButton;
  untouched_ = false;
  if (!keepsWhole_) QLineEdit::mousePressEvent(event);
}

void Field::mouseMoveEvent(QMouseEvent* event) {
  if (!keepsWhole_) QLineEdit::mouseMoveEvent(event);
}

void Field::mouseReleaseEvent(QMouseEvent* event) {
  if (!keepsWhole_) QLineEdit::mouseReleaseEvent(event);
  keepsWhole_ = false;
}

// Files are for the window behind the field, which opens them; only text may be dropped into it.
void Field::dragEnterEvent(QDragEnterEvent* event) {
  if (event->mimeData()->hasUrls()) {
    event->ignore();
  } else {
    QLineEdit::dragEnterEvent(event);
  }
}

Field* MakeField(const Control& control, QWidget* parent) {
  return new Field(InfoOf(control), parent);
}

QLabel* MakeCaption(Field* field, const Control& control, const Control& label, QWidget* parent) {
  auto* caption = new QLabel(ToQString(InfoOf(control).caption), parent);
  caption->setTextFormat(Qt::PlainText);
  caption->setObjectName(NameOf(label));
  caption->setBuddy(field);
  caption->setToolTip(field->toolTip());
  return caption;
}

QAbstractButton* MakeOption(const Control& control, QWidget* parent) {
  const OptionInfo& info = OptionOf(control);
  const QString caption = ToQString(info.caption);
  QAbstractButton* button = nullptr;
  if (control.index >= 0) {
    button = new QRadioButton(caption, parent);
  } else {
    button = new QCheckBox(caption, parent);
  }
  button->setObjectName(NameOf(control));
  button->setToolTip(ToQString(info.toolTip));
  button->setChecked(info.selectedAtStart);
  return button;
}

QLabel* MakeLabel(const Control& control, const QString& text, QWidget* parent) {
  auto* label = new QLabel(text, parent);
  label->setObjectName(NameOf(control));
  label->setTextFormat(Qt::PlainText);
  return label;
}

QLabel* MakeResultLabel(const Control& control, const QString& meaning, QWidget* parent) {
  QLabel* label = MakeLabel(control, {}, parent);
  label->setProperty(kMeaning, meaning);
  SetLabelText(label, {});
  return label;
}

QLabel* MakeStaleMark(const Control& control, QWidget* parent) {
  QLabel* mark = MakeLabel(control, QString(QChar(0x21bb)), parent);
  QSizePolicy keepsRoom = mark->sizePolicy();
  keepsRoom.setRetainSizeWhenHidden(true);
  mark->setSizePolicy(keepsRoom);
  mark->hide();
  return mark;
}

void ShowStale(QLabel* mark, const QString& why) {
  mark->setToolTip(why);
  mark->setAccessibleName(why);
  mark->setAccessibleDescription(why);
  mark->setVisible(!why.isEmpty());
}

void SetLabelText(QLabel* label, const QString& text) {
  label->setText(text);
  const QString meaning = label->property(kMeaning).toString();
  if (meaning.isEmpty()) return;
  label->setAccessibleName(text.isEmpty() ? meaning : meaning + ": " + text.trimmed());
}

}  // namespace qmx
