// SPDX-License-Identifier: MIT
#pragma once

#include <QElapsedTimer>
#include <QLockFile>
#include <QObject>
#include <QTimer>
#include <functional>
#include <memory>
#include <string>

#include "desktop/worker.h"
#include "workspace/ports.h"

namespace qmx {

/// Keeps the present state of the program in a project below the folder for its state, so that a
/// later run can open it whatever became of this one. It is written in the background: soon after a
/// change, but at most every two seconds and at most a tenth of the time.
///
/// Each run has a file of its own, with a lock beside it while it lasts. The last five files stay.
class LastSession : public QObject {
  Q_OBJECT

 public:
  static constexpr int kMostFiles = 5;

  /// Makes the bytes to be written; it is called in another thread and must own what it reads.
  using Compose = std::function<std::string()>;

  /// `folder` ends with a separator; where it is empty nothing is kept. `capture` is asked for the
  /// present state, or for nothing while a command runs; `onProblem` is told, once, why a state
  /// could not be kept.
  LastSession(std::string folder, FileStore& files, std::function<Compose()> capture,
              std::function<void(const std::string&)> onProblem);
  ~LastSession() override;

  /// The newest file of a run that is no longer there; empty where there is none.
  std::string Latest() const { return latest_; }
  /// True if that run did not come to its end.
  bool WasCutOff() const { return wasCutOff_; }
  /// The newest file turned out not to be a project: it is offered no more.
  void Refuse();

  /// Something has changed that is to be kept.
  void Changed();
  /// Writes the last state, if there is one to be kept, and ends the run.
  void End();

 private:
  void FindLatest();
  void DropOldest() const;
  void WriteNow();
  void Write(const Compose& compose);
  Q_INVOKABLE void AfterWriting();

  std::string folder_;
  FileStore& files_;
  std::function<Compose()> capture_;
  std::function<void(const std::string&)> onProblem_;
  std::string name_;
  std::unique_ptr<QLockFile> lock_;
  std::string latest_;
  bool wasCutOff_ = false;
  QTimer timer_;
  QElapsedTimer sinceWriting_;
  qint64 pause_ = 0;  ///< Milliseconds that must lie between two writings.
  bool pending_ = false;
  bool writing_ = false;
  bool toldProblem_ = false;
  qint64 took_ = 0;
  std::string problem_;
  Worker worker_;
};

}  // namespace qmx
