// SPDX-License-Identifier: MIT
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <random>
#include <thread>
#include <vector>

#include "desktop/file_store_system.h"

namespace {

/// Calls of the system that are refused for a while.
struct Refusals {
  bool fchmod = false;
  bool ftruncate = false;
} refuses;

}  // namespace

// These take the place of the system's own in this program.
extern "C" int fchmod(int file, mode_t mode) noexcept {
  if (!refuses.fchmod) return static_cast<int>(syscall(SYS_fchmod, file, mode));
  errno = EPERM;
  return -1;
}

extern "C" int ftruncate(int file, off_t length) noexcept {
  if (!refuses.ftruncate) return static_cast<int>(syscall(SYS_ftruncate, file, length));
  errno = EIO;
  return -1;
}

namespace qmx {
namespace {

namespace fs = std::filesystem;

constexpr const char* kNoSuchFile = "There is no such file or folder.";
constexpr const char* kFolder = "It is a folder.";
constexpr const char* kNotRegular = "It is not an ordinary file.";
constexpr const char* kNoPermission = "You have no permission for it.";
constexpr const char* kNoSpace = "There is no space left on the disk.";

std::string ContentOf(const std::string& name) {
  std::ifstream file(name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

/// Runs `work` in a process of its own and returns what it returns.
int InChild(const std::function<int()>& work) {
  const pid_t child = fork();
  if (child == 0) _exit(work());
  int status = 0;
  waitpid(child, &status, 0);
  return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

/// As InChild, for somebody without the rights of root.
int AsNobody(const std::function<int()>& work) {
  return InChild([&] {
    constexpr uid_t kNobody = 65534;
    if (geteuid() == 0 && (setgid(kNobody) != 0 || setuid(kNobody) != 0)) return 99;
    return work();
  });
}

class FileStoreTest : public ::testing::Test {
 protected:
  void SetUp() override {
    std::string pattern = testing::TempDir() + "qmx_store_XXXXXX";
    ASSERT_NE(mkdtemp(pattern.data()), nullptr);
    folder = pattern + "/";
    ASSERT_EQ(chmod(folder.c_str(), 0777), 0);
    setenv("XDG_STATE_HOME", Path("state").c_str(), 1);
    refuses = {};
  }
  void TearDown() override {
    refuses = {};
    fs::remove_all(folder);
  }

  std::string Path(const std::string& name) const { return folder + name; }
  void Put(const std::string& name, const std::string& bytes) {
    std::ofstream(Path(name), std::ios::binary) << bytes;
  }
  std::string Replace(const std::string& name, const std::string& bytes) {
    return store->Replace(Path(name), bytes).problem;
  }
  std::string Read(const std::string& name, std::string* bytes = nullptr) {
    std::string content;
    std::string problem = store->Read(Path(name), content).problem;
    if (bytes != nullptr) *bytes = content;
    return problem;
  }
  /// The names in the folder, temporary files among them.
  std::size_t FilesInFolder() const {
    return static_cast<std::size_t>(
        std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
  }
  mode_t ModeOf(const std::string& name) const {
    struct stat info {};
    return stat(Path(name).c_str(), &info) == 0 ? info.st_mode & 07777 : 0;
  }

  std::string folder;
  std::unique_ptr<FileStore> store = MakeSystemFileStore();
};

TEST_F(FileStoreTest, WritesAndReadsExactlyTheBytes) {
  std::string bytes;
  for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);
  EXPECT_EQ(Replace("new", bytes), "");
  std::string read;
  EXPECT_EQ(Read("new", &read), "");
  EXPECT_EQ(read, bytes);
  EXPECT_EQ(Replace("new", ""), "");
  EXPECT_EQ(Read("new", &read), "");
  EXPECT_EQ(read, "");
  EXPECT_EQ(FilesInFolder(), 1U);
}

TEST_F(FileStoreTest, ReadsFilesThatTellNoSize) {
  std::string bytes;
  EXPECT_EQ(store->Read("/proc/self/status", bytes).problem, "");
  EXPECT_EQ(bytes.rfind("Name:", 0), 0U);
}

TEST_F(FileStoreTest, TakesAnyBytesInANameButNul) {
  const std::string odd = "a b\xff\n\"'$*?";
  EXPECT_EQ(Replace(odd, "x"), "");
  EXPECT_EQ(ContentOf(Path(odd)), "x");
  EXPECT_NE(Replace(std::string("a\0b", 3), "x"), "");
  EXPECT_NE(store->Replace("", "x").problem, "");
  EXPECT_NE(Replace("folder/", "x"), "");
  std::string bytes;
  EXPECT_NE(store->Read("", bytes).problem, "");
  EXPECT_NE(Read(std::string("a\0b", 3)), "");
  EXPECT_EQ(Replace(std::string(300, 'n'), "x"), "The name is too long.");
}

TEST_F(FileStoreTest, UsesNamesRelativeToTheWorkingFolder) {
  const int result = InChild([&] {
    if (chdir(folder.c_str()) != 0) return 1;
    return store->Replace("relative.txt", "here").Ok() ? 0 : 2;
  });
  EXPECT_EQ(result, 0);
  EXPECT_EQ(ContentOf(Path("relative.txt")), "here");
}

TEST_F(FileStoreTest, SaysWhatCannotBeRead) {
  fs::create_directory(Path("folder"));
  ASSERT_EQ(mkfifo(Path("pipe").c_str(), 0666), 0);
  EXPECT_EQ(Read("missing"), kNoSuchFile);
  EXPECT_EQ(Read("missing/file"), kNoSuchFile);
  EXPECT_EQ(Read("folder"), kFolder);
  EXPECT_EQ(Read("pipe"), kNotRegular);
  std::string bytes;
  EXPECT_EQ(store->Read("/dev/zero", bytes).problem, kNotRegular);
  Put("file", "x");
  EXPECT_EQ(Read("file/below"), "A part of its path is not a folder.");
}

TEST_F(FileStoreTest, SaysWhatCannotBeReplaced) {
  fs::create_directory(Path("folder"));
  ASSERT_EQ(mkfifo(Path("pipe").c_str(), 0666), 0);
  EXPECT_EQ(Replace("folder", "x"), kFolder);
  EXPECT_EQ(Replace("pipe", "x"), kNotRegular);
  EXPECT_EQ(Replace("missing/file", "x"), kNoSuchFile);
  EXPECT_EQ(store->Replace("/dev/full", "x").problem, kNotRegular);
  EXPECT_EQ(FilesInFolder(), 2U);
}

TEST_F(FileStoreTest, KeepsTheRightsOfTheOldFile) {
  for (const mode_t mode : {0600U, 0640U, 0644U, 0666U, 0755U}) {
    Put("file", "old");
    ASSERT_EQ(chmod(Path("file").c_str(), mode), 0);
    EXPECT_EQ(Replace("file", "new"), "");
    EXPECT_EQ(ModeOf("file"), mode);
    EXPECT_EQ(ContentOf(Path("file")), "new");
  }
}

TEST_F(FileStoreTest, GivesANewFileTheUsualRights) {
  const mode_t before = umask(027);
  EXPECT_EQ(Replace("file", "x"), "");
  umask(before);
  EXPECT_EQ(ModeOf("file"), 0640U);
}

TEST_F(FileStoreTest, KeepsTheOwnerWhereItMay) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can give files away";
  Put("file", "old");
  ASSERT_EQ(chown(Path("file").c_str(), 1234, 4321), 0);
  EXPECT_EQ(Replace("file", "new"), "");
  struct stat info {};
  ASSERT_EQ(stat(Path("file").c_str(), &info), 0);
  EXPECT_EQ(info.st_uid, 1234U);
  EXPECT_EQ(info.st_gid, 4321U);
}

TEST_F(FileStoreTest, GivesNoForeignGroupTheRightsOfTheOldOne) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can give files away";
  Put("file", "old");
  ASSERT_EQ(chown(Path("file").c_str(), 1234, 4321), 0);
  ASSERT_EQ(chmod(Path("file").c_str(), 0666), 0);
  EXPECT_EQ(AsNobody([&] { return Replace("file", "new").empty() ? 0 : 1; }), 0);
  EXPECT_EQ(ContentOf(Path("file")), "new");
  EXPECT_EQ(ModeOf("file"), 0606U);
}

TEST_F(FileStoreTest, ReplacesTheFileBehindALink) {
  fs::create_directory(Path("far"));
  Put("far/file", "old");
  fs::create_symlink("far/file", Path("link"));
  fs::create_symlink(Path("link"), Path("link2"));
  EXPECT_EQ(Replace("link2", "new"), "");
  EXPECT_TRUE(fs::is_symlink(Path("link2")));
  EXPECT_TRUE(fs::is_symlink(Path("link")));
  EXPECT_EQ(ContentOf(Path("far/file")), "new");
  std::string bytes;
  EXPECT_EQ(Read("link2", &bytes), "");
  EXPECT_EQ(bytes, "new");
}

TEST_F(FileStoreTest, CreatesTheFileThatALinkPromises) {
  fs::create_symlink("promised", Path("link"));
  EXPECT_EQ(Replace("link", "x"), "");
  EXPECT_TRUE(fs::is_symlink(Path("link")));
  EXPECT_EQ(ContentOf(Path("promised")), "x");
}

TEST_F(FileStoreTest, RefusesLinksInACircle) {
  fs::create_symlink("two", Path("one"));
  fs::create_symlink("one", Path("two"));
  EXPECT_EQ(Replace("one", "x"), "Its links lead in a circle.");
  EXPECT_EQ(Read("one"), "Its links lead in a circle.");
}

TEST_F(FileStoreTest, RefusesAFileThatMayNotBeWritten) {
  Put("file", "old");
  ASSERT_EQ(chmod(Path("file").c_str(), 0444), 0);
  const int result = AsNobody([&] { return Replace("file", "new") == kNoPermission ? 0 : 1; });
  EXPECT_EQ(result, 0);
  EXPECT_EQ(ContentOf(Path("file")), "old");
  EXPECT_EQ(FilesInFolder(), 1U);
}

TEST_F(FileStoreTest, RefusesAFileThatMayNotBeRead) {
  Put("file", "secret");
  ASSERT_EQ(chmod(Path("file").c_str(), 0200), 0);
  EXPECT_EQ(AsNobody([&] { return Read("file") == kNoPermission ? 0 : 1; }), 0);
}

TEST_F(FileStoreTest, WritesInPlaceWhereTheFolderTakesNoNewFile) {
  fs::create_directory(Path("folder"));
  Put("folder/file", "a longer old text");
  ASSERT_EQ(chmod(Path("folder/file").c_str(), 0666), 0);
  fs::create_hard_link(Path("folder/file"), Path("other name"));
  ASSERT_EQ(chmod(Path("folder").c_str(), 0555), 0);
  const int result = AsNobody([&] {
    if (!Replace("folder/file", "new").empty()) return 1;
    return Replace("folder/other", "new") == kNoPermission ? 0 : 2;
  });
  EXPECT_EQ(result, 0);
  EXPECT_EQ(ContentOf(Path("folder/file")), "new");
  EXPECT_EQ(ContentOf(Path("other name")), "new") << "the same file";
  EXPECT_TRUE(fs::is_empty(Path("state/orvane"))) << "the copy is gone";
  EXPECT_EQ(ModeOf("state/orvane"), 0700U);
}

TEST_F(FileStoreTest, WritesInPlaceInAStickyFolder) {
  if (geteuid() != 0) GTEST_SKIP() << "only root can give files away";
  fs::create_directory(Path("folder"));
  ASSERT_EQ(chmod(Path("folder").c_str(), 01777), 0);
  Put("folder/file", "old");
  ASSERT_EQ(chown(Path("folder/file").c_str(), 1234, 4321), 0);
  ASSERT_EQ(chmod(Path("folder/file").c_str(), 0666), 0);
  EXPECT_EQ(AsNobody([&] { return Replace("folder/file", "new").empty() ? 0 : 1; }), 0);
  EXPECT_EQ(ContentOf(Path("folder/file")), "new");
  EXPECT_EQ(ModeOf("folder/file"), 0666U);
  EXPECT_EQ(std::distance(fs::directory_iterator(Path("folder")), fs::directory_iterator()), 1);
}

TEST_F(FileStoreTest, WritesInPlaceWhereRightsCannotBeSet) {
  Put("file", "old");
  refuses.fchmod = true;
  EXPECT_EQ(Replace("file", "new"), "");
  EXPECT_EQ(ContentOf(Path("file")), "new");
  EXPECT_EQ(Replace("made", "x"), "") << "a new file needs no rights set";
  EXPECT_TRUE(fs::is_empty(Path("state/orvane")));
}

/// Stops at a report.
class StopAt : public Progress {
 public:
  explicit StopAt(int report) : left_(report) {}
  void Report(double fraction) override {
    last = fraction;
    if (--left_ == 0) throw Stopped();
  }
  double last = 0;

 private:
  int left_;
};

TEST_F(FileStoreTest, AStopLeavesTheOldFileWhole) {
  const std::string large(5'000'000, 'n');
  for (const bool inPlace : {false, true}) {
    Put("file", "old");
    refuses.fchmod = inPlace;
    int at = 1;
    for (;; ++at) {
      StopAt progress(at);
      try {
        EXPECT_TRUE(store->Replace(Path("file"), large, progress).Ok());
        EXPECT_EQ(progress.last, 1);
        break;
      } catch (const Stopped&) {
        ASSERT_EQ(ContentOf(Path("file")), "old") << "stopped at report " << at;
        EXPECT_TRUE(!fs::exists(Path("state/orvane")) || fs::is_empty(Path("state/orvane")));
        EXPECT_EQ(FilesInFolder(), inPlace ? 2U : 1U);
      }
    }
    EXPECT_GE(at, 5);
    EXPECT_EQ(ContentOf(Path("file")), large);
  }
}

TEST_F(FileStoreTest, ReadingStopsAtEveryReport) {
  const std::string large(5'000'000, 'n');
  Put("file", large);
  std::string bytes;
  int at = 1;
  for (;; ++at) {
    StopAt progress(at);
    try {
      EXPECT_TRUE(store->Read(Path("file"), bytes, progress).Ok());
      break;
    } catch (const Stopped&) {
    }
  }
  EXPECT_GE(at, 5);
  EXPECT_EQ(bytes, large);
}

TEST_F(FileStoreTest, NamesTheCopyWhereWritingInPlaceFails) {
  const std::string name = std::string(52, 'n') + "\xC3\xBC" + std::string(197, 'm') + ".q";
  Put(name, "old");
  refuses.fchmod = refuses.ftruncate = true;
  const FileOutcome outcome = store->Replace(Path(name), "new");
  EXPECT_EQ(outcome.problem, "The disk reports an error.");
  EXPECT_EQ(outcome.copy.rfind(Path("state/orvane/"), 0), 0U) << outcome.copy;
  EXPECT_TRUE(outcome.copy.ends_with("-" + std::string(197, 'm') + ".q")) << outcome.copy;
  EXPECT_EQ(ContentOf(outcome.copy), "new");
}

TEST_F(FileStoreTest, WritesNothingInPlaceWithoutACopy) {
  Put("file", "old");
  Put("state", "a file where the folder should be");
  refuses.fchmod = true;
  const FileOutcome outcome = store->Replace(Path("file"), "new");
  EXPECT_NE(outcome.problem.find("copy"), std::string::npos) << outcome.problem;
  EXPECT_EQ(outcome.copy, "");
  EXPECT_EQ(ContentOf(Path("file")), "old");
}

TEST_F(FileStoreTest, RemovesTemporariesThatAKilledProgramLeftLongAgo) {
  const std::string old = ".qmx-0123456789abcdef.tmp";
  const std::vector<std::string> others{".qmx-fedcba9876543210.tmp", ".qmx-mine.tmp",
                                        ".qmx-0123456789abcdeg.tmp", "0123456789abcdef.tmp"};
  Put(old, "x");
  for (const std::string& name : others) Put(name, "x");
  const auto longAgo = fs::file_time_type::clock::now() - std::chrono::hours(25);
  for (const auto& entry : fs::directory_iterator(folder)) {
    if (entry.path().filename() != others[0]) fs::last_write_time(entry, longAgo);
  }
  Replace("missing/file", "x");
  EXPECT_TRUE(fs::exists(Path(old))) << "nothing was saved";
  EXPECT_EQ(Replace("file", "x"), "");
  EXPECT_FALSE(fs::exists(Path(old)));
  for (const std::string& name : others) EXPECT_TRUE(fs::exists(Path(name))) << name;
}

TEST_F(FileStoreTest, KeepsTheOldFileWhereverWritingStops) {
  const std::string bytes(300, 'n');
  Put("file", "old");
  for (rlim_t limit = 0; limit < bytes.size(); ++limit) {
    const int result = InChild([&] {
      signal(SIGXFSZ, SIG_IGN);
      const rlimit most{limit, limit};
      if (setrlimit(RLIMIT_FSIZE, &most) != 0) return 2;
      const std::string problem = Replace("file", bytes);
      return problem == "The file would be larger than the system permits." ? 0 : 1;
    });
    ASSERT_EQ(result, 0) << limit;
    ASSERT_EQ(ContentOf(Path("file")), "old") << limit;
    ASSERT_EQ(FilesInFolder(), 1U) << limit;
  }
}

TEST_F(FileStoreTest, KeepsTheOldFileOnAFullDisk) {
  if (mount("none", folder.c_str(), "tmpfs", 0, "size=64k,mode=777") != 0)
    GTEST_SKIP() << "a small disk cannot be mounted here";
  Put("file", "old");
  const std::string problem = Replace("file", std::string(100000, 'n'));
  const std::string content = ContentOf(Path("file"));
  const std::size_t files = FilesInFolder();
  const std::string afterwards = Replace("file", "new");
  umount(folder.c_str());
  EXPECT_EQ(problem, kNoSpace);
  EXPECT_EQ(content, "old");
  EXPECT_EQ(files, 1U);
  EXPECT_EQ(afterwards, "");
}

TEST_F(FileStoreTest, NeverShowsHalfAFileWheneverItIsKilled) {
  const std::string one(200000, '1');
  const std::string two(300000, '2');
  Put("file", one);
  std::mt19937 random(5);
  for (int round = 0; round < 40; ++round) {
    const pid_t child = fork();
    if (child == 0) {
      for (;;) {
        if (!Replace("file", two).empty() || !Replace("file", one).empty()) _exit(1);
      }
    }
    std::this_thread::sleep_for(std::chrono::microseconds(random() % 20000));
    kill(child, SIGKILL);
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFSIGNALED(status));
    const std::string content = ContentOf(Path("file"));
    ASSERT_TRUE(content == one || content == two) << content.size();
  }
}

}  // namespace
}  // namespace qmx
