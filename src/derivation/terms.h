// SPDX-License-Identifier: MIT
#pragma once

#include "derivation/scribe.h"

// Sums and products in formulas.

namespace qmx {

/// The number; in parentheses where a sign in front of it would meet another one.
void AppendFactor(Line& line, const Traced& number);
/// a · b
void AppendProduct(Line& line, const Traced& a, const Traced& b);
/// + coefficient · name, or − where it is negative; nothing where it is zero. True if something was
/// written.
bool AppendTerm(Line& line, const Traced& coefficient, const Name& name, bool isFirst);
/// (a, b) as the index of an element.
std::string IndexText(int row, int col);

/// Sums of more terms are written with their ends alone.
inline constexpr int kMostTerms = 12;

/// a(1)·b(1) + a(2)·b(2) + ... of `count` terms, of long sums the first and the last ones.
template <class First, class Second>
void AppendSumOfProducts(Line& line, int count, First&& a, Second&& b) {
  constexpr int kEnd = 3;
  for (int k = 1; k <= count; ++k) {
    if (count > kMostTerms && k == kEnd + 1) {
      line.pieces.emplace_back(Sign("+"));
      line.pieces.emplace_back(Words{" … "});
      k = count - kEnd + 1;
    }
    if (k > 1) line.pieces.emplace_back(Sign("+"));
    AppendProduct(line, a(k), b(k));
  }
}

}  // namespace qmx
