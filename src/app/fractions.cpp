// SPDX-License-Identifier: MIT
#include "app/fractions.h"

#include <algorithm>
#include <utility>

#include "grids/announcer.h"
#include "grids/qt_text.h"

namespace qmx {
namespace {

bool IsAnyKnown(const std::vector<ExactNumber>& numbers) {
  return std::any_of(numbers.begin(), numbers.end(),
                     [](const ExactNumber& number) { return number.IsKnown(); });
}

}  // namespace

Fractions::Fractions(const Workspace& workspace, DesktopScreen& screen, CommandRunner& commands,
                     const Deriver* deriver)
    : workspace_(workspace), screen_(screen), commands_(commands), deriver_(deriver) {}

void Fractions::Attach(GridWindow& window) {
  const Slot slot = window.Slot();
  if (deriver_ == nullptr || !HasDerivation(ResultOf(slot).result)) return;
  auto* button = new QPushButton(tr("As &fractions"), &window);
  button->setObjectName("cmdFractions");
  button->setCheckable(true);
  button->setAutoDefault(true);  // Enter presses it, as Space does.
  window.AddToLowerLine(*button);
  connect(button, &QPushButton::clicked, this, [this, slot](bool down) { Press(slot, down); });
}

QPushButton* Fractions::Button(Slot slot) const {
  const GridWindow* window = screen_.Window(slot);
  return window == nullptr ? nullptr : window->findChild<QPushButton*>("cmdFractions");
}

void Fractions::AfterCommand() {
  if (deriver_ == nullptr) return;
  for (const Slot slot : kAllSlots) {
    const Result result = ResultOf(slot).result;
    QPushButton* button = Button(slot);
    if (states_[slot].of != nullptr &&
        (button == nullptr || workspace_.computations[result] != states_[slot].of ||
         !(workspace_.*InfoOf(result).flag))) {
      Release(slot);
    }
    if (button == nullptr) continue;
    const QString why = ToQString(WhyNoSteps(workspace_, result));
    const bool isDown = states_[slot].of != nullptr;
    button->setEnabled(why.isEmpty() || isDown);
    button->setToolTip(button->isEnabled()
                           ? tr("Exact fractions, where both numbers have at most 9 digits")
                           : why);
    // The grid may have been filled anew.
    if (isDown) Show(slot);
  }
}

void Fractions::Press(Slot slot, bool down) {
  // While something is computed the results may not be what they were.
  if (commands_.IsBusy()) {
    Button(slot)->setChecked(states_[slot].of != nullptr);
    return commands_.Refuse();
  }
  const bool isPossible = WhyNoSteps(workspace_, ResultOf(slot).result).empty();
  down&& isPossible ? Find(slot) : Release(slot);
}

void Fractions::Find(Slot slot) {
  const Result result = ResultOf(slot).result;
  states_[slot].of = workspace_.computations[result];
  auto found = std::make_shared<std::vector<std::vector<ExactNumber>>>();
  states_[slot].run = runs_.Start(
      [this, result, found]() -> BackgroundRuns::Work {
        auto question =
            std::make_shared<const DerivationQuestion>(StepsQuestion(workspace_, result, 0, 0));
        return [deriver = deriver_, question, found](const DerivationLook& look) {
          *found = deriver->ExactElements(*question, look);
        };
      },
      [this, slot, found](BackgroundRuns::End end) { Take(slot, end, std::move(*found)); });
}

void Fractions::Take(Slot slot, BackgroundRuns::End end,
                     std::vector<std::vector<ExactNumber>> all) {
  const std::size_t index = ExactIndex(slot);
  if (end == BackgroundRuns::End::kDone && index < all.size() && IsAnyKnown(all[index])) {
    states_[slot].exact = std::make_shared<const std::vector<ExactNumber>>(std::move(all[index]));
    // A command that is under way may be taking window and numbers away: it is followed by Show.
    if (commands_.IsBusy() || screen_.Window(slot) == nullptr) return;
    Show(slot);
    return Announce(*screen_.Window(slot), tr("Fractions"));
  }
  const QString why = end == BackgroundRuns::End::kNoMemory
                          ? tr("There is not enough memory for exact fractions.")
                          : tr("There are no exact fractions of this with at most 9 digits.");
  Release(slot);
  if (commands_.IsBusy() || screen_.Window(slot) == nullptr) return;
  screen_.SetStatus(why.toStdString());
  Button(slot)->setToolTip(why);
  Announce(*screen_.Window(slot), why);
}

void Fractions::Release(Slot slot) {
  states_[slot] = {};
  Show(slot);
}

void Fractions::Show(Slot slot) {
  if (GridWindow* window = screen_.Window(slot)) window->ShowFractions(states_[slot].exact);
  if (QPushButton* button = Button(slot)) button->setChecked(states_[slot].of != nullptr);
}

}  // namespace qmx
