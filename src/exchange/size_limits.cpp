// SPDX-License-Identifier: MIT
#include "exchange/size_limits.h"

#include <limits>
#include <string>

#include "exchange/refusal.h"

namespace qmx {

void CheckShape(std::uint64_t rows, std::uint64_t cols, std::uint64_t held, Storage storage,
                const Memory& memory) {
  const std::string shape = std::to_string(rows) + " x " + std::to_string(cols);
  if (rows == 0 || cols == 0) throw Refusal("The matrix is empty (" + shape + ").");
  constexpr std::uint64_t kMostCounted = std::numeric_limits<int>::max();
  if (rows > kMostCounted || cols > kMostCounted)
    throw Refusal("A matrix of " + shape + " is too large.");
  if (rows * cols > held) {
    if (storage == Storage::kFull)
      throw Refusal("The file is too short for the elements of a matrix of " + shape + ".");
    if (rows * cols > kMostUnfolded) {
      throw Refusal("A matrix of " + shape +
                    " is too large to be unfolded: all of its elements are kept, zeros as well.");
    }
  }
  if (!CanAllocate(static_cast<int>(rows), static_cast<int>(cols), memory))
    throw Refusal("A matrix of " + shape + " does not fit into memory.");
}

Matrix NewMatrix(std::uint64_t rows, std::uint64_t cols, std::uint64_t held, Storage storage,
                 const Memory& memory) {
  CheckShape(rows, cols, held, storage, memory);
  return Matrix::Unset(static_cast<int>(rows), static_cast<int>(cols));
}

}  // namespace qmx
