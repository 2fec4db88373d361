// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "derivation/document.h"

// What everybody who shows a document has to know about it: which of a number's forms is on show,
// and where formulas have blanks, parentheses and places to break.

namespace qmx {

/// What is on show of a number: at least one of the two, but for a number that has neither.
struct ShownForms {
  bool exact = false;
  bool decimal = false;
};
/// Where both are asked for and are the same text, the exact one alone.
ShownForms FormsOf(const ShownNumber& number, NumberForm form);

/// An exact number in one line: "3", "-2/5", "√3", "-2√3/5". Empty where it is not known.
std::string ExactText(const ExactNumber& number);

/// What stands for a number of which neither form is there.
inline constexpr std::string_view kUnknownNumber = "…";

/// The parts of a line's formulas follow each other with blanks or without; its words bring their
/// own. True where a blank stands before piece `at`, counted from 0.
bool HasBlankBefore(const Line& line, std::size_t at, NumberForm form);

/// True where a number, negative and behind a sign, is set in parentheses: 3 − (−2).
bool NeedsParentheses(const Line& line, std::size_t at, NumberForm form);

/// A part of a line between two places where it may be broken, from `begin` up to `end`.
struct LinePart {
  std::size_t begin;
  std::size_t end;
};
/// A line may be broken behind every matrix. No part is empty.
std::vector<LinePart> LineParts(const Line& line);

/// Which marks a document has, so that whoever shows it can tell what they mean.
struct MarksInUse {
  bool pivot = false;
  bool changed = false;
  bool found = false;
  bool asked = false;
  bool unproved = false;
};
MarksInUse MarksOf(const Document& document, NumberForm form);

/// True where the document has a title and begins with no heading of its own, so that the title is
/// to be shown. A part of a document has none.
bool LacksTitle(const Document& document);

/// The number of characters of a text in UTF-8, each one place wide.
int CharacterCount(std::string_view text);

/// Takes the first character off a text in UTF-8; U+FFFD for a byte that begins none.
char32_t TakeCharacter(std::string_view& text);

}  // namespace qmx
