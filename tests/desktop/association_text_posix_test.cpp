// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include "desktop/association_text.h"

namespace qmx {
namespace {

TEST(ExecArgument, QuotesThePathAndEscapesWhatQuotesLeaveSpecial) {
  EXPECT_EQ(ExecArgument("/opt/orvane/qmx.exe"), R"("/opt/orvane/qmx.exe")");
  EXPECT_EQ(ExecArgument("/opt/a b/qmx.exe"), R"("/opt/a b/qmx.exe")");
  EXPECT_EQ(ExecArgument("/opt/$x/qmx.exe"), R"("/opt/\\$x/qmx.exe")");
  EXPECT_EQ(ExecArgument("/a\"b/`c"), R"("/a\\"b/\\`c")");
  EXPECT_EQ(ExecArgument("/a\\b"), R"("/a\\\\b")");
  EXPECT_EQ(ExecArgument("/100%/x"), R"("/100%%/x")");
  EXPECT_EQ(ExecArgument("/a\nb\tc\rd"), R"("/a\nb\tc\rd")");
}

TEST(ExecCommand, StartsAPathWithAPercentSignByTheShell) {
  EXPECT_EQ(ExecCommand("/opt/a b/qmx.exe"), R"("/opt/a b/qmx.exe")");
  EXPECT_EQ(ExecCommand("/100%/x"), R"(sh -c "exec \\"\\$0\\" \\"\\$@\\"" "/100%%/x")");
}

TEST(WithProgram, ReplacesTheExecLineAlone) {
  EXPECT_EQ(WithProgram("[Desktop Entry]\nName=Exec\nTryExec=x\nExec=qmx %f\nIcon=i\n", "/o/p"),
            "[Desktop Entry]\nName=Exec\nTryExec=x\nExec=\"/o/p\" %f\nIcon=i\n");
}

struct ListCase {
  const char* before;
  const char* after;
};

TEST(WithDefaultApplication, SetsOneEntryAndLeavesTheRest) {
  for (const ListCase& list : {
           ListCase{"", "[Default Applications]\na/x=o.desktop\n"},
           ListCase{"[Default Applications]\n", "[Default Applications]\na/x=o.desktop\n"},
           ListCase{"[Default Applications]\na/y=p.desktop",
                    "[Default Applications]\na/x=o.desktop\na/y=p.desktop\n"},
           ListCase{"[Default Applications]\na/xx=q\n a/x =p.desktop;r.desktop\n# end\n",
                    "[Default Applications]\na/xx=q\na/x=o.desktop\n# end\n"},
           ListCase{"[Added Associations]\na/x=p\n",
                    "[Added Associations]\na/x=p\n\n[Default Applications]\na/x=o.desktop\n"},
           ListCase{"[Default Applications]\n\n[Added Associations]\na/x=p\n",
                    "[Default Applications]\na/x=o.desktop\n\n[Added Associations]\na/x=p\n"},
       }) {
    const std::string once = WithDefaultApplication(list.before, "a/x", "o.desktop");
    EXPECT_EQ(once, list.after);
    EXPECT_EQ(WithDefaultApplication(once, "a/x", "o.desktop"), once);
  }
}

}  // namespace
}  // namespace qmx
