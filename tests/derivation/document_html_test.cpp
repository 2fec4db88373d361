// SPDX-License-Identifier: MIT
#include "derivation/document_html.h"

#include <gtest/gtest.h>

#include "derivation/document_sample.h"

namespace qmx::test {
namespace {

/// What the body holds of a document that is a heading and this block.
std::string HtmlOf(const Block& block, NumberForm form = NumberForm::kBoth) {
  const std::string text = HtmlText({"", {Heading{"H", 1}, block}}, form);
  const std::string before = "<h1>H</h1>\n";
  const std::size_t begin = text.find(before) + before.size();
  return text.substr(begin, text.find("\n</body>") - begin);
}

TEST(DocumentHtml, EverythingIsWritten) {
  const std::string text = HtmlText(EverythingDocument(), NumberForm::kBoth);
  EXPECT_EQ(text.substr(0, 16), "<!DOCTYPE html>\n");
  EXPECT_NE(text.find("<title>Steps of A &amp; B</title>"), std::string::npos);
  EXPECT_EQ(text.find("http"), std::string::npos);
  EXPECT_EQ(
      text.substr(text.find("<body>")),
      "<body>\n"
      "<h1>Steps of A &amp; B</h1>\n"
      "<h2>Elimination</h2>\n"
      "<h3>Row 2 minus 1/2 of row 1</h3>\n"
      "<p>The pivot is 2 &lt; -3√<span class=\"root\">5</span>/4; … is not known.</p>\n"
      "<div class=\"formula\"><span class=\"name\">A</span><sup>-1</sup> · <span "
      "class=\"name\">x</span><sub>3</sub> = <span class=\"upright\">det</span> <span "
      "class=\"name\">B</span><sup>T</sup> − (-1/2 (-0.5))</div>\n"
      "<div class=\"formula\"><span class=\"name\">S</span> → <table class=\"matrix\"><tr><td "
      "class=\"pivot\">2</td><td class=\"bar\">1</td><td class=\"found\">-5</td></tr><tr><td "
      "class=\"changed\">0</td><td class=\"bar changed\">1/3<br/><span "
      "class=\"decimal\">0.333<span "
      "class=\"unproved\">4</span></span></td><td>1</td></tr></table></div>\n"
      "<div class=\"formula\"><table class=\"matrix determinant\"><tr><td>1</td><td></td></tr>"
      "<tr><td>3</td><td class=\"asked\">4</td></tr></table> ≠ √2</div>\n"
      "<table class=\"cycles\"><thead><tr><th scope=\"col\">Cycle</th><th scope=\"col\">Shift_0"
      "</th></tr></thead><tbody>\n"
      "<tr><td>1</td><td>1.5E-07</td></tr>\n"
      "<tr><td>last</td><td><span class=\"name\">λ</span><sub>1</sub> ≈ 2.5</td></tr>\n"
      "</tbody></table>\n"
      "<p>Framed: the pivot. <span class=\"changed\">Changed by the step.</span> <span "
      "class=\"found\">What was found.</span> Underlined: the element asked about. <span "
      "class=\"unproved\">Digits that do not hold."
      "</span></p>\n"
      "</body>\n</html>\n");
}

TEST(DocumentHtml, WhatWouldBeMarkupIsEscaped) {
  EXPECT_EQ(HtmlOf(Sentence({Words{"a < b & \"c\" > </p>\x01"}})),
            "<p>a &lt; b &amp; &quot;c&quot; &gt; &lt;/p&gt;</p>");
  EXPECT_EQ(HtmlOf(Heading{"<script>", 2}), "<h2>&lt;script&gt;</h2>");
}

TEST(DocumentHtml, EachFormShowsItsOwn) {
  const Line line = Sentence({PartlyHeld("0.3334", 5, "1", "3")});
  EXPECT_EQ(HtmlOf(line, NumberForm::kFractions), "<p>1/3</p>");
  EXPECT_EQ(HtmlOf(line, NumberForm::kDecimals).substr(0, 46),
            "<p>0.333<span class=\"unproved\">4</span></p>\n<p");
  EXPECT_EQ(HtmlOf(line).substr(0, 46), "<p>1/3 (0.333<span class=\"unproved\">4</span>)<");
}

TEST(DocumentHtml, AParagraphHoldsNoTable) {
  EXPECT_EQ(HtmlOf(Sentence({Words{"So "}, ShownOf(1, 1, {"7"})})),
            "<div class=\"line\">So <table class=\"matrix\"><tr><td>7</td></tr></table></div>");
}

}  // namespace
}  // namespace qmx::test
