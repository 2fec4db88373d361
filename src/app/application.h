// SPDX-License-Identifier: MIT
#pragma once

#include <QApplication>
#include <functional>

#include "base/fault.h"

namespace qmx {

/// The toolkit's application, with the one handler of run-time faults: whatever is thrown while an
/// event is handled, in whatever nested loop, ends up here.
class Application : public QApplication {
  Q_OBJECT

 public:
  /// Takes nothing of the command line but the program's own name: the rest names a file, and the
  /// toolkit must not eat any of it.
  explicit Application(char** argv);

  /// What a fault leads to. It should not return.
  void SetFaultHandler(std::function<void(Fault)> handler) { handler_ = std::move(handler); }

  /// Runs a part of the program that no event starts, under the same handler.
  void Guard(const std::function<void()>& part);

  bool notify(QObject* receiver, QEvent* event) override;

 protected:
  bool event(QEvent* event) override;

 private:
  std::function<void(Fault)> handler_;
};

}  // namespace qmx
