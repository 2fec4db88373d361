// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <windows.h>

#include "desktop/file_association.h"
#include "desktop/program_path.h"
#include "desktop/wide_text.h"
#include "windows/registry.h"

namespace qmx::test {
namespace {

std::optional<std::string> ClassText(const std::string& key) {
  return RegistryText(HKEY_CLASSES_ROOT, key);
}

DWORD CountKeysOf(const char* key) {
  HKEY handle = nullptr;
  if (RegOpenKeyA(HKEY_CLASSES_ROOT, key, &handle) != ERROR_SUCCESS) return 0;
  DWORD count = 0;
  RegQueryInfoKeyA(handle, nullptr, nullptr, nullptr, &count, nullptr, nullptr, nullptr, nullptr,
                   nullptr, nullptr, nullptr);
  RegCloseKey(handle);
  return count;
}

class WindowsFileAssociation : public testing::Test {
 protected:
  void SetUp() override { Remove(); }
  void TearDown() override { Remove(); }
  static void Remove() {
    for (const char* name : {"Orvane", ".qmx"}) {
      RegDeleteTreeA(HKEY_CURRENT_USER, (std::string("Software\\Classes\\") + name).c_str());
      RegDeleteTreeA(HKEY_CLASSES_ROOT, name);
    }
  }
};

TEST_F(WindowsFileAssociation, WritesTheValuesThatTheShellReads) {
  ASSERT_EQ(ClassText("Orvane"), std::nullopt);
  AssociateProjectFiles("C:\\Program Files\\Orvane");
  EXPECT_EQ(ClassText("Orvane"), "My Application");
  EXPECT_EQ(ClassText(".qmx"), "Orvane");
  EXPECT_EQ(ClassText("Orvane\\shell\\open\\command"), "C:\\Program Files\\Orvane\\qmx.exe %1");
  EXPECT_EQ(ClassText("Orvane\\DefaultIcon"), "C:\\Program Files\\Orvane\\pi_data.ico");
}

/// Where the user's classes lie, which may be written by anybody.
TEST_F(WindowsFileAssociation, NeedsNoAdministrator) {
  AssociateProjectFiles("C:\\Orvane");
  const std::string classes = "Software\\Classes\\";
  EXPECT_EQ(RegistryText(HKEY_CURRENT_USER, classes + ".qmx"), "Orvane");
  EXPECT_EQ(RegistryText(HKEY_CURRENT_USER, classes + "Orvane\\shell\\open\\command"),
            "C:\\Orvane\\qmx.exe %1");
}

TEST_F(WindowsFileAssociation, TakesFoldersOfAllAlphabets) {
  AssociateProjectFiles("C:\\\xC3\xBC \xE4\xB8\xAD");
  EXPECT_EQ(ClassText("Orvane\\shell\\open\\command"), "C:\\\xC3\xBC \xE4\xB8\xAD\\qmx.exe %1");
}

TEST_F(WindowsFileAssociation, ChoosingItTwiceAccumulatesNothing) {
  AssociateProjectFiles("C:\\Old");
  AssociateProjectFiles("D:\\New");
  AssociateProjectFiles("D:\\New");
  EXPECT_EQ(ClassText("Orvane\\shell\\open\\command"), "D:\\New\\qmx.exe %1");
  EXPECT_EQ(ClassText("Orvane\\DefaultIcon"), "D:\\New\\pi_data.ico");
  EXPECT_EQ(CountKeysOf("Orvane"), 2u);
  EXPECT_EQ(CountKeysOf(".qmx"), 0u);
}

TEST(WindowsProgramFolder, HoldsTheRunningExecutable) {
  const std::string program = ProgramFolder() + "\\qmx_windows_tests.exe";
  EXPECT_NE(GetFileAttributesW(Wide(program).c_str()), INVALID_FILE_ATTRIBUTES) << program;
}

TEST(WindowsProgramFolder, HasNoSeparatorAtItsEndUnlessItIsARoot) {
  EXPECT_EQ(WindowsFolderOf("C:\\Orvane\\qmx.exe"), "C:\\Orvane");
  EXPECT_EQ(WindowsFolderOf("C:\\qmx.exe"), "C:\\");
  EXPECT_EQ(WindowsFolderOf("\\\\server\\share\\qmx.exe"), "\\\\server\\share");
  EXPECT_EQ(WindowsFolderOf("qmx.exe"), "");
}

}  // namespace
}  // namespace qmx::test
