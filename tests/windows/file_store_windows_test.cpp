// SPDX-License-Identifier: MIT
#include <aclapi.h>
#include <gtest/gtest.h>
#include <sddl.h>
#include <windows.h>

#include <array>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <optional>
#include <random>
#include <string>
#include <thread>

#include "base/file_path.h"
#include "desktop/file_store_system.h"
#include "desktop/program_path.h"
#include "desktop/wide_text.h"

namespace {

/// Errors that calls of the system report for a while instead of doing their work; 0 for none.
struct Refusals {
  DWORD move = 0;
  DWORD setEnd = 0;
  /// Writing fails with this once so many bytes have been written.
  DWORD write = 0;
  DWORD writeAfter = 0;
  int moves = 0;  ///< The moves that are left to be refused.
} refuses;

template <class Function>
Function SystemsOwn(const char* name) {
  return reinterpret_cast<Function>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"kernel32.dll"), name)));
}

BOOL Refuse(DWORD error) {
  SetLastError(error);
  return FALSE;
}

BOOL WINAPI MoveOrRefuse(LPCWSTR from, LPCWSTR to, DWORD flags) {
  if (refuses.move != 0 && refuses.moves-- > 0) return Refuse(refuses.move);
  return SystemsOwn<decltype(&MoveFileExW)>("MoveFileExW")(from, to, flags);
}

BOOL WINAPI SetEndOrRefuse(HANDLE file) {
  if (refuses.setEnd != 0) return Refuse(refuses.setEnd);
  return SystemsOwn<decltype(&SetEndOfFile)>("SetEndOfFile")(file);
}

BOOL WINAPI WriteOrRefuse(HANDLE file, LPCVOID bytes, DWORD count, LPDWORD written,
                          LPOVERLAPPED overlapped) {
  static const auto systems = SystemsOwn<decltype(&WriteFile)>("WriteFile");
  if (refuses.write == 0) return systems(file, bytes, count, written, overlapped);
  const DWORD most = std::min(count, refuses.writeAfter);
  if (most == 0) return Refuse(refuses.write);
  refuses.writeAfter -= most;
  return systems(file, bytes, most, written, overlapped);
}

}  // namespace

// These take the place of the system's own in this program.
extern "C" {
decltype(&MoveFileExW) __imp_MoveFileExW = &MoveOrRefuse;
decltype(&SetEndOfFile) __imp_SetEndOfFile = &SetEndOrRefuse;
decltype(&WriteFile) __imp_WriteFile = &WriteOrRefuse;
}

namespace qmx {
namespace {

namespace fs = std::filesystem;

constexpr const char* kNoSuchFile = "There is no such file or folder.";
constexpr const char* kNoPermission = "You have no permission for it.";
constexpr const char* kOpenElsewhere = "Another program has it open.";
constexpr const char* kBadName = "The name cannot be used for a file.";
constexpr const char* kLongName = "The name is too long.";
constexpr const char* kNotRegular = "It is not an ordinary file.";
constexpr const char* kNoSpace = "There is no space left on the disk.";

/// A folder of its own below another one, with all that is in it.
class Folder {
 public:
  explicit Folder(const std::string& above)
      : path_(above + "qmx_store_" + std::to_string(GetCurrentProcessId()) + "_" +
              std::to_string(GetTickCount64()) + "\\") {
    EXPECT_TRUE(fs::create_directory(path_)) << path_;
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  ~Folder() {
    for (const auto& entry : fs::directory_iterator(path_))
      SetFileAttributesW(entry.path().c_str(), FILE_ATTRIBUTE_NORMAL);
    std::error_code failed;
    fs::remove_all(path_.starts_with("\\\\") ? path_ : "\\\\?\\" + path_, failed);
  }
  const std::string& Path() const { return path_; }

 private:
  std::string path_;
};

class WindowsFileStore : public ::testing::Test {
 protected:
  void SetUp() override {
    refuses = {};
    SetEnvironmentVariableW(L"LOCALAPPDATA", Wide(folder.Path() + "local").c_str());
    ASSERT_TRUE(fs::create_directory(folder.Path() + "local"));
  }
  void TearDown() override { refuses = {}; }

  std::string Path(const std::string& name) const { return folder.Path() + name; }
  std::wstring WidePath(const std::string& name) const { return Wide(Path(name)); }
  std::string Replace(const std::string& name, std::string_view bytes) {
    return store->Replace(Path(name), bytes).problem;
  }
  std::string Content(const std::string& name) {
    std::string bytes;
    EXPECT_EQ(store->Read(Path(name), bytes).problem, "") << name;
    return bytes;
  }
  /// What the folder holds beside that for the program's state: nothing temporary may be left.
  std::size_t Files() const {
    const auto all = std::distance(fs::directory_iterator(Path("")), fs::directory_iterator());
    return static_cast<std::size_t>(all) - 1;
  }

  Folder folder{testing::TempDir()};
  std::unique_ptr<FileStore> store = MakeSystemFileStore();
};

TEST_F(WindowsFileStore, WritesAndReadsExactlyTheBytes) {
  std::string bytes;
  for (int i = 0; i < 256; ++i) bytes += static_cast<char>(i);
  EXPECT_EQ(Replace("file.txt", bytes), "");
  EXPECT_EQ(Content("file.txt"), bytes);
  EXPECT_EQ(Replace("file.txt", "shorter\r\n"), "");
  EXPECT_EQ(Content("file.txt"), "shorter\r\n");
  EXPECT_EQ(Replace("a b.qmx", ""), "");
  EXPECT_EQ(Content("a b.qmx"), "");
  EXPECT_EQ(Files(), 2u);
}

TEST_F(WindowsFileStore, TakesNamesOfAllAlphabets) {
  const std::string name = "\xC3\xBC \xCE\xA9 \xE4\xB8\xAD\xF0\x9F\x93\x90.qmx";
  EXPECT_EQ(Replace(name, "x"), "");
  EXPECT_NE(GetFileAttributesW((WidePath("") + L"\u00fc \u03a9 \u4e2d\U0001F4D0.qmx").c_str()),
            INVALID_FILE_ATTRIBUTES);
  EXPECT_EQ(Replace(name, "y"), "");
  EXPECT_EQ(Content(name), "y");
}

TEST_F(WindowsFileStore, TakesOtherSeparatorsAndTheFolderOneIsIn) {
  ASSERT_TRUE(fs::create_directory(Path("inner")));
  EXPECT_EQ(Replace("inner/file.txt", "x"), "");
  EXPECT_EQ(Content("inner\\..\\inner\\file.txt"), "x");
  const fs::path before = fs::current_path();
  fs::current_path(Path("inner"));
  EXPECT_EQ(store->Replace("other.txt", "y").problem, "");
  fs::current_path(before);
  EXPECT_EQ(Content("inner\\other.txt"), "y");
}

TEST_F(WindowsFileStore, TakesPathsBeyond260Characters) {
  std::string deep;
  for (int level = 0; level < 4; ++level) {
    deep += std::string(100, static_cast<char>('a' + level));
    ASSERT_NE(CreateDirectoryW((L"\\\\?\\" + WidePath(deep)).c_str(), nullptr), 0);
    deep += '\\';
  }
  EXPECT_EQ(Replace(deep + "\xC3\xBC.qmx", "old"), "");
  EXPECT_EQ(Replace(deep + "\xC3\xBC.qmx", "new"), "");
  EXPECT_EQ(Content(deep + "\xC3\xBC.qmx"), "new");
  EXPECT_EQ(Replace(deep + std::string(256, 'n'), "x"), kLongName);
  EXPECT_EQ(Replace(std::string(40000, 'n'), "x"), kLongName);
  EXPECT_EQ(Replace(deep + "none\\file", "x"), kNoSuchFile);
}

/// Whoever runs these tests may offer a folder as a share of this name.
TEST_F(WindowsFileStore, TakesPathsOfTheNetwork) {
  const std::string share = "\\\\qmx-tests\\share\\";
  if (GetFileAttributesW(Wide(share).c_str()) == INVALID_FILE_ATTRIBUTES)
    GTEST_SKIP() << "there is no " << share;
  const Folder there(share);
  const std::string name = there.Path() + "\xC3\xBC.qmx";
  EXPECT_EQ(store->Replace(name, "old").problem, "");
  EXPECT_EQ(store->Replace(name, "new").problem, "");
  std::string bytes;
  EXPECT_EQ(store->Read(name, bytes).problem, "");
  EXPECT_EQ(bytes, "new");
  EXPECT_EQ(store->Read("\\\\qmx-tests\\none\\x.qmx", bytes).problem, kNoSuchFile);
}

TEST_F(WindowsFileStore, RemovesTemporariesThatAKilledProgramLeftLongAgo) {
  const std::array<std::string, 4> names{".qmx-0123456789abcdef.tmp", ".qmx-fedcba9876543210.tmp",
                                         ".qmx-0123456789abcdeg.tmp", ".qmx-mine.tmp"};
  const auto longAgo = fs::file_time_type::clock::now() - std::chrono::hours(25);
  for (const std::string& name : names) {
    std::ofstream(fs::path(Path(name))) << "x";
    if (name != names[1]) fs::last_write_time(Path(name), longAgo);
  }
  EXPECT_EQ(Replace("file.txt", "x"), "");
  EXPECT_FALSE(fs::exists(Path(names[0])));
  for (const std::size_t k : {1, 2, 3}) EXPECT_TRUE(fs::exists(Path(names[k]))) << names[k];
}

TEST_F(WindowsFileStore, SaysWhatCannotBeRead) {
  ASSERT_TRUE(fs::create_directory(Path("inner")));
  std::string bytes;
  const auto problem = [&](const std::string& name) { return store->Read(name, bytes).problem; };
  EXPECT_EQ(problem(Path("missing")), kNoSuchFile);
  EXPECT_EQ(problem(Path("none\\file")), kNoSuchFile);
  EXPECT_EQ(problem(Path("inner")), "It is a folder.");
  EXPECT_EQ(problem(""), kBadName);
  EXPECT_EQ(problem(std::string("a\0b", 3)), kBadName);
  EXPECT_EQ(problem("COM1"), kNotRegular);
  EXPECT_EQ(problem(Path("NUL")), kNotRegular);
  EXPECT_EQ(problem("\\\\.\\pipe\\x"), kNotRegular);
}

TEST_F(WindowsFileStore, SaysWhatCannotBeReplaced) {
  ASSERT_TRUE(fs::create_directory(Path("inner")));
  EXPECT_EQ(Replace("inner", "x"), "It is a folder.");
  EXPECT_EQ(Replace("inner\\", "x"), kBadName);
  EXPECT_EQ(Replace("none\\file", "x"), kNoSuchFile);
  EXPECT_EQ(Replace("a*b", "x"), kBadName);
  EXPECT_EQ(Replace("a:b", "x"), kBadName);
  EXPECT_EQ(Replace("NUL", "x"), kNotRegular);
  EXPECT_EQ(Files(), 1u);
}

TEST_F(WindowsFileStore, KeepsAReadOnlyFile) {
  ASSERT_EQ(Replace("file.txt", "old"), "");
  SetFileAttributesW(WidePath("file.txt").c_str(), FILE_ATTRIBUTE_READONLY);
  EXPECT_EQ(Replace("file.txt", "new"), kNoPermission);
  EXPECT_EQ(Content("file.txt"), "old");
  EXPECT_EQ(Files(), 1u);
}

TEST_F(WindowsFileStore, KeepsAFileThatAnotherProgramHasOpen) {
  ASSERT_EQ(Replace("file.txt", "old"), "");
  for (const DWORD shares : {DWORD{0}, DWORD{FILE_SHARE_READ | FILE_SHARE_WRITE}}) {
    const HANDLE other = CreateFileW(WidePath("file.txt").c_str(), GENERIC_READ, shares, nullptr,
                                     OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(other, INVALID_HANDLE_VALUE);
    EXPECT_EQ(Replace("file.txt", "new"), kOpenElsewhere);
    std::string bytes;
    EXPECT_EQ(store->Read(Path("file.txt"), bytes).problem, shares == 0 ? kOpenElsewhere : "");
    CloseHandle(other);
    EXPECT_EQ(Content("file.txt"), "old");
  }
  EXPECT_EQ(Files(), 1u);
}

TEST_F(WindowsFileStore, WaitsForWhoeverLooksAtTheNewFile) {
  ASSERT_EQ(Replace("file.txt", "old"), "");
  for (const DWORD error : {ERROR_SHARING_VIOLATION, ERROR_ACCESS_DENIED}) {
    refuses.move = error;
    refuses.moves = 3;
    EXPECT_EQ(Replace("file.txt", "new " + std::to_string(error)), "");
    EXPECT_EQ(Content("file.txt"), "new " + std::to_string(error));
  }
  // What no waiting helps is told at once.
  refuses.move = ERROR_IO_DEVICE;
  refuses.moves = 1;
  EXPECT_EQ(Replace("file.txt", "x"), "The disk reports an error.");
  EXPECT_EQ(refuses.moves, 0);
  EXPECT_EQ(Files(), 1u);
}

TEST_F(WindowsFileStore, KeepsTheAttributesOfTheOldFile) {
  ASSERT_EQ(Replace("file.txt", "old"), "");
  SetFileAttributesW(WidePath("file.txt").c_str(), FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_ARCHIVE);
  const DWORD before = GetFileAttributesW(WidePath("file.txt").c_str());
  EXPECT_EQ(Replace("file.txt", "new"), "");
  EXPECT_EQ(GetFileAttributesW(WidePath("file.txt").c_str()), before);
}

/// The access that a file's list gives to its first entry, and how many entries there are.
struct Rights {
  WORD count = 0;
  DWORD mask = 0;
  bool operator==(const Rights&) const = default;
};

Rights RightsOf(const std::wstring& path) {
  PACL list = nullptr;
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  Rights rights;
  if (GetNamedSecurityInfoW(path.c_str(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr,
                            nullptr, &list, nullptr, &descriptor) != ERROR_SUCCESS)
    return rights;
  void* entry = nullptr;
  if (list != nullptr && GetAce(list, 0, &entry)) {
    rights = {list->AceCount, static_cast<ACCESS_ALLOWED_ACE*>(entry)->Mask};
  }
  LocalFree(descriptor);
  return rights;
}

TEST_F(WindowsFileStore, KeepsTheRightsOfTheOldFile) {
  ASSERT_EQ(Replace("file.txt", "old"), "");
  const Rights usual = RightsOf(WidePath("file.txt"));
  // For the owner alone, and nothing inherited.
  PSECURITY_DESCRIPTOR owners = nullptr;
  ASSERT_NE(ConvertStringSecurityDescriptorToSecurityDescriptorW(L"D:P(A;;FA;;;OW)(A;;FA;;;BA)",
                                                                 SDDL_REVISION_1, &owners, nullptr),
            0);
  ASSERT_NE(SetFileSecurityW(WidePath("file.txt").c_str(), DACL_SECURITY_INFORMATION, owners), 0);
  LocalFree(owners);
  const Rights own = RightsOf(WidePath("file.txt"));
  if (own == usual) GTEST_SKIP() << "the disk keeps no such rights";
  EXPECT_EQ(Replace("file.txt", "new"), "");
  EXPECT_EQ(Content("file.txt"), "new");
  EXPECT_EQ(RightsOf(WidePath("file.txt")), own);
}

TEST_F(WindowsFileStore, WritesInPlaceWhereTheFolderLetsNothingBeReplaced) {
  ASSERT_EQ(Replace("file.txt", "old and longer"), "");
  refuses.move = ERROR_ACCESS_DENIED;
  refuses.moves = 1000;
  EXPECT_EQ(Replace("file.txt", "new"), "");
  EXPECT_EQ(Content("file.txt"), "new");
  EXPECT_EQ(Files(), 1u);
  EXPECT_TRUE(fs::is_empty(Path("local\\Orvane")));
}

TEST_F(WindowsFileStore, NamesTheCopyWhereWritingInPlaceFails) {
  ASSERT_EQ(Replace("\xC3\xBC.qmx", "old and longer"), "");
  refuses.move = ERROR_ACCESS_DENIED;
  refuses.moves = 1000;
  refuses.setEnd = ERROR_IO_DEVICE;
  const FileOutcome outcome = store->Replace(Path("\xC3\xBC.qmx"), "new");
  EXPECT_EQ(outcome.problem, "The disk reports an error.");
  EXPECT_TRUE(outcome.copy.starts_with(Path("local\\Orvane\\"))) << outcome.copy;
  EXPECT_TRUE(outcome.copy.ends_with("-\xC3\xBC.qmx")) << outcome.copy;
  std::string bytes;
  EXPECT_EQ(store->Read(outcome.copy, bytes).problem, "");
  EXPECT_EQ(bytes, "new");
}

TEST_F(WindowsFileStore, WritesNothingInPlaceWithoutACopy) {
  ASSERT_EQ(Replace("file.txt", "old"), "");
  SetEnvironmentVariableW(L"LOCALAPPDATA", WidePath("none").c_str());
  refuses.move = ERROR_ACCESS_DENIED;
  refuses.moves = 1000;
  const FileOutcome outcome = store->Replace(Path("file.txt"), "new");
  EXPECT_NE(outcome.problem.find("copy"), std::string::npos) << outcome.problem;
  EXPECT_EQ(outcome.copy, "");
  EXPECT_EQ(Content("file.txt"), "old");
}

TEST_F(WindowsFileStore, KeepsTheOldFileWhereverWritingStops) {
  ASSERT_EQ(Replace("file.txt", "old"), "");
  const std::string bytes(60, 'n');
  for (DWORD after = 0; after < bytes.size(); ++after) {
    refuses.write = ERROR_DISK_FULL;
    refuses.writeAfter = after;
    EXPECT_EQ(Replace("file.txt", bytes), kNoSpace) << after;
    refuses = {};
    ASSERT_EQ(Content("file.txt"), "old") << after;
    ASSERT_EQ(Files(), 1u) << after;
  }
}

/// Stops at a report, counted from 1.
class StopAt : public Progress {
 public:
  explicit StopAt(int report) : left_(report) {}
  void Report(double) override {
    if (--left_ == 0) throw Stopped();
  }

 private:
  int left_;
};

TEST_F(WindowsFileStore, AStopLeavesTheOldFileWhole) {
  const std::string large(5'000'000, 'n');
  ASSERT_EQ(Replace("file.txt", "old"), "");
  int at = 1;
  for (;; ++at) {
    StopAt progress(at);
    try {
      EXPECT_TRUE(store->Replace(Path("file.txt"), large, progress).Ok());
      break;
    } catch (const Stopped&) {
      ASSERT_EQ(Content("file.txt"), "old") << "stopped at report " << at;
      ASSERT_EQ(Files(), 1u) << "stopped at report " << at;
    }
  }
  EXPECT_GE(at, 5);
  EXPECT_EQ(Content("file.txt"), large);
}

constexpr const wchar_t* kVictim = L"QMX_TEST_VICTIM";

/// In a process that is to be killed: replaces a file by one text and another until it ends.
TEST(WindowsFileStoreVictim, WritesUntilItIsKilled) {
  std::wstring name(32768, L'\0');
  name.resize(GetEnvironmentVariableW(kVictim, name.data(), static_cast<DWORD>(name.size())));
  if (name.empty()) GTEST_SKIP() << "there is nothing to be written";
  const auto store = MakeSystemFileStore();
  while (store->Replace(Narrow(name), std::string(300000, '2')).Ok() &&
         store->Replace(Narrow(name), std::string(200000, '1')).Ok()) {
  }
  FAIL() << "it could not be written";
}

TEST_F(WindowsFileStore, NeverShowsHalfAFileWheneverItIsKilled) {
  ASSERT_EQ(Replace("file.txt", std::string(200000, '1')), "");
  SetEnvironmentVariableW(kVictim, WidePath("file.txt").c_str());
  std::wstring command =
      L"\"" + WindowsProgramPath() + L"\" --gtest_filter=WindowsFileStoreVictim.*";
  std::mt19937 random(5);
  for (int round = 0; round < 10; ++round) {
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION child{};
    ASSERT_NE(CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW,
                             nullptr, nullptr, &start, &child),
              0);
    // Long enough for the process to begin, mostly.
    EXPECT_EQ(WaitForSingleObject(child.hProcess, 150 + random() % 100), DWORD{WAIT_TIMEOUT});
    TerminateProcess(child.hProcess, 9);
    WaitForSingleObject(child.hProcess, INFINITE);
    CloseHandle(child.hThread);
    CloseHandle(child.hProcess);
    const std::string content = Content("file.txt");
    ASSERT_TRUE(content == std::string(200000, '1') || content == std::string(300000, '2'))
        << content.size();
  }
  SetEnvironmentVariableW(kVictim, nullptr);
}

TEST(WindowsStateFolder, LiesInTheApplicationDataOfThisUser) {
  const Folder folder(testing::TempDir());
  ASSERT_TRUE(fs::create_directory(PathOf(folder.Path() + "\xC3\xBC")));
  SetEnvironmentVariableW(L"LOCALAPPDATA", Wide(folder.Path() + "\xC3\xBC").c_str());
  EXPECT_EQ(StateFolder(), folder.Path() + "\xC3\xBC\\Orvane\\");
  EXPECT_TRUE(fs::is_directory(PathOf(folder.Path() + "\xC3\xBC\\Orvane")));
  SetEnvironmentVariableW(L"LOCALAPPDATA", nullptr);
  EXPECT_EQ(StateFolder(), "");
}

}  // namespace
}  // namespace qmx
