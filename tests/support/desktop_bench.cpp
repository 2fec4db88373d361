// SPDX-License-Identifier: MIT
#include "support/desktop_bench.h"

#include <QtTest/qtestspontaneevent.h>

#include <QCloseEvent>
#include <QLineEdit>
#include <QTest>
#include <QTimer>

#include "app/settings.h"

namespace qmx::test {

Desktop::Desktop(const Prover* prover, const Deriver* deriver)
    : program({files, printer, random, clock, memory}, settings, prover, deriver) {
  // Where a test before left its windows is nothing to this one.
  Settings().remove("windows");
  program.Start("");
  Main().activateWindow();
  EXPECT_TRUE(QTest::qWaitForWindowActive(&Main()));
}

void Desktop::Keys(const std::string& text) {
  for (const char character : text) QTest::keyClick(QApplication::focusWidget(), character);
}

void Desktop::Key(Qt::Key key, Qt::KeyboardModifiers held) {
  QTest::keyClick(QApplication::focusWidget(), key, held);
}

void Desktop::Click(const Control& button) {
  auto* target = Get<QAbstractButton>(button);
  ASSERT_TRUE(target->isEnabled()) << button.ObjectName();
  ASSERT_TRUE(target->isVisible()) << button.ObjectName();
  // An option or check box reacts where its mark is.
  QTest::mouseClick(target, Qt::LeftButton, {}, {10, target->height() / 2});
}

void Desktop::TypeInto(const Control& field, const std::string& text) {
  auto* target = Get<QLineEdit>(field);
  // A click into another window brings that window the keyboard first.
  Main().activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&Main()));
  QTest::mouseClick(target, Qt::LeftButton);
  QTest::keyClicks(target, QString::fromStdString(text));
}

SeenBox Desktop::ActAndAnswer(const std::function<void()>& act,
                              QMessageBox::StandardButton answer) {
  SeenBox seen;
  QTimer poll;
  QObject::connect(&poll, &QTimer::timeout, [&] {
    auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    if (box == nullptr) return;
    seen = {box->windowTitle().toStdString(), box->text().toStdString(), box->icon(),
            box->standardButtons()};
    poll.stop();
    box->button(answer)->click();
  });
  poll.start(5);
  act();
  EXPECT_FALSE(seen.text.empty()) << "no message box";
  return seen;
}

SeenBox Desktop::ClickAndAnswer(const Control& button, QMessageBox::StandardButton answer) {
  SCOPED_TRACE(button.ObjectName());
  return ActAndAnswer([&] { Click(button); }, answer);
}

GridWindow& Desktop::Window(qmx::Slot slot) {
  GridWindow* window = program.Windows().Window(slot);
  if (window == nullptr) throw std::runtime_error("window " + std::to_string(slot) + " is missing");
  return *window;
}

EntryBox& Desktop::Box(qmx::Slot slot) {
  auto* box = Window(slot).findChild<EntryBox*>("txtDataEntry");
  if (box == nullptr) throw std::runtime_error("no entry box");
  return *box;
}

void Desktop::ClickCell(qmx::Slot slot, int row, int col) {
  MatrixGrid& grid = Grid(slot);
  QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, grid.CellRect(row, col).center());
}

void Desktop::ClickToggle(qmx::Slot slot) {
  QTest::mouseClick(Window(slot).findChild<QAbstractButton*>("cmdToggleWidth"), Qt::LeftButton);
}

void Desktop::CloseByBox(QWidget& window) {
  // What the desktop's close box leads to comes from outside the program.
  QCloseEvent event;
  QSpontaneKeyEvent::setSpontaneous(&event);
  qApp->notify(&window, &event);
}

void Desktop::Enter(qmx::Slot operand, int rows, int cols,
                    const std::vector<std::string>& elements) {
  TypeInto(InfoOf(operand).rows, std::to_string(rows));
  TypeInto(InfoOf(operand).cols, std::to_string(cols));
  Click(operand == kSlotA ? cmdCreateA : cmdCreateB);
  ASSERT_TRUE(QTest::qWaitForWindowActive(&Window(operand)));
  for (const std::string& element : elements) {
    Keys(element);
    Key(Qt::Key_Right);
  }
}

}  // namespace qmx::test
