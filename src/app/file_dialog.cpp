// SPDX-License-Identifier: MIT
#include "app/file_dialog.h"

#include <QAbstractItemView>
#include <QDialogButtonBox>
#include <QEvent>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QGuiApplication>
#include <QLineEdit>
#include <QPushButton>
#include <algorithm>
#include <filesystem>

#include "app/plain_box.h"
#include "base/file_path.h"
#include "desktop/home_folder.h"
#include "grids/qt_text.h"

namespace qmx {
namespace {

bool IsAbsolute(const QString& name) { return PathOf(name.toStdString()).is_absolute(); }

/// What a name that begins with "~" stands for; empty where there is no such user.
QString WithHomeFolder(const QString& name) {
  const qsizetype slash = name.indexOf('/');
  const qsizetype end = slash < 0 ? name.size() : slash;
  const QString user = name.mid(1, end - 1);
  const QString home =
      user.isEmpty() ? QDir::homePath() : ToQString(HomeFolderOf(user.toStdString()));
  return home.isEmpty() ? QString() : home + name.mid(end);
}

}  // namespace

bool MayReplaceFile(const std::string& name, QWidget* parent) {
  std::error_code unknown;
  const auto status = std::filesystem::status(PathOf(name), unknown);
  if (!std::filesystem::exists(status) || std::filesystem::is_directory(status)) return true;
  const QString shown = QFileInfo(ToQString(name)).fileName();
  const QString question = QObject::tr("%1 already exists. Replace it?").arg(shown);
  return ShowBox(QMessageBox::Warning, question, QMessageBox::Yes | QMessageBox::No, parent) ==
         QMessageBox::Yes;
}

FileDialog::FileDialog(AcceptMode mode, const QString& ending, QWidget* parent)
    : QFileDialog(parent), ending_(ending), endings_(ending) {
  // Only the toolkit's own dialog lets the name be read as it was typed. A file to be opened may
  // lack its ending, so that it need not exist.
  setOption(DontUseNativeDialog);
  setFileMode(AnyFile);
  setAcceptMode(mode);
  name_ = findChild<QLineEdit*>("fileNameEdit");
  list_ = findChild<QAbstractItemView*>("listView");
  button_ = findChild<QDialogButtonBox*>("buttonBox")
                ->button(mode == AcceptOpen ? QDialogButtonBox::Open : QDialogButtonBox::Save);
  button_->installEventFilter(this);
  connect(name_, &QLineEdit::textEdited, this, [this](const QString& text) {
    typed_ = text;
    chosen_.clear();
  });
  connect(name_, &QLineEdit::textChanged, this, &FileDialog::NoteName);
  connect(list_->selectionModel(), &QItemSelectionModel::selectionChanged, this,
          &FileDialog::NoteSelection);
}

void FileDialog::OfferKinds(const QList<FileKind>& kinds) {
  QStringList texts;
  endings_.clear();
  for (const FileKind& kind : kinds) {
    texts << kind.text;
    endings_ << kind.ending;
  }
  ending_ = endings_.front();
  setNameFilters(texts);
  connect(this, &QFileDialog::filterSelected, this, [this, texts](const QString& chosen) {
    ending_ = endings_.value(texts.indexOf(chosen), ending_);
  });
}

void FileDialog::Propose(const QString& path) {
  const QFileInfo file(path);
  if (path.isEmpty() || !file.dir().exists()) return;
  setDirectory(file.absolutePath());
  name_->setText(file.fileName());
  name_->selectAll();
}

QString FileDialog::Ask() {
  if (QGuiApplication::platformName() == "windows") return AskSystem();
  return exec() == Accepted ? path_ : QString();
}

// The system's dialog reads a name as this one does, since no name there holds a quote; it looks
// for the file, and asks before one is replaced.
QString FileDialog::AskSystem() {
  QFileDialog dialog(parentWidget(), windowTitle());
  dialog.setAcceptMode(acceptMode());
  dialog.setFileMode(acceptMode() == AcceptOpen ? ExistingFile : AnyFile);
  dialog.setDirectory(directory());
  if (!name_->text().isEmpty()) dialog.selectFile(name_->text());
  const auto follow = [&dialog](const QString& ending) {
    dialog.setDefaultSuffix(ending.startsWith('.') ? ending.mid(1) : ending);
  };
  follow(ending_);
  if (endings_.size() > 1) {
    const QStringList kinds = nameFilters();
    dialog.setNameFilters(kinds);
    connect(&dialog, &QFileDialog::filterSelected, this, [&](const QString& chosen) {
      ending_ = endings_.value(kinds.indexOf(chosen), ending_);
      follow(ending_);
    });
  }
  while (dialog.exec() == Accepted) {
    QString path = dialog.selectedFiles().value(0);
    // The system has asked about the name that was chosen, but not about the one with the ending.
    if (acceptMode() == AcceptOpen || WithEnding(path) == path || MayBeTaken(path)) return path;
  }
  return {};
}

void FileDialog::accept() {
  if (name_->text().isEmpty() && chosen_.isEmpty()) return;
  const QString path = chosen_.isEmpty() ? TypedPath() : chosen_;
  if (QFileInfo(path).isDir()) {
    setDirectory(path);
    name_->clear();
  } else if (MayBeTaken(path)) {
    path_ = path;
    done(Accepted);
  }
}

// The button goes by what the toolkit makes of the name: it is off where that finds no name between
// quotes.
bool FileDialog::eventFilter(QObject* watched, QEvent* event) {
  if (watched == button_ && event->type() == QEvent::EnabledChange) KeepButtonOn();
  return QFileDialog::eventFilter(watched, event);
}

void FileDialog::KeepButtonOn() {
  if (!name_->text().isEmpty()) button_->setEnabled(true);
}

// The toolkit has seen the name before: it selects the files that it finds in it, and may write
// their names into the field.
void FileDialog::NoteName(const QString& name) {
  if (name == typed_) {
    const QSignalBlocker quiet(name_);
    if (name_->text() != name) name_->setText(name);
    typed_ = QString();
  }
  if (QFileInfo(chosen_).fileName() != name_->text()) chosen_.clear();
  KeepButtonOn();
}

// The name of a chosen file stands in the field by now, that of a folder never does.
void FileDialog::NoteSelection() {
  if (!typed_.isNull()) return;
  const QModelIndexList rows = list_->selectionModel()->selectedRows();
  chosen_ =
      rows.size() == 1 ? rows.front().data(QFileSystemModel::FilePathRole).toString() : QString();
}

QString FileDialog::TypedPath() const {
  QString name = name_->text();
  if (IsAbsolute(name)) return name;
  const QString folder = directory().absolutePath();
  QString here = folder + (folder.endsWith('/') ? "" : "/") + name;
  if (!name.startsWith('~') || QFileInfo::exists(here)) return here;
  const QString home = WithHomeFolder(name);
  return home.isEmpty() ? here : home;
}

QString FileDialog::WithEnding(const QString& path) const {
  const bool hasOne = std::any_of(endings_.begin(), endings_.end(),
                                  [&path](const QString& one) { return path.endsWith(one); });
  return hasOne ? path : path + ending_;
}

bool FileDialog::MayBeTaken(const QString& path) {
  if (acceptMode() == AcceptSave) return MayReplaceFile(WithEnding(path).toStdString(), this);
  if (QFileInfo::exists(path) || QFileInfo::exists(WithEnding(path))) return true;
  ShowBox(QMessageBox::Warning, tr("%1\nThere is no such file.").arg(name_->text()),
          QMessageBox::Ok, this);
  return false;
}

}  // namespace qmx
