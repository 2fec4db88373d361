// SPDX-License-Identifier: MIT
#pragma once

#include <QLabel>
#include <QTimer>
#include <atomic>
#include <chrono>
#include <functional>
#include <string>
#include <thread>

#include "app/program.h"

namespace qmx::test {

/// What whoever wants to change something while a command runs is told.
inline constexpr const char* kRefusal =
    "Something is being computed. Stop it, or wait until it is done.";

/// Does something in the middle of a computation, and tells what the main window says to it.
inline std::string SaidMeanwhile(Program& program, const std::function<void()>& act) {
  std::string said;
  std::atomic<bool> isDone = false;
  QTimer::singleShot(0, [&] {
    act();
    said = program.MainWindow().findChild<QLabel*>("lblWorking")->text().toStdString();
    isDone = true;
  });
  program.Runner().Do([&](Context& context) {
    context.work.Run([&](Progress&) {
      while (!isDone) std::this_thread::sleep_for(std::chrono::milliseconds(1));
    });
  });
  return said;
}

}  // namespace qmx::test
