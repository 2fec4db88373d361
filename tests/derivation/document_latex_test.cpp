// SPDX-License-Identifier: MIT
#include "derivation/document_latex.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

#include "derivation/document_sample.h"
#include "derivation/latex_signs.h"

namespace qmx::test {
namespace {

/// What a document writes that is a heading and this block.
std::string LatexOf(const Block& block, NumberForm form = NumberForm::kBoth) {
  const std::string text = LatexText({"", {Heading{"H", 1}, block}}, form);
  const std::string before = "\\section*{H}\n";
  const std::size_t begin = text.find(before) + before.size();
  return text.substr(begin, text.find("\\end{document}") - begin);
}

TEST(DocumentLatex, EverythingIsWritten) {
  const std::string text = LatexText(EverythingDocument(), NumberForm::kBoth);
  EXPECT_EQ(text.substr(0, text.find('\n')), "\\documentclass[a4paper,fleqn]{article}");
  EXPECT_EQ(text.substr(text.find("\\begin{document}")),
            R"(\begin{document}
\section*{Steps of A \& B}
\subsection*{Elimination}
\subsubsection*{Row 2 minus 1/2 of row 1}
The pivot is $2$ \ensuremath{<} $-\frac{3\sqrt{5}}{4}$; $\ldots $ is not known.\par
\[
{A}^{-1} \cdot  {x}_{3} = \operatorname{det} {B}^{T} - (-\frac{1}{2}\,(-0.5))
\]
\[
{S} \to  \left[\begin{array}{cc|c} \boxed{2} & 1 & \textcolor{found}{-5} \\ \textcolor{changed}{0} & \textcolor{changed}{\begin{array}{@{}r@{}}\frac{1}{3}\\{\scriptstyle 0.333\textcolor{unproved}{4}}\end{array}} & 1 \end{array}\right]
\]
\[
\begin{vmatrix} 1 &  \\ 3 & \underline{4} \end{vmatrix} \neq  \sqrt{2}
\]
{
\begin{tabular}{ll}
Cycle & Shift\_0 \\ \hline
$1$ & $1.5\mathrm{E}{-}07$ \\
last & ${\lambda }_{1} \approx  2.5$ \\
\end{tabular}\par\medskip
}
\bigskip\noindent Framed: the pivot. \textcolor{changed}{Changed by the step.} \textcolor{found}{What was found.} Underlined: the element asked about. \textcolor{unproved}{Digits that do not hold.} \par
\end{document}
)");
  EXPECT_TRUE(
      std::ranges::all_of(text, [](char c) { return static_cast<unsigned char>(c) < 0x7F; }));
}

TEST(DocumentLatex, WhatLatexReadsAsCommandsIsEscaped) {
  EXPECT_EQ(LatexWords("a_b & 5% of $1 #2 {c}"), "a\\_b \\& 5\\% of \\$1 \\#2 \\{c\\}");
  EXPECT_EQ(LatexWords("\\x~^"), "\\textbackslash{}x\\textasciitilde{}\\textasciicircum{}");
  EXPECT_EQ(LatexWords("1 -- 2, [3]*"), "1 {-}{-} 2, {[}3]{*}");
  EXPECT_EQ(LatexWords("x₂ ≠ λ — 中"),
            "x\\ensuremath{{}_{2}} \\ensuremath{\\neq } \\ensuremath{\\lambda } {---} (U+4e2d)");
  EXPECT_EQ(LatexMath("x_1^2\\中"),
            "x\\_1\\text{\\textasciicircum{}}2\\backslash \\text{(U+4e2d)}");
}

TEST(DocumentLatex, EachFormShowsItsOwn) {
  const Line line = Sentence({PartlyHeld("-0.3334", 6, "-1", "3")});
  EXPECT_EQ(LatexOf(line, NumberForm::kFractions), "$-\\frac{1}{3}$\\par\n");
  EXPECT_EQ(LatexOf(line, NumberForm::kDecimals).substr(0, 36),
            "$-0.333\\textcolor{unproved}{4}$\\par\n");
  EXPECT_EQ(LatexOf(line).substr(0, 51), "$-\\frac{1}{3}\\,(-0.333\\textcolor{unproved}{4})$\\par");
}

TEST(DocumentLatex, DigitsThatDoNotHoldMayBeginAnywhere) {
  EXPECT_EQ(LatexOf(Sentence({PartlyHeld("-1.5E-07", 0, "", "1")})).substr(0, 47),
            "$\\textcolor{unproved}{-1.5\\mathrm{E}{-}07}$\\par");
  EXPECT_EQ(LatexOf(Sentence({PartlyHeld("-1.5E-07", 6, "", "1")})).substr(0, 45),
            "$-1.5\\mathrm{E}{-}\\textcolor{unproved}{{07}}$");
}

TEST(DocumentLatex, WideMatricesAreSetSmallerAndBelowEachOther) {
  const ShownMatrix wide = ShownOf(1, 6, std::vector<std::string>(6, "0.123456789012345"));
  const std::string text = LatexOf(Formula({wide, Operator{"="}, wide}));
  EXPECT_EQ(text.substr(0, 28), "{\\scriptsize\n\\begin{gather*}");
  EXPECT_NE(text.find(" \\\\\n= \\begin{bmatrix}"), std::string::npos);
  // Beyond what the smallest type can do, the paper grows.
  const ShownMatrix wider = ShownOf(1, 12, std::vector<std::string>(12, "0.123456789012345"));
  const std::string whole = LatexText({"", {Formula({wider})}}, NumberForm::kDecimals);
  EXPECT_NE(whole.find("\\setcounter{MaxMatrixCols}{12}"), std::string::npos);
  EXPECT_EQ(whole.find("\\setlength{\\textwidth}{484pt}"), std::string::npos);
}

/// A folder of its own for a compiler, which writes many files.
class Folder {
 public:
  Folder() {
    path_ = std::filesystem::temp_directory_path() /
            ("orvane-latex-" + std::to_string(std::random_device{}()));
    EXPECT_TRUE(std::filesystem::create_directory(path_)) << path_;
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  ~Folder() { std::filesystem::remove_all(path_); }
  const std::filesystem::path& Path() const { return path_; }

 private:
  std::filesystem::path path_;
};

/// What the compiler says; empty where it found neither an error nor something that is too wide.
std::string Complaints(const Document& document, NumberForm form) {
  const Folder folder;
  std::ofstream(folder.Path() / "steps.tex") << LatexText(document, form);
  const std::string command = "cd '" + folder.Path().string() +
                              "' && pdflatex -interaction=nonstopmode -halt-on-error steps.tex "
                              ">/dev/null 2>&1";
  const int status = std::system(command.c_str());  // NOLINT(bugprone-command-processor)
  std::ifstream log(folder.Path() / "steps.log");
  const std::string text{std::istreambuf_iterator<char>(log), {}};
  if (status != 0 || !std::filesystem::exists(folder.Path() / "steps.pdf"))
    return "failed: " + text;
  const std::size_t overfull = text.find("Overfull");
  return overfull == std::string::npos ? "" : text.substr(overfull, 200);
}

/// A document with matrices of all orders up to 14, whose numbers are long.
Document LargeDocument() {
  Document document;
  document.title = "Large";
  for (int n = 1; n <= 14; ++n) {
    ShownMatrix matrix = ShownOf(n, n, std::vector<std::string>(static_cast<std::size_t>(n) * n));
    for (ShownCell& cell : matrix.cells) {
      cell = {PartlyHeld("-0.123456789012345", 12, "-123456789", "987654321"), CellMark::kPivot,
              false};
    }
    document.blocks.emplace_back(
        Formula({Name{"A"}, Operator{"="}, matrix, Operator{"·"}, matrix}));
    matrix.bars = {n};
    document.blocks.emplace_back(Sentence({Words{"So "}, matrix}));
  }
  Table table{{"Cycle", "Diagonal"}, {}};
  for (int i = 0; i < 130; ++i) {
    table.rows.push_back({Sentence({Shown(std::to_string(i))}), Sentence({Words{"[x] % \\"}})});
  }
  document.blocks.emplace_back(table);
  return document;
}

TEST(DocumentLatex, CompilesWithoutAnErrorAndNothingIsTooWide) {
  if (std::system("command -v pdflatex >/dev/null 2>&1") !=
      0) {  // NOLINT(bugprone-command-processor)
    GTEST_SKIP() << "there is no pdflatex here";
  }
  for (const NumberForm form : kAllForms) {
    EXPECT_EQ(Complaints(EverythingDocument(), form), "");
    EXPECT_EQ(Complaints(LargeDocument(), form), "");
  }
  std::string words;
  for (char32_t c = 1; c < 0x7F; ++c) words += static_cast<char>(c);
  words += " −–—…·×÷±√≈≠≤≥→←↔∞∈‖∥⟨⟩°λμκ‘’“”x₀₁₉x⁰¹²³⁴⁹⁻⁺ᵀᵢⱼₖₙ⋯⋮⋱⇒∑∏é中";
  const Document signs{"Signs " + words,
                       {Heading{words, 3}, Sentence({Words{words}}),
                        Formula({Name{words, "1", "T"}, Operator{"="}, Words{words}})}};
  // It may well be too wide, but it is read.
  EXPECT_EQ(Complaints(signs, NumberForm::kBoth).substr(0, 6).find("failed"), std::string::npos);
}

}  // namespace
}  // namespace qmx::test
