// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <thread>

#include "desktop/file_association.h"
#include "support/core_folder.h"

namespace qmx {
namespace {

namespace fs = std::filesystem;

std::string ReadText(const fs::path& file) {
  std::ifstream in(file, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

/// A user of their own in a temporary folder, with a program that notes how it was started.
class FileAssociation : public testing::Test {
 protected:
  void SetUp() override {
    char name[] = "/tmp/qmx-association-XXXXXX";
    ASSERT_NE(mkdtemp(name), nullptr);
    home_ = name;
    setenv("HOME", name, 1);
    setenv("XDG_DATA_HOME", (home_ / "data").c_str(), 1);
    setenv("XDG_CONFIG_HOME", (home_ / "config").c_str(), 1);
    setenv("XDG_CURRENT_DESKTOP", "GNOME", 1);
  }
  void TearDown() override { fs::remove_all(home_); }

  /// Puts a program into a folder; it writes its argument count and arguments into started_.
  fs::path InstallProgram(const fs::path& folder) {
    fs::create_directories(folder);
    const fs::path program = folder / "qmx.exe";
    std::ofstream(program) << "#!/bin/sh\n"
                           << "printf '%s|' \"$#\" \"$@\" > '" << Started().string() << ".new'\n"
                           << "mv '" << Started().string() << ".new' '" << Started().string()
                           << "'\n";
    fs::permissions(program, fs::perms::owner_all);
    for (const char* icon : {"pi_data.svg", "pi_data_48.png"}) {
      fs::copy_file(fs::path(test::SourceFolder()) / "resources" / icon, folder / icon);
    }
    return folder;
  }
  fs::path Started() const { return home_ / "started"; }

  fs::path MakeProject(const std::string& name) {
    const fs::path project = home_ / name;
    std::ofstream(project) << "#FALSE#";
    return project;
  }

  /// Opens a file with one of the desktop's openers and returns what the program noted.
  std::string OpenWith(const std::string& opener, const fs::path& file) {
    fs::remove(Started());
    const std::string command = opener + " '" + file.string() + "'";
    EXPECT_EQ(std::system(command.c_str()), 0) << command;
    for (int tries = 0; tries < 200 && !fs::exists(Started()); ++tries) {
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    return ReadText(Started());
  }

  /// Every file below a folder with its bytes.
  std::map<std::string, std::string> Snapshot(const fs::path& folder) const {
    std::map<std::string, std::string> files;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
      if (entry.is_regular_file()) files[entry.path().string()] = ReadText(entry.path());
    }
    return files;
  }

  fs::path home_;
};

TEST_F(FileAssociation, OpenedProjectStartsTheProgramWithItsPathAlone) {
  AssociateProjectFiles(InstallProgram(home_ / "program"));
  const fs::path project = MakeProject("my first project.qmx");
  EXPECT_EQ(OpenWith("gio open", project), "1|" + project.string() + "|");
  EXPECT_EQ(OpenWith("xdg-open", project), "1|" + project.string() + "|");
}

TEST_F(FileAssociation, ProgramMayStandInAnyFolder) {
  for (const char* folder :
       {"with blank", "dollar$HOME", "quote\"d", "tick`s", "back\\slash", "apostrophe's",
        "semi;colon & more", "100% sure", "%f%%u", "\xC3\xBCml\xC3\xA4ut"}) {
    AssociateProjectFiles(InstallProgram(home_ / folder));
    const fs::path project = MakeProject("p.qmx");
    EXPECT_EQ(OpenWith("gio open", project), "1|" + project.string() + "|") << folder;
  }
}

TEST_F(FileAssociation, ProjectHasItsTypeAndTheTypeItsIcon) {
  AssociateProjectFiles(InstallProgram(home_ / "program"));
  const fs::path project = MakeProject("p.qmx");
  const fs::path answer = home_ / "answer";
  const std::string command = "gio info -a standard::content-type,standard::icon '" +
                              project.string() + "' > '" + answer.string() + "'";
  ASSERT_EQ(std::system(command.c_str()), 0);
  EXPECT_NE(ReadText(answer).find("application/x-qmx"), std::string::npos) << ReadText(answer);
  const fs::path icons = home_ / "data" / "icons" / "hicolor";
  const fs::path resources = fs::path(test::SourceFolder()) / "resources";
  EXPECT_EQ(ReadText(icons / "scalable/apps/orvane.svg"), ReadText(resources / "pi_data.svg"));
  EXPECT_EQ(ReadText(icons / "48x48/mimetypes/application-x-qmx.png"),
            ReadText(resources / "pi_data_48.png"));
}

TEST_F(FileAssociation, ChoosingItTwiceWritesTheSameAgain) {
  const fs::path folder = InstallProgram(home_ / "program");
  AssociateProjectFiles(folder);
  const auto once = Snapshot(home_);
  AssociateProjectFiles(folder);
  EXPECT_EQ(Snapshot(home_), once);
  EXPECT_GT(once.size(), 8u);
}

TEST_F(FileAssociation, MovedProgramTakesTheFilesWithIt) {
  AssociateProjectFiles(InstallProgram(home_ / "old"));
  fs::remove_all(home_ / "old");
  AssociateProjectFiles(InstallProgram(home_ / "new"));
  const fs::path project = MakeProject("p.qmx");
  EXPECT_EQ(OpenWith("gio open", project), "1|" + project.string() + "|");
}

TEST_F(FileAssociation, OtherDefaultsOfTheUserStay) {
  fs::create_directories(home_ / "config");
  const fs::path real = home_ / "dotfiles";
  std::ofstream(real) << "[Default Applications]\ntext/html=browser.desktop\n"
                      << "application/x-qmx=other.desktop\n[Added Associations]\na/b=c.desktop\n";
  const fs::path list = home_ / "config" / "mimeapps.list";
  fs::create_symlink(real, list);
  AssociateProjectFiles(InstallProgram(home_ / "program"));
  EXPECT_TRUE(fs::is_symlink(list));
  EXPECT_EQ(ReadText(real),
            "[Default Applications]\ntext/html=browser.desktop\n"
            "application/x-qmx=orvane.desktop\n[Added Associations]\na/b=c.desktop\n");
}

TEST_F(FileAssociation, NothingWritableIsSilentlyNothing) {
  const fs::path folder = InstallProgram(home_ / "program");
  std::ofstream(home_ / "data") << "a file where the folder should be";
  std::ofstream(home_ / "config") << "and another one";
  const auto before = Snapshot(home_);
  AssociateProjectFiles(folder);
  EXPECT_EQ(Snapshot(home_), before);
}

TEST_F(FileAssociation, WithoutAUsableDataFolderNothingIsWrittenAtAll) {
  const fs::path folder = InstallProgram(home_ / "program");
  for (const char* file : {"data", "data/mime", "data/mime/packages", "data/applications"}) {
    fs::create_directories((home_ / file).parent_path());
    std::ofstream(home_ / file) << "a file where a folder should be";
    const auto before = Snapshot(home_);
    AssociateProjectFiles(folder);
    EXPECT_EQ(Snapshot(home_), before) << file;
    EXPECT_FALSE(fs::exists(home_ / "config")) << file;
    fs::remove_all(home_ / "data");
  }
}

TEST_F(FileAssociation, TemporariesOfAKilledProgramAreSweptUp) {
  const fs::path entries = home_ / "data" / "applications";
  fs::create_directories(entries);
  const fs::path left = entries / ".qmx-0123456789abcdef.tmp";
  std::ofstream(left) << "x";
  fs::last_write_time(left, fs::file_time_type::clock::now() - std::chrono::hours(25));
  AssociateProjectFiles(InstallProgram(home_ / "program"));
  EXPECT_FALSE(fs::exists(left));
}

TEST_F(FileAssociation, WithoutVariablesTheHomeFolderServes) {
  unsetenv("XDG_DATA_HOME");
  setenv("XDG_CONFIG_HOME", "relative/paths/do/not/count", 1);
  AssociateProjectFiles(InstallProgram(home_ / "program"));
  EXPECT_TRUE(fs::exists(home_ / ".local/share/applications/orvane.desktop"));
  EXPECT_TRUE(fs::exists(home_ / ".config/mimeapps.list"));
  unsetenv("HOME");
  AssociateProjectFiles(home_ / "program");
}

TEST(ProgramFolder, HoldsTheRunningExecutable) {
  const std::string folder = ProgramFolder();
  EXPECT_FALSE(folder.ends_with("/"));
  EXPECT_TRUE(fs::exists(fs::path(folder) / "qmx_platform_tests")) << folder;
}

}  // namespace
}  // namespace qmx
