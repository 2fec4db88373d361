// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <windows.h>

#include "desktop/command_line.h"
#include "desktop/program_path.h"

namespace qmx::test {
namespace {

constexpr const wchar_t* kProgram = L"C:\\Program Files\\Orvane\\qmx.exe";

TEST(WindowsCommandLine, IsWhatStandsBehindTheProgram) {
  EXPECT_EQ(BehindProgram(L"qmx.exe", kProgram), L"");
  EXPECT_EQ(BehindProgram(L"qmx.exe ", kProgram), L"");
  EXPECT_EQ(BehindProgram(L"qmx C:\\a.qmx", kProgram), L"C:\\a.qmx");
  EXPECT_EQ(BehindProgram(L"qmx\tC:\\a.qmx ", kProgram), L"C:\\a.qmx");
  EXPECT_EQ(BehindProgram(L"\"C:\\x y\\qmx.exe\" \"C:\\a  b.qmx\"", kProgram), L"\"C:\\a  b.qmx\"");
  EXPECT_EQ(BehindProgram(L"\"C:\\x y\\qmx.exe\"", kProgram), L"");
  EXPECT_EQ(BehindProgram(L"\"C:\\x y", kProgram), L"");
}

/// As the association has it, whose command is not in quotes.
TEST(WindowsCommandLine, AProgramInAFolderWithBlanksIsPassedOverWithoutQuotes) {
  EXPECT_EQ(BehindProgram(std::wstring(kProgram) + L" C:\\My Files\\\u00fc  \u4e2d.qmx", kProgram),
            L"C:\\My Files\\\u00fc  \u4e2d.qmx");
  EXPECT_EQ(BehindProgram(L"c:\\program files\\orvane\\QMX.EXE a.qmx", kProgram), L"a.qmx");
  EXPECT_EQ(BehindProgram(kProgram, kProgram), L"");
}

/// What a run of this program with an argument of its own hands over is all it can tell.
TEST(WindowsCommandLine, OfThisProcessBeginsBehindItsProgram) {
  const std::string line = CommandLine(0, nullptr);
  EXPECT_EQ(line.find("qmx_windows_tests"), std::string::npos) << line;
  EXPECT_NE(std::wstring(GetCommandLineW()).find(L"qmx_windows_tests"), std::wstring::npos);
  EXPECT_TRUE(WindowsProgramPath().ends_with(L"qmx_windows_tests.exe"));
}

}  // namespace
}  // namespace qmx::test
