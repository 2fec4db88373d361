// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>

namespace qmx {

// How large the pieces are that the algorithms cut their work into, and up to where they do not cut
// it at all. None of these sizes changes a bit of a result: every algorithm takes them as its last
// parameter, the tests with 2 and 3, which brings all edges of blocks into a matrix of order 7.
//
// The values are those of the shortest times; `./bench.sh --sizes` measures each of them against
// its half and its double, and docs/performance.md tells what came out.

// Fixed when the program is compiled, because registers and unrolled loops have just this size.

/// Numbers in a line of the cache.
inline constexpr int kCacheLine = 8;
/// Rows of the tallest tile of a product in any instruction set.
inline constexpr int kTallestTile = 16;
/// Columns of a panel, and as many rows and steps among pivot rows, at most: what they need at a
/// time fits the registers.
inline constexpr int kPanelColumns = 8;
/// Columns that are projected on another one in one loop, and up to so many are made orthogonal one
/// by one.
inline constexpr int kColumnsAtOnce = 4;
/// Up to so many numbers are done in a plain loop before a call would have chosen its way.
inline constexpr int kFewNumbers = 8;
/// The longest of short rows and the largest of tiny reflections, whose loops are unrolled as a
/// whole, and the most columns that are put in order on the stack.
inline constexpr int kMostShortRow = 11;
inline constexpr int kMostTinyReflector = 4;
inline constexpr int kMostScattered = 32;
/// Up to so many elements of a column are searched for a pivot of an elimination with branches.
inline constexpr int kForeseenSearch = 16;

/// Of the packed operands of a product.
inline constexpr int kMostPackedA = 240 * 384;
inline constexpr int kMostPackedB = 384 * 1024;

/// How a product is cut. There is one for each instruction set.
struct ProductSizes {
  /// A packed panel of B, which has `depth` rows, has to stay in the first cache while the panels
  /// of a packed block of A, which has to stay in the second, run past it. `rows` is a multiple of
  /// 16, 6 and 4, the heights of the tiles.
  int depth = 384;
  int rows = 240;
  int cols = 1024;  ///< Of B that are packed at a time.
  /// Rows and columns from which operands are packed: below, a copy costs more than strides do.
  int packFrom = 160;
  /// The same where the rows of both operands lie in memory pages of their own, `page` numbers
  /// apart, which all have to be looked up.
  int packPagesFrom = 48;
  std::ptrdiff_t page = 512;
  /// Rows that lie a multiple of this apart compete for the same places of the first cache, of
  /// which there are fewer than a tile has rows.
  std::ptrdiff_t competingStride = 512;
  /// Multiplications up to which a plain loop is done before a way would be chosen; at least 0.
  int tiny = 64;
};

/// How a product as a task is cut, apart from how its parts are multiplied.
struct ProductTaskSizes {
  int tinyOperand = 25;  ///< Elements of each operand up to which the textbook's loop is quickest.
  /// Multiplications from which the members of a team share it, and those of the smallest piece.
  double shareFrom = 8e6;
  double leastPiece = 1e5;
};

/// How an elimination is cut.
struct EliminationSizes {
  int smallOrder = 32;  ///< Up to here the bookkeeping of blocks takes longer than it saves.
  int block = 128;      ///< Columns whose steps the rest of the matrix takes all at once.
  int panel = 8;  ///< Columns that are eliminated in storage of their own; kPanelColumns at most.
  /// So many columns take the steps of a whole block at a time: what they read stays in the cache.
  int strip = 96;
  int shareFrom = 240;    ///< Columns to be eliminated from which the members of a team share them.
  int sharedStrip = 128;  ///< Columns of a member's piece, at most.
};

/// How exchange steps are cut; as in EliminationSizes where the names are the same.
struct ExchangeSizes {
  int smallOrder = 32;
  int block = 128;
  int panel = 8;
  int strip = 96;
  /// Between two rows of factors there is that much more than a block, which is a power of two:
  /// else they would compete for the same places of the cache.
  int factorGap = 8;
  /// Up to here whole rows in a plain loop are quicker than their two parts; kMostShortRow at most.
  int shortRow = 11;
  /// Up to here the columns are put in order by single writes; beyond, reads here and there are so
  /// much quicker that turning the order round pays. kMostScattered at most.
  int scatter = 32;
  int shareFrom = 200;  ///< As in EliminationSizes, too.
  int sharedStrip = 256;
};

/// How the minors of an adjoint share their eliminations.
struct CofactorSizes {
  int smallOrder = 5;  ///< Up to here the bookkeeping of branches takes longer than it saves.
  int shareFrom = 16;  ///< Order from which the members of a team share the branches.
};

/// How Gram-Schmidt is cut on a full matrix.
struct QrSizes {
  int smallOrder = 16;    ///< Up to here the bookkeeping of blocks takes longer than it saves.
  int block = 256;        ///< Columns whose projections all later columns take at once.
  int tile = 16;          ///< Halves of blocks are rounded to it, the height of the tallest tile.
  int sharedBlock = 128;  ///< The same where members of a team share them.
  int shareFrom = 180;    ///< As in EliminationSizes.
  int sharedStrip = 128;
};

/// How the reduction to Hessenberg form and the cycles of QR are cut.
struct HessenbergSizes {
  /// Order up to which a reflection is a plain loop; kMostTinyReflector at most.
  int tinyReflector = 4;
  int packedFrom = 48;        ///< Order of a reflection from which its operands are packed.
  int reflectionStrip = 96;   ///< Rows of a reflection that are formed at a time.
  int reflectionDepth = 384;  ///< Rows of a packed operand that are multiplied at a time.
  int smallOrder = 15;        ///< Of a cycle: up to here blocks take longer than they save.
  int strip = 256;            ///< Columns that are projected at a time, at most.
  int tile = 16;              ///< Height of the strips that a triangle is cut into.
  int shareFrom = 64;         ///< Order of a reflection from which the members of a team share it.
  int shareCycleFrom = 210;   ///< Order of a cycle from which they share it.
  int sharedBlock = 128;      ///< Columns of a shared cycle that a member finishes by itself.
};

/// How the growing elimination of the definiteness test is cut where rows are exchanged; elsewhere
/// it is an elimination like others.
struct DefinitenessSizes {
  int smallOrder = 32;  ///< Up to here it takes longer to see whether rows are exchanged.
  int shareFrom = 350;  ///< Rows from which steps are taken in blocks, and by all members.
  int steps = 8;        ///< That a group of rows takes at once.
  int group = 64;       ///< Rows of a group: larger ones are more often cut short by an exchange.
  int strip = 1024;     ///< Columns that follow at a time, and of a member's piece, at most.
};

/// How normal equations are formed.
struct LeastSquaresSizes {
  int fewElements = 40;  ///< Of a system for which a plain loop is quicker than the kernel.
  /// Rows formed at a time. Low strips form less of what the mirror gives; high ones suit the
  /// kernel better.
  int lowStrip = 32;
  int highStrip = 128;
  int highFrom = 700;   ///< Unknowns from which strips are high.
  int shareFrom = 200;  ///< Unknowns from which the members of a team share the strips.
};

/// How far apart the rows of the matrices lie that an elimination, exchange steps, Gram-Schmidt and
/// the definiteness test work in.
struct WorkSizes {
  int competing = 512;     ///< Rows a multiple of this apart, which is a page, share their places.
  int gap = 8;             ///< Columns more that keep them apart.
  double shareFrom = 3e5;  ///< Elements from which the members of a team share the copying.
};

/// All of them.
struct BlockSizes {
  WorkSizes work;
  ProductTaskSizes product;
  EliminationSizes elimination;
  ExchangeSizes exchange;
  CofactorSizes cofactors;
  QrSizes qr;
  HessenbergSizes hessenberg;
  DefinitenessSizes definiteness;
  LeastSquaresSizes leastSquares;
};

/// Those that the program works with.
inline constexpr BlockSizes kBlockSizes;

}  // namespace qmx
