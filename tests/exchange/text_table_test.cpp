// SPDX-License-Identifier: MIT
#include "exchange/text_table.h"

#include <gtest/gtest.h>

#include "bits.h"
#include "support/core_data.h"

namespace qmx {
namespace {

using test::Rows;
using test::SameBits;
using test::TellingMatrix;

TableSettings With(char separator, char decimalSign = '.', int headingRows = 0,
                   int headingColumns = 0, char commentSign = 0) {
  return {separator, decimalSign, commentSign, headingRows, headingColumns};
}

struct Accepted {
  std::string text;
  TableSettings settings;
  Matrix values;
};

TEST(TextTable, TakesTablesApart) {
  const std::vector<Accepted> cases = {
      {"1,2\n3,4\n", With(','), Rows({{1, 2}, {3, 4}})},
      {"1,2\r\n3,4\r\n", With(','), Rows({{1, 2}, {3, 4}})},
      {"1,2\r3,4\r", With(','), Rows({{1, 2}, {3, 4}})},
      {"\xEF\xBB\xBF"
       "1;2\n",
       With(';'), Rows({{1, 2}})},
      {"\n 1 , 2 \n\n  \n3,4\n\n", With(','), Rows({{1, 2}, {3, 4}})},
      {"1\t2\n3\t4\n", With('\t'), Rows({{1, 2}, {3, 4}})},
      {"  1 \t 2  \n3   4\n", With(' '), Rows({{1, 2}, {3, 4}})},
      {"1,5;2\n-0,25;3e2\n", With(';', ','), Rows({{1.5, 2}, {-0.25, 300}})},
      {"1,5 2\n", With(' ', ','), Rows({{1.5, 2}})},
      {"\"1\",\" 2.5 \"\n\"-3\",4\n", With(','), Rows({{1, 2.5}, {-3, 4}})},
      {"\"1,5\";\"2\"\n", With(';', ','), Rows({{1.5, 2}})},
      {"# one\n1,2\n  # two\n3,4\n", With(',', '.', 0, 0, '#'), Rows({{1, 2}, {3, 4}})},
      {"% one\n1\n", With(',', '.', 0, 0, '%'), Rows({{1}})},
      {"a,b\n1,2\n", With(',', '.', 1), Rows({{1, 2}})},
      {"Title\n\nname;a;b\nx;1;2\ny;3;4\n", With(';', '.', 2, 1), Rows({{1, 2}, {3, 4}})},
      {"\"a\n, \"\"b\"\"\",c\n1,2\n", With(',', '.', 1), Rows({{1, 2}})},
      {"1,2,\n3,4,\n", With(','), Rows({{1, 2}, {3, 4}})},
      {"+1,.5,5.,1e2,1E-2,1d3,1D+01\n", With(','), Rows({{1, .5, 5, 100, .01, 1000, 10}})},
      {"\xE2\x88\x92"
       "1.5,1e\xE2\x88\x92"
       "2,\xC2\xA0"
       "3\n",
       With(','), Rows({{-1.5, .01, 3}})},
      {"-0,1e-400\n", With(','), Rows({{-0.0, 0.0}})},
      {"9007199254740993\n", With(','), Rows({{9007199254740992.0}})},
      {"0.1000000000000000055511151231257827021181583404541015625\n", With(','), Rows({{0.1}})},
      {"0,1000000000000000055511151231257827021181583404541015625;1\n", With(';', ','),
       Rows({{0.1, 1}})},
  };
  for (const Accepted& one : cases) {
    const auto outcome = ReadTextTable(one.text, one.settings);
    EXPECT_EQ(outcome.problem, "") << one.text;
    EXPECT_TRUE(SameBits(outcome.content, one.values)) << one.text;
    EXPECT_EQ(outcome.note, "") << one.text;
  }
}

struct Refused {
  std::string text;
  TableSettings settings;
  std::string problem;
  int line;
  int column;
};

TEST(TextTable, NamesWhatItRefuses) {
  const std::vector<Refused> cases = {
      {"1,2\n3,x\n", With(','), "Line 2, column 2: expected a number, but found \"x\".", 2, 2},
      {"1,2\n\n3,\n", With(','), "Line 3, column 2: expected a number, but found an empty cell.", 3,
       2},
      {",2\n", With(','), "Line 1, column 1: expected a number, but found an empty cell.", 1, 1},
      {"1,2\n3\n", With(','), "Line 2, column 2: expected 2 cells as in line 1, but found 1.", 2,
       2},
      {"1,2\n3,4,5,6\n", With(','), "Line 2, column 3: expected 2 cells as in line 1, but found 4.",
       2, 3},
      {"1\n2,3\n", With(','), "Line 2, column 2: expected 1 cell as in line 1, but found 2.", 2, 2},
      {"1,2,\n3,4\n", With(','), "Line 2, column 3: expected 3 cells as in line 1, but found 2.", 2,
       3},
      {"1,2,\n3,4,5\n", With(','), "Line 1, column 3: expected a number, but found an empty cell.",
       1, 3},
      {"1,NaN\n", With(','), "Line 1, column 2: expected a finite number, but found \"NaN\".", 1,
       2},
      {"-Inf\n", With(','), "Line 1, column 1: expected a finite number, but found \"-Inf\".", 1,
       1},
      {"1,1e309\n", With(','),
       "Line 1, column 2: expected a number, but found \"1e309\", which is too large.", 1, 2},
      {"1.234,5;1\n", With(';', ','), "Line 1, column 1: expected a number, but found \"1.234,5\".",
       1, 1},
      {"1;2,5\n", With(';'), "Line 1, column 2: expected a number, but found \"2,5\".", 1, 2},
      {"\"1,2\n3,4\n", With(','), "Line 1, column 1: expected a number, but found \"\"1\".", 1, 1},
      {"\"1\"x,2\n", With(','), "Line 1, column 1: expected a number, but found \"\"1\"x\".", 1, 1},
      {"0x10\n", With(','), "Line 1, column 1: expected a number, but found \"0x10\".", 1, 1},
      {"1 2\n", With(','), "Line 1, column 1: expected a number, but found \"1 2\".", 1, 1},
      {"1\n\t\n", With('\t'), "Line 2, column 1: expected a number, but found an empty cell.", 2,
       1},
      {"r,a\ns,1\n\nt,b\n", With(',', '.', 1, 1),
       "Line 4, column 2: expected a number, but found \"b\".", 4, 2},
      {"r\ns\n", With(',', '.', 0, 1), "Line 1: there are no numbers beside the headings.", 1, 0},
      {"a,b\n", With(',', '.', 1), "There are no numbers below the headings.", 0, 0},
      {"", With(','), "There is nothing in the text but comments and blank lines.", 0, 0},
      {"# 1\n \n", With(',', '.', 0, 0, '#'),
       "There is nothing in the text but comments and blank lines.", 0, 0},
      {"1,2\r\n3,4", With(','),
       "Line 2: the line does not end as the others do; the file seems to be cut off.", 2, 0},
      {"1\n", With(',', ','), "A comma cannot be the separator and the decimal sign.", 0, 0},
  };
  for (const Refused& one : cases) {
    const auto outcome = ReadTextTable(one.text, one.settings);
    EXPECT_EQ(outcome.problem, one.problem) << one.text;
    EXPECT_EQ(outcome.line, one.line) << one.text;
    EXPECT_EQ(outcome.column, one.column) << one.text;
    EXPECT_EQ(outcome.content.Size(), 0U) << one.text;
  }
}

TEST(TextTable, ShowsLittleOfALongCellAndNoHalfCharacters) {
  const auto outcome = ReadTextTable(std::string(39, 'x') + "\xC3\xA4" + "more\n", With(','));
  EXPECT_EQ(outcome.problem,
            "Line 1, column 1: expected a number, but found \"" + std::string(39, 'x') + "...\".");
}

TEST(TextTable, TellsWhereTheLastLineHasNoEnd) {
  const auto outcome = ReadTextTable("1,2\n3,4", With(','));
  EXPECT_TRUE(outcome.Ok());
  EXPECT_TRUE(SameBits(outcome.content, Rows({{1, 2}, {3, 4}})));
  EXPECT_EQ(
      outcome.note,
      "The last line has no line end. If the file was cut off, its last number may be wrong.");
}

/// A first row that is long makes no room for many rows that are short.
TEST(TextTable, RefusesAManyTimesTooLargeShapeBeforeMakingRoom) {
  std::string text;
  for (int k = 0; k < 20000; ++k) text += "1,";
  text += "1\n";
  for (int k = 0; k < 2000000; ++k) text += "1\n";
  const auto outcome = ReadTextTable(text, With(','));
  EXPECT_EQ(outcome.problem, "Line 2, column 2: expected 20001 cells as in line 1, but found 1.");
}

TEST(TextTable, ReadsBackWhatItWrites) {
  for (const char separator : {',', ';', '\t', ' '}) {
    for (const char decimalSign : {'.', ','}) {
      if (separator == ',' && decimalSign == ',') continue;
      const auto text = WriteTextTable(TellingMatrix(), separator, decimalSign);
      ASSERT_TRUE(text.Ok());
      const auto outcome = ReadTextTable(text.content, With(separator, decimalSign));
      EXPECT_EQ(outcome.problem, "");
      EXPECT_TRUE(SameBits(outcome.content, TellingMatrix())) << text.content;
    }
  }
}

TEST(TextTable, WritesTheFewestDigits) {
  EXPECT_EQ(WriteTextTable(TellingMatrix(), ',', '.').content,
            "1,-0.5,0.3333333333333333,1E+20\r\n"
            "0.30000000000000004,-0,4.94065645841247E-324,123456789\r\n"
            "1.7976931348623157E+308,2.2250738585072014E-308,-1E-20,3\r\n");
  EXPECT_EQ(WriteTextTable(Rows({{0.5, -2}}), ';', ',').content, "0,5;-2\r\n");
}

TEST(TextTable, WritesNoMatrixThatIsNone) {
  EXPECT_EQ(WriteTextTable(Rows({{1}}), ',', ',').problem,
            "A comma cannot be the separator and the decimal sign.");
  EXPECT_EQ(WriteTextTable(Matrix(2, 0), ',', '.').problem, "The matrix is empty.");
  Matrix values = Rows({{1, 2}, {3, 4}});
  values(2, 1) = std::numeric_limits<double>::infinity();
  const auto outcome = WriteTextTable(values, ',', '.');
  EXPECT_EQ(outcome.problem, "Row 2, column 1: the element is no finite number.");
  EXPECT_EQ(outcome.line, 2);
  EXPECT_EQ(outcome.column, 1);
}

TEST(TextTable, ShowsTheFirstRowsAsTheyAreUnderstood) {
  const std::string text = "# x\nname,a,b\none,1,x\n\ntwo,2,3\nthree,4,5\n";
  const auto preview = PreviewTextTable(text, With(',', '.', 1, 1, '#'), 3, 2);
  ASSERT_EQ(preview.rows.size(), 3U);
  EXPECT_TRUE(preview.moreRows);
  EXPECT_TRUE(preview.moreColumns);
  using Kind = PreviewCell::Kind;
  const auto expect = [&](int row, int column, const char* cell, Kind kind) {
    EXPECT_EQ(preview.rows[row].at(column).text, cell);
    EXPECT_EQ(preview.rows[row].at(column).kind, kind) << cell;
  };
  expect(0, 0, "name", Kind::kHeading);
  expect(0, 1, "a", Kind::kHeading);
  expect(1, 0, "one", Kind::kHeading);
  expect(1, 1, "1", Kind::kNumber);
  expect(2, 1, "2", Kind::kNumber);
  const auto whole = PreviewTextTable(text, With(',', '.', 1, 1, '#'), 10, 10);
  EXPECT_FALSE(whole.moreRows);
  EXPECT_FALSE(whole.moreColumns);
  EXPECT_EQ(whole.rows[1].at(2).kind, Kind::kNoNumber);
}

struct Proposed {
  std::string text;
  TableSettings settings;
  bool certain = true;
};

TEST(TableProposal, RecognisesHowATableIsWritten) {
  const std::vector<Proposed> cases = {
      {"1,2,3\n4,5,6\n", With(',')},
      {"1,2\n3,4\n", With(','), false},
      {"1;2\n3;4\n", With(';')},
      {"1\t2\n3\t4\n", With('\t')},
      {"1 2\n3 4\n", With(' ')},
      {" 1.5\t 2\n", With('\t')},
      {"1, 2, 3\n4, 5, 6\n", With(',')},
      {"1,5;2\n3;4\n", With(';', ',')},
      {"1,5\t2\n3\t4\n", With('\t', ',')},
      {"1,5 2,25\n3 4\n", With(' ', ',')},
      {"1,5\n2,5\n", With(','), false},
      {"1\n2\n", With(',')},
      {"1,2,\n3,4,\n", With(',')},
      {"a,b\n1,2\n3,4\n", With(',', '.', 1)},
      {"x,1,2\ny,3,4\n", With(',', '.', 0, 1)},
      {"name,a,b\nx,1,2\ny,3,4\n", With(',', '.', 1, 1)},
      {"Measured in May\n\na;b\n1;2\n3;4\n5;6\n", With(';', '.', 2)},
      {"# c\n1 2\n", With(' ', '.', 0, 0, '#')},
      {"1 2\n% c\n3 4\n", With(' ', '.', 0, 0, '%')},
      {"\"\",\"a\"\n\"1\",0.5\n\"2\",1.5\n", With(',', '.', 1, 1)},
      {"\"a\" \"b\"\n\"1\" 0.5 2\n\"2\" 1.5 3\n", With(' ', '.', 1, 1)},
      {",0,1,2\n0,5,6,7\n1,8,9,10\n", With(',', '.', 1, 1)},
      // What may be a number that is missing is no heading.
      {",2,3\n4,5,6\n", With(',')},
      {",1,5\n4,5,6\n", With(',')},
      {"NA,2\n3,4\n", With(',')},
      {"5\nx,1,2\ny,3,4\n", With(',', '.', 0, 1)},
      {"1,2\n3,4,5\n6,7,8\n", With(',')},
      {"a,b\nc,d\n", With(',')},
      {"", With(',')},
  };
  for (const Proposed& one : cases) {
    const TableProposal proposal = ProposeTableSettings(one.text);
    EXPECT_EQ(proposal.settings.separator, one.settings.separator) << one.text;
    EXPECT_EQ(proposal.settings.decimalSign, one.settings.decimalSign) << one.text;
    EXPECT_EQ(proposal.settings.commentSign, one.settings.commentSign) << one.text;
    EXPECT_EQ(proposal.settings.headingRows, one.settings.headingRows) << one.text;
    EXPECT_EQ(proposal.settings.headingColumns, one.settings.headingColumns) << one.text;
    EXPECT_EQ(proposal.certain, one.certain) << one.text;
  }
}

TEST(TableProposal, LooksForTheDecimalSignBehindWholeNumbers) {
  std::string text;
  for (int k = 0; k < 20000; ++k) text += "10;20;30\n";
  EXPECT_EQ(ProposeTableSettings(text).settings.decimalSign, '.');
  text += "1,5;2;3\n";
  EXPECT_EQ(ProposeTableSettings(text).settings.decimalSign, ',');
}

TEST(TextTable, ReadsTheTablesOfOtherPrograms) {
  const Matrix r = Rows({{0.1, 4e-20, 6e100}, {-2.5, 5, 1e-7}});
  const Matrix firstRows = Rows({{1, -0.5, 1.0 / 3, 1e20}, {0.1 + 0.2, -0.0, 5e-324, 123456789}});
  const std::vector<std::pair<const char*, Matrix>> cases = {
      {"numpy-savetxt.txt", TellingMatrix()},
      {"numpy-savetxt.csv", TellingMatrix()},
      {"octave-dlmwrite.txt", firstRows},
      {"r.csv", r},
      {"r-comma.csv", r},
      {"r-table.txt", r},
      {"r-named.csv", r},
  };
  for (const auto& [name, values] : cases) {
    const std::string bytes = test::DataFile(std::string("exchange/") + name);
    const TableProposal proposal = ProposeTableSettings(bytes);
    EXPECT_TRUE(proposal.certain) << name;
    const auto outcome = ReadTextTable(bytes, proposal.settings);
    EXPECT_EQ(outcome.problem, "") << name;
    EXPECT_TRUE(SameBits(outcome.content, values)) << name;
  }
}

}  // namespace
}  // namespace qmx
