// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <windows.h>

#include "desktop/system_help.h"

namespace qmx::test {
namespace {

TEST(WindowsSystemHelp, FindsTheSystemsViewerAndLeavesAMissingFileToIt) {
  EXPECT_TRUE(ShowSystemHelp(0, "Z:\\no\\such\\folder\\qmx.chm"));
  EXPECT_NE(GetModuleHandleA("hhctrl.ocx"), nullptr);
}

}  // namespace
}  // namespace qmx::test
