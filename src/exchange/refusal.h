// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <exception>
#include <string>
#include <string_view>
#include <utility>

#include "exchange/foreign_outcome.h"

namespace qmx {

// For the readers and writers of this folder only: a refusal is thrown where it is met and becomes
// an outcome in the one public function of the format, so that what lies between only reads.

class Refusal : public std::exception {
 public:
  explicit Refusal(std::string text, int line = 0, int column = 0)
      : text_(std::move(text)), line_(line), column_(column) {}
  const char* what() const noexcept override { return text_.c_str(); }
  int Line() const { return line_; }
  int Column() const { return column_; }

 private:
  std::string text_;
  int line_;
  int column_;
};

/// Refuses a place of a text: "Line 3, column 2: " and the text, or "Line 3: " where column is 0.
[[noreturn]] void RefuseAt(int line, int column, const std::string& text);

/// Refuses an element of a matrix in a binary file: "Row 3, column 2: " and the text.
[[noreturn]] void RefuseElement(std::size_t row, std::size_t column, const std::string& text);

/// Runs what fills a content and turns a refusal into the outcome.
template <class Content, class Fill>
ForeignOutcome<Content> OutcomeOf(Fill fill) {
  ForeignOutcome<Content> outcome;
  try {
    fill(outcome);
  } catch (const Refusal& refusal) {
    outcome.content = Content{};
    outcome.note.clear();
    outcome.problem = refusal.what();
    outcome.line = refusal.Line();
    outcome.column = refusal.Column();
  }
  return outcome;
}

}  // namespace qmx
