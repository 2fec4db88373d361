// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <windows.h>

#include <fstream>
#include <string>

#include "desktop/system_help.h"

namespace qmx::test {
namespace {

TEST(WindowsSystemHelp, FindsTheSystemsViewerAndLeavesAMissingFileToIt) {
  EXPECT_TRUE(ShowSystemHelp(0, "Z:\\no\\such\\folder\\qmx.chm"));
  EXPECT_NE(GetModuleHandleA("hhctrl.ocx"), nullptr);
}

TEST(WindowsSystemHelp, LeavesWhatCameOverANetworkToOurOwnViewer) {
  EXPECT_FALSE(ShowSystemHelp(0, "\\\\server\\share\\qmx.chm"));
  // The system marks what a browser has brought by a stream of the file.
  const std::string file = testing::TempDir() + "qmx_help_" + std::to_string(GetCurrentProcessId());
  std::ofstream(file + ":Zone.Identifier") << "[ZoneTransfer]\nZoneId=3\n";
  EXPECT_FALSE(ShowSystemHelp(0, file));
  DeleteFileA((file + ":Zone.Identifier").c_str());
  DeleteFileA(file.c_str());
}

}  // namespace
}  // namespace qmx::test
