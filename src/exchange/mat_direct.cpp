// SPDX-License-Identifier: MIT
#include "exchange/mat_direct.h"

#include "exchange/mat4_variables.h"
#include "exchange/mat5_matrix.h"
#include "exchange/mat5_variables.h"
#include "exchange/mat_layout.h"
#include "exchange/refusal.h"

namespace qmx {
namespace {

/// Refuses what is none of the files that are read here; true for form 5.
bool CheckForm(std::string_view bytes) {
  const MatVersion version = MatVersionOf(bytes);
  if (version == MatVersion::k73) {
    throw Refusal(
        "This is a MAT file of version 7.3, which the program does not read on this system. Save "
        "it as version 7 or below in the program that made it; such files can be read.");
  }
  CheckMatLayout(bytes);
  return version == MatVersion::k5;
}

void Append(ForeignVariable&& variable, std::vector<ForeignVariable>& list) {
  if (list.size() == kMostMatVariables) RefuseManyMatVariables();
  list.push_back(std::move(variable));
}

void List5(std::string_view bytes, std::vector<ForeignVariable>& list) {
  for (Mat5Variables variables(bytes); variables.Next();) {
    ForeignVariable variable = Listed(variables.Variable());
    if (variable.problem.empty()) variable.problem = variables.ProblemOfStart();
    Append(std::move(variable), list);
  }
}

void List4(std::string_view bytes, std::vector<ForeignVariable>& list) {
  for (Mat4Variables variables(bytes); variables.Next();)
    Append(Listed(variables.Variable()), list);
}

/// The variables of a file, standing at the one with an index.
template <class Variables>
Variables At(std::string_view bytes, std::size_t index) {
  Variables variables(bytes);
  for (std::size_t k = 0; k <= index; ++k) {
    if (!variables.Next()) throw Refusal("The file has no such variable.");
  }
  const std::string problem = ProblemOf(variables.Variable());
  if (!problem.empty()) throw Refusal(problem);
  return variables;
}

}  // namespace

ForeignOutcome<std::vector<ForeignVariable>> ListMatDirectly(std::string_view bytes) {
  using List = std::vector<ForeignVariable>;
  return OutcomeOf<List>([&](ForeignOutcome<List>& outcome) {
    if (CheckForm(bytes)) {
      List5(bytes, outcome.content);
    } else {
      List4(bytes, outcome.content);
    }
    if (outcome.content.empty()) throw Refusal("The file holds no variables.");
  });
}

ForeignOutcome<Matrix> ReadMatDirectly(std::string_view bytes, std::size_t index,
                                       const Memory& memory) {
  return OutcomeOf<Matrix>([&](ForeignOutcome<Matrix>& outcome) {
    outcome.content = CheckForm(bytes)
                          ? ReadMat5Matrix(At<Mat5Variables>(bytes, index), bytes.size(), memory)
                          : ReadMat4Matrix(At<Mat4Variables>(bytes, index), bytes.size(), memory);
  });
}

}  // namespace qmx
