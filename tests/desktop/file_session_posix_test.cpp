// SPDX-License-Identifier: MIT
// The file commands on files of the operating system.

#include <gtest/gtest.h>
#include <sys/stat.h>

#include <cstdlib>
#include <filesystem>

#include "commands/file_commands.h"
#include "desktop/file_store_system.h"
#include "support/core_bench.h"
#include "support/core_samples.h"

namespace qmx {
namespace {

namespace fs = std::filesystem;

class FileSession : public test::Workbench {
 protected:
  void SetUp() override {
    std::string pattern = testing::TempDir() + "qmx_session_XXXXXX";
    ASSERT_NE(mkdtemp(pattern.data()), nullptr);
    folder = pattern + "/";
  }
  void TearDown() override { fs::remove_all(folder); }

  std::string folder;
  std::unique_ptr<FileStore> store = MakeSystemFileStore();
  Context real{workspace, screen, {*store, printer, random, clock, memory}};
};

TEST_F(FileSession, AProjectComesBackFromTheDiskByItsCommandLine) {
  workspace = test::EverythingWorkspace();
  screen.fileNames.push_back(folder + "a b\xe9");
  SaveProjectAs(real);
  EXPECT_TRUE(NoMessage());
  EXPECT_TRUE(fs::exists(folder + "a b\xe9.qmx"));
  workspace = Workspace();
  OpenNamedProject(real, "\"" + folder + "a b\xe9.qmx\"");
  EXPECT_TRUE(NoMessage());
  EXPECT_TRUE(test::SameProject(test::EverythingWorkspace(), workspace));
}

TEST_F(FileSession, WhatCannotBeReadIsToldAndTheSessionGoesOn) {
  EnterA(test::Rows({{7}}));
  fs::create_directory(folder + "folder.qmx");
  ASSERT_EQ(mkfifo((folder + "pipe.qmx").c_str(), 0666), 0);
  for (const char* name : {"missing.qmx", "folder.qmx", "pipe.qmx", "missing/a.qmx"}) {
    screen.messages.clear();
    OpenNamedProject(real, folder + name);
    ASSERT_EQ(screen.messages.size(), 1U) << name;
    EXPECT_NE(screen.LastMessage().find(folder + name), std::string::npos);
    EXPECT_EQ(screen.messages[0].icon, Icon::kCritical);
    EXPECT_EQ(Array(kSlotA), test::Rows({{7}}));
  }
}

TEST_F(FileSession, WhatCannotBeWrittenIsToldAndTheSessionGoesOn) {
  EnterA(test::Rows({{7}}));
  fs::create_directory(folder + "folder.qmx");
  for (const char* name : {"folder.qmx", "missing/a.qmx"}) {
    screen.messages.clear();
    screen.fileNames.push_back(folder + name);
    SaveProjectAs(real);
    ASSERT_EQ(screen.messages.size(), 1U) << name;
    EXPECT_NE(screen.LastMessage().find(folder + name), std::string::npos);
  }
  EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 1);
}

}  // namespace
}  // namespace qmx
