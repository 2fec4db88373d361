// SPDX-License-Identifier: MIT
// Prints the lines of its standard input through the desktop's printer and ends with 0, or with 82
// after a printer error. Its arguments: the font, or "-" for the printer's own; the file that the
// user names when asked for one.

#include <QApplication>
#include <fstream>
#include <iostream>
#include <string>
#include <vector>

#include "base/fault.h"
#include "desktop/desktop_printer.h"
#include "desktop/file_store_system.h"

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  if (argc != 3) return 2;
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
    printer.Print(lines, std::string(argv[1]) == "-" ? "" : argv[1]);
  } catch (const qmx::RuntimeFault& fault) {
    return fault.Number() == qmx::Fault::kPrinterError ? 82 : 3;
  }
  std::cout << (asked ? "asked\n" : "not asked\n");
  return 0;
}
