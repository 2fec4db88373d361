// SPDX-License-Identifier: MIT
#include "app/desktop_work.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTimer>
#include <cmath>

#include "desktop/patience.h"
#include "grids/editor_window.h"
#include "grids/qt_text.h"

namespace qmx {
namespace {

constexpr int kShowEvery = 50;          // Milliseconds.
constexpr double kForetellAfter = 2;    // Seconds.
constexpr double kEnoughToTell = 0.01;  // Of the work: before, the rest cannot be foretold.

QString TimeLeft(double seconds) {
  if (seconds < 1) return QObject::tr("less than a second left");
  if (seconds < 100) return QObject::tr("about %1 s left").arg(std::ceil(seconds));
  return QObject::tr("about %1 min left").arg(std::ceil(seconds / 60));
}

}  // namespace

/// The side of the progress that the computation meets.
class DesktopWork::SharedProgress : public Progress {
 public:
  explicit SharedProgress(DesktopWork& work) : work_(work) {}
  void Report(double fraction) override {
    work_.fraction_.store(fraction, std::memory_order_relaxed);
    if (work_.stop_.load(std::memory_order_relaxed)) throw Stopped();
  }

 private:
  DesktopWork& work_;
};

DesktopWork::DesktopWork(frmQMX& window) : window_(window) {
  connect(&window_, &frmQMX::StopPressed, this, &DesktopWork::Stop);
}

void DesktopWork::Run(const Work::Computation& computation, const std::string& doing) {
  doing_ = ToQString(doing);
  fraction_ = 0;
  stop_ = false;
  since_.start();
  SharedProgress progress(*this);
  std::exception_ptr thrown;
  QEventLoop loop;
  const auto work = [&] {
    try {
      computation(progress);
    } catch (...) {
      thrown = std::current_exception();
    }
  };
  loop_ = &loop;
  worker_.Start(work, [&loop] { QMetaObject::invokeMethod(&loop, "quit", Qt::QueuedConnection); });
  if (!worker_.WaitFor(kPatience)) Wait();
  loop_ = nullptr;
  if (thrown) std::rethrow_exception(thrown);
}

void DesktopWork::Wait() {
  closes_ = false;
  QApplication::setOverrideCursor(Qt::BusyCursor);
  window_.StartProgress();
  window_.ShowProgress(0, doing_ + "...");
  QTimer timer;
  connect(&timer, &QTimer::timeout, this, &DesktopWork::ShowProgress);
  timer.start(kShowEvery);
  qApp->installEventFilter(this);
  loop_->exec();
  qApp->removeEventFilter(this);
  // The loop may have been ended by something else than the computation.
  while (!worker_.WaitFor(kPatience)) {
  }
  window_.EndProgress();
  QApplication::restoreOverrideCursor();
  if (closes_) QMetaObject::invokeMethod(&window_, "close", Qt::QueuedConnection);
}

void DesktopWork::ShowProgress() {
  const double fraction = fraction_.load(std::memory_order_relaxed);
  const double seconds = static_cast<double>(since_.elapsed()) / 1000;
  QString text = doing_ + "...";
  if (stop_) {
    text = tr("Stopping...");
  } else if (seconds > kForetellAfter && fraction > kEnoughToTell) {
    text = doing_ + ", " + TimeLeft(seconds * (1 - fraction) / fraction);
  }
  window_.ShowProgress(fraction, text);
}

bool DesktopWork::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Close && watched == &window_) {
    closes_ = true;
    Stop();
    event->ignore();
    return true;
  }
  if (event->type() == QEvent::KeyPress || event->type() == QEvent::ShortcutOverride) {
    if (static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
      if (event->type() == QEvent::KeyPress) Stop();
      return true;
    }
  }
  if (!IsHeldOff(watched, event->type())) return false;
  window_.SetStatus(tr(kBusy));
  return true;
}

/// What would change fields, options or a matrix. Commands are refused by themselves.
bool DesktopWork::IsHeldOff(const QObject* target, QEvent::Type type) const {
  switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::KeyPress:
    case QEvent::ContextMenu:
    case QEvent::DragEnter:
    case QEvent::Drop:
      break;
    default:
      return false;
  }
  const auto* widget = qobject_cast<const QWidget*>(target);
  if (widget == nullptr) return false;
  if (window_.Panels()->isAncestorOf(widget)) return true;
  return type != QEvent::MouseButtonPress && widget->objectName() == "txtDataEntry" &&
         qobject_cast<const EditorWindow*>(widget->window()) != nullptr;
}

}  // namespace qmx
