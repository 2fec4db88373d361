// SPDX-License-Identifier: MIT
#include "exchange/memory_file.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <system_error>

#include "exchange/refusal.h"

namespace qmx {

namespace {

/// A path for mkstemp.
std::string NewName() {
  constexpr const char* kSharedMemory = "/dev/shm";
  std::error_code none;
  const std::filesystem::path folder = access(kSharedMemory, W_OK) == 0
                                           ? std::filesystem::path(kSharedMemory)
                                           : std::filesystem::temp_directory_path(none);
  return folder / "orvane-XXXXXX";
}

}  // namespace

MemoryFile::MemoryFile(Kind kind) : named_(kind == Kind::kNamed) {
  if (named_) {
    path_ = NewName();
    file_ = mkostemp(path_.data(), O_CLOEXEC);
  } else {
    file_ = memfd_create("matrix", MFD_CLOEXEC);
    path_ = "/proc/self/fd/" + std::to_string(file_);
  }
  if (file_ < 0) throw Refusal("The system gives no memory for the file.");
}

MemoryFile::~MemoryFile() {
  RemoveName();
  close(file_);
}

void MemoryFile::RemoveName() const {
  if (named_) unlink(path_.c_str());
}

void MemoryFile::Write(std::string_view bytes) const {
  while (!bytes.empty()) {
    const ssize_t written = write(file_, bytes.data(), bytes.size());
    if (written <= 0) throw Refusal("There is not enough memory for the file.");
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
}

void MemoryFile::Empty() const { [[maybe_unused]] const int done = ftruncate(file_, 0); }

}  // namespace qmx
