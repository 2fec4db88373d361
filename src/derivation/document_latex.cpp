// SPDX-License-Identifier: MIT
#include "derivation/document_latex.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include "derivation/document_reading.h"
#include "derivation/latex_layout.h"
#include "derivation/latex_signs.h"

namespace qmx {
namespace {

/// A table of more rows is continued in another one, since none is broken between pages.
constexpr std::size_t kTableRows = 40;
/// TeX knows no longer lengths, in points.
constexpr double kLongest = 16000;

std::string Grouped(std::string_view command, const std::string& inside) {
  return std::string(command) + "{" + inside + "}";
}

/// Digits of a number as the grids show it. -1.5E-07 -> -1.5\mathrm{E}{-}07
std::string Digits(std::string_view digits) {
  std::string latex;
  bool isExponent = false;
  for (const char c : digits) {
    if (c == 'E') {
      latex += "\\mathrm{E}";
      isExponent = true;
    } else if (c == '+' || (c == '-' && isExponent)) {
      latex += std::string("{") + c + "}";
    } else {
      latex += c;
    }
  }
  return latex;
}

std::string DecimalLatex(const ShownNumber& number) {
  const std::string& text = number.decimal;
  if (number.held >= text.size()) return Digits(text);
  // The part behind the E is told to be an exponent where the digits part before it.
  const std::string held = Digits(std::string_view(text).substr(0, number.held));
  const std::size_t exponent = text.find('E');
  if (exponent != std::string::npos && number.held > exponent) {
    return held + Grouped("\\textcolor{unproved}", "{" + text.substr(number.held) + "}");
  }
  return held + Grouped("\\textcolor{unproved}", Digits(text.substr(number.held)));
}

std::string ExactLatex(const ExactNumber& number) {
  std::string above = number.numerator;
  std::string sign;
  if (above.front() == '-') {
    sign = "-";
    above.erase(0, 1);
  }
  if (number.radicand != "1") {
    if (above == "1") above.clear();
    above += Grouped("\\sqrt", number.radicand);
  }
  if (number.denominator == "1") return sign + above;
  return sign + Grouped("\\frac", above) + "{" + number.denominator + "}";
}

std::string NumberLatex(const ShownNumber& number, NumberForm form) {
  const ShownForms forms = FormsOf(number, form);
  if (forms.exact && forms.decimal) {
    return ExactLatex(number.exact) + "\\,(" + DecimalLatex(number) + ")";
  }
  if (forms.exact) return ExactLatex(number.exact);
  return forms.decimal ? DecimalLatex(number) : "\\ldots ";
}

std::string CellLatex(const ShownCell& cell, NumberForm form) {
  if (cell.isBlank) return {};
  const ShownForms forms = FormsOf(cell.number, form);
  std::string text = NumberLatex(cell.number, form);
  if (forms.exact && forms.decimal) {
    text = "\\begin{array}{@{}r@{}}" + ExactLatex(cell.number.exact) + "\\\\{\\scriptstyle " +
           DecimalLatex(cell.number) + "}\\end{array}";
  }
  if (cell.mark == CellMark::kPivot) return Grouped("\\boxed", text);
  if (cell.mark == CellMark::kChanged) return Grouped("\\textcolor{changed}", text);
  if (cell.mark == CellMark::kFound) return Grouped("\\textcolor{found}", text);
  if (cell.mark == CellMark::kAsked) return Grouped("\\underline", text);
  return text;
}

std::string MatrixLatex(const ShownMatrix& matrix, NumberForm form) {
  std::string rows;
  for (int i = 1; i <= matrix.rows; ++i) {
    for (int j = 1; j <= matrix.cols; ++j) {
      if (j > 1) rows += " & ";
      rows += CellLatex(matrix.At(i, j), form);
    }
    if (i < matrix.rows) rows += " \\\\ ";
  }
  if (matrix.bars.empty()) {
    const std::string kind = matrix.isDeterminant ? "vmatrix" : "bmatrix";
    return "\\begin{" + kind + "} " + rows + " \\end{" + kind + "}";
  }
  std::string columns;
  for (int j = 1; j <= matrix.cols; ++j) {
    columns += "c";
    if (std::ranges::find(matrix.bars, j) != matrix.bars.end()) columns += "|";
  }
  return "\\left[\\begin{array}{" + columns + "} " + rows + " \\end{array}\\right]";
}

std::string NameLatex(const Name& name) {
  std::string text;
  if (CharacterCount(name.letter) > 1) {
    text = Grouped("\\operatorname", LatexMath(name.letter));
  } else {
    text = "{" + LatexMath(name.letter) + "}";
  }
  if (!name.index.empty()) text += Grouped("_", LatexMath(name.index));
  if (!name.power.empty()) text += Grouped("^", LatexMath(name.power));
  return text;
}

std::string PieceLatex(const Line& line, std::size_t at, NumberForm form) {
  const Piece& piece = line.pieces[at];
  if (const auto* name = std::get_if<Name>(&piece)) return NameLatex(*name);
  if (const auto* sign = std::get_if<Operator>(&piece)) return LatexMath(sign->sign);
  if (const auto* matrix = std::get_if<ShownMatrix>(&piece)) return MatrixLatex(*matrix, form);
  if (const auto* words = std::get_if<Words>(&piece)) {
    return Grouped("\\text", LatexWords(words->text));
  }
  const std::string number = NumberLatex(std::get<ShownNumber>(piece), form);
  return NeedsParentheses(line, at, form) ? "(" + number + ")" : number;
}

/// Pieces within a formula.
std::string FormulaLatex(const Line& line, LinePart part, NumberForm form) {
  std::string text;
  for (std::size_t i = part.begin; i < part.end; ++i) {
    const auto* sign = std::get_if<Operator>(&line.pieces[i]);
    const bool isRoot = sign != nullptr && sign->sign == "√" && i + 1 < part.end &&
                        !std::holds_alternative<Operator>(line.pieces[i + 1]);
    if (!text.empty()) text += " ";
    if (isRoot) {
      text += Grouped("\\sqrt", PieceLatex(line, ++i, form));
    } else {
      text += PieceLatex(line, i, form);
    }
  }
  return text;
}

std::string FormulaBlock(const Line& line, NumberForm form, LatexPaper& paper) {
  const LatexType& type = LatexTypeFor(line, form);
  std::string inside;
  const std::vector<LinePart> rows = LatexRows(line, type, form, paper);
  for (const LinePart row : rows) {
    if (!inside.empty()) inside += " \\\\\n";
    inside += FormulaLatex(line, row, form);
  }
  if (inside.empty()) return {};
  std::string text = rows.size() == 1 ? "\\[\n" + inside + "\n\\]\n"
                                      : "\\begin{gather*}\n" + inside + "\n\\end{gather*}\n";
  if (!type.command.empty()) text = "{" + std::string(type.command) + "\n" + text + "}\n";
  return text;
}

/// A sentence: runs of what is no words are formulas within it.
std::string SentenceLatex(const Line& line, NumberForm form) {
  std::string text;
  for (std::size_t i = 0; i < line.pieces.size();) {
    if (const auto* words = std::get_if<Words>(&line.pieces[i])) {
      text += LatexWords(words->text);
      ++i;
      continue;
    }
    const std::size_t begin = i;
    while (i < line.pieces.size() && !std::holds_alternative<Words>(line.pieces[i])) ++i;
    text += "$" + FormulaLatex(line, {begin, i}, form) + "$";
  }
  return text;
}

std::string LineLatex(const Line& line, NumberForm form, LatexPaper& paper) {
  const bool hasMatrix = std::ranges::any_of(
      line.pieces, [](const Piece& piece) { return std::holds_alternative<ShownMatrix>(piece); });
  if (line.isFormula || hasMatrix) return FormulaBlock(line, form, paper);
  return SentenceLatex(line, form) + "\\par\n";
}

std::string TableLatex(const Table& table, NumberForm form, LatexPaper& paper) {
  if (table.headings.empty()) return {};
  const LatexType& type = LatexTypeFor(table, form, paper);
  std::string head;
  for (const std::string& heading : table.headings) {
    head += (head.empty() ? "" : " & ") + LatexWords(heading);
  }
  std::string text = "{" + std::string(type.command) + "\n";
  std::size_t i = 0;
  do {
    text += "\\begin{tabular}{" + std::string(table.headings.size(), 'l') + "}\n" + head +
            " \\\\ \\hline\n";
    const std::size_t end = std::min(table.rows.size(), i + kTableRows);
    for (; i < end; ++i) {
      for (std::size_t j = 0; j < table.headings.size() && j < table.rows[i].size(); ++j) {
        text += (j == 0 ? "" : " & ") + SentenceLatex(table.rows[i][j], form);
      }
      text += " \\\\\n";
    }
    text += "\\end{tabular}\\par\\medskip\n";
  } while (i < table.rows.size());
  return text + "}\n";
}

std::string HeadingLatex(const Heading& heading) {
  const std::string_view command = heading.level <= 1   ? "\\section*"
                                   : heading.level == 2 ? "\\subsection*"
                                                        : "\\subsubsection*";
  return Grouped(command, LatexWords(heading.text)) + "\n";
}

std::string LegendLatex(const MarksInUse& marks) {
  std::string text;
  if (marks.pivot) text += "Framed: the pivot. ";
  if (marks.changed) text += "\\textcolor{changed}{Changed by the step.} ";
  if (marks.found) text += "\\textcolor{found}{What was found.} ";
  if (marks.asked) text += "Underlined: the element asked about. ";
  if (marks.unproved) text += "\\textcolor{unproved}{Digits that do not hold.} ";
  return text.empty() ? text : "\\bigskip\\noindent " + text + "\\par\n";
}

int MostColumns(const Document& document) {
  int most = 10;
  for (const Block& block : document.blocks) {
    const auto* line = std::get_if<Line>(&block);
    if (line == nullptr) continue;
    for (const Piece& piece : line->pieces) {
      if (const auto* matrix = std::get_if<ShownMatrix>(&piece))
        most = std::max(most, matrix->cols);
    }
  }
  return most;
}

std::string Points(double length) {
  return std::to_string(static_cast<int>(std::min(length, kLongest)) + 1) + "pt";
}

std::string Preamble(const Document& document, const LatexPaper& paper) {
  std::string text =
      "\\documentclass[a4paper,fleqn]{article}\n"
      "\\usepackage{amsmath}\n"
      "\\usepackage{xcolor}\n"
      "\\definecolor{changed}{RGB}{0,70,160}\n"
      "\\definecolor{found}{RGB}{20,110,20}\n"
      "\\definecolor{unproved}{gray}{0.6}\n";
  text += "\\setcounter{MaxMatrixCols}{" + std::to_string(MostColumns(document)) + "}\n";
  text += "\\setlength{\\textwidth}{" + Points(paper.width) + "}\n";
  text += "\\setlength{\\textheight}{" + Points(paper.height) + "}\n";
  text += "\\setlength{\\paperwidth}{" + Points(paper.width + 2 * kLatexMargin) + "}\n";
  text += "\\setlength{\\paperheight}{" + Points(paper.height + 2 * kLatexMargin) + "}\n";
  return text +
         "\\setlength{\\pdfpagewidth}{\\paperwidth}\n"
         "\\setlength{\\pdfpageheight}{\\paperheight}\n"
         "\\setlength{\\oddsidemargin}{-15pt}\n"
         "\\setlength{\\topmargin}{-15pt}\n"
         "\\setlength{\\headheight}{0pt}\n"
         "\\setlength{\\headsep}{0pt}\n"
         "\\setlength{\\parindent}{0pt}\n"
         "\\setlength{\\parskip}{4pt}\n"
         "\\setlength{\\mathindent}{" +
         Points(kLatexIndent - 1) +
         "}\n"
         "\\renewcommand{\\arraystretch}{1.3}\n"
         "\\allowdisplaybreaks\n";
}

}  // namespace

std::string LatexText(const Document& document, NumberForm form) {
  LatexPaper paper;
  std::string body;
  if (LacksTitle(document)) body += HeadingLatex({document.title, 1});
  for (const Block& block : document.blocks) {
    if (const auto* heading = std::get_if<Heading>(&block)) {
      body += HeadingLatex(*heading);
    } else if (const auto* line = std::get_if<Line>(&block)) {
      body += LineLatex(*line, form, paper);
    } else {
      body += TableLatex(std::get<Table>(block), form, paper);
    }
  }
  return Preamble(document, paper) + "\\begin{document}\n" + body +
         LegendLatex(MarksOf(document, form)) + "\\end{document}\n";
}

}  // namespace qmx
