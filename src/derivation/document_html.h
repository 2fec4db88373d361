// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "derivation/document.h"

namespace qmx {

/// A document as one file of HTML5 that is XML as well, in UTF-8, without a script and without
/// anything from elsewhere, light or dark as the reader's system is. Matrices are tables, which
/// word processors take as such.
std::string HtmlText(const Document& document, NumberForm form);

}  // namespace qmx
