// SPDX-License-Identifier: MIT
// Documents as they are set, painted, selected and heard.

#include "grids/document_view.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QDir>
#include <QPainter>
#include <QPdfWriter>
#include <QPicture>
#include <QProcess>
#include <QRegularExpression>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>
#include <set>

#include "derivation/document_text.h"
#include "desktop/table_pages.h"
#include "grids/contrast.h"
#include "grids/digit_runs.h"
#include "grids/document_pages.h"

namespace qmx::test {
namespace {

ShownCell Cell(const std::string& decimal, ExactNumber exact, CellMark mark = CellMark::kNone) {
  return {{decimal, decimal.size(), std::move(exact)}, mark, false};
}

/// [2 1 | 1; 0 5/2 | -1/3], the first element a pivot, the second row changed.
ShownMatrix Augmented() {
  ShownMatrix matrix{2, 3, {}, {2}, false};
  const auto changed = CellMark::kChanged;
  matrix.cells = {Cell("2", {"2"}, CellMark::kPivot),
                  Cell("1", {"1"}),
                  Cell("1", {"1"}),
                  Cell("0", {"0"}, changed),
                  Cell("2.5", {"5", "2"}, changed),
                  Cell("-0.334", {"-1", "3"}, changed)};
  matrix.cells.back().number.held = 5;
  return matrix;
}

Document Sample() {
  Document document{"Sample", {Heading{"Sample", 1}}};
  document.blocks.emplace_back(Line{{Words{"Row 2 minus "}, Cell("0.5", {"1", "2"}).number,
                                     Words{" of row 1, and so on until all is done."}},
                                    false});
  document.blocks.emplace_back(Heading{"Column 1", 2});
  document.blocks.emplace_back(Line{{Name{"A", "1", ""}, Operator{"="}, Augmented()}, true});
  Table table{{"Cycle", "Found"}, {}};
  for (int k = 1; k <= 3; ++k)
    table.rows.push_back({Line{{Words{std::to_string(k)}}}, Line{{Words{"nothing"}}}});
  document.blocks.emplace_back(std::move(table));
  return document;
}

Document Long(int steps) {
  Document document{"Long", {Heading{"Long", 1}}};
  for (int k = 1; k <= steps; ++k) {
    document.blocks.emplace_back(Heading{"Step " + std::to_string(k), 3});
    ShownMatrix matrix{8, 8, {}, {}, false};
    for (int i = 0; i < 64; ++i) {
      matrix.cells.push_back(Cell("-0.333333333333331", {"-12345678", "37037037"},
                                  i / 8 == 2 ? CellMark::kChanged : CellMark::kNone));
    }
    document.blocks.emplace_back(Line{{Name{"A"}, Operator{"="}, matrix}, true});
  }
  return document;
}

class DocumentViewTest : public ::testing::Test {
 protected:
  DocumentViewTest() {
    view.resize(600, 300);
    view.show();
    view.activateWindow();
    EXPECT_TRUE(QTest::qWaitForWindowActive(&view));
    Show(Sample());
    view.setFocus();
  }
  void Show(Document document) { view.Show(std::make_shared<const Document>(std::move(document))); }
  void Press(Qt::Key key, Qt::KeyboardModifiers held = Qt::NoModifier) {
    QTest::keyClick(&view, key, held);
  }
  QScrollBar& Down() { return *view.verticalScrollBar(); }
  std::string SelectedText() { return PlainText(view.Selected(), view.Form()); }
  static QImage Picture(const Document& document, NumberForm form, const QPalette& palette,
                        int size = 10) {
    QFont font = QApplication::font();
    font.setPointSize(size);
    const Typesetter setter(font, form, PageColours(palette));
    const DocumentLayout layout(std::make_shared<const Document>(document), setter, 500);
    QImage image(500, static_cast<int>(layout.Height()) + 4, QImage::Format_RGB32);
    image.fill(palette.color(QPalette::Base));
    QPainter painter(&image);
    layout.Paint(painter, setter, image.rect());
    return image;
  }
  static int Count(const QImage& image, const QColor& colour) {
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) count += image.pixelColor(x, y) == colour ? 1 : 0;
    }
    return count;
  }

  DocumentView view{nullptr};
};

TEST_F(DocumentViewTest, NoPieceLiesOverAnother) {
  for (const NumberForm form : {NumberForm::kFractions, NumberForm::kDecimals, NumberForm::kBoth}) {
    const Typesetter setter(QApplication::font(), form, PageColours(QPalette()));
    for (const qreal width : {100.0, 300.0, 2000.0}) {
      const DocumentLayout layout(std::make_shared<const Document>(Sample()), setter, width);
      const auto& pieces = layout.Pieces();
      for (std::size_t i = 0; i < pieces.size(); ++i) {
        for (std::size_t j = i + 1; j < pieces.size(); ++j) {
          const QRectF common = pieces[i].Rect() & pieces[j].Rect();
          EXPECT_LT(std::min(common.width(), common.height()), 0.01) << i << " and " << j;
        }
      }
    }
  }
}

TEST_F(DocumentViewTest, NothingIsPaintedOutsideOfThePiecesRoom) {
  constexpr int kAround = 20;
  const QColor ground = QPalette().color(QPalette::Base);
  QFont font = QApplication::font();
  font.setPointSize(10);
  for (const NumberForm form : {NumberForm::kFractions, NumberForm::kDecimals, NumberForm::kBoth}) {
    const Typesetter setter(font, form, PageColours(QPalette()));
    const DocumentLayout layout(std::make_shared<const Document>(Sample()), setter, 500);
    std::vector<QRectF> rooms;
    for (const PlacedPiece& piece : layout.Pieces())
      rooms.push_back(piece.Rect().adjusted(-2, -2, 2, 2));
    for (const QLineF& rule : layout.Rules())
      rooms.push_back(QRectF(rule.p1(), rule.p2()).adjusted(-2, -2, 2, 2));
    QImage image(500 + 2 * kAround, static_cast<int>(layout.Height()) + 2 * kAround,
                 QImage::Format_RGB32);
    image.fill(ground);
    QPainter painter(&image);
    painter.translate(kAround, kAround);
    layout.Paint(painter, setter, {0, 0, 500, layout.Height()});
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) {
        if (image.pixelColor(x, y) == ground) continue;
        const QPointF point(x - kAround, y - kAround);
        ASSERT_TRUE(std::any_of(rooms.begin(), rooms.end(),
                                [&](const QRectF& room) { return room.contains(point); }))
            << point.x() << ", " << point.y();
      }
    }
  }
}

TEST_F(DocumentViewTest, LongLinesAreBrokenAtBlanks) {
  const Typesetter setter(QApplication::font(), NumberForm::kFractions, PageColours(QPalette()));
  const DocumentLayout layout(std::make_shared<const Document>(Sample()), setter, 150);
  std::set<qreal> lines;
  for (const PlacedPiece& piece : layout.Pieces()) {
    if (piece.block != 1) continue;
    lines.insert(piece.at.y());
    EXPECT_LE(piece.Rect().right(), 150 + setter.Em()) << piece.word.toStdString();
  }
  EXPECT_GT(lines.size(), 2U);
}

TEST_F(DocumentViewTest, LongFormulasAreBrokenBeforeOperators) {
  Line sum{{Name{"x"}, Operator{"="}, Cell("0.5", {"1", "2"}).number}, true};
  for (int k = 2; k <= 20; ++k) {
    sum.pieces.emplace_back(Operator{"+"});
    sum.pieces.emplace_back(Cell("0.5", {"1", "2"}).number);
  }
  const Typesetter setter(QApplication::font(), NumberForm::kFractions, PageColours(QPalette()));
  const DocumentLayout layout(std::make_shared<const Document>(Document{"", {sum}}), setter, 150);
  const auto& pieces = layout.Pieces();
  int lines = 1;
  for (std::size_t k = 1; k < pieces.size(); ++k) {
    EXPECT_LE(pieces[k].Rect().right(), 150);
    if (pieces[k].at.y() == pieces[k - 1].at.y()) continue;
    ++lines;
    EXPECT_TRUE(std::holds_alternative<Operator>(*pieces[k].piece)) << k;
  }
  EXPECT_GT(lines, 2);
}

TEST_F(DocumentViewTest, FractionsAndDecimalsAreOnePressApart) {
  Document document{"", {Line{{Cell("0.334", {"1", "3"}).number}, true}}};
  const QImage fractions = Picture(document, NumberForm::kFractions, QPalette());
  const QImage decimals = Picture(document, NumberForm::kDecimals, QPalette());
  EXPECT_GT(fractions.height(), decimals.height()) << "they are stacked";
}

TEST_F(DocumentViewTest, DigitsThatDoNotHoldAreGreyAndReadable) {
  Document document{"", {Line{{Cell("0.334", {"1", "3"}).number}, true}}};
  for (const bool dark : {false, true}) {
    const QPalette palette(dark ? QColor(53, 53, 53) : QColor(239, 239, 239));
    const PageColours colours(palette);
    EXPECT_EQ(colours.muted, UnprovedColour(colours.text, colours.ground));
    EXPECT_GE(Contrast(colours.text, colours.ground), 4.5);
    EXPECT_GE(Contrast(colours.accent, colours.ground), 3);
    EXPECT_GE(Contrast(colours.text, colours.tint), 4.5);
    auto& number = std::get<ShownNumber>(std::get<Line>(document.blocks[0]).pieces[0]);
    number.held = 5;
    // The edges of letters have all shades.
    const int few = Count(Picture(document, NumberForm::kDecimals, palette, 40), colours.muted);
    number.held = 2;
    EXPECT_GT(Count(Picture(document, NumberForm::kDecimals, palette, 40), colours.muted),
              few + 100);
  }
}

TEST_F(DocumentViewTest, MarksAreThereInColourAndInShape) {
  ShownMatrix plain = Augmented();
  for (ShownCell& cell : plain.cells) cell.mark = CellMark::kNone;
  const PageColours colours{QPalette()};
  const auto picture = [](const ShownMatrix& matrix) {
    return Picture({"", {Line{{matrix}, true}}}, NumberForm::kFractions, QPalette());
  };
  EXPECT_EQ(Count(picture(plain), colours.tint), 0);
  EXPECT_EQ(Count(picture(plain), colours.accent), 0);
  ShownMatrix pivot = plain;
  pivot.cells[0].mark = CellMark::kPivot;
  EXPECT_GT(Count(picture(pivot), colours.accent), 20) << "a frame";
  ShownMatrix changed = plain;
  changed.cells[3].mark = CellMark::kChanged;
  EXPECT_GT(Count(picture(changed), colours.tint), 20);
  EXPECT_GT(Count(picture(changed), colours.accent), 5) << "a pointer, for who sees no colours";
  ShownMatrix asked = plain;
  asked.cells[0].mark = CellMark::kAsked;
  const int line = Count(picture(asked), colours.accent);
  EXPECT_GT(line, 5) << "a line below it";
  EXPECT_LT(line, Count(picture(pivot), colours.accent)) << "and no frame";
}

TEST(TypesetterTest, DecimalsAreExactOrRounded) {
  const auto isExact = [](const std::string& decimal, ExactNumber exact) {
    return IsDecimalExact({decimal, decimal.size(), std::move(exact)});
  };
  EXPECT_TRUE(isExact("0.5", {"1", "2"}));
  EXPECT_TRUE(isExact("-2.75", {"-11", "4"}));
  EXPECT_TRUE(isExact("12", {"12"}));
  EXPECT_FALSE(isExact("0.333333333333333", {"1", "3"}));
  EXPECT_FALSE(isExact("0.5", {"-1", "2"}));
  EXPECT_FALSE(isExact("0.25", {"1", "2"}));
  EXPECT_FALSE(isExact("1", {"1", "1", "2"}));
  EXPECT_FALSE(isExact("1E+20", {"100000000000000000000"}));
  EXPECT_FALSE(isExact("", {"1"}));
}

TEST_F(DocumentViewTest, KeysScroll) {
  Show(Long(20));
  Press(Qt::Key_PageDown);
  const int page = Down().value();
  EXPECT_GT(page, 200);
  Press(Qt::Key_Down);
  EXPECT_EQ(Down().value(), page + Down().singleStep());
  Press(Qt::Key_Up);
  Press(Qt::Key_PageUp);
  EXPECT_EQ(Down().value(), 0);
  Press(Qt::Key_End);
  EXPECT_EQ(Down().value(), Down().maximum());
  Press(Qt::Key_Home);
  EXPECT_EQ(Down().value(), 0);
  Press(Qt::Key_Space);
  EXPECT_EQ(Down().value(), page);
}

TEST_F(DocumentViewTest, CtrlDownGoesFromHeadingToHeading) {
  Show(Long(20));
  Press(Qt::Key_Down, Qt::ControlModifier);
  EXPECT_EQ(view.CurrentBlock(), 1);
  Press(Qt::Key_Down, Qt::ControlModifier);
  EXPECT_EQ(view.CurrentBlock(), 3);
  EXPECT_LT(std::abs(view.BlockRect(3).top()), 30);
  Press(Qt::Key_Up, Qt::ControlModifier);
  EXPECT_EQ(view.CurrentBlock(), 1);
}

TEST_F(DocumentViewTest, AnotherFormKeepsTheBlockOnTop) {
  Show(Long(20));
  for (int k = 0; k < 5; ++k) Press(Qt::Key_Down, Qt::ControlModifier);
  const int block = view.CurrentBlock();
  const int before = Down().value();
  view.SetForm(NumberForm::kBoth);
  EXPECT_GT(Down().value(), before + 100) << "what is above has become higher";
  EXPECT_EQ(view.CurrentBlock(), block);
  EXPECT_LT(std::abs(view.BlockRect(block).top()), 30);
}

TEST_F(DocumentViewTest, AnotherWidthKeepsTheBlockOnTop) {
  Document document = Long(0);
  for (int k = 1; k <= 40; ++k) {
    const std::string words = "Of each row that stands below, as much of the pivot's row is taken ";
    document.blocks.emplace_back(Line{{Words{words + "off as makes its element vanish."}}});
  }
  Show(document);
  view.GoToBlock(20);
  const int before = Down().value();
  view.resize(200, 300);
  EXPECT_GT(Down().value(), before + 100) << "what is above has become higher";
  EXPECT_EQ(view.CurrentBlock(), 20);
  EXPECT_LT(std::abs(view.BlockRect(20).top()), 30);
}

TEST_F(DocumentViewTest, WhatIsSelectedIsADocument) {
  EXPECT_EQ(SelectedText(), PlainText(Sample(), NumberForm::kFractions));
  Press(Qt::Key_A, Qt::ControlModifier);
  EXPECT_TRUE(view.HasSelection());
  EXPECT_EQ(SelectedText(), PlainText(Sample(), NumberForm::kFractions));
  Press(Qt::Key_Escape);
  EXPECT_FALSE(view.HasSelection());
}

TEST_F(DocumentViewTest, TheMouseSelectsWordsAndMatrices) {
  const QRect sentence = view.BlockRect(1);
  const QRect formula = view.BlockRect(3);
  const QPoint from(sentence.left() + 2, sentence.center().y());
  QTest::mousePress(view.viewport(), Qt::LeftButton, {}, from);
  QTest::mouseMove(view.viewport(), {sentence.left() + 40, sentence.center().y()});
  QTest::mouseRelease(view.viewport(), Qt::LeftButton, {}, from);
  EXPECT_NE(SelectedText().find("Row 2"), std::string::npos) << SelectedText();
  EXPECT_EQ(SelectedText().find("of row"), std::string::npos) << SelectedText();
  QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, from);
  EXPECT_FALSE(view.HasSelection());
  QTest::mouseDClick(view.viewport(), Qt::LeftButton, {},
                     {formula.right() - 10, formula.center().y()});
  EXPECT_NE(SelectedText().find("5/2"), std::string::npos) << SelectedText();
  EXPECT_EQ(SelectedText().find('='), std::string::npos) << SelectedText();
}

TEST_F(DocumentViewTest, AnotherDocumentForgetsWhereTheOldOneWasPressed) {
  Show(Long(20));
  view.resize(500, 400);
  view.GoToBlock(view.BlockCount() - 1);
  const QPoint late = view.BlockRect(view.BlockCount() - 1).topLeft() + QPoint(10, 8);
  QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, late);
  Show(Long(1));
  QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::ShiftModifier,
                    view.BlockRect(0).topLeft() + QPoint(10, 8));
  EXPECT_FALSE(view.HasSelection());
}

TEST_F(DocumentViewTest, ASelectionAlongATableHasWholeRows) {
  Press(Qt::Key_End, Qt::ShiftModifier);
  Press(Qt::Key_Escape);
  const QRect table = view.BlockRect(4);
  const QPoint last = table.bottomRight() - QPoint(5, 5);
  QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, last);
  EXPECT_NE(SelectedText().find("Cycle"), std::string::npos) << SelectedText();
  EXPECT_NE(SelectedText().find('3'), std::string::npos) << SelectedText();
  EXPECT_EQ(SelectedText().find('2'), std::string::npos) << SelectedText();
}

TEST_F(DocumentViewTest, IsHeardLineByLine) {
  QAccessibleInterface* heard = QAccessible::queryAccessibleInterface(&view);
  ASSERT_NE(heard, nullptr);
  EXPECT_EQ(heard->role(), QAccessible::Document);
  EXPECT_TRUE(heard->state().readOnly);
  QAccessibleTextInterface* text = heard->textInterface();
  ASSERT_NE(text, nullptr);
  const QString all = text->text(0, text->characterCount());
  const QStringList lines = all.split('\n');
  EXPECT_EQ(lines[0], "Sample");
  EXPECT_EQ(lines[1], "Row 2 minus 1/2 of row 1, and so on until all is done.");
  EXPECT_TRUE(lines[3].contains("row 2, changed: 0, 5/2, bar, -1/3")) << lines[3].toStdString();
  int start = 0;
  int end = 0;
  const QString line = text->textAtOffset(static_cast<int>(all.indexOf("Row 2") + 3),
                                          QAccessible::LineBoundary, &start, &end);
  EXPECT_EQ(line.trimmed(), lines[1]);
  EXPECT_EQ(text->textAfterOffset(start, QAccessible::LineBoundary, &start, &end).trimmed(),
            lines[2]);
  EXPECT_EQ(text->textBeforeOffset(start, QAccessible::LineBoundary, &start, &end).trimmed(),
            lines[1]);
  text->setCursorPosition(static_cast<int>(all.indexOf("Column 1")));
  EXPECT_EQ(view.CurrentBlock(), 2);
  EXPECT_EQ(text->cursorPosition(), all.indexOf("Column 1"));
}

TEST_F(DocumentViewTest, WhoHearsItReachesTheEndByTheArrows) {
  for (int k = 0; k < 60 && view.CurrentBlock() < 4; ++k) Press(Qt::Key_Down);
  EXPECT_EQ(view.CurrentBlock(), 4);
}

TEST_F(DocumentViewTest, PagesHaveAllLinesOnce) {
  const QTemporaryDir folder;
  const QString name = folder.filePath("steps.pdf");
  auto document = std::make_shared<const Document>(Long(30));
  {
    QPdfWriter pdf(name);
    pdf.setPageLayout(TablePage());
    const DocumentPages pages(document, NumberForm::kFractions, pdf);
    EXPECT_GT(pages.Count(), 3);
    ASSERT_TRUE(pages.Paint(pdf, 1, pages.Count()));
  }
  QProcess reader;
  reader.start("pdftotext", {"-layout", name, "-"});
  ASSERT_TRUE(reader.waitForFinished());
  const QString text = QString::fromUtf8(reader.readAllStandardOutput());
  for (int k = 1; k <= 30; ++k)
    EXPECT_EQ(text.count(QRegularExpression(QString("Step %1\\b").arg(k))), 1) << k;
  EXPECT_EQ(text.count("37037037"), 30 * 64);
  for (const QString& page : text.split('\f', Qt::SkipEmptyParts)) {
    const QStringList lines = page.trimmed().split('\n', Qt::SkipEmptyParts);
    EXPECT_FALSE(lines[lines.size() - 2].contains("Step")) << "a heading at the foot";
  }
}

TEST_F(DocumentViewTest, TwoHundredStepsArePaintedPageByPage) {
  // How long that takes is measured by hand; here, that a page costs a page and not the document.
  auto document = std::make_shared<const Document>(Long(200));
  const Typesetter setter(QApplication::font(), NumberForm::kBoth, PageColours(QPalette()));
  const DocumentLayout layout(document, setter, 800);
  QPicture all;
  QPicture page;
  QPainter onAll(&all);
  layout.Paint(onAll, setter, {0, 0, 800, layout.Height()});
  onAll.end();
  QPainter onPage(&page);
  layout.Paint(onPage, setter, {0, 5000, 800, 600});
  onPage.end();
  EXPECT_GT(page.size(), 0U);
  EXPECT_LT(page.size() * 20, all.size());
}

TEST(DocumentPagesTest, ATableHasItsRuleOnPaper) {
  const QTemporaryDir folder;
  const QString name = folder.filePath("table.pdf");
  {
    QPdfWriter pdf(name);
    pdf.setPageLayout(TablePage());
    auto document = std::make_shared<Document>();
    Table table{{"Cycle of the iteration", "Found in this cycle"}, {}};
    table.rows.push_back({Line{{Words{"1"}}}, Line{{Words{"nothing"}}}});
    document->blocks.emplace_back(std::move(table));
    const DocumentPages pages(document, NumberForm::kFractions, pdf);
    ASSERT_TRUE(pages.Paint(pdf, 1, pages.Count()));
  }
  QProcess reader;
  reader.start("pdftoppm", {"-r", "150", "-gray", name, folder.filePath("page")});
  ASSERT_TRUE(reader.waitForFinished());
  const QStringList made = QDir(folder.path()).entryList({"page*"});
  ASSERT_EQ(made.size(), 1);
  const QImage page(folder.filePath(made.front()));
  int longest = 0;
  for (int y = 0; y < page.height(); ++y) {
    int run = 0;
    for (int x = 0; x < page.width(); ++x) {
      run = page.pixelColor(x, y).lightness() < 250 ? run + 1 : 0;
      longest = std::max(longest, run);
    }
  }
  EXPECT_GT(longest, 200) << "no line as long as a table is there";
}

}  // namespace
}  // namespace qmx::test
