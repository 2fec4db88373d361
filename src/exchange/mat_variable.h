// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "exchange/element_kind.h"
#include "exchange/foreign_variable.h"

namespace qmx {

// What a MAT file says of a variable before its elements, and what is said of it to the user,
// whoever reads the file. The numbers of classes and types are those of the files of form 5.

inline constexpr std::uint32_t kMatText = 4;
inline constexpr std::uint32_t kMatSparse = 5;
inline constexpr std::uint32_t kMatDouble = 6;

struct MatVariable {
  std::string name;
  std::uint32_t matClass = 0;
  bool complex = false;
  bool logical = false;
  std::vector<std::uint64_t> shape;
  /// Form 4 keeps a sparse matrix as a table of its entries, and its shape at the end of that: here
  /// `shape` is the table's.
  bool isTable = false;
  /// Nothing is known but that there is one.
  bool damaged = false;
};

/// The kind of numbers of a class; nothing for what is no class of numbers.
std::optional<ElementKind> KindOfMatClass(std::uint32_t matClass);

/// The kind of the numbers in an element of the file; nothing where there are none.
std::optional<ElementKind> KindOfMatType(std::uint32_t type);

/// True if the table of a sparse matrix of form 4 has values of two parts.
bool IsComplexTable(const MatVariable& table);

/// Why a variable cannot become a matrix, whatever its elements are; empty where it can.
std::string ProblemOf(const MatVariable& variable);

/// A variable in the list, with its problem.
ForeignVariable Listed(const MatVariable& variable);

/// The most variables that are listed; beyond them the file is refused.
inline constexpr std::size_t kMostMatVariables = 10000;
[[noreturn]] void RefuseManyMatVariables();

[[noreturn]] void RefuseDamagedMat();

inline constexpr const char* kDamagedMatVariable = "The data of the variable are damaged.";

}  // namespace qmx
