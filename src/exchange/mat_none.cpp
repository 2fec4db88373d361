// SPDX-License-Identifier: MIT
#include "exchange/mat_file.h"
#include "exchange/mat_layout.h"

namespace qmx {
namespace {

constexpr const char* kProblem = "This build of the program neither reads nor writes MAT files.";

template <class Content>
ForeignOutcome<Content> Refused() {
  ForeignOutcome<Content> outcome;
  outcome.problem = kProblem;
  return outcome;
}

}  // namespace

bool HasMatReader() { return false; }

bool IsMat(std::string_view bytes) { return MatVersionOf(bytes) != MatVersion::kNone; }

ForeignOutcome<std::vector<ForeignVariable>> ListMat(std::string_view) {
  return Refused<std::vector<ForeignVariable>>();
}

ForeignOutcome<Matrix> ReadMat(std::string_view, std::size_t, const Memory&) {
  return Refused<Matrix>();
}

ForeignOutcome<std::string> WriteMat(const Matrix&, const std::string&) {
  return Refused<std::string>();
}

}  // namespace qmx
