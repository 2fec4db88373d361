// SPDX-License-Identifier: MIT
// Matrices as pictures, worked by mouse and keyboard.

#include "grids/picture_window.h"

#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QHelpEvent>
#include <QLabel>
#include <QMimeData>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QToolTip>

#include "app/pictures.h"
#include "output/picture_colours.h"
#include "support/desktop_bench.h"
#include "workspace/task_numbers.h"

namespace qmx::test {
namespace {

class PictureTest : public Desktop {
 public:
  static PictureWindow* Picture(qmx::Slot slot) {
    const QString title = QString::fromStdString("Picture: " + std::string(InfoOf(slot).caption));
    for (QWidget* window : QApplication::topLevelWidgets()) {
      if (window->windowTitle() == title) return qobject_cast<PictureWindow*>(window);
    }
    return nullptr;
  }
  /// Opens the picture of a slot by its key.
  PictureView& Open(qmx::Slot slot) {
    Window(slot).activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&Window(slot)));
    Key(Qt::Key_H, Qt::ControlModifier);
    PictureWindow* window = Picture(slot);
    if (window == nullptr) throw std::runtime_error("no picture");
    EXPECT_TRUE(QTest::qWaitForWindowActive(window));
    return window->View();
  }
  static std::string Told(PictureView& view) {
    return view.window()->findChild<QLabel*>("lblPicture")->text().toStdString();
  }
  static std::unique_ptr<qmx::Picture> Drawn(PictureView& view, const Matrix& matrix) {
    return MatrixPicture(matrix, {view.size(), view.font(), view.palette()});
  }
  static QColor Wanted(double value, double largest) {
    const Rgb colour = PictureColour(value, largest, false);
    return {colour.red, colour.green, colour.blue};
  }
  /// The colour near the corner of an element's square.
  QColor Seen(PictureView& view, const Matrix& matrix, int row, int col) {
    const QRectF square = Drawn(view, matrix)->RectOf({row, col});
    QImage image(view.size(), QImage::Format_RGB32);
    QPainter painter(&image);
    view.Draw(painter, view.size());
    return image.pixelColor((square.topLeft() + QPointF(3, 3)).toPoint());
  }
  const Matrix& A() { return Slot(kSlotA).array; }
};

TEST_F(PictureTest, EveryElementHasTheColourOfItsValue) {
  Enter(kSlotA, 2, 3, {"1", "-2", "0", "4", ".001", "-4"});
  PictureView& view = Open(kSlotA);
  EXPECT_EQ(view.window()->windowTitle(), "Picture: Matrix A");
  for (int i = 1; i <= 2; ++i) {
    for (int j = 1; j <= 3; ++j) EXPECT_EQ(Seen(view, A(), i, j), Wanted(A()(i, j), 4)) << i << j;
  }
}

TEST_F(PictureTest, AClickLeadsToTheElement) {
  Enter(kSlotA, 3, 3, {"1", "2", "3", "4", "5", "6", "7", "8", "9"});
  PictureView& view = Open(kSlotA);
  const QPoint place = Drawn(view, A())->RectOf({3, 2}).center().toPoint();
  QTest::mouseClick(&view, Qt::LeftButton, {}, place);
  EXPECT_EQ(Grid(kSlotA).Row(), 3);
  EXPECT_EQ(Grid(kSlotA).Col(), 2);
  EXPECT_TRUE(QTest::qWaitForWindowActive(&Window(kSlotA)));
  EXPECT_TRUE(Grid(kSlotA).hasFocus());
  EXPECT_EQ(Told(view), "Row 3, column 2: 8");
}

TEST_F(PictureTest, TheKeyboardGoesFromElementToElement) {
  Enter(kSlotA, 2, 2, {"1", "2", "3", "4"});
  PictureView& view = Open(kSlotA);
  EXPECT_TRUE(view.hasFocus());
  EXPECT_EQ(Told(view), "Row 1, column 1: 1");
  Key(Qt::Key_Right);
  EXPECT_EQ(Told(view), "Row 1, column 2: 2");
  Key(Qt::Key_Right);
  EXPECT_EQ(Told(view), "Row 1, column 2: 2") << "the edge";
  Key(Qt::Key_PageDown);
  Key(Qt::Key_Home);
  EXPECT_EQ(Told(view), "Row 2, column 1: 3");
  Key(Qt::Key_Return);
  EXPECT_EQ(Grid(kSlotA).Row(), 2);
  EXPECT_EQ(Grid(kSlotA).Col(), 1);
}

TEST_F(PictureTest, TheToolTipTellsTheElementBelowThePointer) {
  Enter(kSlotA, 2, 2, {"1", "2", "3", "-4.5"});
  PictureView& view = Open(kSlotA);
  const QPoint place = Drawn(view, A())->RectOf({2, 2}).center().toPoint();
  QHelpEvent help(QEvent::ToolTip, place, view.mapToGlobal(place));
  QApplication::sendEvent(&view, &help);
  EXPECT_EQ(QToolTip::text(), "Row 2, column 2: -4.5");
}

TEST_F(PictureTest, ItFollowsItsMatrix) {
  Enter(kSlotA, 2, 2, {"1", "2", "3", "4"});
  PictureView& view = Open(kSlotA);
  EXPECT_EQ(Told(view), "Row 1, column 1: 1");
  Window(kSlotA).activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&Window(kSlotA)));
  Key(Qt::Key_Home, Qt::ControlModifier);
  Keys("9");
  EXPECT_EQ(Told(view), "Row 1, column 1: 9");
  EXPECT_EQ(Seen(view, A(), 1, 1), Wanted(9, 9));
  program.Runner().Undo();
  EXPECT_EQ(Told(view), "Row 1, column 1: 1");
  Main().activateWindow();
  Click(cmdTask(16));
  EXPECT_EQ(Told(view), "Row 1, column 1: 2");
}

TEST_F(PictureTest, ThatOfAResultIsDrawnAgainOnlyWithTheResult) {
  Enter(kSlotA, 2, 2, {"1", "2", "3", "4"});
  Main().activateWindow();
  Click(cmdTask(kTaskTranspose));
  PictureView& view = Open(kSlotTranspose);
  QSignalSpy drawn(&view, &PictureView::CurrentChanged);
  Window(kSlotA).activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&Window(kSlotA)));
  Key(Qt::Key_Home, Qt::ControlModifier);
  Keys("9");
  EXPECT_EQ(drawn.count(), 0);
  Main().activateWindow();
  Click(cmdTask(kTaskTranspose));
  EXPECT_GT(drawn.count(), 0);
  EXPECT_EQ(Told(view), "Row 1, column 1: 9");
  program.Runner().Undo();
  EXPECT_EQ(Told(view), "Row 1, column 1: 1");
}

TEST_F(PictureTest, EachHasItsOwnPlace) {
  Enter(kSlotA, 1, 1, {"1"});
  Main().activateWindow();
  Click(cmdTask(kTaskTranspose));
  for (const auto& [slot, left] : {std::pair(kSlotA, 40), std::pair(kSlotTranspose, 440)}) {
    Open(slot).window()->move(left, 330);
    Key(Qt::Key_Escape);
    QTest::qWait(0);
  }
  EXPECT_EQ(Open(kSlotA).window()->pos(), QPoint(40, 330));
  EXPECT_EQ(Open(kSlotTranspose).window()->pos(), QPoint(440, 330));
}

TEST_F(PictureTest, ThatOfAnOperandIsNoResultInFront) {
  Enter(kSlotA, 1, 1, {"1"});
  Main().activateWindow();
  Click(cmdTask(kTaskTranspose));
  Open(kSlotA);
  Main().Action("mnuResultsInFront")->trigger();
  EXPECT_TRUE(QTest::qWaitForWindowActive(&Window(kSlotTranspose)));
}

TEST_F(PictureTest, AResetClosesIt) {
  Enter(kSlotA, 3, 3, {"1", "0", "0", "0", "1", "0", "0", "0", "5"});
  PictureView& view = Open(kSlotA);
  Key(Qt::Key_PageDown);
  Key(Qt::Key_End);
  EXPECT_EQ(Told(view), "Row 3, column 3: 5");
  Main().activateWindow();
  ClickAndAnswer(cmdResetA, QMessageBox::Yes);
  EXPECT_EQ(Picture(kSlotA), nullptr);
}

TEST_F(PictureTest, EscapeClosesItAndTheKeyOpensItAgain) {
  Enter(kSlotA, 1, 1, {"1"});
  Open(kSlotA);
  Key(Qt::Key_Escape);
  QTest::qWait(0);
  EXPECT_EQ(Picture(kSlotA), nullptr);
  Open(kSlotA);
  EXPECT_NE(Picture(kSlotA), nullptr);
}

TEST_F(PictureTest, ALargeMatrixTellsWhatASquareStandsFor) {
  TypeInto(txtRowsA, "700");
  TypeInto(txtColsA, "700");
  Click(cmdCreateA);
  Slot(kSlotA).array(123, 456) = -7;
  PictureView& view = Open(kSlotA);
  const auto picture = Drawn(view, A());
  const QRectF square = picture->RectOf({123, 456});
  const auto element = picture->ElementAt(square.center());
  ASSERT_TRUE(element);
  EXPECT_EQ(*element, (GridCell{123, 456}));
  EXPECT_EQ(
      picture->Tell(*element).toStdString().find("Row 123, column 456: -7, the largest of rows "),
      0U);
}

TEST_F(PictureTest, EigenvaluesAreOnTheRealLine) {
  Enter(kSlotA, 3, 3, {"2", "0", "0", "0", "-5", "0", "0", "0", "2"});
  Click(cmdTask(14));
  ASSERT_NE(program.Windows().Window(kSlotEigenvalues), nullptr);
  const Matrix& values = Slot(kSlotEigenvalues).array;
  ASSERT_EQ(values.Rows(), 3);
  PictureView& view = Open(kSlotEigenvalues);
  const auto picture = LinePicture(values, {view.size(), view.font(), view.palette()});
  std::vector<QPointF> places;
  for (int i = 1; i <= 3; ++i) places.push_back(picture->RectOf({i, 1}).center());
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(picture->ElementAt(places[i]), (GridCell{i + 1, 1}));
    for (int j = 0; j < 3; ++j) {
      EXPECT_EQ(places[i].x() < places[j].x() - 5, values(i + 1, 1) < values(j + 1, 1) - 1);
      EXPECT_EQ((places[i] - places[j]).manhattanLength() < 8, i == j) << "none is covered";
    }
  }
  Key(Qt::Key_Home);
  EXPECT_NE(Told(view).find(": -5"), std::string::npos) << Told(view);
  Key(Qt::Key_Return);
  EXPECT_TRUE(QTest::qWaitForWindowActive(&Window(kSlotEigenvalues)));
}

TEST_F(PictureTest, ItIsCopiedAsImageAndDrawing) {
  Enter(kSlotA, 1, 2, {"1", "-1"});
  PictureView& view = Open(kSlotA);
  Key(Qt::Key_C, Qt::ControlModifier);
  const QMimeData* copied = QApplication::clipboard()->mimeData();
  const QImage image = copied->imageData().value<QImage>();
  EXPECT_EQ(image.size(), view.size() * 2);
  EXPECT_TRUE(copied->data("image/svg+xml").contains("<svg"));
}

TEST_F(PictureTest, ItIsSavedByTheEndingOfTheName) {
  Enter(kSlotA, 2, 2, {"1", "-1", "0", "3"});
  PictureView& view = Open(kSlotA);
  const QTemporaryDir folder;
  const QString png = folder.filePath("a.png");
  const QString svg = folder.filePath("a.svg");
  EXPECT_EQ(WritePicture(view, png), "");
  EXPECT_EQ(WritePicture(view, svg), "");
  const QImage image(png);
  ASSERT_EQ(image.size(), view.size() * 2);
  const QRectF square = Drawn(view, A())->RectOf({2, 2});
  EXPECT_EQ(image.pixelColor(((square.topLeft() + QPointF(3, 3)) * 2).toPoint()), Wanted(3, 3));
  QFile drawing(svg);
  ASSERT_TRUE(drawing.open(QIODevice::ReadOnly));
  const QByteArray text = drawing.readAll();
  EXPECT_TRUE(text.contains(Wanted(-1, 3).name().toUtf8())) << "squares are drawn, not an image";
  EXPECT_TRUE(text.contains("Picture: Matrix A"));
  EXPECT_NE(WritePicture(view, folder.filePath("none/a.png")), "");
}

TEST_F(PictureTest, TheKindThatIsChosenGivesTheEnding) {
  Enter(kSlotA, 2, 2, {"1", "-1", "0", "3"});
  PictureView& view = Open(kSlotA);
  const QTemporaryDir folder;
  const auto save = [&](const QString& name, bool asDrawing) {
    QTimer poll;
    QObject::connect(&poll, &QTimer::timeout, [&] {
      QWidget* dialog = QApplication::activeModalWidget();
      auto* edit = dialog == nullptr ? nullptr : dialog->findChild<QLineEdit*>("fileNameEdit");
      if (edit == nullptr || !edit->text().isEmpty()) return;
      EXPECT_EQ(dialog->objectName(), "dlgSavePicture");
      if (asDrawing) QTest::keyClick(dialog->findChild<QComboBox*>("fileTypeCombo"), Qt::Key_Down);
      QTest::keyClicks(edit, folder.filePath(name));
      QTest::keyClick(edit, Qt::Key_Return);
    });
    poll.start(20);
    QTest::mouseClick(view.window()->findChild<QPushButton*>("cmdSavePicture"), Qt::LeftButton);
  };
  save("plain", false);
  save("drawn", true);
  save("named.svg", false);
  save("with \"quotes\"", false);
  const QStringList made = QDir(folder.path()).entryList(QDir::Files, QDir::Name);
  EXPECT_EQ(made.join('|').toStdString(), "drawn.svg|named.svg|plain.png|with \"quotes\".png");
}

TEST_F(PictureTest, TheButtonOpensItToo) {
  Enter(kSlotA, 2, 2, {"1", "-1", "0", "3"});
  auto* button = Window(kSlotA).findChild<QPushButton*>("cmdPicture");
  ASSERT_NE(button, nullptr);
  EXPECT_EQ(button->toolTip(), "Shows the matrix as a picture (Ctrl+H)");
  EXPECT_EQ(button->accessibleName(), "Picture");
  EXPECT_FALSE(button->icon().pixmap(16, 16).isNull());
  QTest::mouseClick(button, Qt::LeftButton);
  ASSERT_NE(Picture(kSlotA), nullptr);
  EXPECT_TRUE(Picture(kSlotA)->isVisible());
}

TEST_F(PictureTest, EveryMatrixHasOneAndAnEmptyOneHarmsNothing) {
  Enter(kSlotA, 3, 3, {"0", "2", "0", "1", "0", "0", "0", "0", "1"});
  for (const int task : {0, 5, 6, 8, 9}) {
    if (IsEnabled(cmdTask(task)) && task != 0) Click(cmdTask(task));
  }
  for (const qmx::Slot slot : kAllSlots) {
    if (program.Windows().Window(slot) == nullptr) continue;
    if (!Window(slot).isVisible()) continue;
    PictureView& view = Open(slot);
    EXPECT_FALSE(view.CurrentText().isEmpty()) << slot;
    EXPECT_FALSE(view.grab().isNull());
    view.resize(1, 1);
    view.Refresh();
    EXPECT_FALSE(view.grab().isNull());
  }
}

}  // namespace
}  // namespace qmx::test
