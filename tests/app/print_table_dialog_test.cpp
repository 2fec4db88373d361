// SPDX-License-Identifier: MIT
// The preview of matrices as tables, and what of them reaches the paper.

#include "app/print_table_dialog.h"

#include <QAction>
#include <QBasicTimer>
#include <QComboBox>
#include <QFile>
#include <QPdfWriter>
#include <QPointer>
#include <QPrintPreviewWidget>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <functional>
#include <map>
#include <random>
#include <utility>

#include "app/page_preview.h"
#include "base/number_text.h"
#include "desktop/table_pages.h"
#include "support/desktop_bench.h"

namespace qmx::test {
namespace {

Matrix Random(int rows, int cols) {
  std::mt19937 any(11);
  std::uniform_real_distribution<double> element(-10, 10);
  Matrix values(rows, cols);
  for (std::size_t i = 0; i < values.Size(); ++i) values.Data()[i] = element(any);
  return values;
}

struct Word {
  QString text;
  double left;
  double right;
};

/// The words of a document's pages, line by line: by their height on the page, then from the left.
std::vector<std::map<int, std::vector<Word>>> WordsOf(const QString& pdf) {
  QProcess reader;
  reader.start("pdftotext", {"-bbox", pdf, "-"});
  EXPECT_TRUE(reader.waitForFinished());
  std::vector<std::map<int, std::vector<Word>>> pages;
  static const QRegularExpression word(
      "<word xMin=\"([0-9.]+)\" yMin=\"([0-9.]+)\" xMax=\"([0-9.]+)\"[^>]*>([^<]*)<");
  for (const QString& line : QString::fromUtf8(reader.readAllStandardOutput()).split('\n')) {
    if (line.contains("<page ")) pages.emplace_back();
    const QRegularExpressionMatch found = word.match(line);
    if (!found.hasMatch()) continue;
    const int height = static_cast<int>(std::lround(found.captured(2).toDouble() * 2));
    pages.back()[height].push_back(
        {found.captured(4), found.captured(1).toDouble(), found.captured(3).toDouble()});
  }
  for (auto& page : pages) {
    for (auto& [height, words] : page) {
      std::sort(words.begin(), words.end(),
                [](const Word& one, const Word& two) { return one.left < two.left; });
    }
  }
  return pages;
}

TEST(TablePages, EveryColumnOfTheDocumentIsAlignedAtThePoint) {
  const Matrix values = Random(200, 150);
  PrintedTable table("Matrix A", values, 7);
  table.Measure([] {});
  const QTemporaryDir folder;
  const QString pdf = folder.filePath("table.pdf");
  {
    QPdfWriter writer(pdf);
    QPageLayout page = TablePage();
    page.setPageSize(QPageSize(QPageSize::A4), page.minimumMargins());
    writer.setPageLayout(page);
    table.LayOut(PaperOf(writer));
    ASSERT_LE(table.Pages(), 20);
    ASSERT_TRUE(PaintTable(writer, table, 1, table.Pages(), [](int) { return true; }));
  }
  const auto pages = WordsOf(pdf);
  ASSERT_EQ(static_cast<int>(pages.size()), table.Pages());
  for (int page = 1; page <= table.Pages(); ++page) {
    const PrintedTable::Extent extent = table.ExtentOf(page);
    std::vector<std::vector<Word>> lines;
    for (const auto& [height, words] : pages[page - 1]) lines.push_back(words);
    // Title, column numbers, rows, foot.
    ASSERT_EQ(static_cast<int>(lines.size()), extent.lastRow - extent.firstRow + 1 + 3) << page;
    const int cols = extent.lastCol - extent.firstCol + 1;
    ASSERT_EQ(static_cast<int>(lines[1].size()), cols);
    ASSERT_EQ(lines.back().size(), 4U);
    EXPECT_EQ(lines.back()[1].text, QString::number(page));
    EXPECT_EQ(lines.back()[3].text, QString::number(table.Pages()));
    for (int i = extent.firstRow; i <= extent.lastRow; ++i) {
      const std::vector<Word>& row = lines[2 + i - extent.firstRow];
      ASSERT_EQ(static_cast<int>(row.size()), cols + 1);
      EXPECT_EQ(row[0].text, QString::number(i));
      for (int j = 0; j < cols; ++j) {
        const Word& cell = row[1 + j];
        EXPECT_EQ(cell.text.toStdString(), TableNumber(values(i, extent.firstCol + j), 7));
        const double character = (cell.right - cell.left) / static_cast<double>(cell.text.size());
        EXPECT_NEAR(character, table.Size().character, 0.01);
        qsizetype before = cell.text.indexOf('.');
        if (before < 0) before = cell.text.size();
        // The number of the column ends where its points stand.
        const double point = cell.left + static_cast<double>(before) * character;
        EXPECT_NEAR(point, lines[1][j].right, 0.1) << i << "," << extent.firstCol + j;
      }
    }
  }
}

class PrintTableTest : public Desktop {
 protected:
  void PutA(int rows, int cols) {
    State().At(kSlotA) = {Random(rows, cols), rows, cols};
    State().ACreated = true;
  }
  /// Opens the dialog and closes it after `work`, called once it is there.
  void Open(const std::function<void(PrintTableDialog&)>& work) {
    QTimer poll;
    bool seen = false;
    QObject::connect(&poll, &QTimer::timeout, [&] {
      auto* dialog = qobject_cast<PrintTableDialog*>(QApplication::activeModalWidget());
      // Between two pages this is called from within the painting, which waits for its end.
      if (dialog == nullptr || dialog->IsPainting()) return;
      poll.stop();
      seen = true;
      work(*dialog);
      dialog->reject();
    });
    poll.start(0);
    Main().Action("mnuPrintTable")->trigger();
    EXPECT_TRUE(seen);
  }
  static QString Pages(const PrintTableDialog& dialog) {
    return dialog.findChild<QLabel*>("lblPages")->text();
  }
  static void UntilDone(const PrintTableDialog& dialog) {
    EXPECT_TRUE(QTest::qWaitFor([&] { return !Pages(dialog).contains("..."); }, 60000));
  }
  static int PageCount(const PrintTableDialog& dialog) {
    return dialog.findChild<QPrintPreviewWidget*>()->pageCount();
  }
  static bool HasTools(const PrintTableDialog& dialog) {
    return dialog.findChild<QToolBar*>()->isEnabled();
  }
};

/// Looks at the dialog in the moment in which it comes, and between the pages that are painted.
class DialogWatch : public QObject {
 public:
  using Look = std::function<void(PrintTableDialog&)>;
  DialogWatch(Look whenShown, Look betweenPages)
      : whenShown_(std::move(whenShown)), betweenPages_(std::move(betweenPages)) {
    qApp->installEventFilter(this);
  }
  bool eventFilter(QObject* watched, QEvent* event) override {
    auto* dialog = qobject_cast<PrintTableDialog*>(watched);
    if (dialog == nullptr || event->type() != QEvent::Show) return false;
    dialog_ = dialog;
    if (whenShown_) whenShown_(*dialog);
    beat_.start(0, this);
    return false;
  }
  void timerEvent(QTimerEvent*) override {
    if (dialog_ == nullptr || !dialog_->isVisible()) return beat_.stop();
    if (!dialog_->IsPainting()) return;
    ++turns;
    if (betweenPages_) betweenPages_(*dialog_);
  }

  int turns = 0;

 private:
  Look whenShown_;
  Look betweenPages_;
  QPointer<PrintTableDialog> dialog_;
  QBasicTimer beat_;
};

TEST_F(PrintTableTest, ThePreviewFollowsTheMatrixAndTheDigits) {
  PutA(60, 40);
  State().At(kSlotB) = {Random(2, 2), 2, 2};
  State().BCreated = true;
  Open([](PrintTableDialog& dialog) {
    EXPECT_EQ(dialog.objectName(), "frmPrintTable");
    auto* digits = dialog.findChild<QSpinBox*>("spnDigits");
    auto* matrix = dialog.findChild<QComboBox*>("cboTable");
    UntilDone(dialog);
    EXPECT_EQ(digits->value(), 7);
    const int usual = PageCount(dialog);
    EXPECT_GT(usual, 1);
    EXPECT_EQ(Pages(dialog), QString("%1 pages").arg(usual));
    EXPECT_EQ(matrix->count(), 2);
    matrix->setCurrentIndex(1);
    UntilDone(dialog);
    EXPECT_EQ(PageCount(dialog), 1);
    EXPECT_EQ(Pages(dialog), "1 page");
    matrix->setCurrentIndex(0);
    digits->setValue(2);
    UntilDone(dialog);
    EXPECT_LT(PageCount(dialog), usual);
  });
}

// No machine finds the texts of so many numbers before anybody notices.
TEST_F(PrintTableTest, ALargeTableIsCountedWhileTheDialogIsThere) {
  PutA(2000, 2000);
  QString first;
  DialogWatch watch(
      [&](PrintTableDialog& dialog) {
        first = Pages(dialog);
        EXPECT_FALSE(HasTools(dialog));
      },
      nullptr);
  Open([](PrintTableDialog& dialog) {
    UntilDone(dialog);
    EXPECT_TRUE(Pages(dialog).endsWith("pages are too many to show. Choose fewer digits."));
    EXPECT_EQ(PageCount(dialog), 0);
    EXPECT_TRUE(HasTools(dialog));
    const QAction* print = dialog.findChild<QToolBar*>()->actions().constLast();
    EXPECT_EQ(print->text(), "Print");
    EXPECT_FALSE(print->isEnabled());
    auto* digits = dialog.findChild<QSpinBox*>("spnDigits");
    digits->setValue(17);
    EXPECT_EQ(Pages(dialog), "Counting the pages...");
    // Another one takes its place at once.
    digits->setValue(16);
    EXPECT_EQ(Pages(dialog), "Counting the pages...");
    QTest::keyClick(&dialog, Qt::Key_Escape);
    EXPECT_FALSE(dialog.isVisible());
  });
  EXPECT_EQ(first, "Counting the pages...");
}

TEST_F(PrintTableTest, BetweenItsPagesEventsAreHandled) {
  PutA(500, 500);
  DialogWatch watch(nullptr, [](PrintTableDialog& dialog) {
    EXPECT_FALSE(HasTools(dialog));
    EXPECT_TRUE(dialog.findChild<QComboBox*>("cboTable")->isEnabled());
    // Its old pictures are gone.
    dialog.findChild<QPrintPreviewWidget*>()->grab();
  });
  Open([](PrintTableDialog& dialog) {
    UntilDone(dialog);
    EXPECT_TRUE(QTest::qWaitFor([&] { return PageCount(dialog) > 50; }));
    EXPECT_EQ(Pages(dialog), QString("%1 pages").arg(PageCount(dialog)));
    EXPECT_TRUE(HasTools(dialog));
  });
  EXPECT_GE(watch.turns, 2);
}

TEST_F(PrintTableTest, OtherDigitsMayBeChosenWhileItsPagesArePainted) {
  PutA(500, 500);
  bool chosen = false;
  DialogWatch watch(nullptr, [&](PrintTableDialog& dialog) {
    if (!std::exchange(chosen, true)) dialog.findChild<QSpinBox*>("spnDigits")->setValue(1);
  });
  Open([&](PrintTableDialog& dialog) {
    EXPECT_TRUE(QTest::qWaitFor([&] { return chosen; }));
    UntilDone(dialog);
    PrintedTable table("x", State().At(kSlotA).array, 1);
    table.Measure([] {});
    table.LayOut(PaperOf(PagePrinter("x")));
    EXPECT_TRUE(QTest::qWaitFor([&] { return PageCount(dialog) == table.Pages(); }))
        << PageCount(dialog) << " " << table.Pages();
    UntilDone(dialog);
    EXPECT_EQ(Pages(dialog), QString("%1 pages").arg(table.Pages()));
  });
}

TEST_F(PrintTableTest, TheDialogClosesWhileItsPagesArePainted) {
  PutA(500, 500);
  bool closed = false;
  DialogWatch watch(nullptr, [&](PrintTableDialog& dialog) {
    QTest::keyClick(&dialog, Qt::Key_Escape);
    closed = !dialog.isVisible();
  });
  QTimer::singleShot(20000, &watch, [] {
    if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget())) dialog->reject();
  });
  Main().Action("mnuPrintTable")->trigger();
  EXPECT_TRUE(closed);
  EXPECT_EQ(watch.turns, 1);
}

TEST_F(PrintTableTest, TheDialogStaysWhileItsPagesGoToThePrinter) {
  PutA(400, 400);
  const QTemporaryDir folder;
  QPrinter pdf(QPrinter::HighResolution);
  pdf.setOutputFormat(QPrinter::PdfFormat);
  pdf.setOutputFileName(folder.filePath("table.pdf"));
  pdf.setPageLayout(TablePage());
  PrintTableDialog dialog(pdf, State(), {kSlotA}, kSlotA, nullptr);
  int printing = 0;
  DialogWatch watch([](PrintTableDialog&) {},
                    [&](PrintTableDialog& shown) {
                      if (!Pages(shown).startsWith("Printing page ")) return;
                      ++printing;
                      EXPECT_FALSE(shown.findChild<QSpinBox*>("spnDigits")->isEnabled());
                      QTest::keyClick(&shown, Qt::Key_Escape);
                      EXPECT_TRUE(shown.isVisible());
                    });
  dialog.show();
  UntilDone(dialog);
  dialog.findChild<QPrintPreviewWidget*>()->print();
  EXPECT_GE(printing, 2);
  EXPECT_FALSE(dialog.HasFailed());
  QFile printed(pdf.outputFileName());
  ASSERT_TRUE(printed.open(QIODevice::ReadOnly));
  EXPECT_EQ(printed.readAll().count("/Type /Page\n"), PageCount(dialog));
  EXPECT_TRUE(HasTools(dialog));
}

TEST_F(PrintTableTest, WithoutAMatrixABoxSaysSo) {
  const SeenBox box =
      ActAndAnswer([&] { Main().Action("mnuPrintTable")->trigger(); }, QMessageBox::Ok);
  EXPECT_EQ(box.text, "There is no matrix to print.");
}

}  // namespace
}  // namespace qmx::test
