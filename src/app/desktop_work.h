// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>
#include <QEvent>
#include <QEventLoop>
#include <QObject>
#include <QString>
#include <atomic>
#include <exception>
#include <string>

#include "app/frm_qmx.h"
#include "desktop/worker.h"
#include "workspace/work.h"

namespace qmx {

/// Runs computations beside the windows. While one goes on the windows paint, move and scroll; the
/// main window shows how far it is and offers to stop it; keys and clicks that would change
/// something are held off. A computation that is done at once takes no turn of the event loop.
class DesktopWork : public QObject {
  Q_OBJECT

 public:
  explicit DesktopWork(frmQMX& window);

  /// Runs a computation to its end. Throws what it throws, Stopped after a stop.
  void Run(const Work::Computation& computation, const std::string& doing);
  bool IsRunning() const { return loop_ != nullptr; }
  /// Asks the computation to stop; nothing where none is under way.
  void Stop() { stop_ = true; }

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  class SharedProgress;

  void Wait();
  void ShowProgress();
  bool IsHeldOff(const QObject* target, QEvent::Type type) const;

  frmQMX& window_;
  Worker worker_;
  QEventLoop* loop_ = nullptr;
  QString doing_;  ///< "Reading a.qmx".
  QElapsedTimer since_;
  std::atomic<double> fraction_ = 0;
  std::atomic<bool> stop_ = false;
  bool closes_ = false;  ///< The main window is to be closed once the computation has stopped.
};

}  // namespace qmx
