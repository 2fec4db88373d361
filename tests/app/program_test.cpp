// SPDX-License-Identifier: MIT
// The program as a whole: message boxes, drops, faults, the end.

#include "app/program.h"

#include <QAction>
#include <QDropEvent>
#include <QFileDialog>
#include <QLineEdit>
#include <QMenu>
#include <QMimeData>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include "app/application.h"
#include "support/core_folder.h"
#include "support/desktop_bench.h"

namespace qmx::test {
namespace {

using ProgramTest = Desktop;

TEST_F(ProgramTest, RefusalsAreCriticalBoxesWithTheProgramsTitle) {
  const SeenBox box = ClickAndAnswer(cmdTask(0), QMessageBox::Ok);
  EXPECT_EQ(box.title, "Orvane");
  EXPECT_EQ(box.text, "Please create matrices A and B");
  EXPECT_EQ(box.icon, QMessageBox::Critical);
  EXPECT_EQ(box.buttons, QMessageBox::Ok);
}

TEST_F(ProgramTest, ItsWindowsAreThoseOfTheDesktopEntry) {
  QFile entry(QString::fromStdString(SourceFolder() + "/packaging/orvane.desktop"));
  ASSERT_TRUE(entry.open(QIODevice::ReadOnly));
  const QString line = "\nStartupWMClass=" + QCoreApplication::applicationName() + "\n";
  EXPECT_TRUE(QString::fromUtf8(entry.readAll()).contains(line)) << line.toStdString();
}

TEST_F(ProgramTest, OneRefusalIsPlain) {
  Enter(kSlotA, 2, 4, {});
  const SeenBox box = ClickAndAnswer(cmdTask(9), QMessageBox::Ok);
  EXPECT_EQ(box.text, "Number of columns exceeds number of rows.");
  EXPECT_EQ(box.icon, QMessageBox::NoIcon);
}

TEST_F(ProgramTest, AResetAsksFirst) {
  Enter(kSlotA, 2, 2, {"1"});
  for (const QMessageBox::StandardButton answer : {QMessageBox::No, QMessageBox::Cancel}) {
    const SeenBox box = ClickAndAnswer(cmdResetA, answer);
    EXPECT_EQ(box.title, "Warning!");
    EXPECT_EQ(box.text,
              "This action will reset all results associated with matrix A.\n\n"
              "Do you wish to proceed?\n\n");
    EXPECT_EQ(box.icon, QMessageBox::Critical);
    EXPECT_EQ(box.buttons, QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    EXPECT_TRUE(State().ACreated);
    EXPECT_EQ(Cell(kSlotA, 1, 1), "1");
  }
  ClickAndAnswer(cmdResetA, QMessageBox::Yes);
  EXPECT_FALSE(State().ACreated);
  EXPECT_EQ(Text(txtRowsA), "2");
  EXPECT_TRUE(IsEnabled(txtRowsA));
}

TEST_F(ProgramTest, TextOfBoxesIsNeverMarkup) {
  TypeInto(txtRowsA, "<b>2</b>");
  const SeenBox box = ClickAndAnswer(cmdCreateA, QMessageBox::Ok);
  EXPECT_NE(box.text.find("<b>2</b>"), std::string::npos);
  EXPECT_FALSE(State().ACreated);
}

TEST_F(ProgramTest, TheTypicalRoadByKeyboardAlone) {
  Keys("3");
  Key(Qt::Key_Tab);
  Keys("3");
  Key(Qt::Key_Tab);
  Key(Qt::Key_Space);
  ASSERT_TRUE(QTest::qWaitForWindowActive(&Window(kSlotA)));
  for (const char* element : {"2", "1", "0", "1", "3", "1", "0", "1", "4"}) {
    Keys(element);
    Key(Qt::Key_Right);
  }
  Main().Action("mnuMain")->trigger();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&Main()));
  Click(cmdTask(5));
  Click(cmdIntoB(kSlotInverse));
  Click(cmdTask(2));
  for (int i = 1; i <= 3; ++i) {
    for (int j = 1; j <= 3; ++j) {
      EXPECT_NEAR(Slot(kSlotProduct).array(i, j), i == j, 1e-15) << i << "," << j;
    }
  }
  EXPECT_TRUE(Window(kSlotProduct).isVisible());
}

TEST_F(ProgramTest, TheKeyForTheMainWindowOpensAMinimisedOne) {
  Enter(kSlotA, 1, 1, {"7"});
  Main().showMinimized();
  ASSERT_TRUE(Main().isMinimized());
  QTest::keyClick(&Grid(kSlotA), Qt::Key_M, Qt::ControlModifier);
  EXPECT_FALSE(Main().isMinimized());
  EXPECT_TRUE(QTest::qWaitForWindowActive(&Main()));
}

TEST_F(ProgramTest, EnterAndSpacePressTheButtonWithTheFocus) {
  Get(cmdCreateA)->setFocus();
  Key(Qt::Key_Return);
  EXPECT_TRUE(State().ACreated);
  Main().activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&Main()));
  Get(cmdCreateB)->setFocus();
  Key(Qt::Key_Space);
  EXPECT_TRUE(State().BCreated);
}

TEST_F(ProgramTest, AnotherSpaceAfterCreateOrResetLosesNothing) {
  Get(cmdCreateA)->setFocus();
  Key(Qt::Key_Space);
  QTest::qWait(0);
  EXPECT_EQ(Main().focusWidget(), Get(cmdShow(kSlotA)));
  Keys("7");
  Main().activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&Main()));
  Key(Qt::Key_Space);
  EXPECT_EQ(Slot(kSlotA).array(1, 1), 7);
  ClickAndAnswer(cmdResetA, QMessageBox::Yes);
  QTest::qWait(0);
  EXPECT_EQ(Main().focusWidget(), Get(txtRowsA));
}

TEST_F(ProgramTest, TheFocusStaysInTheFrameOfTheSystem) {
  Get(cmdCreateSystem)->setFocus();
  Click(cmdCreateSystem);
  QTest::qWait(0);
  EXPECT_EQ(Main().focusWidget(), Get(cmdShow(kSlotSystem)));
  Click(cmdResetSystem);
  QTest::qWait(0);
  EXPECT_EQ(Main().focusWidget(), Get(txtEquations));
}

TEST_F(ProgramTest, AProjectThatOpensTakesTheFocusToShow) {
  ASSERT_EQ(Main().focusWidget(), Get(txtRowsA));
  files.files["p.qmx"] =
      "#TRUE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#,#TRUE#\r\n"
      "#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#\r\n"
      "#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#\r\n"
      "1,1\r\n 1 \r\n1,1\r\n 2 \r\n";
  Q_EMIT Main().FilesDropped("p.qmx");
  ASSERT_TRUE(State().ACreated && State().BCreated);
  QTest::qWait(0);
  EXPECT_EQ(Main().focusWidget(), Get(cmdShow(kSlotA)));
}

TEST_F(ProgramTest, AProjectOnTheCommandLineTakesTheFocusToShow) {
  MemoryFiles own;
  own.files["p.qmx"] =
      "#TRUE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#\r\n"
      "#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#\r\n"
      "#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#\r\n"
      "1,1\r\n 1 \r\n";
  Program started({own, printer, random, clock, memory}, settings);
  started.Start("p.qmx");
  ASSERT_TRUE(started.State().ACreated);
  frmQMX& main = started.MainWindow();
  EXPECT_TRUE(QTest::qWaitForWindowActive(&main));
  QTest::qWait(0);
  EXPECT_EQ(main.focusWidget(), main.Find(cmdShow(kSlotA)));
}

TEST_F(ProgramTest, ADroppedFileIsOpenedAsAProject) {
  Enter(kSlotA, 1, 1, {"7"});
  State().currentFileName = "/data/p.qmx";
  Main().Action("mnuSave")->trigger();
  ASSERT_EQ(files.files.count("/data/p.qmx"), 1U);
  QTest::keyClick(&Box(kSlotA), '9');
  ASSERT_EQ(Slot(kSlotA).array(1, 1), 9.0);
  EXPECT_TRUE(Main().acceptDrops());
  QMimeData data;
  data.setUrls({QUrl::fromLocalFile("/data/p.qmx"), QUrl::fromLocalFile("/data/other.qmx")});
  QDragEnterEvent enter({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(&Main(), &enter);
  EXPECT_TRUE(enter.isAccepted());
  QDropEvent drop({5, 5}, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(&Main(), &drop);
  EXPECT_EQ(Slot(kSlotA).array(1, 1), 7.0);
  EXPECT_EQ(Cell(kSlotA, 1, 1), "7");
}

/// Answers one dialog after the other as they come up: types a name into a file dialog (none:
/// cancels it), presses a button of a message box.
class Answers {
 public:
  Answers(std::vector<QString> names, QMessageBox::StandardButton pressed)
      : names_(std::move(names)), pressed_(pressed) {
    QObject::connect(&poll_, &QTimer::timeout, [this] { Answer(); });
    poll_.start(5);
  }
  QStringList texts;  ///< Of the message boxes.

 private:
  void Answer() {
    QWidget* modal = QApplication::activeModalWidget();
    if (auto* box = qobject_cast<QMessageBox*>(modal)) {
      texts << box->text();
      return box->button(pressed_)->click();
    }
    auto* dialog = qobject_cast<QFileDialog*>(modal);
    if (dialog == nullptr) return;
    if (asked_ == names_.size()) return dialog->reject();
    dialog->findChild<QLineEdit*>("fileNameEdit")->setText(names_[asked_++]);
    // Later: its own question must find the timer free.
    QMetaObject::invokeMethod(dialog, "accept", Qt::QueuedConnection);
  }

  std::vector<QString> names_;
  std::size_t asked_ = 0;
  QMessageBox::StandardButton pressed_;
  QTimer poll_;
};

TEST_F(ProgramTest, AFileWhoseNameComesAboutByTheEndingIsNotReplacedUnasked) {
  const QTemporaryDir folder;
  QFile existing(folder.filePath("work.qmx"));
  ASSERT_TRUE(existing.open(QIODevice::WriteOnly));
  existing.close();
  const QString name = folder.filePath("work");
  DesktopScreen& screen = program.Windows();
  {
    const Answers no({name}, QMessageBox::No);
    EXPECT_EQ(screen.AskSaveFile(".qmx"), "") << "back to the file dialog, which is cancelled";
    EXPECT_EQ(no.texts, QStringList("work.qmx already exists. Replace it?"));
  }
  {
    const Answers yes({name}, QMessageBox::Yes);
    EXPECT_EQ(screen.AskSaveFile(".qmx"), name.toStdString());
    EXPECT_EQ(yes.texts.size(), 1);
  }
  {
    const Answers none({name}, QMessageBox::No);
    EXPECT_EQ(screen.AskSaveFile({}), name.toStdString()) << "no ending, no such file";
    EXPECT_TRUE(none.texts.isEmpty());
  }
  {
    const Answers theirs({name + ".qmx"}, QMessageBox::Yes);
    EXPECT_EQ(screen.AskSaveFile(".qmx"), name.toStdString() + ".qmx");
    EXPECT_EQ(theirs.texts.size(), 1) << "the file dialog's own question alone";
  }
}

TEST_F(ProgramTest, AFieldLeavesDroppedFilesToItsWindow) {
  QMimeData file;
  file.setUrls({QUrl::fromLocalFile("/data/p.qmx")});
  file.setText("/data/p.qmx");
  QDragEnterEvent withFile({5, 5}, Qt::CopyAction, &file, Qt::LeftButton, Qt::NoModifier);
  withFile.ignore();
  // Straight to the field: sent by the application, it would go on to the window.
  QObject* field = Get(txtScalar);
  field->event(&withFile);
  EXPECT_FALSE(withFile.isAccepted());
  QMimeData text;
  text.setText("12");
  QDragEnterEvent withText({5, 5}, Qt::CopyAction, &text, Qt::LeftButton, Qt::NoModifier);
  withText.ignore();
  field->event(&withText);
  EXPECT_TRUE(withText.isAccepted());
}

TEST_F(ProgramTest, ClosingTheMainWindowEndsTheProgram) {
  Enter(kSlotA, 1, 1, {"7"});
  QTimer::singleShot(0, [&] { CloseByBox(Main()); });
  QTimer tooLong;
  QObject::connect(&tooLong, &QTimer::timeout, [] { QCoreApplication::exit(99); });
  tooLong.start(5000);
  EXPECT_EQ(QApplication::exec(), 0);
  EXPECT_TRUE(program.Windows().ShownWindows().empty());
}

TEST_F(ProgramTest, TheWindowsMenuListsWhatIsOpen) {
  Enter(kSlotA, 1, 1, {"7"});
  auto* menu = Main().findChild<QMenu*>("mnuWindows");
  const auto lists = [&](const QString& title) {
    Q_EMIT menu->aboutToShow();
    for (const QAction* entry : menu->actions()) {
      if (entry->text() == title) return true;
    }
    return false;
  };
  EXPECT_TRUE(lists("Matrix A"));
  EXPECT_FALSE(lists("Matrix B"));
  CloseByBox(Window(kSlotA));
  EXPECT_FALSE(lists("Matrix A"));
}

/// Answers the box of a fault when it comes, and prints what it says.
void AnswerFault(QMessageBox::StandardButton answer) {
  auto* poll = new QTimer(qApp);
  QObject::connect(poll, &QTimer::timeout, [answer] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr || !box->text().startsWith("Run-time error")) return;
    std::fprintf(stderr, "%s\n", qPrintable(box->text()));
    box->button(answer)->click();
  });
  poll->start(5);
}

/// Runs the program up to a fault inside of as many loops as asked for.
void FaultInside(int loops, const std::function<void()>& fault) {
  MemoryFiles files;
  RecordingPrinter printer;
  FixedRandom random;
  FixedClock clock;
  PointSettings settings;
  Program program({files, printer, random, clock, SystemMemory()}, settings);
  auto* application = static_cast<Application*>(qApp);
  application->SetFaultHandler([&](Fault number) { program.EndAfterFault(number); });
  program.Start("");
  AnswerFault(QMessageBox::Discard);
  std::function<void(int)> enter = [&](int level) {
    QTimer::singleShot(0, &program.MainWindow(), [&, level] {
      if (level == 0) return fault();
      enter(level - 1);
      QEventLoop().exec();
    });
  };
  enter(loops);
  QApplication::exec();
}

class FaultTest : public ::testing::Test {
 public:
  FaultTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

TEST_F(FaultTest, IsToldAndEndsTheProgramWithAFailure) {
  const auto fault = [] { throw RuntimeFault(Fault::kSubscriptOutOfRange); };
  EXPECT_EXIT(FaultInside(0, fault), ::testing::ExitedWithCode(1),
              "Run-time error '9': Subscript out of range");
}

TEST_F(FaultTest, EndsTheProgramFromInsideNestedLoops) {
  const auto fault = [] { throw RuntimeFault(Fault::kOverflow); };
  EXPECT_EXIT(FaultInside(2, fault), ::testing::ExitedWithCode(1), "Run-time error '6': Overflow");
}

TEST_F(FaultTest, LackOfMemoryIsFaultSeven) {
  const auto fault = [] { throw std::bad_alloc(); };
  EXPECT_EXIT(FaultInside(0, fault), ::testing::ExitedWithCode(1),
              "Run-time error '7': Out of memory");
}

/// A x A of a huge number overflows: a fault by way of a real task.
void SquareSomethingHuge() {
  struct Road : Desktop {
    void TestBody() override {
      static_cast<Application*>(qApp)->SetFaultHandler(
          [this](Fault number) { program.EndAfterFault(number); });
      Enter(kSlotA, 1, 1, {"1e200"});
      Click(cmdIntoB(kSlotA));
      AnswerFault(QMessageBox::Discard);
      Click(cmdTask(2));
    }
  } road;
  road.TestBody();
}

TEST_F(FaultTest, AnOverflowInATaskIsTold) {
  EXPECT_EXIT(SquareSomethingHuge(), ::testing::ExitedWithCode(1), "Run-time error '6': Overflow");
}

}  // namespace
}  // namespace qmx::test
