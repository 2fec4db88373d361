// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "workspace/field_table.h"
#include "workspace/slot_table.h"

namespace qmx {

// What is told to somebody while he types: what the program makes of a text, and why a key does
// nothing. Nothing here decides what is taken; the rules of reading stand in base/number_text.

/// Names an element and its value with all digits: "A(2,3) = 0.3333333333333333".
std::string ElementLine(Slot slot, int row, int col, double value);

/// Why a text is not read to its end, or not at all: "the decimal sign is the point" for "0,5".
/// Empty where the whole of it, but for blanks around it, is one number.
std::string WhyReadInPart(std::string_view text);

/// What a field's text will be read as, and why, where that is not what stands there: "Read as 0:
/// the decimal sign is the point." Empty where the text says just what is read.
std::string FieldNote(FieldKind kind, std::string_view text);

/// The same for a count from `least` to `most`, which is refused where it is none.
std::string CountNote(std::string_view text, int least, int most);

/// Says that a key does nothing in a cell, and what to do instead: "/ is not accepted here: type
/// .3333333333333333 for 1/3". `key` is the character in UTF-8, or "Backspace", "Enter", "Escape".
std::string KeyRefusal(std::string_view key);

}  // namespace qmx
