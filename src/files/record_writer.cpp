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

RecordWriter::RecordWriter(std::size_t numbers) { bytes_.reserve(numbers * kUsualRecord); }

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
}

void RecordWriter::PrintNumbers(const Matrix& values) {
  // Records are gathered in a block that stays in the processor's cache.
  constexpr std::size_t kRecordRoom = kFileNumberRoom + kUsualRecord;
  std::array<char, 64 * kRecordRoom> block;
  char* const full = block.data() + block.size() - kRecordRoom;
  char* out = block.data();
  const double* const end = values.Data() + values.Size();
  for (const double* value = values.Data(); value != end; ++value) {
    if (out > full) {
      bytes_.append(block.data(), out);
      out = block.data();
    }
    out = WritePrintRecord(out, *value);
  }
  bytes_.append(block.data(), out);
}

void RecordWriter::PrintText(std::string_view text) {
  bytes_ += text;
  bytes_ += kLineEnd;
}

}  // namespace qmx
