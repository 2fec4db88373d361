// SPDX-License-Identifier: MIT
#include "app/digit_checks.h"

#include <utility>

#include "commands/digit_texts.h"
#include "desktop/thread_priority.h"
#include "grids/qt_text.h"

namespace qmx {

DigitChecks::DigitChecks(const Workspace& workspace, frmQMX& window, DesktopScreen& screen,
                         CommandRunner& commands, const Prover* prover)
    : workspace_(workspace), screen_(screen), commands_(commands), prover_(prover) {
  if (prover_ == nullptr) return;
  screen_.WatchDigits([this](Slot slot, bool wanted) { Ask(ResultOf(slot).result, wanted); },
                      [this] { GiveWay(); });
  scalars_ = window.findChildren<ScalarProof*>();
  for (ScalarProof* scalar : scalars_) {
    connect(scalar, &ScalarProof::Asked, this,
            [this, result = scalar->Of()](bool wanted) { Ask(result, wanted); });
  }
}

DigitChecks::~DigitChecks() { End(); }

void DigitChecks::End() {
  ended_ = true;
  stop_ = true;
}

bool DigitChecks::IsIdle() const { return job_ == nullptr && !keeper_.Next(workspace_); }

void DigitChecks::AfterCommand() {
  if (prover_ == nullptr || ended_) return;
  keeper_.Follow(workspace_);
  if (job_ != nullptr && !keeper_.IsWanted(workspace_, job_->check)) stop_ = true;
  StartNext();
  ShowAll();
}

void DigitChecks::Ask(Result result, bool wanted) {
  // While something is computed the results may not be what they were.
  if (commands_.IsBusy()) return commands_.Refuse();
  wanted ? keeper_.Ask(workspace_, result) : keeper_.Withdraw(workspace_, result);
  AfterCommand();
}

void DigitChecks::StartNext() {
  if (job_ != nullptr || ended_) return;
  std::optional<DigitCheck> next = keeper_.Next(workspace_);
  if (!next) return;
  job_ = std::make_unique<Job>(Job{std::move(*next), std::nullopt});
  stop_ = false;
  const auto work = [this, job = job_.get()] {
    TakeLowestPriority();
    job->finding = RunDigitCheck(*prover_, job->check,
                                 [this] { return stop_.load(std::memory_order_relaxed); });
  };
  worker_.Start(work,
                [this] { QMetaObject::invokeMethod(this, "AfterCheck", Qt::QueuedConnection); });
}

void DigitChecks::AfterCheck() {
  const std::unique_ptr<Job> job = std::move(job_);
  if (job->finding) keeper_.Take(workspace_, job->check, std::move(*job->finding));
  // While something is computed the results may not be what they were; what comes after a command
  // follows then.
  if (!commands_.IsBusy() && !ended_) {
    StartNext();
    ShowAll();
  }
  Q_EMIT Checked();
}

void DigitChecks::ShowAll() {
  for (const Slot slot : kAllSlots) {
    GridWindow* window = screen_.Window(slot);
    if (window != nullptr && (slot == kSlotA || !HasPermanentFrame(slot))) ShowIn(*window);
  }
  for (ScalarProof* scalar : scalars_) ShowBeside(*scalar);
}

void DigitChecks::ShowBeside(ScalarProof& scalar) const {
  const DigitStanding standing = keeper_.Of(workspace_, scalar.Of());
  scalar.Show(TellScalar(workspace_, scalar.Of(), standing, scalar.Value()),
              standing.state == DigitState::kOffered, standing.state == DigitState::kChecking);
}

void DigitChecks::ShowIn(GridWindow& window) const {
  const Slot slot = window.Slot();
  const DigitStanding standing = keeper_.Of(workspace_, ResultOf(slot).result);
  ShownDigits shown;
  shown.line = ToQString(DigitLine(workspace_, slot, standing, screen_.IsWide(slot)));
  shown.isWatched = !InfoOf(slot).IsEditor() && ResultOf(slot).result != kResultExchanges;
  shown.offersCheck = standing.state == DigitState::kOffered;
  shown.isChecking = standing.state == DigitState::kChecking;
  const std::size_t index = FindingIndex(slot);
  if (shown.isWatched && standing.finding != nullptr && index < standing.finding->matrices.size())
    shown.cells = standing.finding->matrices[index];
  window.ShowDigits(shown);
}

}  // namespace qmx
