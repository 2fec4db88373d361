// SPDX-License-Identifier: MIT
#define _CRT_RAND_S
#include <windows.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "base/memory.h"
#include "desktop/file_problems.h"
#include "desktop/file_store_system.h"
#include "desktop/system_path.h"
#include "desktop/temporary_name.h"
#include "desktop/wide_text.h"

namespace qmx {
namespace {

struct ErrorText {
  DWORD error;
  const char* text;
};

constexpr DWORD kQuotaExceeded = 1295;  // Not in every winerror.h.

constexpr std::array<ErrorText, 26> kErrorTexts{{
    {ERROR_FILE_NOT_FOUND, file_problem::kMissing},
    {ERROR_PATH_NOT_FOUND, file_problem::kMissing},
    {ERROR_INVALID_DRIVE, file_problem::kMissing},
    {ERROR_BAD_NETPATH, file_problem::kMissing},
    {ERROR_BAD_NET_NAME, file_problem::kMissing},
    {ERROR_DIRECTORY, file_problem::kNoFolder},
    {ERROR_ACCESS_DENIED, file_problem::kNoPermission},
    {ERROR_NETWORK_ACCESS_DENIED, file_problem::kNoPermission},
    {ERROR_PRIVILEGE_NOT_HELD, file_problem::kNoPermission},
    {ERROR_SHARING_VIOLATION, "Another program has it open."},
    {ERROR_LOCK_VIOLATION, "Another program has it open."},
    {ERROR_WRITE_PROTECT, file_problem::kWriteProtected},
    {ERROR_DISK_FULL, file_problem::kNoSpace},
    {ERROR_HANDLE_DISK_FULL, file_problem::kNoSpace},
    {kQuotaExceeded, file_problem::kNoShare},
    {ERROR_FILE_TOO_LARGE, file_problem::kTooLarge},
    {ERROR_CRC, file_problem::kDiskError},
    {ERROR_SECTOR_NOT_FOUND, file_problem::kDiskError},
    {ERROR_IO_DEVICE, file_problem::kDiskError},
    {ERROR_INVALID_NAME, file_problem::kBadName},
    {ERROR_BAD_PATHNAME, file_problem::kBadName},
    {ERROR_FILENAME_EXCED_RANGE, file_problem::kLongName},
    {ERROR_CANT_RESOLVE_FILENAME, file_problem::kCircle},
    {ERROR_TOO_MANY_OPEN_FILES, file_problem::kTooMany},
    {ERROR_NOT_ENOUGH_MEMORY, file_problem::kNoMemory},
    {ERROR_OUTOFMEMORY, file_problem::kNoMemory},
}};

/// The system's own words, in the user's language, as one sentence.
std::string SystemsText(DWORD error) {
  std::array<wchar_t, 512> words;
  const DWORD length = FormatMessageW(
      FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK,
      nullptr, error, 0, words.data(), static_cast<DWORD>(words.size()), nullptr);
  std::string text = Narrow({words.data(), length});
  text.erase(text.find_last_not_of(" .") + 1);
  return (text.empty() ? "error " + std::to_string(error) : text) + ".";
}

FileOutcome Failure(DWORD error) {
  for (const ErrorText& entry : kErrorTexts) {
    if (entry.error == error) return {entry.text};
  }
  return {file_problem::kSystemSays + SystemsText(error)};
}

FileOutcome Outcome(DWORD error) { return error == ERROR_SUCCESS ? FileOutcome() : Failure(error); }

/// What a call of the system has left: none where it has worked.
DWORD ErrorUnless(bool worked) { return worked ? ERROR_SUCCESS : GetLastError(); }

/// A file handle that closes itself.
class Handle {
 public:
  explicit Handle(HANDLE handle) : handle_(handle) {}
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  ~Handle() { Close(); }
  HANDLE Get() const { return handle_; }
  bool IsOpen() const { return handle_ != INVALID_HANDLE_VALUE; }
  /// False where the system reports that something was not written.
  bool Close() {
    return !IsOpen() || CloseHandle(std::exchange(handle_, INVALID_HANDLE_VALUE)) != 0;
  }

 private:
  HANDLE handle_;
};

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

/// The file that a link leads to, where the path is a link. Returns an error number.
DWORD FollowLinks(std::wstring& path) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0)
    return ERROR_SUCCESS;
  const Handle file(CreateFileW(path.c_str(), 0, kShareAll, nullptr, OPEN_EXISTING,
                                FILE_FLAG_BACKUP_SEMANTICS, nullptr));
  if (!file.IsOpen()) return GetLastError();
  std::wstring target(32768, L'\0');
  const DWORD length = GetFinalPathNameByHandleW(
      file.Get(), target.data(), static_cast<DWORD>(target.size()), FILE_NAME_NORMALIZED);
  // Not everything that is kept elsewhere is a link: then the path is the file's own.
  if (length > 0 && length < target.size()) path = target.substr(0, length);
  return ERROR_SUCCESS;
}

/// Fails if the file may not be written or another program holds it. Returns an error number.
DWORD TryToReplace(const std::wstring& path) {
  const Handle file(CreateFileW(path.c_str(), GENERIC_WRITE | DELETE, kShareAll, nullptr,
                                OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  return ErrorUnless(file.IsOpen());
}

/// Sixteen hexadecimal digits that nobody can guess.
std::string RandomDigits() {
  std::array<unsigned char, kRandomBytes> random;
  for (unsigned char& byte : random) {
    unsigned int number = 0;
    rand_s(&number);
    byte = static_cast<unsigned char>(number);
  }
  return DigitsOf(random);
}

/// What is read or written between two reports: a slow disk takes some milliseconds.
constexpr std::size_t kPiece = 1U << 20U;

/// Writes all bytes and sees to it that they reach the disk. Returns an error number.
DWORD WriteAll(HANDLE file, std::string_view bytes, Progress& progress = NoProgress()) {
  for (std::size_t done = 0; done < bytes.size();) {
    DWORD written = 0;
    const auto piece = static_cast<DWORD>(std::min(bytes.size() - done, kPiece));
    if (!WriteFile(file, bytes.data() + done, piece, &written, nullptr)) return GetLastError();
    done += written;
    progress.Report(static_cast<double>(done) / static_cast<double>(bytes.size()));
  }
  return ErrorUnless(FlushFileBuffers(file) != 0);
}

/// Gives a new file the rights of an old one. Returns an error number.
DWORD CopyRights(const std::wstring& from, const std::wstring& to) {
  DWORD size = 0;
  GetFileSecurityW(from.c_str(), DACL_SECURITY_INFORMATION, nullptr, 0, &size);
  std::vector<std::byte> rights(size);
  if (!GetFileSecurityW(from.c_str(), DACL_SECURITY_INFORMATION, rights.data(), size, &size)) {
    // A disk that knows no rights has none to be given.
    const DWORD error = GetLastError();
    return error == ERROR_NOT_SUPPORTED || error == ERROR_INVALID_FUNCTION ? ERROR_SUCCESS : error;
  }
  // What it has inherited it goes on inheriting.
  SECURITY_DESCRIPTOR_CONTROL control = 0;
  DWORD revision = 0;
  GetSecurityDescriptorControl(rights.data(), &control, &revision);
  if ((control & SE_DACL_AUTO_INHERITED) != 0)
    SetSecurityDescriptorControl(rights.data(), SE_DACL_AUTO_INHERIT_REQ, SE_DACL_AUTO_INHERIT_REQ);
  return ErrorUnless(SetFileSecurityW(to.c_str(), DACL_SECURITY_INFORMATION, rights.data()) != 0);
}

/// A new file. It vanishes unless it is kept or takes another's name.
class Temporary {
 public:
  Temporary(std::wstring name, DWORD attributes)
      : name_(std::move(name)),
        file_(
            CreateFileW(name_.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_NEW, attributes, nullptr)),
        openError_(ErrorUnless(file_.IsOpen())),
        exists_(file_.IsOpen()) {}
  Temporary(const Temporary&) = delete;
  Temporary& operator=(const Temporary&) = delete;
  ~Temporary() {
    file_.Close();
    if (exists_) DeleteFileW(name_.c_str());
  }
  const std::wstring& Name() const { return name_; }
  /// An error number, as are the next two.
  DWORD OpenError() const { return openError_; }
  DWORD Fill(std::string_view bytes, Progress& progress) {
    const DWORD error = WriteAll(file_.Get(), bytes, progress);
    if (error != ERROR_SUCCESS) return error;
    if (!file_.Close()) return GetLastError();
    // Until it takes another's name it may be stopped.
    progress.Report(1);
    return ERROR_SUCCESS;
  }
  /// Takes the other's place in one step, on the disk as well. Whoever looks at every new file, as
  /// guards against viruses do, may hold this one for a moment.
  DWORD TakeName(const std::wstring& target) {
    constexpr int kTries = 20;
    constexpr DWORD kPause = 25;  // Milliseconds.
    for (int left = kTries;; --left) {
      if (MoveFileExW(name_.c_str(), target.c_str(),
                      MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
        Keep();
        return ERROR_SUCCESS;
      }
      const DWORD error = GetLastError();
      if (left == 0 || (error != ERROR_SHARING_VIOLATION && error != ERROR_ACCESS_DENIED))
        return error;
      Sleep(kPause);
    }
  }
  void Keep() { exists_ = false; }

 private:
  std::wstring name_;
  Handle file_;
  DWORD openError_;
  bool exists_;
};

/// Removes temporaries that a killed program left in a folder long ago; another one may be at work
/// there just now.
void SweepFolder(const std::wstring& folder) {
  constexpr ULONGLONG kDay = 24ULL * 60 * 60 * 10000000;
  WIN32_FIND_DATAW entry;
  const HANDLE search = FindFirstFileW((folder + Wide(TemporaryNameOf("*"))).c_str(), &entry);
  if (search == INVALID_HANDLE_VALUE) return;
  FILETIME now;
  GetSystemTimeAsFileTime(&now);
  const auto ticks = [](const FILETIME& time) {
    return (static_cast<ULONGLONG>(time.dwHighDateTime) << 32U) + time.dwLowDateTime;
  };
  do {
    const bool isFile = (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
    if (isFile && IsTemporaryName(Narrow(entry.cFileName)) &&
        ticks(now) > ticks(entry.ftLastWriteTime) + kDay)
      DeleteFileW((folder + entry.cFileName).c_str());
  } while (FindNextFileW(search, &entry) != 0);
  FindClose(search);
}

/// Puts a new file in the place of one with these attributes, or where there is none. Returns an
/// error number.
DWORD ReplaceByTemporary(const std::wstring& path, DWORD old, std::string_view bytes,
                         Progress& progress) {
  constexpr DWORD kStay = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM | FILE_ATTRIBUTE_ENCRYPTED |
                          FILE_ATTRIBUTE_NOT_CONTENT_INDEXED;
  const bool replaces = old != INVALID_FILE_ATTRIBUTES;
  Temporary temporary(SystemFolderOf(path) + Wide(TemporaryNameOf(RandomDigits())),
                      FILE_ATTRIBUTE_ARCHIVE | (replaces ? old & kStay : 0));
  DWORD error = temporary.OpenError();
  if (error == ERROR_SUCCESS && replaces) error = CopyRights(path, temporary.Name());
  if (error == ERROR_SUCCESS) error = temporary.Fill(bytes, progress);
  if (error == ERROR_SUCCESS) error = temporary.TakeName(path);
  return error;
}

/// Writes into the file itself, which a failure or the end of the machine leaves damaged: a copy in
/// a safe place goes first. That may be stopped, the file itself not.
FileOutcome ReplaceInPlace(const std::wstring& path, std::string_view bytes, Progress& progress) {
  Handle file(CreateFileW(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                          FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file.IsOpen()) return Failure(GetLastError());
  const std::string name = Narrow(path.substr(path.rfind(L'\\') + 1));
  const std::string copyName = StateFolder() + CopyNameOf(RandomDigits(), name);
  Temporary copy(SystemPathOf(copyName).path, FILE_ATTRIBUTE_NORMAL);
  DWORD error = copy.OpenError();
  if (error == ERROR_SUCCESS) error = copy.Fill(bytes, progress);
  if (error != ERROR_SUCCESS) return {std::string(file_problem::kNoCopy) + Failure(error).problem};
  error = WriteAll(file.Get(), bytes);
  if (error == ERROR_SUCCESS) error = ErrorUnless(SetEndOfFile(file.Get()) != 0);
  if (error == ERROR_SUCCESS) error = ErrorUnless(file.Close());
  if (error == ERROR_SUCCESS) return {};
  copy.Keep();
  return {Failure(error).problem, copyName};
}

/// True for what keeps a temporary from taking the place of a file that may itself be written: its
/// folder takes no new file or lets none be replaced, or rights cannot be set.
bool IsRefusal(DWORD error) {
  return error == ERROR_ACCESS_DENIED || error == ERROR_PRIVILEGE_NOT_HELD;
}

FileOutcome ReplaceOrCreate(const std::wstring& path, std::string_view bytes, Progress& progress) {
  const DWORD attributes = GetFileAttributesW(path.c_str());
  if (attributes == INVALID_FILE_ATTRIBUTES)
    return Outcome(ReplaceByTemporary(path, attributes, bytes, progress));
  if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return {file_problem::kFolder};
  if ((attributes & FILE_ATTRIBUTE_READONLY) != 0) return {file_problem::kNoPermission};
  DWORD error = TryToReplace(path);
  if (error != ERROR_SUCCESS) return Failure(error);
  error = ReplaceByTemporary(path, attributes, bytes, progress);
  return IsRefusal(error) ? ReplaceInPlace(path, bytes, progress) : Outcome(error);
}

/// As many bytes as the text has room for, or fewer where the file has become shorter. Returns an
/// error number.
DWORD ReadAll(HANDLE file, std::string& bytes, Progress& progress) {
  std::size_t filled = 0;
  while (filled < bytes.size()) {
    DWORD got = 0;
    const auto piece = static_cast<DWORD>(std::min(bytes.size() - filled, kPiece));
    if (!ReadFile(file, bytes.data() + filled, piece, &got, nullptr)) return GetLastError();
    if (got == 0) break;
    filled += got;
    progress.Report(static_cast<double>(filled) / static_cast<double>(bytes.size()));
  }
  bytes.resize(filled);
  return ERROR_SUCCESS;
}

class WindowsFileStore : public FileStore {
 public:
  using FileStore::Read;
  using FileStore::Replace;
  FileOutcome Read(const std::string& name, std::string& bytes, Progress& progress) override {
    const SystemPath at = SystemPathOf(name);
    if (at.problem != nullptr) return {at.problem};
    const DWORD attributes = GetFileAttributesW(at.path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) return Failure(GetLastError());
    if ((attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) return {file_problem::kFolder};
    const Handle file(CreateFileW(at.path.c_str(), GENERIC_READ, kShareAll, nullptr, OPEN_EXISTING,
                                  FILE_ATTRIBUTE_NORMAL, nullptr));
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
    return Outcome(ReadAll(file.Get(), bytes, progress));
  }

  FileOutcome Replace(const std::string& name, std::string_view bytes,
                      Progress& progress) override {
    if (name.ends_with('\\') || name.ends_with('/')) return {file_problem::kBadName};
    SystemPath at = SystemPathOf(name);
    if (at.problem != nullptr) return {at.problem};
    const DWORD error = FollowLinks(at.path);
    if (error != ERROR_SUCCESS) return Failure(error);
    FileOutcome outcome = ReplaceOrCreate(at.path, bytes, progress);
    if (outcome.Ok()) SweepFolder(SystemFolderOf(at.path));
    return outcome;
  }
};

}  // namespace

std::string StateFolder() {
  std::wstring local(32768, L'\0');
  local.resize(
      GetEnvironmentVariableW(L"LOCALAPPDATA", local.data(), static_cast<DWORD>(local.size())));
  if (local.empty()) return {};
  const std::string folder = Narrow(local) + "\\Orvane";
  CreateDirectoryW(SystemPathOf(folder).path.c_str(), nullptr);
  return folder + "\\";
}

std::unique_ptr<FileStore> MakeSystemFileStore() { return std::make_unique<WindowsFileStore>(); }

}  // namespace qmx
