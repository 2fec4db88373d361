// SPDX-License-Identifier: MIT
#pragma once

#include "derivation/derivation.h"

namespace qmx::testing {

inline DerivationQuestion Ask(DerivationTask task, const Matrix& A) {
  DerivationQuestion question;
  question.task = task;
  question.a = A;
  return question;
}

inline Document Derive(const DerivationQuestion& question) {
  return ExactDeriver().Derive(question, {});
}

/// The last number of the first formula that begins so.
ShownNumber ResultOf(const Document& document, const std::string& beginning);
/// The last matrix of the last formula that begins so; an empty one where there is none.
ShownMatrix MatrixOfFormula(const Document& document, const std::string& beginning);

}  // namespace qmx::testing
