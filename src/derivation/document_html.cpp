// SPDX-License-Identifier: MIT
#include "derivation/document_html.h"

#include <algorithm>
#include <string_view>

#include "derivation/document_reading.h"

namespace qmx {
namespace {

// Brackets are borders of the table, so that a matrix stays a table wherever it is pasted.
constexpr std::string_view kStyle = R"(
:root { color-scheme: light dark; }
body { font-family: sans-serif; line-height: 1.5; max-width: 60em; margin: 2em auto; padding: 0 1em;
  color: #1a1a1a; background: #ffffff; }
h1 { font-size: 1.6em; } h2 { font-size: 1.3em; } h3 { font-size: 1.05em; margin-bottom: 0.2em; }
.formula { margin: 0.6em 0 0.6em 2em; overflow-x: auto; }
.line { margin: 0.6em 0; overflow-x: auto; }
.name { font-family: serif; font-style: italic; } .upright { font-family: serif; }
.root { border-top: 1px solid; }
.matrix { display: inline-table; vertical-align: middle; border-collapse: separate;
  border-spacing: 0.15em; border-left: 2px solid; border-right: 2px solid; border-radius: 0.5em;
  margin: 0.15em 0.1em; }
.determinant { border-left-width: 1px; border-right-width: 1px; border-radius: 0; }
.matrix td { padding: 0.05em 0.4em; text-align: right; white-space: nowrap;
  border: 1px solid transparent; }
.matrix td.bar { border-right: 1px solid; }
.matrix td.pivot { border: 2px solid #b34700; font-weight: bold; }
.matrix td.asked { border-bottom: 3px solid; font-weight: bold; }
.changed { background: #dcebff; } .found { background: #dff3d8; }
.unproved { color: #8a8a8a; }
.decimal { font-size: 0.8em; }
.cycles { border-collapse: collapse; }
.cycles th, .cycles td { border: 1px solid #9a9a9a; padding: 0.15em 0.6em; text-align: left; }
@media (prefers-color-scheme: dark) {
  body { color: #e8e8e8; background: #1b1b1b; }
  .matrix td.pivot { border-color: #ff9a4d; }
  .changed { background: #1d3a5f; } .found { background: #234a1c; }
  .unproved { color: #909090; }
}
@media print { body { max-width: none; margin: 0; } h2, h3 { break-after: avoid; } }
)";

std::string Escaped(std::string_view text) {
  std::string escaped;
  for (const char c : text) {
    if (c == '&') {
      escaped += "&amp;";
    } else if (c == '<') {
      escaped += "&lt;";
    } else if (c == '>') {
      escaped += "&gt;";
    } else if (c == '"') {
      escaped += "&quot;";
    } else if (static_cast<unsigned char>(c) >= 0x20U || c == '\n') {
      // Other control characters are none of XML's.
      escaped += c;
    }
  }
  return escaped;
}

std::string Element(std::string_view tag, std::string_view kind, const std::string& inside) {
  std::string text = "<" + std::string(tag);
  if (!kind.empty()) text += " class=\"" + std::string(kind) + "\"";
  return text + ">" + inside + "</" + std::string(tag) + ">";
}

std::string DecimalHtml(const ShownNumber& number) {
  if (number.held >= number.decimal.size()) return Escaped(number.decimal);
  return Escaped(number.decimal.substr(0, number.held)) +
         Element("span", "unproved", Escaped(number.decimal.substr(number.held)));
}

std::string ExactHtml(const ExactNumber& number) {
  if (number.radicand == "1") return Escaped(ExactText(number));
  const std::string text = ExactText(number);
  const std::size_t root = text.find("√") + std::string_view("√").size();
  return Escaped(text.substr(0, root)) + Element("span", "root", Escaped(number.radicand)) +
         Escaped(text.substr(root + number.radicand.size()));
}

std::string NumberHtml(const ShownNumber& number, NumberForm form) {
  const ShownForms forms = FormsOf(number, form);
  if (forms.exact && forms.decimal) {
    return ExactHtml(number.exact) + " (" + DecimalHtml(number) + ")";
  }
  if (forms.exact) return ExactHtml(number.exact);
  return forms.decimal ? DecimalHtml(number) : std::string(kUnknownNumber);
}

std::string CellHtml(const ShownCell& cell, bool hasBar, NumberForm form) {
  std::string kind = hasBar ? "bar" : "";
  const auto add = [&kind](std::string_view word) {
    if (!kind.empty()) kind += " ";
    kind += word;
  };
  if (cell.isBlank) return Element("td", kind, "");
  if (cell.mark == CellMark::kPivot) add("pivot");
  if (cell.mark == CellMark::kChanged) add("changed");
  if (cell.mark == CellMark::kFound) add("found");
  if (cell.mark == CellMark::kAsked) add("asked");
  const ShownForms forms = FormsOf(cell.number, form);
  if (!forms.exact || !forms.decimal) return Element("td", kind, NumberHtml(cell.number, form));
  return Element("td", kind,
                 ExactHtml(cell.number.exact) + "<br/>" +
                     Element("span", "decimal", DecimalHtml(cell.number)));
}

std::string MatrixHtml(const ShownMatrix& matrix, NumberForm form) {
  std::string rows;
  for (int i = 1; i <= matrix.rows; ++i) {
    std::string cells;
    for (int j = 1; j <= matrix.cols; ++j) {
      const bool hasBar = j < matrix.cols && std::ranges::find(matrix.bars, j) != matrix.bars.end();
      cells += CellHtml(matrix.At(i, j), hasBar, form);
    }
    rows += "<tr>" + cells + "</tr>";
  }
  // A table has a row at least.
  if (matrix.cells.empty()) rows = "<tr><td></td></tr>";
  return Element("table", matrix.isDeterminant ? "matrix determinant" : "matrix", rows);
}

std::string NameHtml(const Name& name) {
  const bool isUpright = CharacterCount(name.letter) > 1;
  std::string text = Element("span", isUpright ? "upright" : "name", Escaped(name.letter));
  if (!name.index.empty()) text += Element("sub", "", Escaped(name.index));
  if (!name.power.empty()) text += Element("sup", "", Escaped(name.power));
  return text;
}

std::string PieceHtml(const Line& line, std::size_t at, NumberForm form) {
  const Piece& piece = line.pieces[at];
  if (const auto* words = std::get_if<Words>(&piece)) return Escaped(words->text);
  if (const auto* name = std::get_if<Name>(&piece)) return NameHtml(*name);
  if (const auto* sign = std::get_if<Operator>(&piece)) return Escaped(sign->sign);
  if (const auto* matrix = std::get_if<ShownMatrix>(&piece)) return MatrixHtml(*matrix, form);
  const std::string number = NumberHtml(std::get<ShownNumber>(piece), form);
  return NeedsParentheses(line, at, form) ? "(" + number + ")" : number;
}

std::string InsideOfLine(const Line& line, NumberForm form) {
  std::string text;
  for (std::size_t i = 0; i < line.pieces.size(); ++i) {
    if (HasBlankBefore(line, i, form)) text += " ";
    text += PieceHtml(line, i, form);
  }
  return text;
}

std::string LineHtml(const Line& line, NumberForm form) {
  const std::string inside = InsideOfLine(line, form);
  if (line.isFormula) return Element("div", "formula", inside);
  const bool hasMatrix = std::ranges::any_of(
      line.pieces, [](const Piece& piece) { return std::holds_alternative<ShownMatrix>(piece); });
  // A paragraph of HTML can hold no table.
  return hasMatrix ? Element("div", "line", inside) : Element("p", "", inside);
}

std::string TableHtml(const Table& table, NumberForm form) {
  std::string head;
  for (const std::string& heading : table.headings) {
    head += "<th scope=\"col\">" + Escaped(heading) + "</th>";
  }
  std::string body;
  for (const auto& row : table.rows) {
    std::string cells;
    for (const Line& cell : row) cells += Element("td", "", InsideOfLine(cell, form));
    body += "<tr>" + cells + "</tr>\n";
  }
  return "<table class=\"cycles\"><thead><tr>" + head + "</tr></thead><tbody>\n" + body +
         "</tbody></table>";
}

std::string HeadingHtml(const Heading& heading) {
  const std::string tag = "h" + std::to_string(std::clamp(heading.level, 1, 6));
  return Element(tag, "", Escaped(heading.text));
}

std::string LegendHtml(const MarksInUse& marks) {
  std::string text;
  if (marks.pivot) text += "Framed: the pivot. ";
  if (marks.changed) text += Element("span", "changed", "Changed by the step.") + " ";
  if (marks.found) text += Element("span", "found", "What was found.") + " ";
  if (marks.asked) text += "Underlined: the element asked about. ";
  if (marks.unproved) text += Element("span", "unproved", "Digits that do not hold.") + " ";
  if (text.empty()) return text;
  text.pop_back();
  return Element("p", "", text) + "\n";
}

}  // namespace

std::string HtmlText(const Document& document, NumberForm form) {
  std::string text = "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\"/>\n";
  text += Element("title", "", Escaped(document.title)) + "\n";
  text += Element("style", "", std::string(kStyle)) + "\n</head>\n<body>\n";
  if (LacksTitle(document)) text += HeadingHtml({document.title, 1}) + "\n";
  for (const Block& block : document.blocks) {
    if (const auto* heading = std::get_if<Heading>(&block)) {
      text += HeadingHtml(*heading);
    } else if (const auto* line = std::get_if<Line>(&block)) {
      text += LineHtml(*line, form);
    } else {
      text += TableHtml(std::get<Table>(block), form);
    }
    text += "\n";
  }
  return text + LegendHtml(MarksOf(document, form)) + "</body>\n</html>\n";
}

}  // namespace qmx
