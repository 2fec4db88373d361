// SPDX-License-Identifier: MIT
#pragma once

#include <flint/flint.h>

namespace qmx {

/// Gives back, when it goes, what FLINT and Arb keep for the thread that exact work ran on.
class LibraryCaches {
 public:
  LibraryCaches() = default;
  LibraryCaches(const LibraryCaches&) = delete;
  LibraryCaches& operator=(const LibraryCaches&) = delete;
  ~LibraryCaches() { flint_cleanup(); }
};

}  // namespace qmx
