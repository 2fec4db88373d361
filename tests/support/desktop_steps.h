// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>
#include <QEventLoop>
#include <QLabel>
#include <QTest>
#include <QTimer>
#include <atomic>
#include <chrono>
#include <memory>
#include <mutex>
#include <new>
#include <thread>

#include "derivation/derivation.h"
#include "support/desktop_bench.h"
#include "support/desktop_meanwhile.h"

namespace qmx::test {

/// Derives nothing, but tells what it was asked; a test can hold it up and let it fail.
class GatedDeriver : public Deriver {
 public:
  Document Derive(const DerivationQuestion& question, const DerivationLook& look) const override {
    Wait(look);
    {
      const std::lock_guard lock(mutex_);
      asked_ = std::make_unique<DerivationQuestion>(Copy(question));
    }
    if (fails) throw std::bad_alloc();
    if (isEmpty) return {};
    return Told(question);
  }
  Document MoreAbout(const Matrix& a, const DerivationLook& look) const override {
    Wait(look);
    if (fails) throw std::bad_alloc();
    if (isEmpty) return {};
    DerivationQuestion question;
    question.a = a.Shared();
    return Told(question);
  }
  std::vector<std::vector<ExactNumber>> ExactElements(const DerivationQuestion&,
                                                      const DerivationLook& look) const override {
    Wait(look);
    if (fails) throw std::bad_alloc();
    return exact;
  }

  /// What it was asked last.
  const DerivationQuestion& Asked() const {
    const std::lock_guard lock(mutex_);
    return *asked_;
  }
  void CloseGate() { closed = true; }
  void OpenGate() { closed = false; }

  std::atomic<bool> closed = false;
  std::atomic<bool> fails = false;
  std::atomic<bool> isEmpty = false;
  std::vector<std::vector<ExactNumber>> exact;
  mutable std::atomic<int> begun = 0;
  mutable std::atomic<int> stopped = 0;

  /// A heading, a sentence with a number whose last digit does not hold, and a.
  static Document Told(const DerivationQuestion& question) {
    Document document{"Told", {Heading{"Told", 1}}};
    const ShownNumber third{"0.3334", 5, {"1", "3"}};
    document.blocks.emplace_back(Line{{Words{"Row 2 minus "}, third, Words{" of row 1."}}, false});
    ShownMatrix matrix{question.a.Rows(), question.a.Cols(), {}, {}, false};
    for (std::size_t k = 0; k < question.a.Size(); ++k)
      matrix.cells.push_back({third, k == 0 ? CellMark::kPivot : CellMark::kNone});
    document.blocks.emplace_back(Line{{Name{"A"}, Operator{"="}, matrix}, true});
    return document;
  }

 private:
  static DerivationQuestion Copy(const DerivationQuestion& question) {
    DerivationQuestion copy;
    copy.task = question.task;
    copy.a = question.a.Shared();
    copy.b = question.b.Shared();
    copy.exchanges = question.exchanges.Shared();
    copy.system = question.system.Shared();
    copy.pivoting = question.pivoting;
    copy.byCofactors = question.byCofactors;
    copy.eigen = question.eigen;
    copy.shiftIndex = question.shiftIndex;
    copy.row = question.row;
    copy.col = question.col;
    return copy;
  }
  void Wait(const DerivationLook& look) const {
    ++begun;
    try {
      do {
        look();
        if (closed) std::this_thread::sleep_for(std::chrono::milliseconds(1));
      } while (closed);
    } catch (...) {
      ++stopped;
      throw;
    }
  }

  mutable std::mutex mutex_;
  mutable std::unique_ptr<DerivationQuestion> asked_;
};

/// What has to outlive the program.
struct DeriverHolder {
  GatedDeriver deriver;
};

/// The whole program with its steps.
class StepsDesktop : public DeriverHolder, public Desktop {
 protected:
  StepsDesktop() : Desktop(nullptr, &deriver) {}

  /// Handles events until something is so; there is no other way to wait for it than to be told.
  static void Until(const std::function<bool()>& isSo) {
    while (!isSo()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  }
  void UntilDerived() {
    Until([this] { return program.StepsOfResults().Runs().IsIdle(); });
  }
  DocumentWindow* Steps(Result result) { return program.StepsOfResults().Window(result); }
  template <typename Kind = QPushButton>
  static Kind& Part(QWidget& window, const char* name) {
    Kind* found = window.findChild<Kind*>(name);
    if (found == nullptr) throw std::runtime_error(std::string(name) + " is missing");
    return *found;
  }
  /// Clicks `cmdSteps` in the window of a matrix and waits for the document.
  DocumentWindow& OpenSteps(qmx::Slot slot) {
    QTest::mouseClick(&Part(Window(slot), "cmdSteps"), Qt::LeftButton);
    UntilDerived();
    DocumentWindow* window = Steps(ResultOf(slot).result);
    if (window == nullptr) throw std::runtime_error("no steps");
    EXPECT_TRUE(QTest::qWaitForWindowActive(window));
    return *window;
  }
  /// Does something in the middle of a computation, and tells what the main window says to it.
  std::string Meanwhile(const std::function<void()>& act) { return SaidMeanwhile(program, act); }
  static std::string Told(DocumentWindow& window, const char* label) {
    const QLabel& found = Part<QLabel>(window, label);
    return found.isHidden() ? std::string() : found.text().toStdString();
  }
};

}  // namespace qmx::test
