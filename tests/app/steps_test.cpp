// SPDX-License-Identifier: MIT
// The windows of steps, opened and worked by keys and clicks.

#include "app/steps.h"

#include <QApplication>
#include <QClipboard>
#include <QFileDialog>
#include <QLabel>
#include <QMenu>
#include <QMimeData>
#include <QPrintPreviewDialog>
#include <QPrintPreviewWidget>
#include <QRadioButton>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>

#include "app/settings.h"
#include "app/steps_button.h"
#include "derivation/document_latex.h"
#include "support/desktop_steps.h"
#include "workspace/task_numbers.h"

namespace qmx::test {
namespace {

class StepsTest : public StepsDesktop {
 protected:
  StepsTest() { Settings().remove("steps"); }

  void EnterBoth() {
    Enter(kSlotA, 2, 2, {"2", "1", "1", "3"});
    Main().activateWindow();
    Enter(kSlotB, 2, 2, {"5", "6", "7", "8"});
    Main().activateWindow();
  }
  void Run(Task task) {
    Main().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Main()));
    Click(cmdTask(task));
  }
  void Type(const std::string& text) {
    Window(kSlotA).activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Window(kSlotA)));
    ClickCell(kSlotA, 1, 1);
    QTest::keyClicks(&Box(kSlotA), QString::fromStdString(text));
  }
  DocumentWindow& OpenInverse() {
    Enter(kSlotA, 2, 2, {"2", "1", "1", "3"});
    Run(kTaskInverse);
    return OpenSteps(kSlotInverse);
  }
  /// Works the modal dialogs that something leads to, until none is left.
  static void WithDialogs(const std::function<void()>& act,
                          const std::function<void(QWidget&)>& work) {
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&] {
      if (QWidget* modal = QApplication::activeModalWidget()) work(*modal);
    });
    poll.start(20);
    act();
  }
  void SaveAs(DocumentWindow& window, const QString& name,
              const std::function<void(QMessageBox&)>& onBox) {
    WithDialogs([&] { QTest::mouseClick(&Part(window, "cmdPdfSteps"), Qt::LeftButton); },
                [&](QWidget& modal) {
                  if (auto* box = qobject_cast<QMessageBox*>(&modal)) return onBox(*box);
                  auto* edit = modal.findChild<QLineEdit*>("fileNameEdit");
                  if (edit == nullptr || !edit->text().isEmpty()) return;
                  QTest::keyClicks(edit, name);
                  QTest::keyClick(edit, Qt::Key_Return);
                });
  }
};

TEST_F(StepsTest, EveryWindowOfAResultLeadsToItsSteps) {
  EnterBoth();
  struct Way {
    Task task;
    std::vector<qmx::Slot> slots;
    DerivationTask derived;
  };
  const std::vector<Way> ways{
      {kTaskSum, {kSlotSum}, DerivationTask::kSum},
      {kTaskDifference, {kSlotDifference}, DerivationTask::kDifference},
      {kTaskProduct, {kSlotProduct}, DerivationTask::kProduct},
      {kTaskTranspose, {kSlotTranspose}, DerivationTask::kTranspose},
      {kTaskInverse, {kSlotInverse}, DerivationTask::kInverse},
      {kTaskAdjoint, {kSlotAdjoint}, DerivationTask::kAdjoint},
      {kTaskLU, {kSlotL, kSlotU}, DerivationTask::kLu},
      {kTaskQR, {kSlotQ, kSlotR}, DerivationTask::kQr},
      {kTaskEigen, {kSlotEigenvalues}, DerivationTask::kEigenvalues},
  };
  for (const Way& way : ways) {
    Run(way.task);
    for (const qmx::Slot slot : way.slots) {
      DocumentWindow& window = OpenSteps(slot);
      EXPECT_EQ(window.objectName(), "frmSteps");
      EXPECT_EQ(deriver.Asked().task, way.derived) << slot;
      EXPECT_NE(window.View().Shown(), nullptr) << slot;
      window.close();
      QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
  }
  DocumentWindow& vectors = OpenSteps(kSlotEigenvectors);
  EXPECT_EQ(deriver.Asked().task, DerivationTask::kEigenvectors);
  EXPECT_EQ(vectors.windowTitle(), "Steps: Eigenvectors of A");
}

TEST_F(StepsTest, NumbersAndVerdictsHaveTheirStepsBesideThem) {
  Enter(kSlotA, 2, 2, {"2", "1", "1", "3"});
  const std::vector<std::tuple<Task, const char*, DerivationTask>> ways{
      {kTaskDeterminant, "cmdStepsDeterminant", DerivationTask::kDeterminant},
      {kTaskTrace, "cmdStepsTrace", DerivationTask::kTrace},
      {kTaskDefiniteness, "cmdStepsDefiniteness", DerivationTask::kDefiniteness},
      {kTaskSymmetry, "cmdStepsSymmetry", DerivationTask::kSymmetry}};
  for (const auto& [task, name, derived] : ways) {
    auto& button = Part<StepsButton>(Main(), name);
    Run(task);
    EXPECT_TRUE(button.isEnabled()) << name;
    EXPECT_FALSE(button.accessibleName().isEmpty()) << name;
    Main().activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Main()));
    button.setFocus();
    Key(Qt::Key_Space);
    UntilDerived();
    EXPECT_EQ(deriver.Asked().task, derived) << name;
    ASSERT_NE(Steps(button.Of()), nullptr) << name;
    EXPECT_TRUE(Steps(button.Of())->isVisible()) << name;
  }
}

TEST_F(StepsTest, BeforeThereIsAResultTheButtonIsOffAndSaysWhy) {
  auto& button = Part<StepsButton>(Main(), "cmdStepsDeterminant");
  EXPECT_TRUE(button.isVisible());
  EXPECT_FALSE(button.isEnabled());
  EXPECT_EQ(button.toolTip(), "This has not been computed");
  EXPECT_FALSE(Main().findChild<QMenu*>("mnuSteps")->menuAction()->isEnabled());
}

TEST_F(StepsTest, TheCurrentElementIsTheOneThatIsDerived) {
  EnterBoth();
  Run(kTaskProduct);
  Window(kSlotProduct).activateWindow();
  ClickCell(kSlotProduct, 2, 1);
  OpenSteps(kSlotProduct);
  EXPECT_EQ(deriver.Asked().row, 2);
  EXPECT_EQ(deriver.Asked().col, 1);
  EXPECT_EQ(deriver.Asked().b(2, 1), 7.0);
  // Another element is derived anew, in the same window; the same one is not.
  ClickCell(kSlotProduct, 1, 2);
  OpenSteps(kSlotProduct);
  EXPECT_EQ(deriver.Asked().row, 1);
  EXPECT_EQ(deriver.begun, 2);
  OpenSteps(kSlotProduct);
  EXPECT_EQ(deriver.begun, 2);
}

TEST_F(StepsTest, WhatIsNotAboutAnElementIsNotDerivedAgainForAnother) {
  OpenInverse();
  ClickCell(kSlotInverse, 1, 1);
  OpenSteps(kSlotInverse);
  ClickCell(kSlotInverse, 2, 2);
  OpenSteps(kSlotInverse);
  EXPECT_EQ(deriver.begun, 1);
}

TEST_F(StepsTest, TheMenuOfTheTasksHasWhatThereIs) {
  Enter(kSlotA, 2, 2, {"2", "1", "1", "3"});
  Run(kTaskInverse);
  auto* menu = Main().findChild<QMenu*>("mnuSteps");
  EXPECT_TRUE(menu->menuAction()->isEnabled());
  QStringList shown;
  for (const QAction* entry : menu->actions()) {
    if (entry->isVisible()) shown << entry->text();
  }
  EXPECT_EQ(shown, QStringList{"Inverse of A"});
  Main().findChild<QAction*>("mnuSteps_" + QString::number(kResultInverse))->trigger();
  UntilDerived();
  EXPECT_EQ(Steps(kResultInverse)->windowTitle(), "Steps: Inverse of A");
}

TEST_F(StepsTest, WithChangedOperandsThereAreNoStepsUntilUndoBringsThemBack) {
  DocumentWindow& window = OpenInverse();
  EXPECT_EQ(Told(window, "lblNote"), "");
  Type("5");
  auto& button = Part(Window(kSlotInverse), "cmdSteps");
  EXPECT_FALSE(button.isEnabled());
  EXPECT_EQ(button.toolTip(),
            "A has changed since this was computed: compute it again to see its steps");
  EXPECT_EQ(Told(window, "lblNote"), "A has changed since these steps were made.");
  EXPECT_FALSE(Part(window, "cmdRenew").isVisible());
  program.Runner().Undo();
  EXPECT_TRUE(button.isEnabled());
  EXPECT_EQ(Told(window, "lblNote"), "");
}

TEST_F(StepsTest, AnotherResultIsToldAndItsStepsAreOnePressAway) {
  DocumentWindow& window = OpenInverse();
  Type("5");
  Run(kTaskInverse);
  EXPECT_EQ(Told(window, "lblNote"),
            "These are the steps of another result: the inverse on show is not this one.");
  ASSERT_TRUE(Part(window, "cmdRenew").isVisible());
  QTest::mouseClick(&Part(window, "cmdRenew"), Qt::LeftButton);
  UntilDerived();
  EXPECT_EQ(Told(window, "lblNote"), "");
  EXPECT_EQ(deriver.Asked().a(1, 1), 5.0);
  program.Runner().Undo();
  EXPECT_NE(Told(window, "lblNote"), "");
  program.Runner().Undo();
  program.Runner().Undo();
  EXPECT_EQ(Told(window, "lblNote"), "These are the steps of a result that is not there any more.");
  program.Runner().Redo();
  program.Runner().Redo();
  program.Runner().Redo();
  EXPECT_EQ(Told(window, "lblNote"), "");
}

TEST_F(StepsTest, WhileItIsMadeTheWindowSaysSoAndClosingEndsIt) {
  Enter(kSlotA, 2, 2, {"2", "1", "1", "3"});
  Run(kTaskInverse);
  deriver.CloseGate();
  QTest::mouseClick(&Part(Window(kSlotInverse), "cmdSteps"), Qt::LeftButton);
  DocumentWindow* window = Steps(kResultInverse);
  ASSERT_NE(window, nullptr);
  EXPECT_EQ(Told(*window, "lblState"), "The steps are being derived...");
  EXPECT_FALSE(Part(*window, "cmdPrintSteps").isEnabled());
  Until([&] { return deriver.begun == 1; });
  ASSERT_TRUE(QTest::qWaitForWindowActive(window));
  QTest::keyClick(window, Qt::Key_Escape);
  UntilDerived();
  EXPECT_EQ(deriver.stopped, 1);
  EXPECT_EQ(Steps(kResultInverse), nullptr);
  deriver.OpenGate();
  EXPECT_NE(OpenSteps(kSlotInverse).View().Shown(), nullptr);
}

TEST_F(StepsTest, TasksGoOnWhileStepsAreMade) {
  Enter(kSlotA, 2, 2, {"2", "1", "1", "3"});
  Run(kTaskInverse);
  deriver.CloseGate();
  QTest::mouseClick(&Part(Window(kSlotInverse), "cmdSteps"), Qt::LeftButton);
  Until([&] { return deriver.begun == 1; });
  Type("7");
  EXPECT_EQ(Slot(kSlotA).array(1, 1), 7.0);
  deriver.OpenGate();
  UntilDerived();
  EXPECT_EQ(deriver.Asked().a(1, 1), 2.0) << "as it was when the inverse was computed";
}

TEST_F(StepsTest, TheEndOfTheProgramEndsADerivation) {
  class Other : public Desktop {
   public:
    explicit Other(const Deriver* one) : Desktop(nullptr, one) {}

   private:
    void TestBody() override {}
  };
  deriver.CloseGate();
  {
    Other other(&deriver);
    other.Enter(kSlotA, 2, 2, {"2", "1", "1", "3"});
    other.Click(cmdTask(kTaskInverse));
    QTest::mouseClick(other.Window(kSlotInverse).findChild<QPushButton*>("cmdSteps"),
                      Qt::LeftButton);
    Until([&] { return deriver.begun == 1; });
  }
  EXPECT_EQ(deriver.stopped, 1);
}

TEST_F(StepsTest, WithoutMemoryTheWindowSaysSoAndTheNextPressTriesAgain) {
  deriver.fails = true;
  DocumentWindow& window = OpenInverse();
  EXPECT_EQ(Told(window, "lblState"), "There is not enough memory for the steps.");
  EXPECT_FALSE(Part(window, "cmdPdfSteps").isEnabled());
  deriver.fails = false;
  EXPECT_EQ(&OpenSteps(kSlotInverse), &window);
  EXPECT_NE(window.View().Shown(), nullptr);
  EXPECT_EQ(Told(window, "lblState"), "");
  Run(kTaskTranspose);
  EXPECT_NE(OpenSteps(kSlotTranspose).View().Shown(), nullptr);
}

TEST_F(StepsTest, WhereThereAreNoneTheWindowSaysSo) {
  deriver.isEmpty = true;
  DocumentWindow& window = OpenInverse();
  EXPECT_EQ(Told(window, "lblState"), "There are no steps of this.");
  EXPECT_FALSE(Part(window, "cmdPrintSteps").isEnabled());
  OpenSteps(kSlotInverse);
  EXPECT_EQ(deriver.begun, 1);
}

TEST_F(StepsTest, APressWhileSomethingIsComputedIsRefused) {
  Enter(kSlotA, 2, 2, {"2", "1", "1", "3"});
  Run(kTaskInverse);
  EXPECT_EQ(Meanwhile([&] {
              QTest::mouseClick(&Part(Window(kSlotInverse), "cmdSteps"), Qt::LeftButton);
            }),
            kRefusal);
  EXPECT_EQ(Steps(kResultInverse), nullptr);
  EXPECT_EQ(deriver.begun, 0);
}

TEST_F(StepsTest, AButtonThatGoesOffLeavesTheKeyboardToOneThatDoesNoHarm) {
  Enter(kSlotA, 2, 2, {"2", "1", "1", "3"});
  Run(kTaskDeterminant);
  Run(kTaskInverse);
  Part(Main(), "cmdStepsDeterminant").setFocus();
  Part(Window(kSlotInverse), "cmdSteps").setFocus();
  Type("5");
  EXPECT_EQ(Main().focusWidget(), Get(cmdTask(kTaskDeterminant)));
  EXPECT_EQ(Window(kSlotInverse).focusWidget(), &Part(Window(kSlotInverse), "cmdToggleWidth"));
}

TEST_F(StepsTest, OnePressSwitchesTheNumbersAndIsRemembered) {
  DocumentWindow& window = OpenInverse();
  EXPECT_EQ(window.View().Form(), NumberForm::kFractions);
  EXPECT_EQ(Told(window, "lblLegend"), "Framed: the pivot");
  QTest::mouseClick(&Part<QRadioButton>(window, "optDecimals"), Qt::LeftButton, {}, {10, 10});
  EXPECT_EQ(window.View().Form(), NumberForm::kDecimals);
  EXPECT_EQ(Told(window, "lblLegend"), "Framed: the pivot; grey digits: lost by rounding");
  QTest::keyClick(&window, Qt::Key_B, Qt::AltModifier);
  Until([&] { return window.View().Form() == NumberForm::kBoth; });
  window.close();
  Run(kTaskTranspose);
  DocumentWindow& other = OpenSteps(kSlotTranspose);
  EXPECT_EQ(other.View().Form(), NumberForm::kBoth);
  EXPECT_TRUE(Part<QRadioButton>(other, "optBoth").isChecked());
}

TEST_F(StepsTest, WhoHasChosenTheFormReadsOn) {
  DocumentWindow& window = OpenInverse();
  for (int k = 0; k < 9; ++k) Key(Qt::Key_Plus, Qt::ControlModifier);
  window.resize(400, 200);
  Part<QRadioButton>(window, "optDecimals").setFocus();
  ASSERT_GT(window.View().verticalScrollBar()->maximum(), 0);
  Key(Qt::Key_PageDown);
  EXPECT_GT(window.View().verticalScrollBar()->value(), 0);
  Key(Qt::Key_0, Qt::ControlModifier);
}

TEST_F(StepsTest, ArrowsAreForTheDocumentFromTheFirstMomentOn) {
  Enter(kSlotA, 12, 1, std::vector<std::string>(12, "2"));
  Run(kTaskTranspose);
  deriver.CloseGate();
  QTest::mouseClick(&Part(Window(kSlotTranspose), "cmdSteps"), Qt::LeftButton);
  DocumentWindow& window = *Steps(kResultTranspose);
  window.resize(400, 200);
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  Key(Qt::Key_Down);
  EXPECT_TRUE(Part<QRadioButton>(window, "optFractions").isChecked()) << "while it is derived";
  deriver.OpenGate();
  UntilDerived();
  ASSERT_GT(window.View().verticalScrollBar()->maximum(), 0);
  Key(Qt::Key_Down);
  EXPECT_GT(window.View().verticalScrollBar()->value(), 0);
  EXPECT_TRUE(Part<QRadioButton>(window, "optFractions").isChecked());
}

TEST_F(StepsTest, TheKeyboardIsNotLostWithTheButtonThatRenews) {
  DocumentWindow& window = OpenInverse();
  Type("5");
  Run(kTaskInverse);
  window.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  Part(window, "cmdRenew").setFocus();
  deriver.CloseGate();
  Key(Qt::Key_Space);
  EXPECT_TRUE(Part<QLabel>(window, "lblState").hasFocus());
  deriver.OpenGate();
  UntilDerived();
  EXPECT_TRUE(window.View().hasFocus());
}

TEST_F(StepsTest, CopiesAllOrWhatIsSelected) {
  DocumentWindow& window = OpenInverse();
  window.View().setFocus();
  Key(Qt::Key_C, Qt::ControlModifier);
  const QMimeData* held = QApplication::clipboard()->mimeData();
  EXPECT_TRUE(held->hasHtml());
  EXPECT_TRUE(held->text().contains("Row 2 minus 1/3 of row 1.")) << held->text().toStdString();
  // The first word of the sentence, and the next one.
  Key(Qt::Key_Right, Qt::ShiftModifier);
  Key(Qt::Key_Right, Qt::ShiftModifier);
  Key(Qt::Key_C, Qt::ControlModifier);
  EXPECT_EQ(QApplication::clipboard()->text().trimmed().toStdString().substr(0, 4), "Told");
  EXPECT_FALSE(QApplication::clipboard()->text().contains("of row"));
  Key(Qt::Key_Escape);
  EXPECT_FALSE(window.View().HasSelection());
  Part<QAction>(window, "mnuCopyLatex").trigger();
  EXPECT_EQ(QApplication::clipboard()->text().toStdString(),
            LatexText(*window.View().Shown(), NumberForm::kFractions));
  Part<QAction>(window, "mnuCopyHtml").trigger();
  EXPECT_TRUE(QApplication::clipboard()->text().contains("<html"));
}

TEST_F(StepsTest, IsSavedAsPdfAndAFileThatCannotBeWrittenIsTold) {
  DocumentWindow& window = OpenInverse();
  const QTemporaryDir folder;
  const std::string name = folder.filePath("steps").toStdString();
  SaveAs(window, QString::fromStdString(name), [](QMessageBox& box) { box.close(); });
  ASSERT_TRUE(files.files.contains(name + ".pdf"));
  EXPECT_EQ(files.files[name + ".pdf"].substr(0, 5), "%PDF-");
  files.room = 10;
  std::string told;
  SaveAs(window, QString::fromStdString(name), [&](QMessageBox& box) {
    told = box.text().toStdString();
    box.button(QMessageBox::Ok)->click();
  });
  EXPECT_NE(told.find("could not be written. It is as it was before."), std::string::npos) << told;
  EXPECT_EQ(files.files[name + ".pdf"].substr(0, 5), "%PDF-");
}

TEST_F(StepsTest, IsShownOnPagesBeforeItIsPrinted) {
  DocumentWindow& window = OpenInverse();
  int pages = 0;
  WithDialogs([&] { QTest::keyClick(&window, Qt::Key_P, Qt::ControlModifier); },
              [&](QWidget& modal) {
                auto* preview = qobject_cast<QPrintPreviewDialog*>(&modal);
                if (preview == nullptr) return;
                EXPECT_EQ(preview->objectName(), "frmPrintSteps");
                pages = preview->findChild<QPrintPreviewWidget*>()->pageCount();
                preview->reject();
              });
  EXPECT_EQ(pages, 1);
}

TEST_F(StepsTest, CtrlPlusMakesTheDocumentLarger) {
  DocumentWindow& window = OpenInverse();
  const QRect before = window.View().BlockRect(2);
  Key(Qt::Key_Plus, Qt::ControlModifier);
  EXPECT_GT(window.View().BlockRect(2).height(), before.height());
  Key(Qt::Key_0, Qt::ControlModifier);
  EXPECT_EQ(window.View().BlockRect(2), before);
}

TEST_F(StepsTest, AResetLeavesTheWindowAndSaysThatTheResultIsGone) {
  DocumentWindow& window = OpenInverse();
  Run(kTaskTranspose);
  Main().activateWindow();
  ActAndAnswer([&] { Click(cmdResetA); }, QMessageBox::Yes);
  EXPECT_EQ(Told(window, "lblNote"), "These are the steps of a result that is not there any more.");
  EXPECT_NE(window.View().Shown(), nullptr);
}

using WithoutDeriver = Desktop;

TEST_F(WithoutDeriver, NothingTellsOfSteps) {
  Enter(kSlotA, 2, 2, {"2", "1", "1", "3"});
  Click(cmdTask(kTaskInverse));
  EXPECT_EQ(Window(kSlotInverse).findChild<QPushButton*>("cmdSteps"), nullptr);
  for (const StepsButton* button : Main().findChildren<StepsButton*>())
    EXPECT_FALSE(button->isVisible());
  EXPECT_FALSE(Main().findChild<QMenu*>("mnuSteps")->menuAction()->isVisible());
}

}  // namespace
}  // namespace qmx::test
