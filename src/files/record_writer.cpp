// SPDX-License-Identifier: MIT
#include "files/record_writer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "base/number_text.h"

namespace qmx {
namespace {

constexpr std::string_view kLineEnd = "\r\n";
/// Sign, 17 digits, point, two blanks and the line's end.
constexpr std::size_t kUsualRecord = 24;
/// Numbers: a few milliseconds.
constexpr std::size_t kBetweenReports = 16384;

double Storable(double value) {
  if (std::isfinite(value)) return value;
  return std::isnan(value) ? 0 : std::copysign(std::numeric_limits<double>::max(), value);
}

char* WritePrintRecord(char* out, double value) {
  value = Storable(value);
  if (!(value < 0)) *out++ = ' ';
  out = WriteFileNumber(out, value);
  *out++ = ' ';
  return std::copy(kLineEnd.begin(), kLineEnd.end(), out);
}

}  // namespace

RecordWriter::RecordWriter(std::size_t numbers, Progress& progress)
    : expected_(numbers), progress_(&progress) {
  bytes_.reserve(numbers * kUsualRecord);
}

void RecordWriter::CountNumbers(std::size_t count) {
  written_ += count;
  if (written_ - reported_ < kBetweenReports) return;
  reported_ = written_;
  const double part =
      static_cast<double>(written_) / static_cast<double>(std::max(expected_, written_));
  progress_->Report(part);
}

void RecordWriter::Separate() {
  if (recordStarted_) bytes_ += ',';
  recordStarted_ = true;
}

void RecordWriter::Flag(bool value) {
  Separate();
  bytes_ += value ? "#TRUE#" : "#FALSE#";
}

void RecordWriter::Integer(int value) {
  Separate();
  bytes_ += CStr(value);
}

void RecordWriter::Number(double value) {
  Separate();
  bytes_ += FileNumber(Storable(value));
}

void RecordWriter::EndRecord() {
  bytes_ += kLineEnd;
  recordStarted_ = false;
}

void RecordWriter::PrintInteger(int value) {
  bytes_ += PrintItem(value);
  bytes_ += kLineEnd;
}

void RecordWriter::PrintNumber(double value) {
  std::array<char, kFileNumberRoom + kUsualRecord> record;
  bytes_.append(record.data(), WritePrintRecord(record.data(), value));
  CountNumbers(1);
}

void RecordWriter::PrintNumbers(const Matrix& values) {
  // Records are gathered in a block that stays in the processor's cache.
  constexpr std::size_t kRecords = 64;
  std::array<char, kRecords*(kFileNumberRoom + kUsualRecord)> block;
  for (std::size_t done = 0; done < values.Size();) {
    const std::size_t count = std::min(kRecords, values.Size() - done);
    char* out = block.data();
    for (std::size_t i = 0; i < count; ++i) out = WritePrintRecord(out, values.Data()[done + i]);
    bytes_.append(block.data(), out);
    done += count;
    CountNumbers(count);
  }
}

void RecordWriter::PrintText(std::string_view text) {
  bytes_ += text;
  bytes_ += kLineEnd;
}

}  // namespace qmx
