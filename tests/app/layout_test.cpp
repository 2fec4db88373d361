// SPDX-License-Identifier: MIT
// How the main window is laid out.

#include <QAbstractButton>
#include <QAction>
#include <QGroupBox>
#include <QHelpEvent>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QToolTip>
#include <cmath>
#include <set>

#include "app/result_frame.h"
#include "app/widgets.h"
#include "commands/task_table.h"
#include "support/desktop_bench.h"
#include "workspace/field_table.h"

namespace qmx::test {
namespace {

using Layout = Desktop;

std::vector<Control> NamedControls() {
  std::vector<Control> all{lblDeterminantOfA, lblTraceOfA,       lblDefiniteness, lblSymmetry,
                           cmdCreateA,        cmdCreateB,        cmdRetrieveA,    cmdRetrieveB,
                           cmdClearA,         cmdClearB,         cmdResetA,       cmdResetB,
                           cmdExchangeAandB,  cmdSolve,          cmdRetrieveLU,   cmdCreateSystem,
                           cmdClearSystem,    cmdRetrieveSystem, cmdResetSystem,  cmdSaveLU,
                           cmdShowResults,    mnuPrint};
  for (const char* name : {"fraTask",           "fraScalar",
                           "fraShift",          "fraPivot",
                           "fraRandom",         "fraEigenControls",
                           "lblScalar",         "lblShift",
                           "lblRandom",         "lblError",
                           "lblMaxcy",          "lblErs",
                           "lblPert",           "lblDeterminantOfAequals",
                           "lblTraceOfAequals", "lblNumEquations",
                           "lblNumUnknowns",    "mnuOpen",
                           "mnuSave",           "mnuSaveAs",
                           "mnuExit",           "mnuAssociate",
                           "mnuHelp",           "mnuAbout"}) {
    all.push_back({name});
  }
  return all;
}

std::vector<Control> AllControls() {
  std::vector<Control> all = NamedControls();
  for (const FieldInfo& field : kFields) all.push_back(field.control);
  for (const OptionInfo& option : kOptions) all.push_back(option.control);
  for (const TaskInfo& task : Tasks()) all.push_back(cmdTask(task.index));
  for (const SlotInfo& info : kSlots) {
    for (const Control& control : {fraFrame(info.slot), cmdShow(info.slot), cmdSave(info.slot),
                                   cmdPrint(info.slot), info.rows, info.cols}) {
      all.push_back(control);
    }
    if (info.slot != kSlotA) all.push_back(cmdIntoA(info.slot));
    if (info.slot != kSlotB) all.push_back(cmdIntoB(info.slot));
  }
  return all;
}

void ShowAllFrames(Desktop& desktop) {
  for (const qmx::Slot slot : kAllSlots) {
    desktop.program.Windows().SetFrameVisible(slot, true);
    if (HasPermanentFrame(slot)) continue;
    desktop.program.Windows().SetText(InfoOf(slot).rows, "2000");
    desktop.program.Windows().SetText(InfoOf(slot).cols, "2000");
  }
  QTest::qWait(20);
}

TEST_F(Layout, EveryControlIsThereOnce) {
  for (const Control& control : AllControls()) {
    const QString name = QString::fromStdString(control.ObjectName());
    EXPECT_EQ(Main().findChildren<QObject*>(name).size(), 1) << control.ObjectName();
  }
  EXPECT_EQ(Main().Find(cmdIntoA(kSlotA)), nullptr);
  EXPECT_EQ(Main().Find(cmdIntoB(kSlotB)), nullptr);
}

TEST_F(Layout, CaptionsOfFramesAndTasksAreTheirOwn) {
  const std::vector<std::pair<Control, const char*>> titles{
      {{"fraScalar"}, "For scalar multiplication"},
      {{"fraShift"}, "For scalar shift"},
      {{"fraPivot"}, "Partial pivoting"},
      {{"fraRandom"}, "For random matrix"},
      {{"fraEigenControls"}, "Eigenvalues/eigenvectors computation"},
      {fraFrame(kSlotCreated), "Special matrix"},
      {fraFrame(kSlotSystem), "System of linear equations"}};
  for (const auto& [control, title] : titles) EXPECT_EQ(Get<QGroupBox>(control)->title(), title);
  for (const TaskInfo& task : Tasks()) {
    const auto* button = Get<QAbstractButton>(cmdTask(task.index));
    EXPECT_EQ(button->text().toStdString(), task.caption);
    EXPECT_EQ(button->toolTip().toStdString(), task.toolTip);
  }
  EXPECT_EQ(Get<QLabel>({"lblRandom"})->text(), "<=elements<=");
  EXPECT_EQ(Get<QAbstractButton>(cmdShowResults)->text(), "Show Results");
  EXPECT_EQ(Get<QAbstractButton>(cmdSolve)->text(), "Solve");
  EXPECT_EQ(Get<QAbstractButton>(cmdRetrieveLU)->text(), "Retrieve LU factors");
  EXPECT_EQ(Get<QAbstractButton>(cmdSaveLU)->text(), "Save LU factors");
  EXPECT_EQ(Get<QAbstractButton>(cmdSaveLU)->toolTip(), "Saves LU factors in a separate file");
  EXPECT_EQ(Main().windowTitle(), "Orvane");
}

const QScrollArea& Area(Desktop& desktop) {
  return *qobject_cast<QScrollArea*>(desktop.Main().centralWidget());
}

TEST_F(Layout, FitsASmallScreenWithoutScrolling) {
  ShowAllFrames(*this);
  ASSERT_EQ(Main().screen()->size(), QSize(1366, 768));
  // Three fifths of the screen; the rest is for the windows of the matrices.
  EXPECT_LE(Main().width(), 820);
  // A title bar and the desktop's panel take the rest.
  EXPECT_LE(Main().height(), 768 - 40 - 28);
  const auto* area = qobject_cast<QScrollArea*>(Main().centralWidget());
  EXPECT_EQ(area->horizontalScrollBar()->maximum(), 0);
  EXPECT_EQ(area->verticalScrollBar()->maximum(), 0);
}

/// Every text and icon has the room that it asks for.
void ExpectNothingClipped(Desktop& desktop) {
  int seen = 0;
  for (const QWidget* widget : desktop.Main().findChildren<QWidget*>()) {
    const auto* label = qobject_cast<const QLabel*>(widget);
    const bool hasText = qobject_cast<const QAbstractButton*>(widget) != nullptr ||
                         label != nullptr || qobject_cast<const QLineEdit*>(widget) != nullptr;
    if (!hasText || !widget->isVisible() || widget->objectName().startsWith("qt_")) continue;
    ++seen;
    const int width = widget->width();
    const bool wraps = label != nullptr && label->wordWrap();
    EXPECT_GE(width, wraps ? 1 : widget->sizeHint().width()) << widget->objectName().toStdString();
    const int height = wraps ? label->heightForWidth(width) : widget->sizeHint().height();
    EXPECT_GE(widget->height(), height) << widget->objectName().toStdString();
  }
  EXPECT_GT(seen, 150);
}

TEST_F(Layout, NothingIsClipped) {
  ShowAllFrames(*this);
  ExpectNothingClipped(*this);
  for (const int width : {Area(*this).widget()->minimumSizeHint().width(), 1000, 1366}) {
    Main().resize(width, Main().height());
    ExpectNothingClipped(*this);
  }
}

/// The layout in a font that is half as large again, as desktops of 144 dots an inch have it.
class LargeFont {
 public:
  LargeFont() {
    QFont font = before_;
    font.setPointSizeF(font.pointSizeF() * 1.5);
    QApplication::setFont(font);
  }
  ~LargeFont() { QApplication::setFont(before_); }

 private:
  QFont before_ = QApplication::font();
};
class LargeLayout : public LargeFont, public Desktop {};

TEST_F(LargeLayout, ScrollsOneWayOnlyAndClipsNothing) {
  ShowAllFrames(*this);
  EXPECT_LE(Main().width(), 1366);
  EXPECT_EQ(Area(*this).horizontalScrollBar()->maximum(), 0);
  ExpectNothingClipped(*this);
}

TEST_F(Layout, ScrollsOneWayOnlyOnHalfOfALargeScreen) {
  // What 1920 x 1080 leaves at twice the size.
  Main().resize(960, 500);
  ShowAllFrames(*this);
  EXPECT_EQ(Area(*this).horizontalScrollBar()->maximum(), 0);
  EXPECT_GT(Area(*this).verticalScrollBar()->maximum(), 0);
}

std::vector<CommandButton*> IconButtons(Desktop& desktop) {
  std::vector<CommandButton*> buttons;
  for (auto* button : desktop.Main().findChildren<CommandButton*>()) {
    if (!button->icon().isNull()) buttons.push_back(button);
  }
  return buttons;
}

TEST_F(Layout, CaptionsAreShownWhereThereIsRoomForThem) {
  ShowAllFrames(*this);
  ASSERT_EQ(IconButtons(*this).size(), 18U * 5 - 2 + 5 + 3 * 3);
  for (const CommandButton* button : IconButtons(*this)) {
    EXPECT_FALSE(button->text().isEmpty()) << button->objectName().toStdString();
    EXPECT_FALSE(button->accessibleName().isEmpty()) << button->objectName().toStdString();
  }
  EXPECT_FALSE(Get<CommandButton>(cmdShow(kSlotA))->ShowsCaption());
  EXPECT_FALSE(Get<CommandButton>(cmdShow(kSlotSum))->ShowsCaption());
  EXPECT_TRUE(Get<CommandButton>(cmdCreateA)->ShowsCaption());
  Main().resize(1366, Main().height());
  for (const CommandButton* button : IconButtons(*this))
    EXPECT_TRUE(button->ShowsCaption()) << button->objectName().toStdString();
  EXPECT_EQ(Get<CommandButton>(cmdShow(kSlotA))->text(), "Show");
}

TEST_F(Layout, AnIconIsLargeEnoughForAFinger) {
  ShowAllFrames(*this);
  for (const CommandButton* button : IconButtons(*this)) {
    EXPECT_GE(button->width(), 28) << button->objectName().toStdString();
    EXPECT_GE(button->height(), 28) << button->objectName().toStdString();
  }
}

TEST_F(Layout, AnIconWithoutAToolTipShowsItsCaptionUnderTheMouse) {
  auto* button = Get<CommandButton>(cmdClearA);
  EXPECT_EQ(button->toolTip(), "");
  QHelpEvent hover(QEvent::ToolTip, {5, 5}, button->mapToGlobal(QPoint(5, 5)));
  QCoreApplication::sendEvent(button, &hover);
  EXPECT_EQ(QToolTip::text(), "Clear");
  QToolTip::hideText();
}

/// The colours of a light and of a dark desktop.
QPalette Colours(bool dark) { return QPalette(dark ? QColor(53, 53, 53) : QColor(239, 239, 239)); }

class Coloured : public ::testing::TestWithParam<bool> {
 public:
  Coloured() { QApplication::setPalette(Colours(GetParam())); }
  ~Coloured() override { QApplication::setPalette(before_); }

 private:
  QPalette before_ = QApplication::palette();
};

/// The largest contrast of any pixel with the one in the corner.
double ContrastIn(const QImage& picture) {
  const auto linear = [](double part) {
    return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  const auto luminance = [&](const QColor& colour) {
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
  };
  const double ground = luminance(picture.pixelColor(0, 0));
  double most = 1;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      const double one = luminance(picture.pixelColor(x, y));
      most = std::max(most, (std::max(one, ground) + 0.05) / (std::min(one, ground) + 0.05));
    }
  }
  return most;
}

TEST_P(Coloured, NamesOfResultsCanBeReadWhetherThereOrNot) {
  struct Bench : Desktop {
    void TestBody() override {}
  } desktop;
  int names = 0;
  for (const bool there : {false, true}) {
    if (there) ShowAllFrames(desktop);
    for (ResultTitle* title : desktop.Main().findChildren<ResultTitle*>()) {
      ++names;
      const QPalette::ColorGroup group = there ? QPalette::Active : QPalette::Disabled;
      const QPalette colours = title->palette();
      QImage sample(2, 1, QImage::Format_RGB32);
      sample.setPixelColor(0, 0, colours.color(QPalette::Active, QPalette::Window));
      sample.setPixelColor(1, 0, colours.color(group, QPalette::WindowText));
      EXPECT_EQ(title->isEnabled(), there);
      EXPECT_GE(ContrastIn(sample), 4.5) << title->text().toStdString();
    }
  }
  EXPECT_EQ(names, 30);
}

TEST_P(Coloured, IconsHaveTheColourOfTheTextOfButtons) {
  struct Bench : Desktop {
    void TestBody() override {}
  } desktop;
  ShowAllFrames(desktop);
  const QColor ink = QApplication::palette().color(QPalette::ButtonText);
  for (CommandButton* button : IconButtons(desktop)) {
    const QImage picture = button->icon().pixmap(QSize(36, 36)).toImage();
    int inked = 0;
    for (int y = 0; y < picture.height(); ++y) {
      for (int x = 0; x < picture.width(); ++x) inked += picture.pixelColor(x, y) == ink ? 1 : 0;
    }
    EXPECT_GT(inked, 30) << button->objectName().toStdString();
  }
}

INSTANTIATE_TEST_SUITE_P(LightAndDark, Coloured, ::testing::Bool());

TEST_F(Layout, ALongNumberMovesNothing) {
  const QPoint place = Get(cmdTask(kTaskTrace))->mapTo(&Main(), QPoint(0, 0));
  program.Windows().SetText(lblDeterminantOfA, "-1.23456789012345E-105");
  auto* digits = Get<QLabel>({"lblDigitsOfDeterminant"});
  digits->setText("all digits hold");
  digits->show();
  QTest::qWait(20);
  EXPECT_EQ(Get(cmdTask(kTaskTrace))->mapTo(&Main(), QPoint(0, 0)), place);
  EXPECT_GE(Get(lblDeterminantOfA)->width(), Get(lblDeterminantOfA)->sizeHint().width());
  EXPECT_EQ(Area(*this).horizontalScrollBar()->maximum(), 0);
}

TEST_F(Layout, FramesThatAppearMoveNothing) {
  std::vector<std::pair<QWidget*, QPoint>> places;
  for (QWidget* widget : Main().findChildren<QWidget*>()) {
    if (widget->isVisible()) places.emplace_back(widget, widget->mapTo(&Main(), QPoint(0, 0)));
  }
  ASSERT_GT(places.size(), 100U);
  ShowAllFrames(*this);
  for (const auto& [widget, place] : places) {
    EXPECT_EQ(widget->mapTo(&Main(), QPoint(0, 0)), place) << widget->objectName().toStdString();
  }
}

TEST_F(Layout, OnlyTheFramesOfOperandsShowAtStart) {
  for (const qmx::Slot slot : kAllSlots) {
    EXPECT_EQ(Get(fraFrame(slot))->isVisible(), HasPermanentFrame(slot)) << slot;
  }
}

TEST_F(Layout, TabReachesEveryEnabledControl) {
  ShowAllFrames(*this);
  std::set<QWidget*> wanted;
  for (const Control& control : AllControls()) {
    auto* widget = qobject_cast<QWidget*>(Main().Find(control));
    if (widget == nullptr || (widget->focusPolicy() & Qt::TabFocus) == 0) continue;
    // Of a group of options Tab reaches the selected one, and arrows the others.
    const auto* option = qobject_cast<QRadioButton*>(widget);
    if (option != nullptr && !option->isChecked()) continue;
    widget->setEnabled(true);
    wanted.insert(widget);
  }
  ASSERT_GT(wanted.size(), 140U);
  const std::size_t most = wanted.size() + 40;
  for (std::size_t presses = 0; presses < most && !wanted.empty(); ++presses) {
    wanted.erase(QApplication::focusWidget());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
  }
  for (const QWidget* missed : wanted) ADD_FAILURE() << missed->objectName().toStdString();
}

TEST_F(Layout, TabStartsWithTheDimensionsOfA) {
  EXPECT_EQ(QApplication::focusWidget(), Get(txtRowsA));
  for (const Control& next : {txtColsA, cmdCreateA, cmdRetrieveA, txtRowsB}) {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), Get(next)) << next.name;
  }
}

TEST_F(Layout, MenusHaveTheUsualShortcuts) {
  const std::vector<std::pair<const char*, const char*>> shortcuts{
      {"mnuOpen", "Ctrl+O"},  {"mnuSave", "Ctrl+S"}, {"mnuSaveAs", "Ctrl+Shift+S"},
      {"mnuPrint", "Ctrl+P"}, {"mnuExit", "Ctrl+Q"}, {"mnuWindowHelp", "F1"}};
  for (const auto& [name, keys] : shortcuts) {
    EXPECT_EQ(Main().Action(name)->shortcut(), QKeySequence(keys)) << name;
  }
}

TEST_F(Layout, FieldsAndButtonsAreNamedForThoseWhoHearThem) {
  for (const FieldInfo& info : kFields) {
    EXPECT_EQ(Get(info.control)->accessibleName().toStdString(), info.meaning);
  }
  EXPECT_EQ(Get(cmdShow(kSlotInverse))->accessibleName(), "Inverse of A: Show");
}

}  // namespace
}  // namespace qmx::test
