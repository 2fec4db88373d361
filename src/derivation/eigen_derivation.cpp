// SPDX-License-Identifier: MIT
#include "derivation/families.h"

namespace qmx {

void DeriveEigenvalues(const DerivationQuestion& /*question*/, Scribe& scribe) {
  scribe.Title("Eigenvalues of A");
}
void DeriveEigenvectors(const DerivationQuestion& /*question*/, Scribe& scribe) {
  scribe.Title("Eigenvectors of A");
}

}  // namespace qmx
