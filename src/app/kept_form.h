// SPDX-License-Identifier: MIT
#pragma once

#include "derivation/document.h"

namespace qmx {

/// Whether the numbers of new documents are fractions, decimals or both: as the user chose last, in
/// whatever window.
NumberForm KeptForm();
void KeepForm(NumberForm form);

}  // namespace qmx
