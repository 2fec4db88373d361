#include "commands/print_commands.h"

#include "output/printed_report.h"

namespace qmx {

void PrintSlot(Context& context, int slot) {
  PrintMatrixSection(context.printer, context.workspace, slot);
  context.printer.EndDocument();
}

void PrintReport(Context& context) {
  // Columns stand under each other only in a fixed-pitch font.
  const std::string font = context.printer.FontName();
  context.printer.SetFontName("Courier New");
  PrintFullReport(context.printer, context.workspace, context.screen);
  context.printer.EndDocument();
  context.printer.SetFontName(font);
}

}  // namespace qmx
