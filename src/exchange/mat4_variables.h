// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string_view>

#include "base/matrix.h"
#include "base/memory.h"
#include "exchange/element_kind.h"
#include "exchange/mat_variable.h"

namespace qmx {

/// Goes over the variables of a file of form 4 in their order, those without a name left out. The
/// layout must have been checked (see CheckMatLayout).
class Mat4Variables {
 public:
  explicit Mat4Variables(std::string_view bytes) : rest_(bytes) {}

  /// Goes on to the next variable, at first to the first one; false where there is none.
  bool Next();
  const MatVariable& Variable() const { return variable_; }
  /// Its elements, by columns; all those that its shape says are there.
  const ElementBlock& Elements() const { return elements_; }

 private:
  std::string_view rest_;
  MatVariable variable_;
  ElementBlock elements_;
};

/// The matrix of the present variable, of which ProblemOf says nothing. `held` is the size of the
/// file. Refuses shapes as CheckShape does, elements as ConvertElements does, and a table of a
/// sparse matrix that is none.
Matrix ReadMat4Matrix(const Mat4Variables& variables, std::size_t held, const Memory& memory);

}  // namespace qmx
