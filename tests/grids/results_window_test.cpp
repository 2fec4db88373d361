// SPDX-License-Identifier: MIT
// The results list.

#include "grids/results_window.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QMenu>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include "support/desktop_bench.h"

namespace qmx::test {
namespace {

class Results : public Desktop {
 public:
  ResultsWindow& List() {
    if (program.Windows().Results() == nullptr) throw std::runtime_error("no results window");
    return *program.Windows().Results();
  }
  QListWidget* Lines() { return List().findChild<QListWidget*>("lstResults"); }
  void Clear() {
    QTest::mouseClick(List().findChild<QAbstractButton*>("cmdClearResults"), Qt::LeftButton);
  }
  int Separators() {
    const QString separator(80, QChar(0x2014));
    return static_cast<int>(Lines()->findItems(separator, Qt::MatchExactly).size());
  }
  void RunEigenTask() {
    if (!State().ACreated) Enter(kSlotA, 2, 2, {"2", "1", "1", "2"});
    Click(cmdTask(14));
  }
};

TEST_F(Results, ShowIsDisabledUntilThereIsAReport) {
  EXPECT_FALSE(IsEnabled(cmdShowResults));
  RunEigenTask();
  EXPECT_TRUE(IsEnabled(cmdShowResults));
  EXPECT_TRUE(List().isVisible());
  EXPECT_EQ(Lines()->font().family(), "Courier New");
}

TEST_F(Results, ALongListHasRoomForItsSeparators) {
  for (int reports = 0; reports < 6; ++reports) RunEigenTask();
  QTest::qWait(20);
  EXPECT_GT(Lines()->verticalScrollBar()->maximum(), 0);
  EXPECT_EQ(Lines()->horizontalScrollBar()->maximum(), 0);
}

TEST_F(Results, ClearingAnEmptyListDoesNothing) {
  program.Windows().ShowResults();
  Clear();
  EXPECT_EQ(Lines()->count(), 0);
  EXPECT_TRUE(List().isVisible());
}

TEST_F(Results, ClearRemovesLinesAndNothingElse) {
  RunEigenTask();
  ASSERT_GT(Lines()->count(), 0);
  Clear();
  EXPECT_EQ(Lines()->count(), 0);
  EXPECT_TRUE(State().EigenvaluesComputed);
  EXPECT_TRUE(Get(fraFrame(kSlotEigenvalues))->isVisible());
}

TEST_F(Results, TheCloseBoxHidesAndShowBringsTheLinesBack) {
  RunEigenTask();
  const int lines = Lines()->count();
  CloseByBox(List());
  EXPECT_FALSE(List().isVisible());
  Click(cmdShowResults);
  EXPECT_TRUE(List().isVisible());
  EXPECT_EQ(Lines()->count(), lines);
}

TEST_F(Results, ShowRestoresAMinimisedList) {
  RunEigenTask();
  List().showMinimized();
  Click(cmdShowResults);
  EXPECT_FALSE(List().isMinimized());
}

TEST_F(Results, TwoTasksLeaveTwoReports) {
  RunEigenTask();
  EXPECT_EQ(Separators(), 1);
  const int lines = Lines()->count();
  RunEigenTask();
  EXPECT_EQ(Separators(), 2);
  EXPECT_EQ(Lines()->count(), 2 * lines);
}

TEST_F(Results, SelectedLinesAreCopied) {
  program.Windows().Append({"first", "  second", "third"});
  program.Windows().ShowResults();
  List().activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&List()));
  Lines()->setFocus();
  Lines()->item(0)->setSelected(true);
  Lines()->item(1)->setSelected(true);
  QTest::keyClick(Lines(), Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text(), "first\n  second");
}

TEST_F(Results, TheListIsPrintedAndSavedByItsButtons) {
  program.Windows().ShowResults();
  auto* print = List().findChild<QAbstractButton*>("cmdPrintResults");
  auto* save = List().findChild<QAbstractButton*>("cmdSaveResults");
  EXPECT_FALSE(print->isEnabled()) << "there is nothing to print";
  EXPECT_FALSE(save->isEnabled());
  RunEigenTask();
  QTest::mouseClick(print, Qt::LeftButton);
  EXPECT_EQ(printer.lines, List().Lines());
  EXPECT_EQ(printer.fonts.front(), "Courier New");
  const QTemporaryDir folder;
  const QString file = folder.filePath("r.txt");
  QTimer poll;
  QObject::connect(&poll, &QTimer::timeout, [&] {
    auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr) return;
    QTest::keyClicks(dialog->findChild<QLineEdit*>("fileNameEdit"), file);
    QTest::keyClick(dialog, Qt::Key_Return);
  });
  poll.start(10);
  QTest::mouseClick(save, Qt::LeftButton);
  EXPECT_EQ(files.files[file.toStdString()].substr(0, List().Lines()[0].size()), List().Lines()[0]);
  Clear();
  EXPECT_FALSE(print->isEnabled());
}

TEST_F(Results, TheMenuCopiesSavesAndPrints) {
  RunEigenTask();
  Lines()->setCurrentRow(1);
  Q_EMIT Lines()->customContextMenuRequested({5, 5});
  auto* menu = List().findChild<QMenu*>("mnuResults");
  ASSERT_NE(menu, nullptr);
  const auto entry = [&](const char* name) { return List().findChild<QAction*>(name); };
  ASSERT_TRUE(entry("mnuCopyResults")->isEnabled());
  entry("mnuCopyResults")->trigger();
  EXPECT_EQ(QApplication::clipboard()->text(), Lines()->item(1)->text());
  entry("mnuSelectAllResults")->trigger();
  EXPECT_EQ(Lines()->selectedItems().size(), Lines()->count());
  entry("mnuPrintResults")->trigger();
  EXPECT_EQ(printer.lines, List().Lines());
  EXPECT_TRUE(entry("mnuSaveResults")->isEnabled());
  menu->close();
}

}  // namespace
}  // namespace qmx::test
