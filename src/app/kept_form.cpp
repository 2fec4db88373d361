// SPDX-License-Identifier: MIT
#include "app/kept_form.h"

#include "app/settings.h"

namespace qmx {
namespace {

constexpr const char* kForm = "steps/form";

}  // namespace

NumberForm KeptForm() {
  const int kept = Settings().value(kForm).toInt();
  return kept >= 0 && kept <= static_cast<int>(NumberForm::kBoth) ? static_cast<NumberForm>(kept)
                                                                  : NumberForm::kFractions;
}

void KeepForm(NumberForm form) { Settings().setValue(kForm, static_cast<int>(form)); }

}  // namespace qmx
