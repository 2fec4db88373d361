#pragma once

#include <string>

#include "workspace/context.h"

namespace qmx {

/// Saves the matrix of a slot to a file that the user names.
void SaveSlot(Context& context, Slot slot);
/// Reads a matrix file into A or B (`operand` is kSlotA or kSlotB).
void RetrieveOperand(Context& context, Slot operand);
/// Reads a system file.
void RetrieveSystem(Context& context);
/// Saves and reads the stored factors.
void SaveLU(Context& context);
void RetrieveLU(Context& context);

/// The entries of the File menu.
void SaveProject(Context& context);
void SaveProjectAs(Context& context);
void OpenProject(Context& context);
/// Opens the project that a command line, or the first of some dropped files, names; nothing where
/// that is empty. A name in double quotes loses its first and last character.
void OpenNamedProject(Context& context, const std::string& given);
/// Asks for a name and saves the project to it, as the last act after a fault. False if nothing was
/// saved.
bool SaveProjectAfterFault(Context& context);

}  // namespace qmx
