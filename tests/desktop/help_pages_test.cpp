// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "commands/task_table.h"
#include "desktop/help_page.h"
#include "workspace/field_table.h"
#include "workspace/slot_table.h"

namespace qmx::test {
namespace {

TEST(HelpPages, AreAsciiWithATitleThatIsTheHeading) {
  for (const std::string& name : HelpPages()) {
    const std::string page = ReadHelpFile(name);
    EXPECT_TRUE(std::all_of(page.begin(), page.end(), [](char c) { return c > 0; })) << name;
    const std::size_t title = page.find("<title>") + 7;
    const std::string text = page.substr(title, page.find("</title>") - title);
    EXPECT_FALSE(text.empty()) << name;
    EXPECT_NE(page.find("<h1>" + text + "</h1>"), std::string::npos) << name;
  }
}

TEST(HelpPages, EveryLinkLeadsToAPage) {
  for (const std::string& name : HelpPages()) {
    for (const std::string& link : AttributeValues(ReadHelpFile(name), "href")) {
      EXPECT_FALSE(ReadHelpFile(link).empty()) << name << " links to " << link;
    }
  }
}

TEST(HelpPages, EveryTagThatOpensCloses) {
  for (const std::string& name : HelpPages()) {
    const std::string page = ReadHelpFile(name);
    for (const char* tag : {"p", "h2", "table", "tr", "td", "th", "ul", "ol", "li", "a", "b", "pre",
                            "div", "sub", "sup", "code", "span"}) {
      int open = 0;
      int close = 0;
      const std::string start = std::string("<") + tag;
      for (std::size_t at = page.find(start); at != std::string::npos;
           at = page.find(start, at + 1)) {
        const char next = page[at + start.size()];
        open += next == '>' || next == ' ' ? 1 : 0;
      }
      const std::string end = std::string("</") + tag + ">";
      for (std::size_t at = page.find(end); at != std::string::npos; at = page.find(end, at + 1)) {
        ++close;
      }
      EXPECT_EQ(open, close) << name << " <" << tag << ">";
    }
  }
}

TEST(HelpPages, AreAllInTheContentsAndInTheCompiledFile) {
  const std::vector<std::string> pages = HelpPages();
  const std::string contents = ReadHelpFile("qmx.hhc");
  const std::string project = ReadHelpFile("qmx.hhp");
  for (const std::string& page : pages) {
    EXPECT_NE(contents.find("value=\"" + page + "\""), std::string::npos) << page;
    EXPECT_NE(project.find("\n" + page + "\n"), std::string::npos) << page;
  }
}

TEST(HelpPages, IndexAndContentsNameOnlyPagesThatExist) {
  for (const char* list : {"qmx.hhc", "qmx.hhk"}) {
    for (const std::string& value : AttributeValues(ReadHelpFile(list), "value")) {
      if (!value.ends_with(".html")) continue;
      EXPECT_FALSE(ReadHelpFile(value).empty()) << list << ": " << value;
    }
  }
}

TEST(HelpPages, EveryWindowHasItsPage) {
  for (const SlotInfo& slot : kSlots) {
    const std::string page = ReadHelpFile(std::string(slot.window) + ".html");
    EXPECT_NE(page.find("<h1>Window: " + std::string(slot.caption) + "</h1>"), std::string::npos)
        << slot.window;
  }
  for (const char* window : {"frmQMX", "frmResults", "frmPicture", "frmMoreAboutA", "frmSteps",
                             "frmAbout", "frmLicences", "frmHelp"}) {
    EXPECT_FALSE(ReadHelpFile(std::string(window) + ".html").empty()) << window;
  }
}

TEST(HelpPages, EveryTaskHasAPageWithTheFormulaAndWhatIsRefused) {
  std::set<std::string> headings;
  for (const std::string& name : HelpPages()) {
    const std::string page = ReadHelpFile(name);
    const std::size_t start = page.find("<h1>") + 4;
    const std::string heading = page.substr(start, page.find("</h1>") - start);
    if (page.find("class=\"formula\"") == std::string::npos) continue;
    if (page.find("<h2>What is refused</h2>") == std::string::npos) continue;
    headings.insert(heading);
  }
  for (const TaskInfo& task : Tasks()) {
    EXPECT_TRUE(std::any_of(headings.begin(), headings.end(), [&](const std::string& heading) {
      return heading == task.caption || heading.starts_with(std::string(task.caption) + ":");
    })) << task.caption;
  }
}

TEST(HelpPages, TellWhatTheMarksOfDocumentsMean) {
  const std::string steps = ReadableText(ReadHelpFile("frmSteps.html"));
  for (const char* mark : {"a frame", "shaded", "bold and underlined", "grey digits"})
    EXPECT_NE(steps.find(mark), std::string::npos) << mark;
  EXPECT_NE(ReadHelpFile("frmMoreAboutA.html").find("<b>&#8230;</b> says that something is cut"),
            std::string::npos);
}

TEST(HelpPages, NameEveryFieldWithItsStartValue) {
  const std::string page = ReadHelpFile("fields.html");
  for (const char* field :
       {"txtRowsA", "txtScalar", "txtShift", "txtRowsCreated", "txtRandLow", "txtRandHigh",
        "txtEquations", "txtError", "txtMaxcy", "txtErs", "txtPert"}) {
    EXPECT_NE(page.find(std::string("data-start=\"") + field + "\""), std::string::npos) << field;
  }
  const std::string parameters = ReadHelpFile("eigen-parameters.html");
  for (const Control& field : {txtError, txtMaxcy, txtErs, txtPert}) {
    std::string caption(InfoOf(field).caption);
    caption.pop_back();
    const std::string row =
        "<tr><td>" + caption + "</td><td>" + std::string(InfoOf(field).start) + "</td>";
    EXPECT_NE(parameters.find(row), std::string::npos) << caption;
  }
}

}  // namespace
}  // namespace qmx::test
