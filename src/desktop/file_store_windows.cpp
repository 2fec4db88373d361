// SPDX-License-Identifier: MIT
#define _CRT_RAND_S
#include <windows.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <string>
#include <utility>

#include "base/memory.h"
#include "desktop/file_problems.h"
#include "desktop/file_store_system.h"

namespace qmx {
namespace {

struct ErrorText {
  DWORD error;
  const char* text;
};

constexpr std::array<ErrorText, 13> kErrorTexts{{
    {ERROR_FILE_NOT_FOUND, file_problem::kMissing},
    {ERROR_PATH_NOT_FOUND, file_problem::kMissing},
    {ERROR_BAD_NETPATH, file_problem::kMissing},
    {ERROR_ACCESS_DENIED, file_problem::kNoPermission},
    {ERROR_PRIVILEGE_NOT_HELD, file_problem::kNoPermission},
    {ERROR_SHARING_VIOLATION, "Another program has it open."},
    {ERROR_LOCK_VIOLATION, "Another program has it open."},
    {ERROR_WRITE_PROTECT, file_problem::kWriteProtected},
    {ERROR_DISK_FULL, file_problem::kNoSpace},
    {ERROR_HANDLE_DISK_FULL, file_problem::kNoSpace},
    {ERROR_INVALID_NAME, file_problem::kBadName},
    {ERROR_FILENAME_EXCED_RANGE, file_problem::kLongName},
    {ERROR_NOT_ENOUGH_MEMORY, file_problem::kNoMemory},
}};

FileOutcome Failure(DWORD error) {
  for (const ErrorText& entry : kErrorTexts) {
    if (entry.error == error) return {entry.text};
  }
  return {"The system reports error " + std::to_string(error) + "."};
}

/// A file handle that closes itself.
class Handle {
 public:
  explicit Handle(HANDLE handle) : handle_(handle) {}
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  ~Handle() { Close(); }
  HANDLE Get() const { return handle_; }
  bool IsOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
  void Close() {
    if (IsOpen()) CloseHandle(std::exchange(handle_, INVALID_HANDLE_VALUE));
  }

 private:
  HANDLE handle_;
};

bool NameIsUsable(const std::string& name) {
  return !name.empty() && name.find('\0') == std::string::npos;
}

/// The folder of a path, ready to be put before a file's name.
std::string FolderOf(const std::string& path) {
  const std::size_t end = path.find_last_of("/\\:");
  return end == std::string::npos ? std::string() : path.substr(0, end + 1);
}

/// The file that a link leads to, where the path is a link.
std::string BehindLinks(const std::string& path) {
  const DWORD attributes = GetFileAttributesA(path.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0)
    return path;
  const Handle file(CreateFileA(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr));
  std::array<char, 4096> target;
  const DWORD length = file.IsOpen() ? GetFinalPathNameByHandleA(file.Get(), target.data(),
                                                                 static_cast<DWORD>(target.size()),
                                                                 FILE_NAME_NORMALIZED)
                                     : 0;
  return length == 0 || length >= target.size() ? path : std::string(target.data(), length);
}

/// True if the file may be written and no other program holds it.
bool MayBeReplaced(const std::string& path) {
  const Handle file(CreateFileA(path.c_str(), GENERIC_WRITE | DELETE,
                                FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  return file.IsOpen();
}

/// A name beside the target that nobody can guess.
std::string TemporaryName(const std::string& folder) {
  std::string name = folder + ".qmx-";
  for (int i = 0; i < 2; ++i) {
    unsigned int random = 0;
    rand_s(&random);
    std::array<char, 9> digits;
    std::snprintf(digits.data(), digits.size(), "%08x", random);
    name += digits.data();
  }
  return name + ".tmp";
}

/// What is read or written between two reports: a slow disk takes some milliseconds.
constexpr std::size_t kPiece = 1U << 20U;

/// A new file beside the target. It vanishes unless it takes the target's name.
class Temporary {
 public:
  explicit Temporary(const std::string& folder)
      : name_(TemporaryName(folder)),
        file_(CreateFileA(name_.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW,
                          FILE_ATTRIBUTE_NORMAL, nullptr)),
        exists_(file_.IsOpen()) {}
  Temporary(const Temporary&) = delete;
  Temporary& operator=(const Temporary&) = delete;
  ~Temporary() {
    file_.Close();
    if (exists_) DeleteFileA(name_.c_str());
  }
  bool IsOpen() const { return exists_; }
  bool Fill(std::string_view bytes, Progress& progress) {
    for (std::size_t done = 0; done < bytes.size();) {
      DWORD written = 0;
      const auto piece = static_cast<DWORD>(std::min(bytes.size() - done, kPiece));
      if (!WriteFile(file_.Get(), bytes.data() + done, piece, &written, nullptr)) return false;
      done += written;
      progress.Report(static_cast<double>(done) / static_cast<double>(bytes.size()));
    }
    if (!FlushFileBuffers(file_.Get())) return false;
    file_.Close();
    // Until it takes another's name it may be stopped.
    progress.Report(1);
    return true;
  }
  /// The rights and attributes of a file that is there go over to the new one.
  bool TakeName(const std::string& target, bool replaces) {
    const bool done =
        replaces ? ReplaceFileA(target.c_str(), name_.c_str(), nullptr, 0, nullptr, nullptr) != 0
                 : MoveFileExA(name_.c_str(), target.c_str(), MOVEFILE_WRITE_THROUGH) != 0;
    if (done) exists_ = false;
    return done;
  }

 private:
  std::string name_;
  Handle file_;
  bool exists_;
};

/// Removes temporaries that a killed program left in a folder long ago; another one may be at work
/// there just now.
void SweepFolder(const std::string& folder) {
  constexpr ULONGLONG kDay = 24ULL * 60 * 60 * 10000000;
  WIN32_FIND_DATAA entry;
  const HANDLE search = FindFirstFileA((folder + ".qmx-????????????????.tmp").c_str(), &entry);
  if (search == INVALID_HANDLE_VALUE) return;
  FILETIME now;
  GetSystemTimeAsFileTime(&now);
  const auto ticks = [](const FILETIME& time) {
    return (static_cast<ULONGLONG>(time.dwHighDateTime) << 32U) + time.dwLowDateTime;
  };
  do {
    const bool isFile = (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
    if (isFile && ticks(now) > ticks(entry.ftLastWriteTime) + kDay)
      DeleteFileA((folder + entry.cFileName).c_str());
  } while (FindNextFileA(search, &entry) != 0);
  FindClose(search);
}

class WindowsFileStore : public FileStore {
 public:
  using FileStore::Read;
  using FileStore::Replace;
  FileOutcome Read(const std::string& name, std::string& bytes, Progress& progress) override {
    if (!NameIsUsable(name)) return {file_problem::kBadName};
    const DWORD attributes = GetFileAttributesA(name.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) return Failure(GetLastError());
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return {file_problem::kFolder};
    const Handle file(CreateFileA(name.c_str(), GENERIC_READ,
                                  FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    if (!file.IsOpen()) return Failure(GetLastError());
    if (GetFileType(file.Get()) != FILE_TYPE_DISK) return {file_problem::kNotRegular};
    LARGE_INTEGER size;
    if (!GetFileSizeEx(file.Get(), &size)) return Failure(GetLastError());
    const auto count = static_cast<std::size_t>(size.QuadPart);
    if (count > SystemMemory().Available() / 2) return {file_problem::kNoMemory};
    try {
      bytes.resize(count);
    } catch (const std::bad_alloc&) {
      return {file_problem::kNoMemory};
    }
    return ReadAll(file.Get(), bytes, progress);
  }

  FileOutcome Replace(const std::string& name, std::string_view bytes,
                      Progress& progress) override {
    if (!NameIsUsable(name)) return {file_problem::kBadName};
    const std::string path = BehindLinks(name);
    const DWORD attributes = GetFileAttributesA(path.c_str());
    const bool replaces = attributes != INVALID_FILE_ATTRIBUTES;
    if (replaces && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return {file_problem::kFolder};
    if (replaces && !MayBeReplaced(path)) return Failure(GetLastError());
    Temporary temporary(FolderOf(path));
    if (!temporary.IsOpen() || !temporary.Fill(bytes, progress) ||
        !temporary.TakeName(path, replaces))
      return Failure(GetLastError());
    SweepFolder(FolderOf(path));
    return {};
  }

 private:
  static FileOutcome ReadAll(HANDLE file, std::string& bytes, Progress& progress) {
    std::size_t filled = 0;
    while (filled < bytes.size()) {
      DWORD got = 0;
      const auto piece = static_cast<DWORD>(std::min(bytes.size() - filled, kPiece));
      if (!ReadFile(file, bytes.data() + filled, piece, &got, nullptr))
        return Failure(GetLastError());
      if (got == 0) break;
      filled += got;
      progress.Report(static_cast<double>(filled) / static_cast<double>(bytes.size()));
    }
    bytes.resize(filled);
    return {};
  }
};

}  // namespace

std::string StateFolder() {
  const char* local = std::getenv("LOCALAPPDATA");
  if (local == nullptr || local[0] == '\0') return {};
  std::string folder = std::string(local) + "\\Orvane";
  CreateDirectoryA(folder.c_str(), nullptr);
  return folder + "\\";
}

std::unique_ptr<FileStore> MakeSystemFileStore() { return std::make_unique<WindowsFileStore>(); }

}  // namespace qmx
