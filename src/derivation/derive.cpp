// SPDX-License-Identifier: MIT
#include <flint/flint.h>

#include "base/arithmetic.h"
#include "derivation/derivation.h"
#include "derivation/families.h"

namespace qmx {
namespace {

/// Gives back what the library keeps for the thread that a derivation ran on.
class LibraryCaches {
 public:
  LibraryCaches() = default;
  LibraryCaches(const LibraryCaches&) = delete;
  LibraryCaches& operator=(const LibraryCaches&) = delete;
  ~LibraryCaches() { flint_cleanup(); }
};

class Fractions final : public Deriver {
 public:
  Document Derive(const DerivationQuestion& question, const DerivationLook& look) const override {
    const KeepArithmeticFaults faults;
    const LibraryCaches caches;
    Document document;
    Scribe scribe(document, look);
    if (question.task == DerivationTask::kDeterminant) DeriveDeterminant(question, scribe);
    return document;
  }
  Document MoreAbout(const Matrix& /*a*/, const DerivationLook& /*look*/) const override {
    return {};
  }
  std::vector<std::vector<ExactNumber>> ExactElements(
      const DerivationQuestion& /*question*/, const DerivationLook& /*look*/) const override {
    return {};
  }
};

}  // namespace

const Deriver& ExactDeriver() {
  static const Fractions fractions;
  return fractions;
}

}  // namespace qmx
