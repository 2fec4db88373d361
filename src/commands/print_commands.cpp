// SPDX-License-Identifier: MIT
#include "commands/print_commands.h"

#include "commands/parameters.h"
#include "output/printed_report.h"

namespace qmx {

void PrintSlot(Context& context, Slot slot) {
  context.printer.Print(PrintedMatrix(context.workspace, slot), {});
}

void PrintReport(Context& context) {
  // Columns stand under each other only in a fixed-pitch font.
  context.printer.Print(PrintedReport(context.workspace, ReadEigenTexts(context.panel)),
                        "Courier New");
}

}  // namespace qmx
