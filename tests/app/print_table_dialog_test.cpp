// SPDX-License-Identifier: MIT
// The preview of matrices as tables, and what of them reaches the paper.

#include "app/print_table_dialog.h"

#include <QAction>
#include <QPdfWriter>
#include <QPrintPreviewWidget>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <map>
#include <random>

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
  const QTemporaryDir folder;
  const QString pdf = folder.filePath("table.pdf");
  {
    QPdfWriter writer(pdf);
    QPageLayout page = TablePage();
    page.setPageSize(QPageSize(QPageSize::A4), page.minimumMargins());
    writer.setPageLayout(page);
    table.LayOut(PaperOf(writer));
    ASSERT_LE(table.Pages(), 20);
    ASSERT_TRUE(PaintTable(writer, table, 1, table.Pages()));
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

using PrintTableTest = Desktop;

TEST_F(PrintTableTest, ThePreviewFollowsTheMatrixAndTheDigits) {
  State().At(kSlotA) = {Random(60, 40), 60, 40};
  State().ACreated = true;
  State().At(kSlotB) = {Random(2, 2), 2, 2};
  State().BCreated = true;
  QTimer poll;
  bool seen = false;
  QObject::connect(&poll, &QTimer::timeout, [&] {
    auto* dialog = qobject_cast<PrintTableDialog*>(QApplication::activeModalWidget());
    if (dialog == nullptr) return;
    poll.stop();
    seen = true;
    EXPECT_EQ(dialog->objectName(), "frmPrintTable");
    auto* preview = dialog->findChild<QPrintPreviewWidget*>();
    auto* pages = dialog->findChild<QLabel*>("lblPages");
    auto* digits = dialog->findChild<QSpinBox*>("spnDigits");
    auto* matrix = dialog->findChild<QComboBox*>("cboTable");
    EXPECT_EQ(digits->value(), 7);
    const int usual = preview->pageCount();
    EXPECT_GT(usual, 1);
    EXPECT_EQ(pages->text(), QString("%1 pages").arg(usual));
    EXPECT_EQ(matrix->count(), 2);
    matrix->setCurrentIndex(1);
    EXPECT_EQ(preview->pageCount(), 1);
    EXPECT_EQ(pages->text(), "1 page");
    matrix->setCurrentIndex(0);
    digits->setValue(2);
    EXPECT_LT(preview->pageCount(), usual);
    dialog->reject();
  });
  poll.start(20);
  Main().Action("mnuPrintTable")->trigger();
  EXPECT_TRUE(seen);
}

TEST_F(PrintTableTest, WithoutAMatrixABoxSaysSo) {
  const SeenBox box =
      ActAndAnswer([&] { Main().Action("mnuPrintTable")->trigger(); }, QMessageBox::Ok);
  EXPECT_EQ(box.text, "There is no matrix to print.");
}

}  // namespace
}  // namespace qmx::test
