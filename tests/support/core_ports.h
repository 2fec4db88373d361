// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <map>
#include <string>
#include <vector>

#include "base/fault.h"
#include "base/memory.h"
#include "workspace/ports.h"

namespace qmx::test {

/// Keeps the printed lines of each document.
class RecordingPrinter : public Printer {
 public:
  std::vector<std::string> lines;
  std::vector<std::string> fonts;  ///< The font of each line.
  int documents = 0;
  bool fails = false;
  std::string font = "Helvetica";

  int pages = 1;  ///< Of every document.

  int Prepare(const std::vector<std::string>& document, std::string_view wanted) override {
    prepared_ = document;
    preparedFont_ = wanted.empty() ? font : std::string(wanted);
    return pages;
  }
  void Print(Progress& progress) override {
    for (int page = 1; page <= pages; ++page) progress.Report(static_cast<double>(page) / pages);
    lines.insert(lines.end(), prepared_.begin(), prepared_.end());
    fonts.resize(lines.size(), preparedFont_);
    if (fails) throw RuntimeFault(Fault::kPrinterError);
    ++documents;
  }

 private:
  std::vector<std::string> prepared_;
  std::string preparedFont_;
};

/// A machine with as much memory as a test gives it.
class FixedMemory : public Memory {
 public:
  std::size_t available = std::size_t{1} << 40;
  std::size_t Available() const override { return available; }
};

/// Files in memory. Writing fails once more bytes than `room` are asked for, and then leaves the
/// old file or tells of a copy.
class MemoryFiles : public FileStore {
 public:
  std::map<std::string, std::string> files;
  std::size_t room = std::numeric_limits<std::size_t>::max();
  std::string copy;

  using FileStore::Read;
  using FileStore::Replace;
  FileOutcome Read(const std::string& name, std::string& bytes, Progress& progress) override {
    progress.Report(0.5);
    const auto found = files.find(name);
    if (found == files.end()) return {"There is no such file."};
    bytes = found->second;
    return {};
  }
  FileOutcome Replace(const std::string& name, std::string_view bytes,
                      Progress& progress) override {
    progress.Report(0.5);
    if (bytes.size() > room) return {"There is no space left.", copy};
    files[name] = std::string(bytes);
    return {};
  }
};

/// Gives a fixed sequence, over and over; 0.25, 0.5 and so on unless told otherwise.
class FixedRandom : public Random {
 public:
  std::vector<float> sequence{0.25F, 0.5F, 0.75F, 0.125F, 0.875F, 0.0F, 0.625F};
  std::vector<std::uint64_t> seeds;

  void Seed(std::uint64_t seed) override {
    seeds.push_back(seed);
    next_ = 0;
  }
  float Next() override { return sequence[next_++ % sequence.size()]; }

 private:
  std::size_t next_ = 0;
};

class FixedClock : public Clock {
 public:
  std::uint64_t now = 1;
  std::uint64_t Ticks() override { return now++; }
};

}  // namespace qmx::test
