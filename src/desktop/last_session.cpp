// SPDX-License-Identifier: MIT
#include "desktop/last_session.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <algorithm>
#include <chrono>
#include <utility>

#include "base/team.h"

namespace qmx {
namespace {

constexpr int kSoon = 100;  // Milliseconds: a burst of keys is one change.
constexpr qint64 kShortestPause = 2000;
constexpr qint64 kShare = 10;  // One part of so many of the time goes to writing.
constexpr std::chrono::milliseconds kPatience(1000);
constexpr const char* kPattern = "session-*.qmx";
constexpr const char* kLockEnding = ".lock";

std::string Bytes(const QString& name) { return name.toStdString(); }
QString Text(const std::string& name) { return QString::fromStdString(name); }

/// The files of all runs, the newest first: their names begin with the time of the run.
QStringList SessionFiles(const QDir& folder) {
  return folder.entryList({kPattern}, QDir::Files, QDir::Name | QDir::Reversed);
}

/// True if the run of a file goes on. A lock that nobody holds any more is removed.
bool IsRunning(const QString& file) {
  QLockFile lock(file + kLockEnding);
  lock.setStaleLockTime(0);
  return !lock.tryLock(0);
}

}  // namespace

LastSession::LastSession(std::string folder, FileStore& files, std::function<Compose()> capture,
                         std::function<void(const std::string&)> onProblem)
    : folder_(std::move(folder)),
      files_(files),
      capture_(std::move(capture)),
      onProblem_(std::move(onProblem)) {
  timer_.setSingleShot(true);
  connect(&timer_, &QTimer::timeout, this, &LastSession::WriteNow);
  if (folder_.empty()) return;
  FindLatest();
  const QString stamp = QDateTime::currentDateTimeUtc().toString("yyyyMMdd-HHmmss-zzz");
  name_ = folder_ + "session-" + stamp.toStdString() + "-" +
          std::to_string(QCoreApplication::applicationPid()) + ".qmx";
}

LastSession::~LastSession() = default;

void LastSession::FindLatest() {
  const QDir folder(Text(folder_));
  for (const QString& file : SessionFiles(folder)) {
    const QString path = folder.filePath(file);
    const bool hasLock = QFile::exists(path + kLockEnding);
    if (hasLock && IsRunning(path)) continue;
    latest_ = Bytes(path);
    wasCutOff_ = hasLock;
    return;
  }
}

void LastSession::DropOldest() const {
  const QDir folder(Text(folder_));
  const QStringList files = SessionFiles(folder);
  for (qsizetype i = kMostFiles; i < files.size(); ++i) {
    const QString path = folder.filePath(files[i]);
    if (!QFile::exists(path + kLockEnding) || !IsRunning(path)) QFile::remove(path);
  }
}

void LastSession::Refuse() {
  QFile::rename(Text(latest_), Text(latest_) + ".refused");
  latest_.clear();
  wasCutOff_ = false;
}

void LastSession::Changed() {
  if (folder_.empty()) return;
  pending_ = true;
  if (writing_ || timer_.isActive()) return;
  const qint64 rest = sinceWriting_.isValid() ? pause_ - sinceWriting_.elapsed() : 0;
  timer_.start(static_cast<int>(std::max<qint64>(rest, kSoon)));
}

void LastSession::WriteNow() {
  const Compose compose = capture_();
  // A command runs: what it leaves is written after it.
  if (!compose) return timer_.start(kSoon);
  pending_ = false;
  writing_ = true;
  const auto done = [this] {
    QMetaObject::invokeMethod(this, "AfterWriting", Qt::QueuedConnection);
  };
  worker_.Start([this, compose] { Write(compose); }, done);
}

void LastSession::Write(const Compose& compose) {
  const StayAlone alone;
  QElapsedTimer time;
  time.start();
  try {
    if (lock_ == nullptr) {
      lock_ = std::make_unique<QLockFile>(Text(name_) + kLockEnding);
      lock_->setStaleLockTime(0);
      lock_->tryLock(0);
    }
    problem_ = files_.Replace(name_, compose()).problem;
  } catch (const std::exception& trouble) {
    problem_ = trouble.what();
  }
  took_ = time.elapsed();
}

void LastSession::AfterWriting() {
  writing_ = false;
  pause_ = std::max(kShortestPause, took_ * kShare);
  sinceWriting_.start();
  DropOldest();
  if (!problem_.empty() && !std::exchange(toldProblem_, true)) onProblem_(problem_);
  if (pending_) Changed();
}

void LastSession::End() {
  timer_.stop();
  while (!worker_.WaitFor(kPatience)) {
  }
  if (folder_.empty()) return;
  if (pending_) {
    if (const Compose compose = capture_()) Write(compose);
    pending_ = false;
  }
  // Without its lock the file is that of a run that came to its end.
  lock_.reset();
  DropOldest();
}

}  // namespace qmx
