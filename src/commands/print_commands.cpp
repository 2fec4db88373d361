// SPDX-License-Identifier: MIT
#include "commands/print_commands.h"

#include "base/number_text.h"
#include "commands/parameters.h"
#include "output/printed_report.h"

namespace qmx {

void PrintLines(Context& context, const std::vector<std::string>& lines, std::string_view font) {
  const int pages = context.printer.Prepare(lines, font);
  if (pages == 0) return;
  if (pages <= Printer::kFewPages) return context.printer.Print(NoProgress());
  const std::string doing = "Printing " + CStr(pages) + " pages";
  context.view.SetStatus(doing + ". Stop ends it.");
  context.work.Run([&](Progress& progress) { context.printer.Print(progress); }, doing);
  context.view.SetStatus(CStr(pages) + " pages were printed.");
}

void PrintSlot(Context& context, Slot slot) {
  PrintLines(context, PrintedMatrix(context.workspace, slot), {});
}

void PrintReport(Context& context) {
  // Columns stand under each other only in a fixed-pitch font.
  PrintLines(context, PrintedReport(context.workspace, ReadEigenTexts(context.panel)),
             "Courier New");
}

}  // namespace qmx
