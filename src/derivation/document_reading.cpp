// SPDX-License-Identifier: MIT
#include "derivation/document_reading.h"

#include <algorithm>

namespace qmx {
namespace {

/// How a piece behaves beside its neighbours.
enum class Role {
  kWords,
  kOpening,
  kClosing,
  kComma,
  kSigned,  ///< A sign before its operand, or a root.
  kBinary,
  kUprightName,
  kName,
  kNumber,
  kMatrix,
};

bool IsOperand(Role role) { return role >= Role::kUprightName; }

/// A sign that may stand before a single operand.
bool MayBeUnary(std::string_view sign) { return sign == "−" || sign == "+" || sign == "±"; }

Role RoleOfSign(std::string_view sign, bool isFirst, int strokesBefore, Role before) {
  if (sign == "(") return Role::kOpening;
  if (sign == ")") return Role::kClosing;
  if (sign == ",") return Role::kComma;
  if (sign == "√") return Role::kSigned;
  if (sign == "|") return strokesBefore % 2 == 0 ? Role::kOpening : Role::kClosing;
  const bool hasOperandBefore =
      !isFirst && (IsOperand(before) || before == Role::kClosing || before == Role::kWords);
  return MayBeUnary(sign) && !hasOperandBefore ? Role::kSigned : Role::kBinary;
}

/// The role of piece `at` and of the one before it.
struct Neighbours {
  Role before = Role::kWords;
  Role own = Role::kWords;
};

Neighbours RolesUpTo(const Line& line, std::size_t at) {
  Neighbours roles;
  int strokes = 0;
  for (std::size_t i = 0; i <= at; ++i) {
    const Piece& piece = line.pieces[i];
    roles.before = roles.own;
    if (const auto* sign = std::get_if<Operator>(&piece)) {
      roles.own = RoleOfSign(sign->sign, i == 0, strokes, roles.before);
      if (sign->sign == "|") ++strokes;
    } else if (const auto* name = std::get_if<Name>(&piece)) {
      roles.own = CharacterCount(name->letter) > 1 ? Role::kUprightName : Role::kName;
    } else if (std::holds_alternative<ShownNumber>(piece)) {
      roles.own = Role::kNumber;
    } else if (std::holds_alternative<ShownMatrix>(piece)) {
      roles.own = Role::kMatrix;
    } else {
      roles.own = Role::kWords;
    }
  }
  return roles;
}

/// True where a number is more than one run of digits, so that what follows needs a distance.
bool IsComposed(const ShownNumber& number, NumberForm form) {
  const ShownForms forms = FormsOf(number, form);
  if (!forms.exact) return false;
  return forms.decimal || number.exact.denominator != "1" || number.exact.radicand != "1";
}

/// A blank between two operands, or an operand and what opens or closes.
bool IsBlankBetweenOperands(const Line& line, std::size_t at, Neighbours roles, NumberForm form) {
  if (roles.own == Role::kMatrix || roles.before == Role::kMatrix) return true;
  if (roles.before == Role::kClosing || roles.own == Role::kOpening) return false;
  if (roles.before == Role::kUprightName || roles.own == Role::kUprightName) return true;
  if (roles.own == Role::kNumber) return true;
  if (roles.before == Role::kNumber) {
    return IsComposed(std::get<ShownNumber>(line.pieces[at - 1]), form);
  }
  return false;
}

bool IsNegative(const ShownNumber& number, NumberForm form) {
  const std::string& text = FormsOf(number, form).exact ? number.exact.numerator : number.decimal;
  return !text.empty() && text.front() == '-';
}

void CountMarks(const ShownNumber& number, NumberForm form, MarksInUse& marks) {
  if (FormsOf(number, form).decimal && number.held < number.decimal.size()) marks.unproved = true;
}

void CountMarks(const Line& line, NumberForm form, MarksInUse& marks) {
  for (const Piece& piece : line.pieces) {
    if (const auto* number = std::get_if<ShownNumber>(&piece)) CountMarks(*number, form, marks);
    const auto* matrix = std::get_if<ShownMatrix>(&piece);
    if (matrix == nullptr) continue;
    for (const ShownCell& cell : matrix->cells) {
      if (cell.isBlank) continue;
      marks.pivot = marks.pivot || cell.mark == CellMark::kPivot;
      marks.changed = marks.changed || cell.mark == CellMark::kChanged;
      marks.found = marks.found || cell.mark == CellMark::kFound;
      marks.asked = marks.asked || cell.mark == CellMark::kAsked;
      CountMarks(cell.number, form, marks);
    }
  }
}

}  // namespace

ShownForms FormsOf(const ShownNumber& number, NumberForm form) {
  ShownForms forms{number.exact.IsKnown(), !number.decimal.empty()};
  if (!forms.exact || !forms.decimal) return forms;
  if (form == NumberForm::kFractions) forms.decimal = false;
  if (form == NumberForm::kDecimals) forms.exact = false;
  if (form == NumberForm::kBoth) forms.decimal = ExactText(number.exact) != number.decimal;
  return forms;
}

std::string ExactText(const ExactNumber& number) {
  if (!number.IsKnown()) return {};
  std::string text = number.numerator;
  if (number.radicand != "1") {
    // One root, or minus one, is written without the 1.
    if (text == "1" || text == "-1") text.pop_back();
    text += "√" + number.radicand;
  }
  if (number.denominator != "1") text += "/" + number.denominator;
  return text;
}

bool HasBlankBefore(const Line& line, std::size_t at, NumberForm form) {
  if (at == 0) return false;
  const Neighbours roles = RolesUpTo(line, at);
  if (roles.own == Role::kWords || roles.before == Role::kWords) return false;
  if (roles.own == Role::kClosing || roles.own == Role::kComma) return false;
  if (roles.own == Role::kBinary || roles.before == Role::kBinary) return true;
  if (roles.before == Role::kComma) return true;
  if (roles.before == Role::kOpening || roles.before == Role::kSigned) return false;
  if (roles.own == Role::kSigned) return false;
  return IsBlankBetweenOperands(line, at, roles, form);
}

bool NeedsParentheses(const Line& line, std::size_t at, NumberForm form) {
  if (at == 0) return false;
  const auto* number = std::get_if<ShownNumber>(&line.pieces[at]);
  const auto* before = std::get_if<Operator>(&line.pieces[at - 1]);
  if (number == nullptr || before == nullptr || !IsNegative(*number, form)) return false;
  return before->sign == "+" || before->sign == "−" || before->sign == "·" || before->sign == "±";
}

std::vector<LinePart> LineParts(const Line& line) {
  std::vector<LinePart> parts;
  std::size_t begin = 0;
  for (std::size_t i = 0; i < line.pieces.size(); ++i) {
    const bool isLast = i + 1 == line.pieces.size();
    if (!std::holds_alternative<ShownMatrix>(line.pieces[i]) && !isLast) continue;
    parts.push_back({begin, i + 1});
    begin = i + 1;
  }
  return parts;
}

MarksInUse MarksOf(const Document& document, NumberForm form) {
  MarksInUse marks;
  for (const Block& block : document.blocks) {
    if (const auto* line = std::get_if<Line>(&block)) CountMarks(*line, form, marks);
    const auto* table = std::get_if<Table>(&block);
    if (table == nullptr) continue;
    for (const auto& row : table->rows) {
      for (const Line& cell : row) CountMarks(cell, form, marks);
    }
  }
  return marks;
}

bool LacksTitle(const Document& document) {
  if (document.title.empty()) return false;
  if (document.blocks.empty()) return true;
  const auto* heading = std::get_if<Heading>(&document.blocks.front());
  return heading == nullptr || heading->level != 1;
}

int CharacterCount(std::string_view text) {
  return static_cast<int>(std::ranges::count_if(
      text, [](char c) { return (static_cast<unsigned char>(c) & 0xC0U) != 0x80U; }));
}

char32_t TakeCharacter(std::string_view& text) {
  constexpr char32_t kNone = 0xFFFD;
  const auto first = static_cast<unsigned char>(text.front());
  text.remove_prefix(1);
  if (first < 0x80U) return first;
  int following = 0;
  while (following < 3 && (first & (0x40U >> following)) != 0) ++following;
  if (following == 0) return kNone;
  char32_t value = first & (0x3FU >> following);
  for (int i = 0; i < following; ++i) {
    if (text.empty() || (static_cast<unsigned char>(text.front()) & 0xC0U) != 0x80U) return kNone;
    value = (value << 6U) | (static_cast<unsigned char>(text.front()) & 0x3FU);
    text.remove_prefix(1);
  }
  return value;
}

}  // namespace qmx
