// SPDX-License-Identifier: MIT
#include "files/record_writer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

#include "base/number_text.h"
#include "base/team.h"
#include "files/pieces.h"

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

/// Records are gathered in a block that stays in the processor's cache.
constexpr std::size_t kRecordsAtOnce = 64;

/// At most so many records.
void AppendRecords(std::string& bytes, const double* values, std::size_t count) {
  std::array<char, kRecordsAtOnce*(kFileNumberRoom + kUsualRecord)> block;
  char* out = block.data();
  for (std::size_t i = 0; i < count; ++i) out = WritePrintRecord(out, values[i]);
  bytes.append(block.data(), out);
}

/// The numbers of a piece that is written by itself.
constexpr std::size_t kPiece = kBetweenReports / kPieces;

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
  if (values.Size() >= kBetweenReports && SharedTeam().WouldShare()) return PrintShared(values);
  for (std::size_t done = 0; done < values.Size();) {
    const std::size_t count = std::min(kRecordsAtOnce, values.Size() - done);
    AppendRecords(bytes_, values.Data() + done, count);
    done += count;
    CountNumbers(count);
  }
}

/// Pieces are written side by side into texts of their own, which are then put one behind the
/// other.
void RecordWriter::PrintShared(const Matrix& values) {
  Team& team = SharedTeam();
  std::array<std::string, kPieces> texts;
  const std::size_t pieces = (values.Size() + kPiece - 1) / kPiece;
  for (std::size_t done = 0; done < pieces; done += kPieces) {
    const std::size_t count = std::min(kPieces, pieces - done);
    const auto write = [&](int piece) {
      const std::size_t first = (done + piece) * kPiece;
      const std::size_t last = std::min(first + kPiece, values.Size());
      std::string& text = texts[piece];
      text.clear();
      for (std::size_t at = first; at < last; at += kRecordsAtOnce)
        AppendRecords(text, values.Data() + at, std::min(kRecordsAtOnce, last - at));
    };
    team.Share(static_cast<int>(count), write, [] {});
    for (std::size_t piece = 0; piece < count; ++piece) bytes_ += texts[piece];
    CountNumbers(std::min(count * kPiece, values.Size() - done * kPiece));
  }
}

void RecordWriter::PrintText(std::string_view text) {
  bytes_ += text;
  bytes_ += kLineEnd;
}

}  // namespace qmx
