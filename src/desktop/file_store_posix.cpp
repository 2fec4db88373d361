// SPDX-License-Identifier: MIT
#include <dirent.h>
#include <fcntl.h>
#include <sys/random.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <new>
#include <string>
#include <utility>

#include "base/memory.h"
#include "desktop/file_problems.h"
#include "desktop/file_store_system.h"
#include "desktop/temporary_name.h"

namespace qmx {
namespace {

/// What is read or written between two reports: a slow disk takes some milliseconds.
constexpr std::size_t kPiece = std::size_t{1} << 20;

struct ErrorText {
  int error;
  const char* text;
};

constexpr std::array<ErrorText, 16> kErrorTexts{{
    {ENOENT, file_problem::kMissing},
    {ENOTDIR, file_problem::kNoFolder},
    {EISDIR, file_problem::kFolder},
    {EACCES, file_problem::kNoPermission},
    {EPERM, file_problem::kNoPermission},
    {EROFS, file_problem::kWriteProtected},
    {ENOSPC, file_problem::kNoSpace},
    {EDQUOT, file_problem::kNoShare},
    {EFBIG, file_problem::kTooLarge},
    {ENAMETOOLONG, file_problem::kLongName},
    {ELOOP, file_problem::kCircle},
    {EIO, file_problem::kDiskError},
    {ENOMEM, file_problem::kNoMemory},
    {EMFILE, file_problem::kTooMany},
    {ENFILE, file_problem::kTooMany},
    {EINVAL, file_problem::kBadName},
}};

FileOutcome Failure(int error) {
  for (const ErrorText& entry : kErrorTexts) {
    if (entry.error == error) return {entry.text};
  }
  return {std::string(file_problem::kSystemSays) + std::strerror(error) + "."};
}

FileOutcome Outcome(int error) { return error == 0 ? FileOutcome() : Failure(error); }

/// A file descriptor that closes itself.
class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  Descriptor(Descriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  Descriptor& operator=(Descriptor&&) = delete;
  ~Descriptor() {
    if (number_ >= 0) close(number_);
  }
  int Number() const { return number_; }
  bool IsOpen() const { return number_ >= 0; }
  /// Closes it now; false where the system reports that something was not written.
  bool Close() { return close(std::exchange(number_, -1)) == 0; }

 private:
  int number_;
};

bool NameIsUsable(const std::string& name) {
  return !name.empty() && name.find('\0') == std::string::npos;
}

/// The folder of a path, ready to be put before a file's name.
std::string FolderOf(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  return slash == std::string::npos ? std::string("./") : path.substr(0, slash + 1);
}

/// Follows symbolic links to the file that is to be replaced, which need not exist. Returns an
/// error number.
int FollowLinks(std::string& path) {
  constexpr int kMostLinks = 40;
  for (int links = 0; links < kMostLinks; ++links) {
    std::array<char, PATH_MAX> target;
    const ssize_t length = readlink(path.c_str(), target.data(), target.size());
    if (length < 0) return errno == EINVAL || errno == ENOENT ? 0 : errno;
    if (static_cast<std::size_t>(length) == target.size()) return ENAMETOOLONG;
    std::string next(target.data(), static_cast<std::size_t>(length));
    if (!next.starts_with('/')) next.insert(0, FolderOf(path));
    path = std::move(next);
  }
  return ELOOP;
}

/// Returns an error number.
int WriteAll(int file, std::string_view bytes, Progress& progress = NoProgress()) {
  std::size_t done = 0;
  while (done < bytes.size()) {
    const ssize_t written = write(file, bytes.data() + done, std::min(bytes.size() - done, kPiece));
    if (written < 0 && errno == EINTR) continue;
    if (written < 0) return errno;
    done += static_cast<std::size_t>(written);
    progress.Report(static_cast<double>(done) / static_cast<double>(bytes.size()));
  }
  return 0;
}

/// Sixteen hexadecimal digits that nobody can guess.
std::string RandomDigits() {
  std::array<unsigned char, kRandomBytes> random{};
  if (getrandom(random.data(), random.size(), 0) < 0)
    random[0] = static_cast<unsigned char>(getpid());
  return DigitsOf(random);
}

/// Returns an error number.
int Flush(int file) { return fsync(file) == 0 ? 0 : errno; }

/// A new file. It vanishes unless it is kept or takes another's name.
class Temporary {
 public:
  Temporary(std::string name, mode_t mode) : name_(std::move(name)), file_(Open(mode)) {}
  Temporary(const Temporary&) = delete;
  Temporary& operator=(const Temporary&) = delete;
  ~Temporary() {
    if (exists_) unlink(name_.c_str());
  }
  const std::string& Name() const { return name_; }
  /// An error number, as are the next three.
  int OpenError() const { return openError_; }
  int Fill(std::string_view bytes, Progress& progress) {
    int error = WriteAll(file_.Number(), bytes, progress);
    if (error == 0) error = Flush(file_.Number());
    if (error != 0) return error;
    if (!file_.Close()) return errno;
    // Until it takes another's name it may be stopped.
    progress.Report(1);
    return 0;
  }
  int TakeName(const std::string& target) {
    if (rename(name_.c_str(), target.c_str()) != 0) return errno;
    Keep();
    return 0;
  }
  /// Takes over the rights of the file that it will replace.
  int TakeRights(const struct stat& old) {
    mode_t mode = old.st_mode & 0777;
    if (fchown(file_.Number(), old.st_uid, old.st_gid) != 0 &&
        fchown(file_.Number(), static_cast<uid_t>(-1), old.st_gid) != 0) {
      // Another group must not gain what the old one had.
      mode &= ~static_cast<mode_t>(070);
    }
    return fchmod(file_.Number(), mode) == 0 ? 0 : errno;
  }
  void Keep() { exists_ = false; }

 private:
  Descriptor Open(mode_t mode) {
    Descriptor file(
        open(name_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, mode));
    openError_ = file.IsOpen() ? 0 : errno;
    exists_ = file.IsOpen();
    return file;
  }

  std::string name_;
  int openError_ = 0;
  bool exists_ = false;
  Descriptor file_;
};

/// Makes the new name reach the disk. The file itself is safe by now, so that a folder which cannot
/// be flushed is no failure.
void FlushFolder(const std::string& folder) {
  const Descriptor descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (descriptor.IsOpen()) fsync(descriptor.Number());
}

/// Removes temporaries of this user that a killed program left in a folder long ago; another one
/// may be at work there just now.
void SweepFolder(const std::string& folder) {
  constexpr time_t kDay = 24 * 60 * 60;
  DIR* entries = opendir(folder.c_str());
  if (entries == nullptr) return;
  const time_t now = time(nullptr);
  while (const dirent* entry = readdir(entries)) {
    struct stat info {};
    if (!IsTemporaryName(entry->d_name) ||
        fstatat(dirfd(entries), entry->d_name, &info, AT_SYMLINK_NOFOLLOW) != 0)
      continue;
    if (S_ISREG(info.st_mode) && info.st_uid == geteuid() && now - info.st_mtime > kDay)
      unlinkat(dirfd(entries), entry->d_name, 0);
  }
  closedir(entries);
}

/// Returns an error number.
int ReplaceByTemporary(const std::string& path, const struct stat* old, std::string_view bytes,
                       Progress& progress) {
  const std::string folder = FolderOf(path);
  // A file that is to replace another is nobody else's business until it has the other's rights.
  Temporary temporary(folder + TemporaryNameOf(RandomDigits()), old == nullptr ? 0666 : 0600);
  int error = temporary.OpenError();
  if (error == 0 && old != nullptr) error = temporary.TakeRights(*old);
  if (error == 0) error = temporary.Fill(bytes, progress);
  if (error == 0) error = temporary.TakeName(path);
  if (error != 0) return error;
  FlushFolder(folder);
  return 0;
}

/// True for what keeps a temporary from taking the place of a file that may itself be written: its
/// folder takes no new file or lets none be replaced, or rights cannot be set.
bool IsRefusal(int error) {
  return error == EACCES || error == EPERM || error == EROFS || error == EBUSY;
}

/// Returns an error number.
int Overwrite(int file, std::string_view bytes) {
  const int error = WriteAll(file, bytes);
  if (error != 0) return error;
  if (ftruncate(file, static_cast<off_t>(bytes.size())) != 0) return errno;
  return Flush(file);
}

/// Writes into the file itself, which a failure or the end of the machine leaves damaged: a copy in
/// a safe place goes first. That may be stopped, the file itself not.
FileOutcome ReplaceInPlace(const std::string& path, std::string_view bytes, Progress& progress) {
  Descriptor file(open(path.c_str(), O_WRONLY | O_CLOEXEC | O_NOFOLLOW | O_NOCTTY | O_NONBLOCK));
  if (!file.IsOpen()) return Failure(errno);
  const std::string folder = StateFolder();
  Temporary copy(folder + CopyNameOf(RandomDigits(), path.substr(path.rfind('/') + 1)), 0600);
  int error = folder.empty() ? ENOENT : copy.OpenError();
  if (error == 0) error = copy.Fill(bytes, progress);
  if (error != 0) {
    return {std::string(file_problem::kNoCopy) + Failure(error).problem};
  }
  FlushFolder(folder);
  error = Overwrite(file.Number(), bytes);
  if (error == 0 && !file.Close()) error = errno;
  if (error == 0) return {};
  copy.Keep();
  return {Failure(error).problem, copy.Name()};
}

/// Returns an error number.
int ReadAll(int file, std::size_t expected, std::string& bytes, Progress& progress) {
  // One more than expected, so that the end shows without another round.
  bytes.resize(expected + 1);
  std::size_t filled = 0;
  for (;;) {
    if (filled == bytes.size()) bytes.resize(bytes.size() * 2);
    const ssize_t got = read(file, bytes.data() + filled, std::min(bytes.size() - filled, kPiece));
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) return errno;
    if (got == 0) break;
    filled += static_cast<std::size_t>(got);
    progress.Report(static_cast<double>(filled) / static_cast<double>(bytes.size()));
  }
  bytes.resize(filled);
  return 0;
}

FileOutcome ReplaceOrCreate(const std::string& path, std::string_view bytes, Progress& progress) {
  struct stat old {};
  if (stat(path.c_str(), &old) != 0) {
    return errno == ENOENT ? Outcome(ReplaceByTemporary(path, nullptr, bytes, progress))
                           : Failure(errno);
  }
  if (S_ISDIR(old.st_mode)) return Failure(EISDIR);
  if (!S_ISREG(old.st_mode)) return {file_problem::kNotRegular};
  if (faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0) return Failure(errno);
  const int refusal = ReplaceByTemporary(path, &old, bytes, progress);
  return IsRefusal(refusal) ? ReplaceInPlace(path, bytes, progress) : Outcome(refusal);
}

class PosixFileStore : public FileStore {
 public:
  using FileStore::Read;
  using FileStore::Replace;
  FileOutcome Read(const std::string& name, std::string& bytes, Progress& progress) override {
    if (!NameIsUsable(name)) return Failure(EINVAL);
    struct stat info {};
    if (stat(name.c_str(), &info) != 0) return Failure(errno);
    if (S_ISDIR(info.st_mode)) return Failure(EISDIR);
    // Opening a pipe would wait for its other end, opening a device may set it in motion.
    if (!S_ISREG(info.st_mode)) return {file_problem::kNotRegular};
    const Descriptor file(open(name.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK));
    if (!file.IsOpen()) return Failure(errno);
    const auto size = static_cast<std::size_t>(info.st_size);
    if (size > SystemMemory().Available() / 2) return Failure(ENOMEM);
    try {
      return Outcome(ReadAll(file.Number(), size, bytes, progress));
    } catch (const std::bad_alloc&) {
      return Failure(ENOMEM);
    }
  }

  FileOutcome Replace(const std::string& name, std::string_view bytes,
                      Progress& progress) override {
    if (!NameIsUsable(name) || name.ends_with('/')) return Failure(EINVAL);
    std::string path = name;
    const int error = FollowLinks(path);
    if (error != 0) return Failure(error);
    FileOutcome outcome = ReplaceOrCreate(path, bytes, progress);
    if (outcome.Ok()) SweepFolder(FolderOf(path));
    return outcome;
  }
};

}  // namespace

std::string StateFolder() {
  const char* state = std::getenv("XDG_STATE_HOME");
  const char* home = std::getenv("HOME");
  std::string folder;
  if (state != nullptr && state[0] == '/') {
    folder = state;
  } else if (home != nullptr && home[0] == '/') {
    folder = std::string(home) + "/.local/state";
  }
  if (folder.empty()) return folder;
  folder += "/orvane/";
  for (std::size_t slash = folder.find('/', 1); slash != std::string::npos;
       slash = folder.find('/', slash + 1))
    mkdir(folder.substr(0, slash).c_str(), 0700);
  return folder;
}

std::unique_ptr<FileStore> MakeSystemFileStore() { return std::make_unique<PosixFileStore>(); }

}  // namespace qmx
