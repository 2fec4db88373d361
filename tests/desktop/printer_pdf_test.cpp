// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <filesystem>

#include "commands/print_commands.h"
#include "desktop/printing_tools.h"
#include "support/core_bench.h"
#include "support/core_samples.h"

namespace qmx::test {
namespace {

constexpr const char* kNoServer = "/nowhere/cups.sock";

class PdfPrinting : public Workbench {
 protected:
  Outcome Print(const std::vector<std::string>& lines, const std::string& font = "Courier New") {
    return PrintLines(lines, font, Pdf(), kNoServer);
  }
  std::string Pdf() const { return folder_.Path("printed.pdf"); }
  /// What arrived, without the form feeds between the pages and the blank end of the last one.
  std::vector<std::string> Arrived() const {
    std::vector<std::string> lines = LinesOfPdf(Pdf());
    for (std::string& line : lines) {
      if (line.starts_with('\f')) line.erase(0, 1);
    }
    while (!lines.empty() && lines.back().empty()) lines.pop_back();
    return lines;
  }
  static std::vector<std::string> Trimmed(std::vector<std::string> lines) {
    for (std::string& line : lines) line.erase(line.find_last_not_of(' ') + 1);
    return lines;
  }

  Folder folder_;
};

TEST_F(PdfPrinting, AsksForTheFileAndKeepsEveryColumn) {
  const std::vector<std::string> lines{
      "MATRIX [A]:", "A( 1 , 1 )= 1 ", "A( 1 , 2 )=-2.5 ",
      "EVL( 3 )= 4                            EVC( 1 , 3 )= .6 ",
      std::string(39, ' ') + "***REVIEW MAXIMUM # OF CYCLES.  ***"};
  const Outcome outcome = Print(lines);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, "asked\n");
  EXPECT_EQ(Arrived(), Trimmed(lines));
}

TEST_F(PdfPrinting, PrintsTheWholeReportOfASession) {
  workspace = EverythingWorkspace();
  PrintReport(context);
  ASSERT_GT(printer.lines.size(), 100U);
  EXPECT_EQ(Print(printer.lines).status, 0);
  // The reader of the document leaves out empty lines at the foot of a page.
  const auto withoutEmpty = [](std::vector<std::string> lines) {
    std::erase(lines, "");
    return lines;
  };
  EXPECT_EQ(withoutEmpty(Arrived()), withoutEmpty(Trimmed(printer.lines)));
}

TEST_F(PdfPrinting, WithoutANamePrintsNothing) {
  const Outcome outcome = PrintLines({"A line"}, "Courier New", "", kNoServer);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, "asked\n");
}

TEST_F(PdfPrinting, WithoutLinesAsksForNothing) {
  const Outcome outcome = Print({});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.output, "not asked\n");
  EXPECT_FALSE(std::filesystem::exists(Pdf()));
}

TEST_F(PdfPrinting, CanBeStoppedAtEveryPage) {
  const std::vector<std::string> lines(150, "A line");
  int page = 1;
  const auto print = [&] {
    return PrintLines(lines, "Courier New", Pdf(), kNoServer, page).output;
  };
  while (page < 20 && print() == "stopped\n") {
    EXPECT_FALSE(std::filesystem::exists(Pdf())) << page;
    ++page;
  }
  EXPECT_EQ(print(), "asked\n");
  const std::string document = ContentOf(Pdf());
  int pages = 0;
  const std::string beginning = "/Type /Page\n";
  for (std::size_t at = 0; (at = document.find(beginning, at)) != std::string::npos; ++at) ++pages;
  EXPECT_GE(pages, 3);
  EXPECT_EQ(page - 1, pages);
}

TEST_F(PdfPrinting, GoesOnOnTheNextPage) {
  std::vector<std::string> lines;
  for (int i = 1; i <= 150; ++i) lines.push_back("LINE " + std::to_string(i));
  EXPECT_EQ(Print(lines).status, 0);
  EXPECT_EQ(Arrived(), lines);
  int pages = 1;
  for (const std::string& line : LinesOfPdf(Pdf())) {
    if (line.size() > 1 && line[0] == '\f') ++pages;
  }
  EXPECT_EQ(pages, 3);
}

TEST_F(PdfPrinting, GoesOnInTheNextLineWhereALineIsTooWide) {
  std::string wide;
  for (int i = 0; i < 400; ++i) wide += static_cast<char>('A' + i % 26);
  EXPECT_EQ(Print({"before", wide, "after"}).status, 0);
  const std::vector<std::string> arrived = Arrived();
  std::string together;
  for (std::size_t i = 1; i + 1 < arrived.size(); ++i) together += arrived[i];
  EXPECT_EQ(together, wide);
  EXPECT_EQ(arrived.front(), "before");
  EXPECT_EQ(arrived.back(), "after");
  EXPECT_GE(arrived.size(), 7U);
  // The page takes the 74 columns of a report whole.
  EXPECT_GE(arrived[1].size(), 74U);
}

TEST_F(PdfPrinting, PrintsInAFixedPitchFontOfItsOwn) {
  const std::vector<std::string> lines{"iiiiiiiiiiMMMMMMMMMM|", "MMMMMMMMMMiiiiiiiiii|"};
  EXPECT_EQ(Print(lines, "-").status, 0);
  EXPECT_EQ(Arrived(), lines);
}

TEST_F(PdfPrinting, AFileThatCannotBeWrittenIsAPrinterError) {
  EXPECT_EQ(PrintLines({"A line"}, "Courier New", "/nowhere/printed.pdf", kNoServer).status, 82);
}

}  // namespace
}  // namespace qmx::test
