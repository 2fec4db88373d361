// SPDX-License-Identifier: MIT
// Import, export, drops, pasting as a matrix and copying in other forms, by the menus of the
// program.

#include "app/exchange_menu.h"

#include <QAction>
#include <QClipboard>
#include <QComboBox>
#include <QDropEvent>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QSpinBox>
#include <QTableWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QTreeWidget>
#include <QUrl>

#include "support/desktop_bench.h"

namespace qmx::test {
namespace {

class ExchangeMenuTest : public Desktop {
 protected:
  /// Puts a file where dialogs find it and the program reads it; returns its name.
  QString Put(const QString& name, const std::string& bytes) {
    QString path = folder_.filePath(name);
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    files.files[path.toStdString()] = bytes;
    return path;
  }
  QString InFolder(const QString& name) const { return folder_.filePath(name); }

  /// Chooses a menu entry. File dialogs that come up take the name; `answer` is given every other
  /// dialog until it has one of them closed.
  void Choose(const char* entry, const QString& name,
              const std::function<void(QDialog& dialog)>& answer) {
    QAction* action = Main().Action(entry);
    ASSERT_NE(action, nullptr) << entry;
    ASSERT_TRUE(action->isEnabled()) << entry;
    Answering([&] { action->trigger(); }, name, answer);
  }
  static void Answering(const std::function<void()>& act, const QString& name,
                        const std::function<void(QDialog& dialog)>& answer) {
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&] {
      QWidget* modal = QApplication::activeModalWidget();
      if (auto* files = qobject_cast<QFileDialog*>(modal)) {
        QTest::keyClicks(files->findChild<QLineEdit*>("fileNameEdit"), name);
        return QTest::keyClick(modal, Qt::Key_Return);
      }
      if (auto* dialog = qobject_cast<QDialog*>(modal)) answer(*dialog);
    });
    poll.start(10);
    act();
  }
  static void Press(QDialog& dialog, const char* button) {
    auto* found = dialog.findChild<QAbstractButton*>(button);
    ASSERT_NE(found, nullptr) << button;
    ASSERT_TRUE(found->isEnabled()) << button;
    QTest::mouseClick(found, Qt::LeftButton);
  }
  static void PressImport(QDialog& dialog) {
    ASSERT_EQ(dialog.objectName(), "frmImport");
    Press(dialog, "cmdImport");
  }

  /// Drags a file over a widget and drops it there.
  static void Drop(QWidget& target, const QString& file) {
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(file)});
    QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&target, &enter);
    EXPECT_TRUE(enter.isAccepted());
    QDropEvent drop({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QCoreApplication::sendEvent(&target, &drop);
    EXPECT_TRUE(drop.isAccepted());
    QCoreApplication::processEvents();
  }
  std::string Status() { return Main().findChild<QLabel*>("lblStatus")->text().toStdString(); }

 private:
  QTemporaryDir folder_;
};

TEST_F(ExchangeMenuTest, ATableIsImportedAndTheStepTakenBack) {
  const QString file = Put("t.csv", "# weights\nload;left;right\n\"a\";0,5;1\n\"b\";1,25;2\n");
  Choose("mnuImportA", file, [&](QDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "Import into Matrix A");
    EXPECT_EQ(dialog.findChild<QLabel*>("lblImportFormat")->text(), "t.csv: Text table (CSV)");
    EXPECT_EQ(dialog.findChild<QComboBox*>("cboSeparator")->currentText(), "Semicolon");
    EXPECT_EQ(dialog.findChild<QComboBox*>("cboDecimalSign")->currentText(), "Comma");
    EXPECT_EQ(dialog.findChild<QComboBox*>("cboCommentSign")->currentText(), "#");
    EXPECT_EQ(dialog.findChild<QSpinBox*>("spnHeadingRows")->value(), 1);
    EXPECT_EQ(dialog.findChild<QSpinBox*>("spnHeadingColumns")->value(), 1);
    auto* preview = dialog.findChild<QTableWidget*>("tblPreview");
    QTRY_COMPARE(preview->rowCount(), 3);
    EXPECT_EQ(preview->item(0, 1)->text(), "left");
    EXPECT_EQ(preview->item(1, 1)->text(), "0,5");
    EXPECT_EQ(preview->verticalHeaderItem(0)->text(), "");
    EXPECT_EQ(preview->verticalHeaderItem(1)->text(), "1");
    EXPECT_EQ(dialog.findChild<QWidget*>("fraRightSide"), nullptr);
    PressImport(dialog);
  });
  ASSERT_TRUE(State().ACreated);
  EXPECT_EQ(Slot(kSlotA).array.Rows(), 2);
  EXPECT_EQ(Cell(kSlotA, 2, 1), "1.25");
  EXPECT_EQ(Text(txtColsA), "2");
  EXPECT_TRUE(Window(kSlotA).isVisible());
  EXPECT_EQ(Main().Action("mnuUndo")->text(), "&Undo Import into Matrix A");
  Main().Action("mnuUndo")->trigger();
  EXPECT_FALSE(State().ACreated);
  EXPECT_TRUE(IsEnabled(cmdCreateA));
}

TEST_F(ExchangeMenuTest, ChangesInTheDialogShowInThePreviewAndCount) {
  const QString file = Put("t.csv", "1,5\n2,5\n");
  Choose("mnuImportB", file, [&](QDialog& dialog) {
    auto* preview = dialog.findChild<QTableWidget*>("tblPreview");
    EXPECT_TRUE(dialog.findChild<QLabel*>("lblImportDoubt")->isVisible());
    auto* decimal = dialog.findChild<QComboBox*>("cboDecimalSign");
    auto* separator = dialog.findChild<QComboBox*>("cboSeparator");
    decimal->setCurrentText("Comma");
    separator->setCurrentText("Comma");
    EXPECT_FALSE(dialog.findChild<QAbstractButton*>("cmdImport")->isEnabled());
    EXPECT_TRUE(dialog.findChild<QLabel*>("lblImportProblem")->isVisible());
    separator->setCurrentText("Semicolon");
    EXPECT_EQ(preview->columnCount(), 1);
    EXPECT_EQ(preview->item(0, 0)->text(), "1,5");
    EXPECT_FALSE(dialog.findChild<QLabel*>("lblImportProblem")->isVisible());
    PressImport(dialog);
  });
  EXPECT_EQ(Slot(kSlotB).array.Cols(), 1);
  EXPECT_EQ(Slot(kSlotB).array(2, 1), 2.5);
}

TEST_F(ExchangeMenuTest, WhatCannotBeReadIsToldAndTheDialogStays) {
  const QString file = Put("t.csv", "1,2\n3,x\n");
  int shown = 0;
  Choose("mnuImportA", file, [&](QDialog& dialog) {
    auto* problem = dialog.findChild<QLabel*>("lblImportProblem");
    if (++shown == 1) {
      EXPECT_FALSE(problem->isVisible());
      return PressImport(dialog);
    }
    EXPECT_EQ(problem->text(), "Line 2, column 2: expected a number, but found \"x\".");
    EXPECT_TRUE(problem->isVisible());
    dialog.reject();
  });
  EXPECT_EQ(shown, 2);
  EXPECT_FALSE(State().ACreated);
}

TEST_F(ExchangeMenuTest, AVariableIsChosenFromAList) {
  const QString file = Put("v.txt",
                           "# name: words\n# type: string\n# elements: 1\n# length: 1\nx\n\n\n"
                           "# name: M\n# type: matrix\n# rows: 1\n# columns: 2\n 1 2\n\n\n"
                           "# name: s\n# type: scalar\n7\n");
  Choose("mnuImportCreated", file, [&](QDialog& dialog) {
    auto* list = dialog.findChild<QTreeWidget*>("lstVariables");
    ASSERT_NE(list, nullptr);
    EXPECT_EQ(list->topLevelItemCount(), 3);
    EXPECT_EQ(list->currentItem()->text(0), "M");
    EXPECT_FALSE(list->topLevelItem(0)->toolTip(0).isEmpty());
    list->setCurrentItem(list->topLevelItem(0));
    EXPECT_FALSE(dialog.findChild<QAbstractButton*>("cmdImport")->isEnabled());
    EXPECT_EQ(dialog.findChild<QLabel*>("lblImportProblem")->text(),
              list->topLevelItem(0)->toolTip(0));
    list->setCurrentItem(list->topLevelItem(2));
    auto* preview = dialog.findChild<QTableWidget*>("tblPreview");
    EXPECT_EQ(preview->item(0, 0)->text(), "7");
    PressImport(dialog);
  });
  EXPECT_EQ(Slot(kSlotCreated).array(1, 1), 7.0);
  EXPECT_TRUE(IsEnabled(cmdIntoA(kSlotCreated)));
}

TEST_F(ExchangeMenuTest, TheColumnOfTheRightSideIsChosenForASystem) {
  const QString file = Put("t.csv", "3;2;1\n5;1;3\n");
  Choose("mnuImportSystem", file, [&](QDialog& dialog) {
    EXPECT_TRUE(dialog.findChild<QAbstractButton*>("OptLastColumn")->isChecked());
    dialog.findChild<QSpinBox*>("spnRightColumn")->setValue(2);
    EXPECT_TRUE(dialog.findChild<QAbstractButton*>("OptSomeColumn")->isChecked());
    dialog.findChild<QSpinBox*>("spnRightColumn")->setValue(1);
    PressImport(dialog);
  });
  EXPECT_EQ(Slot(kSlotSystem).array(1, 3), 3.0);
  EXPECT_EQ(Slot(kSlotSystem).array(1, 1), 2.0);
  Click(cmdSolve);
  EXPECT_TRUE(State().SolutionComputed);
}

TEST_F(ExchangeMenuTest, AFileDroppedOnAFrameIsImportedThere) {
  const QString file = Put("t.csv", "1;2\n3;4\n");
  for (const qmx::Slot slot : {kSlotA, kSlotB, kSlotCreated}) {
    Answering([&] { Drop(*Get(fraFrame(slot)), file); }, {}, PressImport);
    EXPECT_EQ(Slot(slot).array(2, 2), 4.0) << slot;
  }
}

TEST_F(ExchangeMenuTest, AFileDroppedOnAnEditorReplacesItsMatrix) {
  Enter(kSlotA, 1, 1, {"9"});
  const QString file = Put("t.csv", "1;2\n3;4\n");
  Answering([&] { Drop(Window(kSlotA), file); }, {}, PressImport);
  EXPECT_EQ(Slot(kSlotA).array(2, 2), 4.0);
  EXPECT_EQ(Cell(kSlotA, 2, 1), "3");
  EXPECT_EQ(Text(txtRowsA), "2");
  // The entry box leaves files to the window behind it.
  const QString other = Put("u.csv", "5;6\n");
  ClickCell(kSlotA, 1, 1);
  ASSERT_TRUE(Box(kSlotA).isVisible());
  Answering([&] { Drop(Box(kSlotA), other); }, {}, PressImport);
  EXPECT_EQ(Slot(kSlotA).array(1, 2), 6.0);
}

TEST_F(ExchangeMenuTest, AProjectDroppedOnAFrameIsOpened) {
  const QString file = Put("p.qmx",
                           "#TRUE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#\r\n"
                           "#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#\r\n"
                           "#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#\r\n"
                           "1,1\r\n 7 \r\n");
  Drop(*Get(fraFrame(kSlotB)), file);
  EXPECT_EQ(Slot(kSlotA).array(1, 1), 7.0);
  EXPECT_FALSE(State().BCreated);
}

TEST_F(ExchangeMenuTest, EveryMatrixThatIsThereCanBeExported) {
  for (const qmx::Slot slot : kAllSlots) {
    const std::string name = "mnuExport_" + std::to_string(slot);
    ASSERT_NE(Main().Action(name.c_str()), nullptr) << name;
    EXPECT_FALSE(Main().Action(name.c_str())->isEnabled()) << name;
  }
  Enter(kSlotA, 2, 2, {"1.5", "0", "0", "2"});
  Click(cmdTask(5));
  EXPECT_TRUE(Main().Action("mnuExport_0")->isEnabled());
  EXPECT_TRUE(Main().Action("mnuExport_9")->isEnabled());
  EXPECT_FALSE(Main().Action("mnuExport_1")->isEnabled());
  const QString file = InFolder("a.csv");
  Choose("mnuExport_0", file, [&](QDialog& dialog) {
    EXPECT_EQ(dialog.objectName(), "frmExport");
    EXPECT_EQ(dialog.windowTitle(), "Export of Matrix A");
    auto* decimal = dialog.findChild<QComboBox*>("cboDecimalSign");
    auto* separator = dialog.findChild<QComboBox*>("cboSeparator");
    auto* format = dialog.findChild<QComboBox*>("cboFormat");
    EXPECT_EQ(decimal->currentText(), "Point");
    decimal->setCurrentText("Comma");
    EXPECT_FALSE(dialog.findChild<QAbstractButton*>("cmdExport")->isEnabled());
    separator->setCurrentText("Semicolon");
    EXPECT_TRUE(dialog.findChild<QAbstractButton*>("cmdExport")->isEnabled());
    format->setCurrentIndex(2);
    EXPECT_FALSE(separator->isEnabled());
    format->setCurrentIndex(0);
    Press(dialog, "cmdExport");
  });
  EXPECT_EQ(files.files[file.toStdString()], "1,5;0\r\n0;2\r\n");
  EXPECT_EQ(Status(), "Exported to " + file.toStdString());
  // The next export proposes the same form.
  Choose("mnuExport_9", file, [&](QDialog& dialog) {
    EXPECT_EQ(dialog.findChild<QComboBox*>("cboDecimalSign")->currentText(), "Comma");
    dialog.reject();
  });
}

TEST_F(ExchangeMenuTest, CtrlVOutsideAFieldMakesA) {
  QApplication::clipboard()->setText("1\t2,5\n3\t4\n");
  Get(cmdCreateA)->setFocus();
  Key(Qt::Key_V, Qt::ControlModifier);
  ASSERT_TRUE(State().ACreated);
  EXPECT_EQ(Slot(kSlotA).array(1, 2), 2.5);
  EXPECT_EQ(Main().Action("mnuUndo")->text(), "&Undo paste as Matrix A");
  QApplication::clipboard()->setText("7");
  Main().activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&Main()));
  Get(cmdTask(5))->setFocus();
  Key(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(Slot(kSlotA).array.Rows(), 2) << "what is there is not lost by a key";
  EXPECT_EQ(Status(),
            "There is a matrix A already. Edit > Paste as A replaces it, Paste as B makes matrix "
            "B.");
  Main().Action("mnuPasteAsA")->trigger();
  EXPECT_EQ(Slot(kSlotA).array.Rows(), 1);
  Main().Action("mnuPasteAsB")->trigger();
  EXPECT_EQ(Slot(kSlotB).array(1, 1), 7.0);
}

TEST_F(ExchangeMenuTest, CtrlVInAFieldGoesIntoTheField) {
  QApplication::clipboard()->setText("5");
  Get(txtRowsA)->setFocus();
  Key(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(Text(txtRowsA), "5");
  EXPECT_FALSE(State().ACreated);
  QApplication::clipboard()->setText("6\n7\n");
  Key(Qt::Key_V, Qt::ControlModifier);
  EXPECT_EQ(Text(txtRowsA), "5") << "lines are never glued together";
}

TEST_F(ExchangeMenuTest, TheSelectionOrTheWholeMatrixIsCopiedInAnotherForm) {
  Main().Action("mnuCopyAs_4")->trigger();
  EXPECT_EQ(Status(), "Click into the window of a matrix first: it is what will be copied.");
  Enter(kSlotA, 2, 2, {"1", "0.5", "3", "4"});
  Main().activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&Main()));
  Main().Action("mnuCopyAs_4")->trigger();
  EXPECT_EQ(QApplication::clipboard()->text(), "[1, 0.5;\n 3, 4]\n");
  Grid(kSlotA).SelectBlock({1, 2, 2, 2});
  Main().Action("mnuCopyAs_1")->trigger();
  EXPECT_EQ(QApplication::clipboard()->text(), "0,5\n4\n");
  QContextMenuEvent asked(QContextMenuEvent::Mouse, {5, 5}, Grid(kSlotA).mapToGlobal(QPoint(5, 5)));
  Q_EMIT Grid(kSlotA).MenuRequested(asked.globalPos());
  auto* menu = Window(kSlotA).findChild<QMenu*>("mnuCells");
  ASSERT_NE(menu, nullptr);
  auto* forms = menu->findChild<QMenu*>("mnuCopyAs");
  ASSERT_NE(forms, nullptr);
  ASSERT_EQ(forms->actions().size(), 6);
  forms->actions().at(5)->trigger();
  EXPECT_TRUE(QApplication::clipboard()->text().startsWith("np.array([[0.5],"));
  menu->close();
}

TEST_F(ExchangeMenuTest, AAndAColumnOfBBecomeTheSystem) {
  Enter(kSlotA, 2, 2, {"2", "1", "1", "3"});
  Enter(kSlotB, 2, 2, {"3", "30", "5", "50"});
  Choose("mnuIntoSystem", {}, [&](QDialog& dialog) {
    EXPECT_EQ(dialog.objectName(), "frmIntoSystem");
    dialog.findChild<QSpinBox*>("spnRightColumn")->setValue(2);
    Press(dialog, "cmdIntoSystem");
  });
  EXPECT_EQ(Slot(kSlotSystem).array(2, 3), 50.0);
  EXPECT_TRUE(Window(kSlotSystem).isVisible());
  EXPECT_EQ(Main().Action("mnuUndo")->text(), "&Undo A and B into the system");
}

}  // namespace
}  // namespace qmx::test
