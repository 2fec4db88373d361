// SPDX-License-Identifier: MIT
// Prints the lines of its standard input through the desktop's printer and ends with 0, or with 82
// after a printer error. Its arguments: the font, or "-" for the printer's own; the file that the
// user names when asked for one; the report of progress at which it is stopped, if at all.

#include <QApplication>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include "base/fault.h"
#include "desktop/desktop_printer.h"
#include "desktop/file_store_system.h"

namespace {

/// Stops at a report, counted from 1; 0 for never.
class StopAt : public qmx::Progress {
 public:
  explicit StopAt(int report) : left_(report) {}
  void Report(double) override {
    if (--left_ == 0) throw qmx::Stopped();
  }

 private:
  int left_;
};

}  // namespace

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  if (argc != 3 && argc != 4) return 2;
  const int stopAt = argc == 4 ? std::atoi(argv[3]) : 0;
  const auto files = qmx::MakeSystemFileStore();
  bool asked = false;
  qmx::DesktopPrinter printer(*files, [&] {
    asked = true;
    return std::string(argv[2]);
  });
  try {
    std::string line;
    std::vector<std::string> lines;
    while (std::getline(std::cin, line)) lines.push_back(line);
    StopAt progress(stopAt);
    printer.Prepare(lines, std::string(argv[1]) == "-" ? "" : argv[1]);
    printer.Print(progress);
  } catch (const qmx::Stopped&) {
    std::cout << "stopped\n";
    return 0;
  } catch (const qmx::RuntimeFault& fault) {
    return fault.Number() == qmx::Fault::kPrinterError ? 82 : 3;
  }
  std::cout << (asked ? "asked\n" : "not asked\n");
  return 0;
}
