// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>
#include <atomic>
#include <condition_variable>
#include <mutex>

#include "proof/prover.h"
#include "support/desktop_bench.h"

namespace qmx::test {

/// Proves as the program does; a test can hold the checks up, tell how long they would take, and
/// falsify what is to be proved.
class GatedProver : public Prover {
 public:
  ProofCost Estimate(const ProofQuestion& question) const override {
    return estimate > 0 ? ProofCost{estimate, 0} : BallProver().Estimate(question);
  }

  ProofAnswer Prove(const ProofQuestion& question, const ProofLimits& limits) const override {
    ++begun;
    WaitAtGate(limits);
    if (limits.stop && limits.stop()) {
      ++stopped;
      ProofAnswer answer;
      answer.outcome = ProofOutcome::kStopped;
      return answer;
    }
    if (fails) return {ProofOutcome::kCannotBeProved, {}, false, {}, VerdictProof::kNotProved};
    ProofQuestion asked = question;
    if (falsify) falsify(asked);
    return BallProver().Prove(asked, limits);
  }

  /// Checks that come now wait until the gate is opened, or until they are stopped.
  void CloseGate() { closed = true; }
  void OpenGate() { closed = false; }

  std::atomic<bool> closed = false;
  std::atomic<double> estimate = 0;  ///< Seconds; 0 for the true estimate.
  std::atomic<bool> fails = false;
  std::function<void(ProofQuestion&)> falsify;
  mutable std::atomic<int> begun = 0;
  mutable std::atomic<int> stopped = 0;

 private:
  void WaitAtGate(const ProofLimits& limits) const {
    while (closed && !(limits.stop && limits.stop()))
      std::this_thread::sleep_for(std::chrono::milliseconds(1));
  }
};

/// What has to outlive the program.
struct ProverHolder {
  GatedProver prover;
};

/// The whole program with its checks of digits.
class DigitsDesktop : public ProverHolder, public Desktop {
 protected:
  DigitsDesktop() : Desktop(&prover) {}

  /// Handles events until something is so; there is no other way to wait for it than to be told.
  void Until(const std::function<bool()>& isSo) {
    while (!isSo()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
  void UntilChecked() {
    Until([this] { return program.Digits().IsIdle(); });
  }

  QLabel* Line(qmx::Slot slot) { return Window(slot).findChild<QLabel*>("lblDigits"); }
  std::string LineText(qmx::Slot slot) { return Line(slot)->text().toStdString(); }
  QPushButton* CheckButton(qmx::Slot slot) {
    return Window(slot).findChild<QPushButton*>("cmdCheckDigits");
  }
  /// How many digits of a cell's text are proved; -1 where that is not watched.
  int Proved(qmx::Slot slot, int row, int col) {
    return Grid(slot).Model().ProvedDigits(row, col).value_or(-1);
  }
  std::string Tip(qmx::Slot slot, int row, int col) {
    const QAbstractItemModel& model = Grid(slot).Model();
    return model.data(model.index(row, col), Qt::ToolTipRole).toString().toStdString();
  }
  std::string Spoken(qmx::Slot slot, int row, int col) {
    const QAbstractItemModel& model = Grid(slot).Model();
    return model.data(model.index(row, col), Qt::AccessibleDescriptionRole)
        .toString()
        .toStdString();
  }
};

}  // namespace qmx::test
