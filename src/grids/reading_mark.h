// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <functional>

namespace qmx {

/// What a field's text will be read as, where that is not what stands there; else empty.
using Reading = std::function<QString(const QString& text)>;

/// Marks a field at once while its text is not read as it stands: a jagged line below the text, and
/// while the keyboard is in the field a note beside it. Screen readers are told, too. The field's
/// text and its tool tip stay as they are.
void MarkReading(QLineEdit& field, const Reading& reading);

/// The mark of one field, which lies over it and takes no clicks.
class ReadingMark : public QWidget {
  Q_OBJECT

 public:
  ReadingMark(QLineEdit* field, Reading reading);
  ~ReadingMark() override;

  /// What is told of the field's text now.
  const QString& Note() const { return note_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  void Check();
  void ShowNote();
  void HideNote();

  QLineEdit* field_;
  Reading reading_;
  QString seen_;  ///< The text that the note is about.
  QString note_;
  QPointer<QLabel> label_;  ///< Shows the note.
};

}  // namespace qmx
