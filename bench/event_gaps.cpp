// SPDX-License-Identifier: MIT
// How long the windows go without a turn of the event loop while the program computes, and what a
// short task takes from press to result:
//   qmx_bench_gaps            all of it
//   qmx_bench_gaps --short    the short task alone
#include <QApplication>
#include <QElapsedTimer>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTimer>
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "app/program.h"
#include "app/wiring.h"
#include "commands/dispatcher.h"
#include "commands/file_commands.h"
#include "desktop/desktop_printer.h"
#include "desktop/file_store_system.h"
#include "desktop/random_source.h"
#include "desktop/system_clock.h"
#include "workspace/availability.h"
#include "workspace/task_numbers.h"

namespace qmx::bench {
namespace {

/// Regional settings that need no question at the start.
class PointSettings : public RegionalSettings {
 public:
  std::string DecimalSeparator() override { return "."; }
  void SetDecimalSeparator(const std::string&) override {}
};

class Session {
 public:
  Session() { program_.Start(""); }

  void FillA(int order) {
    Matrix a(order, order);
    for (std::size_t k = 0; k < a.Size(); ++k)
      a.Data()[k] = std::sin(static_cast<double>(k)) / order;
    for (int i = 1; i <= order; ++i) a(i, i) += 1;
    Publish(program_.Commands(), kSlotA, Publication(std::move(a)), Showing::kInPlace);
  }
  Program& Running() { return program_; }
  void Press(Task task) {
    program_.Runner().Step("task", [task](Context& context) { PressTask(context, task); });
  }

  /// The longest time in milliseconds between two turns of the event loop while something runs.
  double LongestGap(const std::function<void()>& act) {
    double longest = 0;
    QElapsedTimer since;
    QTimer turns;
    QObject::connect(&turns, &QTimer::timeout, [&] {
      longest = std::max(longest, static_cast<double>(since.nsecsElapsed()) / 1e6);
      since.start();
    });
    since.start();
    turns.start(0);
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, [] {
      if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
        std::fprintf(stderr, "%s\n", qPrintable(box->text()));
        std::exit(EXIT_FAILURE);
      }
    });
    watch.start(500);
    QTimer::singleShot(20, [&] {
      act();
      QTimer::singleShot(100, qApp, &QCoreApplication::quit);
    });
    QApplication::exec();
    return longest;
  }

 private:
  const std::unique_ptr<FileStore> files_ = MakeSystemFileStore();
  PointSettings settings_;
  DesktopPrinter printer_{*files_, [] { return std::string(); }};
  RandomSource random_;
  SystemClock clock_;
  Program program_{{*files_, printer_, random_, clock_, SystemMemory()}, settings_};
};

void Tell(const char* what, double milliseconds) {
  std::printf("%-44s %8.1f ms\n", what, milliseconds);
  std::fflush(stdout);
}

void MeasureGaps() {
  Session session;
  Program& program = session.Running();
  const QTemporaryDir folder;
  const std::string file = folder.path().toStdString() + "/large.qmx";
  session.FillA(1500);
  Tell("inverse of 1500 x 1500", session.LongestGap([&] { session.Press(kTaskInverse); }));
  session.FillA(200);
  Tell("adjoint by cofactors of 200 x 200",
       session.LongestGap([&] { session.Press(kTaskAdjoint); }));
  program.Commands().panel.SetText(txtMaxcy, "3");
  session.FillA(300);
  Tell("eigenvalues of 300 x 300, 3 iterations",
       session.LongestGap([&] { session.Press(kTaskEigen); }));
  session.FillA(2000);
  Tell("saving a project of 2000 x 2000", session.LongestGap([&] {
    program.State().currentFileName = file;
    program.Runner().Do([](Context& context) { SaveProject(context); });
  }));
  Tell("opening it", session.LongestGap([&] { OpenByName(program.Runner(), file); }));
}

void MeasureShortTask() {
  Session session;
  session.FillA(10);
  session.Press(kTaskInverse);
  std::vector<double> times;
  for (int i = 0; i < 2000; ++i) {
    QElapsedTimer time;
    time.start();
    session.Press(kTaskInverse);
    times.push_back(static_cast<double>(time.nsecsElapsed()) / 1e6);
    QCoreApplication::processEvents();
  }
  std::sort(times.begin(), times.end());
  Tell("inverse of 10 x 10, from press to result", times[times.size() / 2]);
}

}  // namespace
}  // namespace qmx::bench

int main(int argc, char** argv) {
  // Settings and state of the program are those of nobody.
  const QTemporaryDir home;
  for (const char* folder : {"XDG_CONFIG_HOME", "XDG_STATE_HOME"})
    qputenv(folder, home.path().toUtf8());
  QApplication application(argc, argv);
  QApplication::setStyle("Fusion");
  if (argc < 2 || std::string(argv[1]) != "--short") qmx::bench::MeasureGaps();
  qmx::bench::MeasureShortTask();
  return 0;
}
