// SPDX-License-Identifier: MIT
// The window with what is known of A, opened and worked by keys and clicks.

#include "app/more_about_a.h"

#include <QLabel>
#include <QTest>

#include "support/desktop_steps.h"
#include "workspace/task_numbers.h"

namespace qmx::test {
namespace {

class MoreAboutATest : public StepsDesktop {
 protected:
  QAction& Entry() { return *Main().Action("mnuMoreAboutA"); }
  DocumentWindow* Shown() { return program.AboutA().Window(); }
  void UntilFound() {
    Until([this] { return program.AboutA().Runs().IsIdle(); });
  }
  void EnterA() {
    Enter(kSlotA, 2, 2, {"2", "1", "1", "3"});
    Main().activateWindow();
  }
  DocumentWindow& Open() {
    Entry().trigger();
    UntilFound();
    if (Shown() == nullptr) throw std::runtime_error("no window");
    EXPECT_TRUE(QTest::qWaitForWindowActive(Shown()));
    return *Shown();
  }
  void Type(const std::string& text) {
    Window(kSlotA).activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Window(kSlotA)));
    ClickCell(kSlotA, 1, 1);
    QTest::keyClicks(&Box(kSlotA), QString::fromStdString(text));
  }
};

TEST_F(MoreAboutATest, IsThereForAnAOnly) {
  EXPECT_FALSE(Entry().isEnabled());
  program.AboutA().Show();
  EXPECT_EQ(Shown(), nullptr);
  EnterA();
  EXPECT_TRUE(Entry().isEnabled());
  DocumentWindow& window = Open();
  EXPECT_EQ(window.objectName(), "frmMoreAboutA");
  EXPECT_EQ(window.windowTitle(), "More about A");
  ASSERT_NE(window.View().Shown(), nullptr);
}

TEST_F(MoreAboutATest, ShowsWhatIsKnownOfTheElements) {
  EnterA();
  DocumentWindow& window = Open();
  const auto& block = window.View().Shown()->blocks.back();
  const auto& matrix = std::get<ShownMatrix>(std::get<Line>(block).pieces.back());
  EXPECT_EQ(matrix.rows, 2);
  EXPECT_EQ(matrix.cols, 2);
  EXPECT_EQ(Told(window, "lblNote"), "");
}

TEST_F(MoreAboutATest, TellsThatAHasChangedAndIsMadeAnew) {
  EnterA();
  DocumentWindow& window = Open();
  const auto first = window.View().Shown();
  Type("7");
  EXPECT_EQ(Told(window, "lblNote"), "A has changed since this was found.");
  EXPECT_EQ(window.View().Shown(), first);
  window.activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
  QTest::mouseClick(&Part(window, "cmdRenew"), Qt::LeftButton);
  UntilFound();
  ASSERT_NE(window.View().Shown(), nullptr);
  EXPECT_NE(window.View().Shown(), first);
  EXPECT_EQ(Told(window, "lblNote"), "");
}

TEST_F(MoreAboutATest, UndoneChangesLeaveItTrue) {
  EnterA();
  DocumentWindow& window = Open();
  Type("7");
  EXPECT_NE(Told(window, "lblNote"), "");
  Main().Action("mnuUndo")->trigger();
  EXPECT_EQ(Told(window, "lblNote"), "");
}

TEST_F(MoreAboutATest, AnotherChangeAfterAnUndoneOneIsTold) {
  EnterA();
  Type("7");
  DocumentWindow& window = Open();
  Main().Action("mnuUndo")->trigger();
  EXPECT_EQ(Told(window, "lblNote"), "A has changed since this was found.");
  Type("9");
  EXPECT_EQ(Told(window, "lblNote"), "A has changed since this was found.");
}

TEST_F(MoreAboutATest, IsNoStepAndNoChange) {
  EnterA();
  const std::string document = Main().Action("mnuUndo")->text().toStdString();
  const Revisions before = program.State().revisions;
  Open();
  EXPECT_EQ(Main().Action("mnuUndo")->text().toStdString(), document);
  EXPECT_EQ(program.State().revisions.a, before.a);
}

TEST_F(MoreAboutATest, WithoutMemoryTheWindowSaysSoAndTheNextPressTriesAgain) {
  EnterA();
  deriver.fails = true;
  DocumentWindow& window = Open();
  EXPECT_EQ(Told(window, "lblState"), "There is not enough memory for this.");
  deriver.fails = false;
  EXPECT_EQ(&Open(), &window);
  EXPECT_NE(window.View().Shown(), nullptr);
}

TEST_F(MoreAboutATest, WhereThereIsNothingToTellTheWindowSaysSo) {
  EnterA();
  deriver.isEmpty = true;
  EXPECT_EQ(Told(Open(), "lblState"), "There is nothing to tell of this matrix.");
}

TEST_F(MoreAboutATest, APressWhileSomethingIsComputedIsRefused) {
  EnterA();
  EXPECT_EQ(Meanwhile([&] { Entry().trigger(); }), kRefusal);
  EXPECT_EQ(Shown(), nullptr);
}

TEST_F(MoreAboutATest, AClosedWindowEndsWhatIsBeingFound) {
  EnterA();
  deriver.CloseGate();
  Entry().trigger();
  Until([this] { return deriver.begun == 1; });
  ASSERT_NE(Shown(), nullptr);
  EXPECT_EQ(Shown()->View().Shown(), nullptr);
  EXPECT_EQ(Told(*Shown(), "lblState"), "The facts about A are being found...");
  Shown()->close();
  UntilFound();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(deriver.stopped, 1);
  EXPECT_EQ(Shown(), nullptr);
  deriver.OpenGate();
  EXPECT_NE(Open().View().Shown(), nullptr);
}

}  // namespace
}  // namespace qmx::test
