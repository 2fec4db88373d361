// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/progress.h"

namespace qmx {

/// A printer that takes whole documents.
class Printer {
 public:
  Printer() = default;
  Printer(const Printer&) = delete;
  Printer& operator=(const Printer&) = delete;
  virtual ~Printer() = default;

  /// A document of more pages than this is long.
  static constexpr int kFewPages = 20;
  /// Makes a document of lines in a font, or in the printer's own where no font is named, which
  /// stays what it is in any case. Returns the number of its pages; 0 where nothing is to be
  /// printed: there are no lines, or the user wants none.
  /// Faults: 482 (printer error).
  virtual int Prepare(const std::vector<std::string>& lines, std::string_view font) = 0;
  /// Prints what was prepared. May be called where computations run, and tells how far it is: while
  /// it does, a stop leaves nothing printed.
  /// Faults: 482 (printer error).
  virtual void Print(Progress& progress) = 0;
};

/// What came of a file operation. An empty problem means that it succeeded; otherwise it says what
/// failed, in words for the user that do not repeat the file's name.
struct FileOutcome {
  std::string problem;
  /// Where writing broke off in the midst of a file: the name of a file that holds what was to be
  /// written.
  std::string copy = {};
  bool Ok() const { return problem.empty(); }
};

/// Whole files. Names are in the system's own bytes. A stop at a report leaves what was there.
class FileStore {
 public:
  FileStore() = default;
  FileStore(const FileStore&) = delete;
  FileStore& operator=(const FileStore&) = delete;
  virtual ~FileStore() = default;
  /// Reads all bytes of a regular file into `bytes`.
  virtual FileOutcome Read(const std::string& name, std::string& bytes, Progress& progress) = 0;
  FileOutcome Read(const std::string& name, std::string& bytes) {
    return Read(name, bytes, NoProgress());
  }
  /// Replaces (or creates) a file with exactly these bytes, or fails and leaves what was there, or
  /// fails and names a copy.
  virtual FileOutcome Replace(const std::string& name, std::string_view bytes,
                              Progress& progress) = 0;
  FileOutcome Replace(const std::string& name, std::string_view bytes) {
    return Replace(name, bytes, NoProgress());
  }
};

/// A source of uniform single-precision numbers in [0, 1).
class Random {
 public:
  Random() = default;
  Random(const Random&) = delete;
  Random& operator=(const Random&) = delete;
  virtual ~Random() = default;
  virtual void Seed(std::uint64_t seed) = 0;
  virtual float Next() = 0;
};

/// The clock that the random source is re-seeded from.
class Clock {
 public:
  Clock() = default;
  Clock(const Clock&) = delete;
  Clock& operator=(const Clock&) = delete;
  virtual ~Clock() = default;
  virtual std::uint64_t Ticks() = 0;
};

}  // namespace qmx
