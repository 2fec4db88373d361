// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QTimer>
#include <cstdio>
#include <random>

#include "app/print_table_dialog.h"
#include "support/desktop_bench.h"

namespace qmx::test {
namespace {

/// Milliseconds from the menu entry to the pages, and the longest time that no event was handled in
/// between.
class PrintTableCost : public Desktop {
 protected:
  void Measure(int order) {
    std::mt19937 any(1);
    std::uniform_real_distribution<double> number(-10, 10);
    Matrix values(order, order);
    for (std::size_t i = 0; i < values.Size(); ++i) values.Data()[i] = number(any);
    State().At(kSlotA) = {std::move(values), order, order};
    State().ACreated = true;
    QElapsedTimer whole;
    QElapsedTimer turn;
    double longest = 0;
    QTimer beat;
    QObject::connect(&beat, &QTimer::timeout, [&] {
      longest = std::max(longest, static_cast<double>(turn.nsecsElapsed()) * 1e-6);
      turn.start();
      auto* dialog = qobject_cast<PrintTableDialog*>(QApplication::activeModalWidget());
      if (dialog == nullptr) return;
      const QString pages = dialog->findChild<QLabel*>("lblPages")->text();
      if (pages.contains("...")) return;
      beat.stop();
      std::printf("%5d  shown after %8.1f ms  longest turn %8.1f ms  %s\n", order,
                  static_cast<double>(whole.nsecsElapsed()) * 1e-6, longest, qPrintable(pages));
      dialog->reject();
    });
    beat.start(1);
    whole.start();
    turn.start();
    Main().Action("mnuPrintTable")->trigger();
  }
};

/// Not a test: tells how long the windows stand still while a table comes. qmx_desktop_tests
/// --gtest_also_run_disabled_tests --gtest_filter='PrintTableCost.*' on a machine at rest.
TEST_F(PrintTableCost, DISABLED_FromTheEntryToThePages) {
  for (const int order : {10, 300, 1000, 1500, 2000}) Measure(order);
}

}  // namespace
}  // namespace qmx::test
