// SPDX-License-Identifier: MIT
// The dialog for files, worked by keys and clicks in folders of the operating system.

#include "app/file_dialog.h"

#include <QAbstractItemView>
#include <QClipboard>
#include <QDialogButtonBox>
#include <QFile>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include "support/desktop_bench.h"

namespace qmx::test {
namespace {

/// Names that a dialog may be tempted to understand.
const std::vector<QString> kOddNames{"5\" pipe",
                                     "\"quoted\"",
                                     "\"",
                                     "a\"\"b",
                                     "one\" \"two",
                                     " blank before",
                                     "blank after ",
                                     "a  b",
                                     "back\\slash",
                                     "\\begin",
                                     "\\\\host",
                                     "line\nbreak",
                                     "$HOME",
                                     "%41",
                                     ":colon",
                                     "a:b",
                                     "*?[x]",
                                     "<b>bold",
                                     "\u00FC\u4E2D\u05D0",
                                     "\U0001F600",
                                     "-dash",
                                     "#hash",
                                     "'single'",
                                     "~nobody-of-this-name"};

class FileDialogTest : public Desktop {
 public:
  FileDialogTest() : start_(QDir::currentPath()) {
    Make("sub/inner.qmx");
    Make("base.qmx");
    QDir::setCurrent(folder.path());
  }
  ~FileDialogTest() override { QDir::setCurrent(start_); }

  QTemporaryDir folder;
  QStringList boxes;  ///< The texts of the boxes that came up over the dialog.
  QMessageBox::StandardButton answer = QMessageBox::Yes;

  QString Path(const QString& name) const { return folder.path() + "/" + name; }
  std::string Whole(const QString& name) const { return Path(name).toStdString(); }
  void Make(const QString& name) {
    QDir(folder.path()).mkpath(QFileInfo(Path(name)).path());
    QFile file(Path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
  }

  /// Asks for a name in the folder; `work` is done while the dialog is up, which is cancelled at
  /// its end.
  std::string Ask(QFileDialog::AcceptMode mode, const QString& ending,
                  const std::function<void(FileDialog&)>& work) {
    boxes.clear();
    FileDialog dialog(mode, ending, &Main());
    dialog.setDirectory(folder.path());
    QTimer answers;
    QObject::connect(&answers, &QTimer::timeout, [this] {
      auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
      if (box == nullptr) return;
      boxes << box->text();
      box->button(box->standardButtons() == QMessageBox::Ok ? QMessageBox::Ok : answer)->click();
    });
    answers.start(5);
    QTimer::singleShot(0, &dialog, [&] {
      EXPECT_TRUE(QTest::qWaitForWindowActive(&dialog));
      work(dialog);
      if (dialog.isVisible()) dialog.reject();
    });
    return dialog.Ask().toStdString();
  }
  /// The same, typing a name and pressing Enter.
  std::string Type(QFileDialog::AcceptMode mode, const QString& ending, const QString& name) {
    return Ask(mode, ending, [&](FileDialog& dialog) { TypeAndEnter(dialog, name); });
  }
  static QLineEdit& NameOf(FileDialog& dialog) {
    return *dialog.findChild<QLineEdit*>("fileNameEdit");
  }
  static void TypeName(FileDialog& dialog, const QString& name) {
    QLineEdit& field = NameOf(dialog);
    field.setFocus();
    field.selectAll();
    // No key types a line break or a character beyond the keyboard: they are pasted.
    QGuiApplication::clipboard()->setText(name);
    QTest::keyClick(&field, Qt::Key_V, Qt::ControlModifier);
  }
  static void TypeAndEnter(FileDialog& dialog, const QString& name) {
    TypeName(dialog, name);
    QTest::keyClick(&NameOf(dialog), Qt::Key_Return);
  }
  static QPushButton& Button(FileDialog& dialog) {
    const bool saves = dialog.acceptMode() == QFileDialog::AcceptSave;
    return *dialog.findChild<QDialogButtonBox*>("buttonBox")
                ->button(saves ? QDialogButtonBox::Save : QDialogButtonBox::Open);
  }
  /// Clicks an entry of the list in either of its views.
  static void SelectInList(FileDialog& dialog, const QString& name,
                           QFileDialog::ViewMode view = QFileDialog::List) {
    dialog.setViewMode(view);
    auto* list =
        dialog.findChild<QAbstractItemView*>(view == QFileDialog::List ? "listView" : "treeView");
    const auto find = [&] {
      const QModelIndex root = list->rootIndex();
      for (int row = 0; row < list->model()->rowCount(root); ++row) {
        const QModelIndex entry = list->model()->index(row, 0, root);
        if (entry.data().toString() == name) return entry;
      }
      return QModelIndex();
    };
    ASSERT_TRUE(QTest::qWaitFor([&] { return find().isValid(); })) << name.toStdString();
    list->scrollTo(find());
    QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualRect(find()).center());
  }

 private:
  QString start_;
};

TEST_F(FileDialogTest, ATypedNameIsTheFilesNameAsItIs) {
  for (const QString& name : kOddNames) {
    EXPECT_EQ(Type(QFileDialog::AcceptSave, {}, name), Whole(name)) << name.toStdString();
    EXPECT_TRUE(boxes.isEmpty()) << name.toStdString();
    Make(name);
    EXPECT_EQ(Type(QFileDialog::AcceptOpen, {}, name), Whole(name)) << name.toStdString();
    EXPECT_TRUE(boxes.isEmpty()) << name.toStdString();
  }
}

TEST_F(FileDialogTest, TheButtonTakesAnyNameToo) {
  for (const QString& name : kOddNames) {
    const std::string taken = Ask(QFileDialog::AcceptSave, {}, [&](FileDialog& dialog) {
      TypeName(dialog, name);
      QTest::mouseClick(&Button(dialog), Qt::LeftButton);
    });
    EXPECT_EQ(taken, Whole(name)) << name.toStdString();
  }
}

TEST_F(FileDialogTest, KeysTypeAName) {
  const std::string taken = Ask(QFileDialog::AcceptSave, {}, [](FileDialog& dialog) {
    QTest::keyClicks(&NameOf(dialog), "5\" pipe \\ x");
    QTest::keyClick(&NameOf(dialog), Qt::Key_Return);
  });
  EXPECT_EQ(taken, Whole("5\" pipe \\ x"));
}

TEST_F(FileDialogTest, AChosenEntryIsTakenWhateverItsName) {
  for (const QString& name : kOddNames) {
    Make(name);
    for (const QFileDialog::ViewMode view : {QFileDialog::List, QFileDialog::Detail}) {
      const std::string taken = Ask(QFileDialog::AcceptOpen, {}, [&](FileDialog& dialog) {
        SelectInList(dialog, name, view);
        QTest::mouseClick(&Button(dialog), Qt::LeftButton);
      });
      EXPECT_EQ(taken, Whole(name)) << name.toStdString();
      EXPECT_TRUE(boxes.isEmpty());
    }
  }
}

TEST_F(FileDialogTest, WhatIsTypedAfterAChoiceCounts) {
  Make("x");
  const std::string taken = Ask(QFileDialog::AcceptOpen, {}, [&](FileDialog& dialog) {
    SelectInList(dialog, "sub");
    TypeAndEnter(dialog, "x");
  });
  EXPECT_EQ(taken, Whole("x"));
}

TEST_F(FileDialogTest, NamesLieInTheFolderOnShow) {
  EXPECT_EQ(Type(QFileDialog::AcceptSave, {}, "sub/new"), Whole("sub/new"));
  EXPECT_EQ(Type(QFileDialog::AcceptSave, {}, "/tmp/x y"), "/tmp/x y");
  EXPECT_EQ(Type(QFileDialog::AcceptSave, {}, "~/new"), QDir::homePath().toStdString() + "/new");
  EXPECT_EQ(Type(QFileDialog::AcceptSave, {}, "~root/new"), "/root/new");
  Make("~");
  EXPECT_EQ(Type(QFileDialog::AcceptOpen, {}, "~"), Whole("~")) << "there is such a file";
}

TEST_F(FileDialogTest, FoldersAreEntered) {
  for (const bool typed : {true, false}) {
    const std::string taken = Ask(QFileDialog::AcceptOpen, {}, [&](FileDialog& dialog) {
      if (typed) {
        TypeAndEnter(dialog, "sub");
      } else {
        SelectInList(dialog, "sub");
        QTest::mouseClick(&Button(dialog), Qt::LeftButton);
      }
      EXPECT_TRUE(dialog.isVisible());
      EXPECT_EQ(dialog.directory().path(), Path("sub"));
      EXPECT_EQ(NameOf(dialog).text(), "");
      TypeAndEnter(dialog, "..");
      EXPECT_EQ(dialog.directory().path(), folder.path());
      TypeAndEnter(dialog, "sub/inner.qmx");
    });
    EXPECT_EQ(taken, Whole("sub/inner.qmx"));
  }
}

TEST_F(FileDialogTest, AMissingFileIsAskedForAgain) {
  const std::string taken = Ask(QFileDialog::AcceptOpen, ".qmx", [&](FileDialog& dialog) {
    TypeAndEnter(dialog, "missing \"file\"");
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_EQ(boxes, QStringList("missing \"file\"\nThere is no such file."));
    TypeAndEnter(dialog, "");
    EXPECT_TRUE(dialog.isVisible());
    TypeAndEnter(dialog, "base.qmx");
  });
  EXPECT_EQ(taken, Whole("base.qmx"));
  EXPECT_EQ(boxes.size(), 1);
}

TEST_F(FileDialogTest, AFileMayBeNamedWithoutItsEnding) {
  EXPECT_EQ(Type(QFileDialog::AcceptOpen, ".qmx", "base"), Whole("base"));
  EXPECT_TRUE(boxes.isEmpty());
  EXPECT_EQ(Type(QFileDialog::AcceptOpen, {}, "base"), "") << "a matrix file has none";
  EXPECT_EQ(boxes.size(), 1);
}

TEST_F(FileDialogTest, TheQuestionComesOnceForTheNameThatWillBeWritten) {
  Make("exact");
  Make("five\".qmx");
  const std::vector<std::tuple<QString, QString, QStringList>> cases{
      {"exact", "", {"exact already exists. Replace it?"}},
      {"exact", ".qmx", {}},
      {"base", ".qmx", {"base.qmx already exists. Replace it?"}},
      {"base.qmx", ".qmx", {"base.qmx already exists. Replace it?"}},
      {"base", "", {}},
      {"five\"", ".qmx", {"five\".qmx already exists. Replace it?"}},
  };
  for (const auto& [name, ending, questions] : cases) {
    answer = QMessageBox::Yes;
    EXPECT_EQ(Type(QFileDialog::AcceptSave, ending, name), Whole(name));
    EXPECT_EQ(boxes, questions) << name.toStdString();
    answer = QMessageBox::No;
    EXPECT_EQ(Type(QFileDialog::AcceptSave, ending, name), questions.isEmpty() ? Whole(name) : "");
  }
}

TEST_F(FileDialogTest, ProposesAFile) {
  Make("odd \"name\"");
  FileDialog dialog(QFileDialog::AcceptOpen, {}, &Main());
  dialog.Propose(Path("odd \"name\""));
  EXPECT_EQ(dialog.directory().path(), folder.path());
  EXPECT_EQ(NameOf(dialog).text(), "odd \"name\"");
}

TEST_F(FileDialogTest, AsksBeforeANameThatNoDialogGaveReplacesAFile) {
  const std::string name = Path("base.qmx").toStdString();
  const SeenBox box =
      ActAndAnswer([&] { EXPECT_FALSE(program.Windows().MayReplace(name)); }, QMessageBox::No);
  EXPECT_EQ(box.text, "base.qmx already exists. Replace it?");
  EXPECT_TRUE(program.Windows().MayReplace(Path("other").toStdString()));
}

}  // namespace
}  // namespace qmx::test
