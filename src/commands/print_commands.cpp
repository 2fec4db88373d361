// SPDX-License-Identifier: MIT
#include "commands/print_commands.h"

#include "base/number_text.h"
#include "commands/parameters.h"
#include "output/printed_report.h"

namespace qmx {

namespace {

/// Prints a document. Of a long one the user is told how long it is, and can stop it.
void Print(Context& context, const std::vector<std::string>& lines, std::string_view font) {
  const int pages = context.printer.Prepare(lines, font);
  if (pages == 0) return;
  if (pages <= Printer::kFewPages) {
    Progress unheard;
    return context.printer.Print(unheard);
  }
  context.view.SetStatus("Printing " + CStr(pages) + " pages. Stop ends it.");
  context.work.Run([&](Progress& progress) { context.printer.Print(progress); });
  context.view.SetStatus(CStr(pages) + " pages were printed.");
}

}  // namespace

void PrintSlot(Context& context, Slot slot) {
  Print(context, PrintedMatrix(context.workspace, slot), {});
}

void PrintReport(Context& context) {
  // Columns stand under each other only in a fixed-pitch font.
  Print(context, PrintedReport(context.workspace, ReadEigenTexts(context.panel)), "Courier New");
}

}  // namespace qmx
