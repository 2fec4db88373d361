// SPDX-License-Identifier: MIT
#include "desktop/help_book.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>
#include <algorithm>
#include <fstream>

#include "desktop/help_page.h"

namespace qmx::test {
namespace {

class HelpBookTest : public testing::Test {
 protected:
  void SetUp() override {
    book_ = HelpBook::Open(QMX_HELP_FILE);
    ASSERT_NE(book_, nullptr) << QMX_HELP_FILE;
  }
  bool Finds(const char* query, const std::string& page) {
    const std::vector<std::string> found = book_->Search(query);
    return std::find(found.begin(), found.end(), page) != found.end();
  }
  std::unique_ptr<HelpBook> book_;
};

TEST_F(HelpBookTest, HoldsEveryPageUnchanged) {
  for (const std::string& page : HelpPages()) EXPECT_EQ(book_->Read(page), ReadHelpFile(page));
  EXPECT_EQ(book_->Read("help.css"), ReadHelpFile("help.css"));
  EXPECT_EQ(book_->Read("no-such-page.html"), "");
  EXPECT_FALSE(book_->Has(""));
  EXPECT_TRUE(book_->Has("frmA.html"));
}

TEST_F(HelpBookTest, OneThatIsReadCanBeOpenedAgain) {
  const std::unique_ptr<HelpBook> other = HelpBook::Open(QMX_HELP_FILE);
  ASSERT_NE(other, nullptr);
  EXPECT_EQ(other->Read("sum.html"), book_->Read("sum.html"));
}

TEST_F(HelpBookTest, ContentsNameEveryPageOnceUnderItsTitle) {
  std::vector<std::string> pages;
  for (const HelpHeading& heading : book_->Contents()) {
    EXPECT_FALSE(heading.name.empty());
    if (!heading.page.empty()) pages.push_back(heading.page);
  }
  std::sort(pages.begin(), pages.end());
  EXPECT_EQ(pages, HelpPages());
  EXPECT_EQ(book_->FirstPage(), "index.html");
  EXPECT_EQ(book_->TitleOf("sum.html"), "A + B: sum");
}

TEST_F(HelpBookTest, ContentsHaveTwoLevels) {
  const std::vector<HelpHeading>& contents = book_->Contents();
  ASSERT_GT(contents.size(), 10u);
  EXPECT_EQ(contents.front().depth, 0);
  const auto basics = std::find_if(contents.begin(), contents.end(),
                                   [](const HelpHeading& line) { return line.name == "Basics"; });
  ASSERT_NE(basics, contents.end());
  EXPECT_EQ(basics->depth, 0);
  EXPECT_EQ(basics->page, "");
  EXPECT_EQ((basics + 1)->depth, 1);
  EXPECT_EQ((basics + 1)->page, "frmQMX.html");
}

TEST_F(HelpBookTest, IndexLeadsFromAWordToItsPages) {
  std::vector<std::string> pages;
  for (const HelpKeyword& keyword : book_->Index()) {
    EXPECT_TRUE(book_->Has(keyword.page)) << keyword.word;
    if (keyword.word == "adjoint") pages.push_back(keyword.page);
  }
  std::sort(pages.begin(), pages.end());
  EXPECT_EQ(pages, (std::vector<std::string>{"adjoint-by-inverse.html", "adjoint.html"}));
}

TEST_F(HelpBookTest, SearchWantsAllWordsInAnyCase) {
  EXPECT_TRUE(Finds("cofactors", "adjoint.html"));
  EXPECT_TRUE(Finds("COFACTORS adjugate", "adjoint.html"));
  EXPECT_FALSE(Finds("cofactors xyzzy", "adjoint.html"));
  EXPECT_EQ(book_->Search("").size(), 0u);
  EXPECT_EQ(book_->Search("  ").size(), 0u);
}

TEST_F(HelpBookTest, SearchReadsTheTextAndNotTheTags) {
  EXPECT_TRUE(Finds("\"semi\"", "definiteness.html"));
  EXPECT_EQ(book_->Search("stylesheet").size(), 0u);
}

TEST_F(HelpBookTest, PagesNamedAfterTheWordComeFirst) {
  const std::vector<std::string> found = book_->Search("symmetry");
  ASSERT_GT(found.size(), 1u);
  EXPECT_EQ(found.front(), "symmetry.html");
}

TEST(HelpBook, MissingOrForeignFileOpensNothing) {
  EXPECT_EQ(HelpBook::Open("/no/such/file.chm"), nullptr);
  EXPECT_EQ(HelpBook::Open("/"), nullptr);
  const QTemporaryDir folder;
  const std::string file = folder.filePath("qmx.chm").toStdString();
  std::ofstream(file) << "ITSF and then nothing of the kind";
  EXPECT_EQ(HelpBook::Open(file), nullptr);
  std::ifstream whole(QMX_HELP_FILE, std::ios::binary);
  std::string start(4000, '\0');
  whole.read(start.data(), 4000);
  std::ofstream(file, std::ios::binary) << start;
  EXPECT_EQ(HelpBook::Open(file), nullptr);
}

}  // namespace
}  // namespace qmx::test
