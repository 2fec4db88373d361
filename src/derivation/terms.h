// SPDX-License-Identifier: MIT
#pragma once

#include "derivation/scribe.h"

// Sums and products in formulas.

namespace qmx {

/// a · b
void AppendProduct(Line& line, const Traced& a, const Traced& b);
/// The product of the first `order` elements of the diagonal.
void AppendDiagonalProduct(Line& line, const Elements<Traced>& W, int order);
/// + coefficient · name, or − where it is negative; nothing where it is zero. True if something was
/// written.
bool AppendTerm(Line& line, const Traced& coefficient, const Name& name, bool isFirst);
/// (a, b) as the index of an element.
std::string IndexText(int row, int col);

/// Sums and lists of more terms are written with their ends alone.
inline constexpr int kMostTerms = 12;

/// Calls `each` with 1 to `count`; with the first and the last ones of many, and `gap` between.
template <class Each, class Gap>
void ForTerms(int count, Each&& each, Gap&& gap) {
  constexpr int kEnd = 3;
  for (int k = 1; k <= count; ++k) {
    if (count > kMostTerms && k == kEnd + 1) {
      gap();
      k = count - kEnd + 1;
    }
    each(k);
  }
}

/// a(1)·b(1) + a(2)·b(2) + ... of `count` terms.
template <class First, class Second>
void AppendSumOfProducts(Line& line, int count, First&& a, Second&& b) {
  ForTerms(
      count,
      [&](int k) {
        if (k > 1) line.pieces.emplace_back(Sign("+"));
        AppendProduct(line, a(k), b(k));
      },
      [&line] {
        line.pieces.emplace_back(Sign("+"));
        line.pieces.emplace_back(Words{" … "});
      });
}

}  // namespace qmx
