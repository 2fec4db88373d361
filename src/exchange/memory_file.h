// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace qmx {

/// A file that lies in memory, for a library that wants to be told a path.
class MemoryFile {
 public:
  /// Most libraries are content with a path that leads to a file without a name. HDF5 wants the
  /// path to be the file's own: it then has a name among the system's shared memory, or among the
  /// temporary files where there is none, and only this user may open it.
  enum class Kind { kNameless, kNamed };

  /// An empty file. Refuses where the system gives none.
  explicit MemoryFile(Kind kind = Kind::kNameless);
  MemoryFile(const MemoryFile&) = delete;
  MemoryFile& operator=(const MemoryFile&) = delete;
  /// The name, if it has one, is gone then, whoever else has the file open.
  ~MemoryFile();

  /// Leads to the file, one without a name in this process and its copies only.
  const std::string& Path() const { return path_; }
  /// Takes the name away; who has the file open keeps it.
  void RemoveName() const;
  /// Adds bytes at the end of what was written. Refuses where memory does not suffice.
  void Write(std::string_view bytes) const;
  /// Gives the memory back.
  void Empty() const;

 private:
  int file_ = -1;
  std::string path_;
  bool named_;
};

}  // namespace qmx
