// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "base/number_text.h"
#include "derivation/derivation.h"
#include "derivation/document.h"
#include "derivation/shown.h"

namespace qmx {

/// Matrices up to this order are derived in full; of larger ones the first and the last steps.
inline constexpr int kFullOrder = 8;
/// Longer and wider matrices are not written out.
inline constexpr int kMostShownRows = 12;
inline constexpr int kMostShownCols = 25;
/// Up to this order there are exact values.
inline constexpr int kMostExactOrder = 24;

inline Piece PieceOf(Piece piece) { return piece; }
inline Piece PieceOf(const char* text) { return Words{text}; }
inline Piece PieceOf(std::string text) { return Words{std::move(text)}; }
inline Piece PieceOf(int number) { return Words{CStr(number)}; }
inline Piece PieceOf(const Traced& number) { return Show(number); }
inline Piece PieceOf(const TracedRoot& number) { return Show(number); }
template <class P>
requires std::is_constructible_v<Piece, P> &&(!std::is_convertible_v<P, std::string>)Piece
    PieceOf(P piece) {
  return Piece(std::move(piece));
}

/// A line of what is handed over: texts, whole numbers, numbers, names, operators, matrices.
template <class... P>
Line MakeLine(P&&... parts) {
  Line line;
  line.pieces.reserve(sizeof...(parts));
  (line.pieces.push_back(PieceOf(std::forward<P>(parts))), ...);
  return line;
}

/// Writes a document, block by block.
class Scribe {
 public:
  Scribe(Document& document, const DerivationLook& look) : document_(document), look_(look) {}

  /// Throws what ends the derivation.
  void Look() const {
    if (look_) look_();
  }
  /// Names the document and begins it.
  void Title(std::string text);
  void Part(std::string text) { Add(Heading{std::move(text), 2}); }
  void Step(std::string text) { Add(Heading{std::move(text), 3}); }
  template <class... P>
  void Say(P&&... parts) {
    Add(MakeLine(std::forward<P>(parts)...));
  }
  template <class... P>
  void Formula(P&&... parts) {
    Line line = MakeLine(std::forward<P>(parts)...);
    line.isFormula = true;
    Add(std::move(line));
  }
  void Add(Block block);

 private:
  Document& document_;
  const DerivationLook& look_;
};

inline Operator Sign(const char* sign) { return {sign}; }
inline const Operator kEquals{"="};

/// False for a matrix that is not written out.
inline bool IsShown(int rows, int cols) { return rows <= kMostShownRows && cols <= kMostShownCols; }

/// The elements as they are.
template <class T>
ShownMatrix ShowMatrix(const Elements<T>& elements) {
  ShownMatrix shown{elements.Rows(), elements.Cols(), {}, {}, false};
  shown.cells.reserve(static_cast<std::size_t>(shown.rows) * shown.cols);
  for (int i = 1; i <= shown.rows; ++i) {
    for (int j = 1; j <= shown.cols; ++j) shown.cells.push_back({Show(elements(i, j))});
  }
  return shown;
}

void MarkRow(ShownMatrix& matrix, int row, CellMark mark);
/// All of them.
void MarkCells(ShownMatrix& matrix, CellMark mark);

/// name = matrix, where it is not too large; else a sentence that it is.
template <class T>
void ShowNamed(Scribe& scribe, const Name& name, const Elements<T>& elements,
               CellMark mark = CellMark::kNone) {
  scribe.Look();
  if (!IsShown(elements.Rows(), elements.Cols())) {
    scribe.Say(name, " has ", elements.Rows(), " rows and ", elements.Cols(),
               " columns and is not written out here.");
    return;
  }
  ShownMatrix shown = ShowMatrix(elements);
  if (mark != CellMark::kNone) MarkCells(shown, mark);
  scribe.Formula(name, kEquals, std::move(shown));
}

}  // namespace qmx
