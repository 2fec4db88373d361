// SPDX-License-Identifier: MIT
// What people wait for at the windows: the start of the program, a matrix that opens, a digit that
// is typed. Needs a display.
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <cmath>
#include <memory>
#include <string>

#include "app/program.h"
#include "base/memory.h"
#include "desktop/desktop_printer.h"
#include "desktop/file_store_system.h"
#include "desktop/random_source.h"
#include "desktop/system_clock.h"
#include "first_picture.h"
#include "grids/picture_view.h"
#include "table_reporter.h"
#include "workspace/availability.h"

namespace qmx::bench {
namespace {

/// Regional settings that need no question at the start.
class PointSettings : public RegionalSettings {
 public:
  std::string DecimalSeparator() override { return "."; }
  void SetDecimalSeparator(const std::string&) override {}
};

void Start(benchmark::State& state) {
  FirstPicture picture;
  // The first start brings the program's files into memory.
  picture.SecondsOf(QMX_PROGRAM);
  for (auto _ : state) state.SetIterationTime(picture.SecondsOf(QMX_PROGRAM));
}

/// The program's windows, with a matrix of some order in A.
class Session {
 public:
  explicit Session(int order) {
    program_.Start("");
    Workspace& workspace = program_.State();
    workspace.A().array = Matrix(order, order);
    Matrix& array = workspace.A().array;
    for (std::size_t k = 0; k < array.Size(); ++k)
      array.Data()[k] = std::sin(static_cast<double>(k));
    workspace.A().rows = workspace.A().cols = order;
  }

  void OpenGrid() {
    MarkACreated(program_.Commands());
    Populate(program_.Commands(), kSlotA);
    program_.Windows().ShowWindow(kSlotA);
    Window().repaint();
  }
  void CloseGrid() { program_.Windows().CloseWindow(kSlotA); }
  GridWindow& Window() { return *program_.Windows().Window(kSlotA); }

  /// Puts the keyboard into the box over the first cell.
  QLineEdit* OpenBox() {
    MatrixGrid& grid = Window().Grid();
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {}, grid.CellRect(1, 1).center());
    return Window().findChild<QLineEdit*>("txtDataEntry");
  }

 private:
  const std::unique_ptr<FileStore> files_ = MakeSystemFileStore();
  PointSettings settings_;
  DesktopPrinter printer_{*files_, [] { return std::string(); }};
  RandomSource random_;
  SystemClock clock_;
  Program program_{{*files_, printer_, random_, clock_, SystemMemory()}, settings_};
};

void OpenGrid(benchmark::State& state, int order) {
  Session session(order);
  for (auto _ : state) {
    session.OpenGrid();
    state.PauseTiming();
    session.CloseGrid();
    state.ResumeTiming();
  }
}

void TypeDigit(benchmark::State& state, int order) {
  Session session(order);
  session.OpenGrid();
  QLineEdit* box = session.OpenBox();
  bool seven = false;
  for (auto _ : state) {
    box->selectAll();
    seven = !seven;
    QTest::keyClick(box, seven ? Qt::Key_7 : Qt::Key_8);
    // What is to be painted after the key.
    QCoreApplication::processEvents();
  }
}

/// A picture that is refreshed and painted, as after each change of its matrix.
void DrawPicture(benchmark::State& state, int order) {
  Matrix matrix(order, order);
  for (std::size_t k = 0; k < matrix.Size(); ++k)
    matrix.Data()[k] = std::sin(static_cast<double>(k));
  PictureView view([&matrix]() -> const Matrix& { return matrix; }, MatrixPicture, nullptr);
  view.resize(800, 600);
  for (auto _ : state) {
    view.Refresh();
    benchmark::DoNotOptimize(view.grab());
  }
}

void RegisterAll() {
  benchmark::RegisterBenchmark("start to first picture/-/program", Start)
      ->UseManualTime()
      ->Iterations(1)
      ->Repetitions(20);
  for (const int order : {2, 2000}) {
    const std::string end = "/" + std::to_string(order) + "/program";
    benchmark::RegisterBenchmark(("opening a grid" + end).c_str(), OpenGrid, order);
    benchmark::RegisterBenchmark(("typing a digit" + end).c_str(), TypeDigit, order);
    benchmark::RegisterBenchmark(("drawing a picture" + end).c_str(), DrawPicture, order);
  }
}

}  // namespace
}  // namespace qmx::bench

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  QApplication::setStyle("Fusion");
  benchmark::Initialize(&argc, argv);
  qmx::bench::RegisterAll();
  qmx::bench::TableReporter table(qmx::bench::TableReporter::Layout::kTimes);
  benchmark::RunSpecifiedBenchmarks(&table);
  return 0;
}
