// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <windows.h>

#include <array>
#include <string>

#include "desktop/file_store_system.h"

namespace qmx {
namespace {

class WindowsFileStoreTest : public ::testing::Test {
 protected:
  void SetUp() override {
    std::array<char, MAX_PATH> base;
    GetTempPathA(static_cast<DWORD>(base.size()), base.data());
    folder = std::string(base.data()) + "qmx_store_" + std::to_string(GetCurrentProcessId()) + "\\";
    ASSERT_NE(CreateDirectoryA(folder.c_str(), nullptr), 0);
  }
  void TearDown() override {
    for (const char* name : {"file.txt", "a b.qmx"}) {
      SetFileAttributesA((folder + name).c_str(), FILE_ATTRIBUTE_NORMAL);
      DeleteFileA((folder + name).c_str());
    }
    RemoveDirectoryA((folder + "inner").c_str());
    // Only an empty folder goes: nothing temporary may be left.
    EXPECT_NE(RemoveDirectoryA(folder.c_str()), 0);
  }
  std::string Replace(const std::string& name, const std::string& bytes) {
    return store->Replace(folder + name, bytes).problem;
  }
  std::string Content(const std::string& name) {
    std::string bytes;
    EXPECT_EQ(store->Read(folder + name, bytes).problem, "");
    return bytes;
  }

  std::string folder;
  std::unique_ptr<FileStore> store = MakeSystemFileStore();
};

TEST_F(WindowsFileStoreTest, WritesAndReadsExactlyTheBytes) {
  std::string bytes;
  for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);
  EXPECT_EQ(Replace("file.txt", bytes), "");
  EXPECT_EQ(Content("file.txt"), bytes);
  EXPECT_EQ(Replace("file.txt", "shorter\r\n"), "");
  EXPECT_EQ(Content("file.txt"), "shorter\r\n");
  EXPECT_EQ(Replace("a b.qmx", ""), "");
  EXPECT_EQ(Content("a b.qmx"), "");
}

TEST_F(WindowsFileStoreTest, RemovesTemporariesThatAKilledProgramLeftLongAgo) {
  const std::string old = folder + ".qmx-0123456789abcdef.tmp";
  const std::string fresh = folder + ".qmx-fedcba9876543210.tmp";
  for (const std::string& name : {old, fresh}) {
    const HANDLE file = CreateFileA(name.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    FILETIME time;
    GetSystemTimeAsFileTime(&time);
    // Two days are somewhat more than 400 turns of the lower half.
    time.dwHighDateTime -= 403;
    if (name == old) {
      EXPECT_NE(SetFileTime(file, nullptr, nullptr, &time), 0);
    }
    CloseHandle(file);
  }
  EXPECT_EQ(Replace("file.txt", "x"), "");
  EXPECT_EQ(GetFileAttributesA(old.c_str()), INVALID_FILE_ATTRIBUTES);
  EXPECT_NE(DeleteFileA(fresh.c_str()), 0);
}

TEST_F(WindowsFileStoreTest, SaysWhatCannotBeRead) {
  ASSERT_NE(CreateDirectoryA((folder + "inner").c_str(), nullptr), 0);
  std::string bytes;
  EXPECT_EQ(store->Read(folder + "missing", bytes).problem, "There is no such file or folder.");
  EXPECT_EQ(store->Read(folder + "none\\file", bytes).problem, "There is no such file or folder.");
  EXPECT_EQ(store->Read(folder + "inner", bytes).problem, "It is a folder.");
  EXPECT_FALSE(store->Read("", bytes).Ok());
}

TEST_F(WindowsFileStoreTest, KeepsWhatCannotBeReplaced) {
  ASSERT_NE(CreateDirectoryA((folder + "inner").c_str(), nullptr), 0);
  EXPECT_EQ(Replace("inner", "x"), "It is a folder.");
  EXPECT_EQ(Replace("none\\file", "x"), "There is no such file or folder.");
  ASSERT_EQ(Replace("file.txt", "old"), "");
  SetFileAttributesA((folder + "file.txt").c_str(), FILE_ATTRIBUTE_READONLY);
  EXPECT_EQ(Replace("file.txt", "new"), "You have no permission for it.");
  EXPECT_EQ(Content("file.txt"), "old");
}

TEST_F(WindowsFileStoreTest, KeepsAFileThatAnotherProgramHasOpen) {
  ASSERT_EQ(Replace("file.txt", "old"), "");
  const HANDLE other = CreateFileA((folder + "file.txt").c_str(), GENERIC_READ, 0, nullptr,
                                   OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  ASSERT_NE(other, INVALID_HANDLE_VALUE);
  EXPECT_EQ(Replace("file.txt", "new"), "Another program has it open.");
  CloseHandle(other);
  EXPECT_EQ(Content("file.txt"), "old");
}

}  // namespace
}  // namespace qmx
