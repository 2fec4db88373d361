// SPDX-License-Identifier: MIT
#include "derivation/document_sample.h"

#include <utility>

namespace qmx::test {

ShownNumber Shown(const std::string& decimal, const std::string& numerator,
                  const std::string& denominator, const std::string& radicand) {
  return {decimal, decimal.size(), {numerator, denominator, radicand}};
}

ShownNumber PartlyHeld(const std::string& decimal, std::size_t held, const std::string& numerator,
                       const std::string& denominator) {
  return {decimal, held, {numerator, denominator, "1"}};
}

ShownMatrix ShownOf(int rows, int cols, const std::vector<std::string>& numbers) {
  ShownMatrix matrix{rows, cols, {}, {}, false};
  for (const std::string& number : numbers) {
    matrix.cells.push_back({Shown(number, number), CellMark::kNone, false});
  }
  return matrix;
}

Line Formula(std::vector<Piece> pieces) { return {std::move(pieces), true}; }
Line Sentence(std::vector<Piece> pieces) { return {std::move(pieces), false}; }

Document EverythingDocument() {
  ShownMatrix system = ShownOf(2, 3, {"2", "1", "-5", "0", "0", "1"});
  system.bars = {2};
  system.At(1, 1).mark = CellMark::kPivot;
  system.At(2, 1).mark = CellMark::kChanged;
  system.At(2, 2) = {PartlyHeld("0.3334", 5, "1", "3"), CellMark::kChanged, false};
  system.At(1, 3).mark = CellMark::kFound;
  ShownMatrix minor = ShownOf(2, 2, {"1", "2", "3", "4"});
  minor.isDeterminant = true;
  minor.At(1, 2).isBlank = true;
  minor.At(2, 2).mark = CellMark::kAsked;
  Document document;
  document.title = "Steps of A & B";
  document.blocks = {
      Heading{"Steps of A & B", 1},
      Heading{"Elimination", 2},
      Heading{"Row 2 minus 1/2 of row 1", 3},
      Sentence({Words{"The pivot is "}, Shown("2", "2"), Words{" < "}, Shown("", "-3", "4", "5"),
                Words{"; "}, Shown(""), Words{" is not known."}}),
      Formula({Name{"A", "", "-1"}, Operator{"·"}, Name{"x", "3"}, Operator{"="}, Name{"det"},
               Name{"B", "", "T"}, Operator{"−"}, Shown("-0.5", "-1", "2")}),
      Formula({Name{"S"}, Operator{"→"}, system}),
      Formula({minor, Operator{"≠"}, Operator{"√"}, Shown("2", "2")}),
      Table{{"Cycle", "Shift_0"},
            {{Sentence({Shown("1", "1")}), Sentence({Shown("1.5E-07")})},
             {Sentence({Words{"last"}}), Sentence({Name{"λ", "1"}, Operator{"≈"}, Shown("2.5")})}}},
  };
  return document;
}

}  // namespace qmx::test
