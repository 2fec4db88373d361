// SPDX-License-Identifier: MIT
#include "files/field_scanner.h"

#include <algorithm>
#include <charconv>

#include "base/number_text.h"
#include "base/team.h"
#include "files/pieces.h"

namespace qmx {
namespace {

bool IsBlank(char c) { return c == ' ' || c == '\t'; }

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

const char* SkipBlanks(const char* at, const char* end) {
  while (at != end && IsBlank(*at)) ++at;
  return at;
}

/// The position after the line end that stands at `at`, or null where none does.
const char* AfterLineEnd(const char* at, const char* end) {
  if (at != end && *at == '\r') ++at;
  return at != end && *at == '\n' ? at + 1 : nullptr;
}

bool EndsField(char c) { return IsBlank(c) || c == ',' || c == '\r' || c == '\n'; }

/// The bytes of a piece that is read by itself: about as many numbers as are written in one.
constexpr std::ptrdiff_t kPieceBytes = 24 * kBetweenReports / kPieces;

/// Up to a few characters of a field, fit for a message box.
std::string Excerpt(const char* at, const char* end) {
  constexpr int kLongest = 24;
  std::string text;
  for (; at != end && *at != '\n' && *at != '\r' && *at != ','; ++at) {
    if (text.size() == kLongest) return text + "...";
    text += *at >= ' ' && *at <= '~' ? *at : '?';
  }
  while (!text.empty() && IsBlank(text.back())) text.pop_back();
  return text;
}

}  // namespace

std::string ReadProblem::Text() const {
  return "Line " + std::to_string(line) + ": expected " + expected + ", but found " + found + ".";
}

const char* FieldScanner::SkipEmptyLines(const char* from) const {
  const char* at = SkipBlanks(from, end_);
  while (const char* next = AfterLineEnd(at, end_)) at = SkipBlanks(next, end_);
  return at;
}

void FieldScanner::ReportPlace() {
  progress_->Report(static_cast<double>(at_ - start_) / static_cast<double>(end_ - start_));
}

bool FieldScanner::LastLineMayLackItsEnd() const { return std::find(start_, end_, '\r') == end_; }

bool FieldScanner::FinishField(const char* fieldEnd) {
  if (fieldEnd != end_ && !EndsField(*fieldEnd)) return false;
  const char* next = SkipBlanks(fieldEnd, end_);
  if (next == end_) {
    if (!LastLineMayLackItsEnd()) return false;
  } else if (*next == ',') {
    ++next;
  } else if (const char* line = AfterLineEnd(next, end_)) {
    next = line;
  } else if (*next == '\r') {
    return false;
  }
  lastField_ = at_;
  at_ = next;
  return true;
}

bool FieldScanner::ReadFlag(bool& value) {
  at_ = SkipEmptyLines(at_);
  const std::string_view rest(at_, static_cast<std::size_t>(end_ - at_));
  for (const bool candidate : {true, false}) {
    const std::string_view word = candidate ? "#TRUE#" : "#FALSE#";
    if (!rest.starts_with(word)) continue;
    value = candidate;
    return FinishField(at_ + word.size());
  }
  return false;
}

bool FieldScanner::ReadInteger(std::int32_t& value) {
  at_ = SkipEmptyLines(at_);
  const char* number = at_;
  if (number != end_ && *number == '+') {
    ++number;
    if (number == end_ || !IsDigit(*number)) return false;
  }
  const auto parsed = std::from_chars(number, end_, value);
  return parsed.ec == std::errc() && FinishField(parsed.ptr);
}

bool FieldScanner::ReadNumber(double& value) {
  at_ = SkipEmptyLines(at_);
  const char* fieldEnd = ParseLeadingNumber(at_, end_, value);
  return fieldEnd != nullptr && FinishField(fieldEnd);
}

/// What is read by itself, from the beginning of a line on.
struct FieldScanner::Piece {
  const char* from;
  const char* to;
  std::vector<double> values;
  bool isWhole = false;  ///< Everything could be read.
  const char* at = nullptr;
  const char* lastField = nullptr;
};

void FieldScanner::ReadPiece(const char* end, Piece& piece) {
  double value = 0;
  piece.isWhole = true;
  while (piece.isWhole && SkipEmptyLines(at_) < end) {
    piece.isWhole = ReadNumber(value);
    if (piece.isWhole) piece.values.push_back(value);
  }
  piece.at = at_;
  piece.lastField = lastField_;
}

std::vector<FieldScanner::Piece> FieldScanner::PiecesFrom(const char* from) const {
  std::vector<Piece> pieces;
  while (pieces.size() < kPieces && end_ - from > kPieceBytes) {
    const char* to = std::find(from + kPieceBytes, end_, '\n');
    if (to == end_) break;
    pieces.push_back({from, to + 1, {}});
    from = to + 1;
  }
  return pieces;
}

std::size_t FieldScanner::ReadShared(double* values, std::size_t count) {
  std::size_t done = 0;
  for (;;) {
    std::vector<Piece> pieces = PiecesFrom(at_);
    if (pieces.size() < 2) return done;
    const auto read = [&](int k) {
      Piece& piece = pieces[k];
      piece.values.reserve(kPieceBytes / 4);
      FieldScanner own = *this;
      own.at_ = piece.from;
      own.ReadPiece(piece.to, piece);
    };
    SharedTeam().Share(static_cast<int>(pieces.size()), read, [] {});
    for (const Piece& piece : pieces) {
      // Where it ends is found number by number.
      if (!piece.isWhole || piece.values.size() > count - done) return done;
      if (piece.values.empty()) continue;
      std::copy(piece.values.begin(), piece.values.end(), values + done);
      done += piece.values.size();
      at_ = piece.at;
      lastField_ = piece.lastField;
      if (done / kBetweenReports != (done - piece.values.size()) / kBetweenReports) ReportPlace();
    }
    if (done == count) return done;
  }
}

std::size_t FieldScanner::ReadNumbers(double* values, std::size_t count) {
  std::size_t done = 0;
  if (count >= kBetweenReports && SharedTeam().WouldShare()) done = ReadShared(values, count);
  while (done < count && ReadNumber(values[done])) {
    if (++done % kBetweenReports == 0) ReportPlace();
  }
  return done;
}

bool FieldScanner::ReadText(std::string& value) {
  at_ = SkipBlanks(at_, end_);
  const bool quoted = at_ != end_ && *at_ == '"';
  const char* first = quoted ? at_ + 1 : at_;
  const char* last = std::find_if(first, end_, [quoted](char c) {
    return c == '\r' || c == '\n' || c == (quoted ? '"' : ',');
  });
  if (quoted && (last == end_ || *last != '"')) return false;
  const char* fieldEnd = quoted ? last + 1 : last;
  first = SkipBlanks(first, last);
  while (last != first && IsBlank(last[-1])) --last;
  value.assign(first, last);
  return FinishField(fieldEnd);
}

bool FieldScanner::ReadEmptyLine() {
  const char* next = AfterLineEnd(SkipBlanks(at_, end_), end_);
  if (next == nullptr) return false;
  at_ = next;
  return true;
}

bool FieldScanner::AtEnd() {
  at_ = SkipEmptyLines(at_);
  return at_ == end_;
}

int FieldScanner::LineOf(const char* field) const {
  return static_cast<int>(std::count(start_, field, '\n')) + 1;
}

ReadProblem FieldScanner::ProblemAt(const char* field, std::string expected) const {
  ReadProblem problem;
  problem.line = LineOf(field);
  problem.expected = std::move(expected);
  const std::string text = Excerpt(field, end_);
  const bool cutOff = std::find(field, end_, '\n') == end_;
  if (text.empty()) {
    problem.found = field == end_ ? "the end of the file" : "an empty field";
  } else {
    problem.found = '"' + text + '"' + (cutOff ? " and the end of the file" : "");
  }
  return problem;
}

bool FieldScanner::Refuse(std::string expected) {
  if (!problem_) problem_ = ProblemAt(at_, std::move(expected));
  return false;
}

bool FieldScanner::RefuseLast(std::string expected) {
  if (!problem_) problem_ = ProblemAt(lastField_, std::move(expected));
  return false;
}

bool FieldScanner::RefuseLast(std::string expected, std::string found) {
  if (!problem_) problem_ = {LineOfLast(), std::move(expected), std::move(found)};
  return false;
}

}  // namespace qmx
