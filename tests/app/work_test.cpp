// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <thread>

#include "app/application.h"
#include "support/desktop_bench.h"
#include "support/desktop_meanwhile.h"

namespace qmx::test {
namespace {

/// A program whose computations take as long as a test wants.
class WorkTest : public Desktop {
 protected:
  QProgressBar* Bar() { return Main().findChild<QProgressBar*>(); }
  QPushButton* StopButton() { return Main().findChild<QPushButton*>("cmdStop"); }
  QString Status() { return Main().findChild<QLabel*>("lblStatus")->text(); }

  /// Computes in short steps until it is stopped or has taken so long.
  static void Compute(Progress& progress, int milliseconds) {
    for (int done = 0; done < milliseconds; ++done) {
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
      progress.Report(static_cast<double>(done) / milliseconds);
    }
  }
  /// A step that changes A and then computes for so long.
  void Step(int milliseconds) {
    program.Runner().Step("Test", [&](Context& context) {
      context.workspace.A() = SlotData(Matrix(3, 3), 3, 3);
      context.panel.SetText(txtRowsA, "changed");
      context.log.Append({"line"});
      context.work.Run([&](Progress& progress) { Compute(progress, milliseconds); });
      context.workspace.ACreated = true;
    });
  }
  /// Does something in the middle of a computation.
  template <typename Action>
  static void Meanwhile(Action action) {
    QTimer::singleShot(80, action);
  }
};

TEST_F(WorkTest, AShortComputationTakesNoTurnOfTheEventLoop) {
  bool turned = false;
  QTimer::singleShot(0, [&] { turned = true; });
  program.Windows().Run([](Progress&) {});
  EXPECT_FALSE(turned);
  EXPECT_FALSE(Bar()->isVisible());
}

TEST_F(WorkTest, AComputationRunsInAThreadOfItsOwn) {
  std::thread::id thread;
  program.Windows().Run([&](Progress&) { thread = std::this_thread::get_id(); });
  EXPECT_NE(thread, std::this_thread::get_id());
}

TEST_F(WorkTest, TheWindowsLiveWhileItGoesOn) {
  int turns = 0;
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, [&] { ++turns; });
  timer.start(5);
  Meanwhile([&] {
    EXPECT_TRUE(Bar()->isVisible());
    EXPECT_TRUE(StopButton()->isVisible());
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::BusyCursor);
  });
  program.Windows().Run([](Progress& progress) { Compute(progress, 300); });
  EXPECT_GE(turns, 10);
  EXPECT_FALSE(Bar()->isVisible());
  EXPECT_FALSE(StopButton()->isVisible());
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(WorkTest, WhatAComputationThrowsComesOut) {
  EXPECT_THROW(program.Windows().Run([](Progress&) { throw RuntimeFault(Fault::kOverflow); }),
               RuntimeFault);
}

TEST_F(WorkTest, StopBringsBackWhatWasBeforeThePress) {
  Enter(kSlotB, 1, 1, {"7"});
  program.Runner().Do([](Context& context) { context.log.Append({"before"}); });
  Meanwhile([&] { StopButton()->click(); });
  Step(20000);
  EXPECT_FALSE(State().ACreated);
  EXPECT_EQ(State().A().rows, 0);
  EXPECT_EQ(Text(txtRowsA), "2");
  EXPECT_EQ(program.Windows().Results()->LineCount(), 1);
  EXPECT_EQ(State().B().array(1, 1), 7);
  EXPECT_EQ(Status(), "Test was stopped. Everything is as it was before.");
  EXPECT_TRUE(program.Runner().Steps().UndoName().find("Test") == std::string::npos);
}

TEST_F(WorkTest, EscapeStopsToo) {
  Meanwhile([&] { QTest::keyClick(&Main(), Qt::Key_Escape); });
  Step(20000);
  EXPECT_FALSE(State().ACreated);
}

TEST_F(WorkTest, APressMeanwhileDoesNothingAndSaysSo) {
  QString said;
  Meanwhile([&] {
    QTest::mouseClick(Get(cmdCreateB), Qt::LeftButton);
    QTest::keyClick(Get(txtScalar), Qt::Key_9);
    Main().Action("mnuUndo")->trigger();
    said = Main().findChild<QLabel*>("lblWorking")->text();
    StopButton()->click();
  });
  Step(20000);
  EXPECT_FALSE(State().BCreated);
  EXPECT_EQ(Text(txtScalar), "2");
  EXPECT_EQ(said, kRefusal);
}

TEST_F(WorkTest, AnEditorTakesNoNumbersMeanwhile) {
  Enter(kSlotB, 1, 1, {"7"});
  Window(kSlotB).HideEntryBox();
  Meanwhile([&] {
    ClickCell(kSlotB, 1, 1);
    EXPECT_TRUE(Box(kSlotB).isHidden());
    QTest::keyClicks(&Grid(kSlotB), "9");
    StopButton()->click();
  });
  Step(20000);
  EXPECT_EQ(State().B().array(1, 1), 7);
  EXPECT_EQ(Cell(kSlotB, 1, 1), "7");
}

TEST_F(WorkTest, AfterTwoSecondsTheTimeLeftIsTold) {
  QString early;
  QString late;
  QTimer::singleShot(500, [&] { early = Main().findChild<QLabel*>("lblWorking")->text(); });
  QTimer::singleShot(2300, [&] {
    late = Main().findChild<QLabel*>("lblWorking")->text();
    StopButton()->click();
  });
  Step(10000);
  EXPECT_EQ(early, "Computing...");
  EXPECT_TRUE(late.startsWith("Computing, about ")) << late.toStdString();
  EXPECT_TRUE(late.endsWith(" s left")) << late.toStdString();
}

TEST_F(WorkTest, SaysWhatIsReadOrWritten) {
  QString early;
  QString late;
  QTimer::singleShot(500, [&] { early = Main().findChild<QLabel*>("lblWorking")->text(); });
  QTimer::singleShot(2300, [&] {
    late = Main().findChild<QLabel*>("lblWorking")->text();
    StopButton()->click();
  });
  const auto read = [](Progress& progress) { Compute(progress, 20000); };
  EXPECT_THROW(program.Windows().Run(read, "Reading a.qmx"), Stopped);
  EXPECT_EQ(early, "Reading a.qmx...");
  EXPECT_TRUE(late.startsWith("Reading a.qmx, about ")) << late.toStdString();
}

TEST_F(WorkTest, ClosingTheMainWindowStopsTheComputationAndEnds) {
  QTimer::singleShot(0, [&] { Step(20000); });
  QTimer::singleShot(150, [&] { CloseByBox(Main()); });
  QTimer tooLong;
  QObject::connect(&tooLong, &QTimer::timeout, [] { QCoreApplication::exit(99); });
  tooLong.start(5000);
  EXPECT_EQ(QApplication::exec(), 0);
}

}  // namespace
}  // namespace qmx::test
