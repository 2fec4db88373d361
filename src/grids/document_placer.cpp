// SPDX-License-Identifier: MIT
#include "grids/document_placer.h"

#include <algorithm>
#include <utility>

#include "derivation/document_reading.h"
#include "grids/qt_text.h"

namespace qmx {
namespace {

// In parts of an em.
constexpr qreal kLeading = 0.2;
constexpr qreal kAfterLine = 0.45;
constexpr qreal kAfterFormula = 0.6;
constexpr qreal kIndent = 1.6;
constexpr qreal kTableGap = 1.4;

struct HeadingInfo {
  Face face;
  qreal before;
  qreal after;
};
HeadingInfo InfoOfLevel(int level) {
  if (level <= 1) return {Face::kTitle, 0, 0.5};
  return level == 2 ? HeadingInfo{Face::kPart, 0.9, 0.35} : HeadingInfo{Face::kStep, 0.6, 0.15};
}

}  // namespace

PlacedPiece& Placer::Add(PlacedPiece&& placed) {
  placed.block = block_;
  layout_.pieces_.push_back(std::move(placed));
  return layout_.pieces_.back();
}

void Placer::AddWords(const std::string& text, const Setting& setting, int row, int source) {
  const QString all = ToQString(text);
  qsizetype start = 0;
  while (start < all.size()) {
    qsizetype end = start;
    while (end < all.size() && all[end] != ' ') ++end;
    while (end < all.size() && all[end] == ' ') ++end;
    PlacedPiece placed;
    placed.word = all.mid(start, end - start);
    placed.setting = setting;
    placed.extent = setter_.SetText(nullptr, {}, setting.face, placed.word);
    placed.row = row;
    placed.source = source;
    Add(std::move(placed));
    start = end;
  }
}

void Placer::AddPieces(const Line& line, bool isFormula, int row) {
  const NumberForm form = setter_.Form();
  for (std::size_t k = 0; k < line.pieces.size(); ++k) {
    const Piece& piece = line.pieces[k];
    const int source = static_cast<int>(k);
    Setting setting;
    setting.isFormula = isFormula;
    if (const auto* words = std::get_if<Words>(&piece)) {
      AddWords(words->text, setting, row, source);
      continue;
    }
    setting.inParentheses = NeedsParentheses(line, k, form);
    PlacedPiece placed;
    placed.piece = &piece;
    placed.setting = setting;
    placed.gap = HasBlankBefore(line, k, form) ? setter_.Blank() : 0;
    placed.extent = setter_.Set(nullptr, {}, piece, setting);
    placed.row = row;
    placed.source = source;
    Add(std::move(placed));
  }
}

/// A line ends after a blank, or before an operator or a matrix.
bool Placer::MayBreakBefore(int piece) const {
  const PlacedPiece& now = layout_.pieces_[piece];
  const PlacedPiece& before = layout_.pieces_[piece - 1];
  if (before.piece == nullptr) return before.word.endsWith(' ');
  if (now.piece == nullptr) return now.word.startsWith(' ');
  const auto isOperator = [](const Piece* one) { return std::holds_alternative<Operator>(*one); };
  if (now.gap == 0 || isOperator(before.piece)) return false;
  return isOperator(now.piece) || std::holds_alternative<ShownMatrix>(*now.piece);
}

void Placer::EndLine(int from, int end, qreal leading) {
  Extent line = setter_.EmptyLine(from < end ? layout_.pieces_[from].setting.face : Face::kText);
  for (int k = from; k < end; ++k) {
    const Extent& extent = layout_.pieces_[k].extent;
    line.ascent = std::max(line.ascent, extent.ascent);
    line.descent = std::max(line.descent, extent.descent);
  }
  for (int k = from; k < end; ++k) {
    PlacedPiece& placed = layout_.pieces_[k];
    placed.at.setY(y_ + line.ascent);
    layout_.width_ = std::max(layout_.width_, placed.at.x() + placed.extent.width);
  }
  y_ += line.Height() + leading;
}

void Placer::Flow(int from, const Room& room, qreal leading) {
  int lineStart = from;
  int group = from;
  qreal x = room.left;
  while (group < Count()) {
    int next = group + 1;
    qreal width = WidthOf(group);
    while (next < Count() && !MayBreakBefore(next)) width += WidthOf(next++);
    if (x + width > room.right && group > lineStart) {
      EndLine(lineStart, group, leading);
      lineStart = group;
      x = room.left;
    }
    for (int k = group; k < next; ++k) {
      const qreal gap = k > lineStart ? layout_.pieces_[k].gap : 0;
      layout_.pieces_[k].at.setX(x + gap);
      x += gap + layout_.pieces_[k].extent.width;
    }
    group = next;
  }
  EndLine(lineStart, Count(), 0);
}

void Placer::Place(const Heading& heading) {
  const HeadingInfo info = InfoOfLevel(heading.level);
  if (block_ > 0) y_ += info.before * setter_.Em();
  layout_.blocks_.back().top = y_;
  Setting setting;
  setting.face = info.face;
  const int from = Count();
  AddWords(heading.text, setting, -1, 0);
  Flow(from, {0, width_}, 0);
  y_ += info.after * setter_.Em();
}

void Placer::Place(const Line& line) {
  const int from = Count();
  AddPieces(line, line.isFormula, -1);
  const qreal left = line.isFormula ? kIndent * setter_.Em() : 0;
  Flow(from, {left, width_}, kLeading * setter_.Em());
  y_ += (line.isFormula ? kAfterFormula : kAfterLine) * setter_.Em();
}

Extent Placer::InRow(int from, int end) {
  Extent all = setter_.EmptyLine(Face::kText);
  for (int k = from; k < end; ++k) {
    PlacedPiece& placed = layout_.pieces_[k];
    if (k > from) all.width += placed.gap;
    placed.at.setX(all.width);
    all.width += placed.extent.width;
    all.ascent = std::max(all.ascent, placed.extent.ascent);
    all.descent = std::max(all.descent, placed.extent.descent);
  }
  return all;
}

void Placer::Place(const Table& table) {
  struct Cell {
    int row;
    std::size_t col;
    int from;
    int end;
    Extent extent;
  };
  std::vector<Cell> cells;
  std::vector<qreal> widths(table.headings.size(), 0);
  const auto add = [&](int row, std::size_t col, const auto& fill) {
    const int from = Count();
    fill();
    const Extent extent = InRow(from, Count());
    if (col >= widths.size()) widths.resize(col + 1, 0);
    widths[col] = std::max(widths[col], extent.width);
    cells.push_back({row, col, from, Count(), extent});
  };
  Setting bold;
  bold.face = Face::kBold;
  for (std::size_t j = 0; j < table.headings.size(); ++j)
    add(0, j, [&] { AddWords(table.headings[j], bold, 0, 0); });
  for (std::size_t i = 0; i < table.rows.size(); ++i) {
    const int row = static_cast<int>(i) + 1;
    for (std::size_t j = 0; j < table.rows[i].size(); ++j)
      add(row, j, [&] { AddPieces(table.rows[i][j], false, row); });
  }
  for (std::size_t k = 0; k < cells.size();) {
    const int row = cells[k].row;
    const std::size_t first = k;
    qreal left = 0;
    for (; k < cells.size() && cells[k].row == row; ++k) {
      for (int piece = cells[k].from; piece < cells[k].end; ++piece)
        layout_.pieces_[piece].at.rx() += left;
      left += widths[cells[k].col] + kTableGap * setter_.Em();
    }
    EndLine(cells[first].from, cells[k - 1].end, kLeading * setter_.Em());
    if (row == 0) layout_.rules_.emplace_back(0, y_ - 1, left - kTableGap * setter_.Em(), y_ - 1);
    if (row == 0) y_ += kLeading * setter_.Em();
  }
  y_ += kAfterFormula * setter_.Em();
}

void Placer::PlaceAll() {
  for (const Block& block : layout_.document_->blocks) {
    layout_.blocks_.push_back({y_, y_, Count(), Count()});
    std::visit([this](const auto& one) { Place(one); }, block);
    layout_.blocks_.back().bottom = y_;
    layout_.blocks_.back().end = Count();
    ++block_;
  }
}

}  // namespace qmx
