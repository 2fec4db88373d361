// SPDX-License-Identifier: MIT
#include "exchange/mat_direct.h"
#include "exchange/mat_file.h"

namespace qmx {

ForeignOutcome<std::vector<ForeignVariable>> ListMat(std::string_view bytes) {
  return ListMatDirectly(bytes);
}

ForeignOutcome<Matrix> ReadMat(std::string_view bytes, std::size_t index, const Memory& memory) {
  return ReadMatDirectly(bytes, index, memory);
}

}  // namespace qmx
