// SPDX-License-Identifier: MIT
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

/// The entries of the File menu. Each tells whether the project was written or read.
bool SaveProject(Context& context);
bool SaveProjectAs(Context& context);
bool OpenProject(Context& context);
/// Opens the project that a command line, or the first of some dropped files, names; nothing where
/// that is empty. A name in double quotes loses its first and last character.
bool OpenNamedProject(Context& context, const std::string& given);
/// Opens what the program kept of an earlier run. No file becomes the current one: the next Save
/// asks for a name.
bool OpenKeptProject(Context& context, const std::string& name);
/// The name that SaveProject writes to without asking; empty where it asks.
std::string NameToBeSaved(const Workspace& workspace);
/// Asks for a name and saves the project to it, as the last act after a fault. False if nothing was
/// saved.
bool SaveProjectAfterFault(Context& context);

}  // namespace qmx
