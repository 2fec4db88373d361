// SPDX-License-Identifier: MIT
#include "algorithms/product_packing.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <memory>
#include <new>
#include <type_traits>

#include "base/team.h"

namespace qmx {
namespace {

/// Copies `depth` columns of `height` numbers that lie together.
template <class Height>
void PackColumns(const double* from, const ProductJob& job, Height height, double* out) {
  for (int k = 0; k < job.depth; ++k, from += job.aCol, out += height) {
    std::copy_n(from, static_cast<int>(height), out);
  }
}

/// Copies a panel of `cols` columns of B row by row.
void PackPanel(const double* b, std::ptrdiff_t bRow, int depth, int cols, double* out) {
  constexpr int kUsual = kCacheLine;
  if (cols == kUsual) {
    for (int k = 0; k < depth; ++k)
      std::memcpy(out + k * kUsual, b + k * bRow, kUsual * sizeof(double));
  } else {
    for (int k = 0; k < depth; ++k) std::copy_n(b + k * bRow, cols, out + k * cols);
  }
}

PackedOperands* PackedOf(int member) {
  static PackedOperands first;
  static std::array<std::unique_ptr<PackedOperands>, kMostMembers> others;
  if (member == 0) return &first;
  std::unique_ptr<PackedOperands>& own = others[member];
  if (own == nullptr) own.reset(new (std::nothrow) PackedOperands);
  return own.get();
}

}  // namespace

int EvenPart(int all, int most, int step) {
  const int parts = (all + most - 1) / most;
  const int part = (all + parts - 1) / parts;
  return std::min(most, (part + step - 1) / step * step);
}

void PackA(const Kernels& kernels, const ProductJob& job, double* out) {
  constexpr std::integral_constant<int, kTallestTile> kUsual;
  for (int i = 0; i < job.rows; i += kernels.tileRows) {
    const int height = std::min(kernels.tileRows, job.rows - i);
    const double* from = job.a + i * job.aRow;
    if (job.aRow != 1) {
      kernels.transpose({from, job.aRow, height, job.depth, out, height});
    } else if (height == kUsual) {
      PackColumns(from, job, kUsual, out);
    } else {
      PackColumns(from, job, height, out);
    }
    out += static_cast<std::ptrdiff_t>(height) * job.depth;
  }
}

void PackB(const ProductJob& job, int tileCols, double* out) {
  for (int j = 0; j < job.cols; j += tileCols) {
    const int cols = std::min(tileCols, job.cols - j);
    PackPanel(job.b + j, job.bRow, job.depth, cols, out);
    out += static_cast<std::ptrdiff_t>(cols) * job.depth;
  }
}

PackedOperands* Packed() { return PackedOf(Team::Member()); }

bool HavePacked(int members) {
  for (int member = 0; member < members; ++member) {
    if (PackedOf(member) == nullptr) return false;
  }
  return true;
}

}  // namespace qmx
