// SPDX-License-Identifier: MIT
#pragma once

#include <QFileDialog>
#include <QString>
#include <string>

class QAbstractItemView;
class QLineEdit;
class QPushButton;

namespace qmx {

/// Asks whether a file may be replaced. True where there is none of this name, which is in the
/// system's bytes, or the user agrees.
bool MayReplaceFile(const std::string& name, QWidget* parent);

/// A kind of file that can be saved, as the user reads it, and its ending.
struct FileKind {
  QString text;
  QString ending;
};

/// The dialog for a file to be opened or saved. What is typed is the file's name as it is, whatever
/// characters it holds: the toolkit's own dialog takes double quotes for marks around one name of
/// several. A name that does not begin at the root lies in the folder on show; a leading "~" stands
/// for a home folder unless there is a file of that name. A folder is entered. On Windows the
/// system's own dialog stands in its place.
class FileDialog : public QFileDialog {
  Q_OBJECT

 public:
  /// `ending`, if any, is what the caller appends to a name that has not got it: a file to be
  /// opened may be named without it, and the question before a file is replaced goes by the name
  /// that will be written.
  FileDialog(AcceptMode mode, const QString& ending, QWidget* parent);

  /// Offers several kinds of files in place of one: the first unless the user chooses another.
  void OfferKinds(const QList<FileKind>& kinds);
  /// Proposes a file, given by its whole name.
  void Propose(const QString& path);
  /// The path of the file that was chosen or typed. Empty when the user cancels.
  QString Ask();
  /// A path with the ending that the caller appends, unless it has that of a kind already.
  QString WithEnding(const QString& path) const;

 protected:
  void accept() override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QString AskSystem();
  void KeepButtonOn();
  void NoteName(const QString& name);
  void NoteSelection();
  QString TypedPath() const;
  bool MayBeTaken(const QString& path);

  QString ending_;
  QStringList endings_;  ///< Of all kinds.
  QLineEdit* name_;
  QAbstractItemView* list_;
  QPushButton* button_ = nullptr;
  QString typed_;   ///< What is just being typed; null otherwise.
  QString chosen_;  ///< The path chosen in the list, unless another name was typed since.
  QString path_;
};

}  // namespace qmx
