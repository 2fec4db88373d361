// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "reading.h"

namespace qmx::fuzz {

// Each gives bytes to the reader of a foreign format and returns what is wrong with what came of
// it; nothing (an empty text) where all is well:
// - a refusal has words and no matrix;
// - a matrix has elements, all of them finite, and no more than its bytes can stand for; written in
//   the same format it reads back to the same bits.

std::string TryTextTable(std::string_view bytes);
std::string TryMatrixMarket(std::string_view bytes);
std::string TryNpy(std::string_view bytes);
std::string TryOctaveText(std::string_view bytes);
std::string TryMat(std::string_view bytes);

inline constexpr Reader kForeignReaders[] = {
    {"text_table", TryTextTable},
    {"matrix_market", TryMatrixMarket},
    {"npy", TryNpy},
    {"octave_text", TryOctaveText},
    {"mat", TryMat},
};

}  // namespace qmx::fuzz
