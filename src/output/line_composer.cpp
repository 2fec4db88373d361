// SPDX-License-Identifier: MIT
#include "output/line_composer.h"

#include <utility>

#include "base/number_text.h"

namespace qmx {

LineComposer& LineComposer::Add(std::string_view text) {
  line_ += text;
  return *this;
}

LineComposer& LineComposer::Add(int value) { return Add(PrintItem(value)); }

LineComposer& LineComposer::Add(double value) { return Add(PrintItem(value)); }

LineComposer& LineComposer::Tab(int column) {
  const auto before = static_cast<std::size_t>(column - 1);
  if (line_.size() > before) End();
  line_.resize(before, ' ');
  return *this;
}

void LineComposer::End() {
  lines_.push_back(std::move(line_));
  line_.clear();
}

}  // namespace qmx
