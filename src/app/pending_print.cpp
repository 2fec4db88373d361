// Stands in until the print commands are there, and goes with their coming.

#include "commands/print_commands.h"

namespace qmx {

void PrintSlot(Context& context, [[maybe_unused]] int slot) {
  context.screen.ShowMessage({"Printing is not available yet."});
}

void PrintReport(Context& context) { PrintSlot(context, kSlotA); }

}  // namespace qmx
