// SPDX-License-Identifier: MIT
#include "derivation/document_text.h"

#include <algorithm>
#include <string_view>
#include <utility>
#include <vector>

#include "derivation/document_reading.h"
#include "derivation/text_box.h"

namespace qmx {
namespace {

/// Formulas are broken where they would be wider.
constexpr int kPageWidth = 100;
constexpr std::string_view kFormulaIndent = "    ";

struct Script {
  char plain;
  std::string_view lowered;
  std::string_view raised;
};
constexpr Script kScripts[] = {
    {'0', "₀", "⁰"}, {'1', "₁", "¹"}, {'2', "₂", "²"}, {'3', "₃", "³"}, {'4', "₄", "⁴"},
    {'5', "₅", "⁵"}, {'6', "₆", "⁶"}, {'7', "₇", "⁷"}, {'8', "₈", "⁸"}, {'9', "₉", "⁹"},
    {'-', "₋", "⁻"}, {'+', "₊", "⁺"}, {'T', "", "ᵀ"},  {'i', "ᵢ", "ⁱ"}, {'j', "ⱼ", "ʲ"},
    {'k', "ₖ", "ᵏ"}, {'n', "ₙ", "ⁿ"}, {'m', "ₘ", "ᵐ"}, {'p', "ₚ", "ᵖ"}, {'r', "ᵣ", "ʳ"},
    {'a', "ₐ", "ᵃ"}, {'x', "ₓ", "ˣ"}, {',', ",", ","},
};

/// A text lowered or raised; empty where a character has no such form.
std::string Scripted(const std::string& text, bool isRaised) {
  std::string scripted;
  for (const char c : text) {
    const auto* found = std::ranges::find(kScripts, c, &Script::plain);
    if (found == std::end(kScripts)) return {};
    const std::string_view form = isRaised ? found->raised : found->lowered;
    if (form.empty()) return {};
    scripted += form;
  }
  return scripted;
}

/// With the sign that stands for a script where a character has no form of its own.
std::string ScriptText(const std::string& text, bool isRaised) {
  if (text.empty()) return {};
  std::string scripted = Scripted(text, isRaised);
  if (!scripted.empty()) return scripted;
  const std::string inside = CharacterCount(text) > 1 ? "(" + text + ")" : text;
  return (isRaised ? "^" : "_") + inside;
}

TextBox PieceBox(const Line& line, std::size_t at, NumberForm form) {
  const Piece& piece = line.pieces[at];
  if (const auto* words = std::get_if<Words>(&piece)) return TextBox::Of(words->text);
  if (const auto* sign = std::get_if<Operator>(&piece)) return TextBox::Of(sign->sign);
  if (const auto* matrix = std::get_if<ShownMatrix>(&piece)) return MatrixBox(*matrix, form);
  if (const auto* name = std::get_if<Name>(&piece)) {
    return TextBox::Of(name->letter + ScriptText(name->index, false) +
                       ScriptText(name->power, true));
  }
  const std::string number = NumberText(std::get<ShownNumber>(piece), form);
  return TextBox::Of(NeedsParentheses(line, at, form) ? "(" + number + ")" : number);
}

TextBox PartBox(const Line& line, const LinePart& part, NumberForm form, bool beginsRow) {
  TextBox box;
  for (std::size_t i = part.begin; i < part.end; ++i) {
    const bool isFirst = beginsRow && i == part.begin;
    if (!isFirst && HasBlankBefore(line, i, form)) box.Append(TextBox::Of(" "));
    box.Append(PieceBox(line, i, form));
  }
  return box;
}

/// A line as rows of boxes, each no wider than the page where that can be.
std::vector<TextBox> Rows(const Line& line, NumberForm form) {
  std::vector<TextBox> rows;
  for (const LinePart& part : LineParts(line)) {
    TextBox box = PartBox(line, part, form, rows.empty());
    if (!rows.empty() && rows.back().width + box.width <= kPageWidth) {
      rows.back().Append(box);
    } else {
      rows.push_back(rows.empty() ? std::move(box) : PartBox(line, part, form, true));
    }
  }
  return rows;
}

void WithoutBlanksAtEnd(std::string& text) {
  while (!text.empty() && text.back() == ' ') text.pop_back();
}

std::string LineText(const Line& line, NumberForm form) {
  std::string text;
  for (const TextBox& box : Rows(line, form)) {
    for (const std::string& row : box.rows) {
      std::string whole = (line.isFormula ? std::string(kFormulaIndent) : std::string()) + row;
      WithoutBlanksAtEnd(whole);
      text += whole + "\n";
    }
  }
  return text;
}

std::string HeadingText(const Heading& heading) {
  std::string text = heading.text + "\n";
  if (heading.level > 2) return text;
  const char under = heading.level == 1 ? '=' : '-';
  text.append(static_cast<std::size_t>(CharacterCount(heading.text)), under);
  return text + "\n";
}

/// A line of a table that has several: the rows of its boxes one below the other.
TextBox CellBox(const Line& line, NumberForm form) {
  TextBox whole;
  for (const TextBox& box : Rows(line, form)) {
    whole.width = std::max(whole.width, box.width);
    whole.rows.insert(whole.rows.end(), box.rows.begin(), box.rows.end());
  }
  if (whole.rows.empty()) whole.rows.emplace_back();
  for (std::string& row : whole.rows) {
    row.append(static_cast<std::size_t>(whole.width - CharacterCount(row)), ' ');
  }
  return whole;
}

std::string TableText(const Table& table, NumberForm form) {
  std::vector<std::vector<TextBox>> rows(1);
  for (const std::string& heading : table.headings) rows[0].push_back(TextBox::Of(heading));
  for (const auto& cells : table.rows) {
    rows.emplace_back();
    for (const Line& cell : cells) rows.back().push_back(CellBox(cell, form));
  }
  std::vector<int> widths(table.headings.size());
  for (const auto& row : rows) {
    for (std::size_t j = 0; j < row.size() && j < widths.size(); ++j) {
      widths[j] = std::max(widths[j], row[j].width);
    }
  }
  std::string text;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    TextBox all;
    for (std::size_t j = 0; j < rows[i].size() && j < widths.size(); ++j) {
      all.Append(rows[i][j]);
      const int distance = widths[j] - rows[i][j].width + (j + 1 < widths.size() ? 2 : 0);
      all.Append(TextBox::Of(std::string(static_cast<std::size_t>(distance), ' ')));
    }
    for (std::string& row : all.rows) {
      WithoutBlanksAtEnd(row);
      text += row + "\n";
    }
    if (i != 0) continue;
    std::string under;
    for (const int width : widths) {
      under += (under.empty() ? "" : "  ") + std::string(static_cast<std::size_t>(width), '-');
    }
    text += under + "\n";
  }
  return text;
}

bool IsOperation(const Block& block) {
  const auto* line = std::get_if<Line>(&block);
  return line != nullptr && line->operation.has_value();
}

std::string Legend(const MarksInUse& marks) {
  std::string text;
  if (marks.pivot) text += "[ ] around a number: the pivot.\n";
  if (marks.changed) text += "← behind a row: the step has changed it.\n";
  if (marks.found) text += "* * around a number: what was found.\n";
  if (marks.asked) text += "» « around a number: the element asked about.\n";
  return text;
}

}  // namespace

std::string PlainText(const Document& document, NumberForm form) {
  std::string text;
  if (LacksTitle(document)) text += HeadingText({document.title, 1});
  bool isOperation = false;
  for (const Block& block : document.blocks) {
    // What is done to one row after the other stands together.
    const bool wasOperation = std::exchange(isOperation, IsOperation(block));
    if (!text.empty() && !(wasOperation && isOperation)) text += "\n";
    if (const auto* heading = std::get_if<Heading>(&block)) {
      text += HeadingText(*heading);
    } else if (const auto* line = std::get_if<Line>(&block)) {
      text += LineText(*line, form);
    } else {
      text += TableText(std::get<Table>(block), form);
    }
  }
  const std::string legend = Legend(MarksOf(document, form));
  return legend.empty() ? text : text + "\n" + legend;
}

}  // namespace qmx
