// SPDX-License-Identifier: MIT
#include "commands/file_commands.h"

#include <optional>
#include <utility>

#include "base/function_ref.h"
#include "base/number_text.h"
#include "commands/file_apply.h"
#include "commands/file_boxes.h"
#include "commands/import_commands.h"
#include "commands/parameters.h"
#include "commands/stopped_text.h"
#include "files/lu_file.h"
#include "files/matrix_file.h"
#include "files/project_file.h"
#include "files/system_file.h"
#include "workspace/availability.h"
#include "workspace/reset.h"

namespace qmx {
namespace {

constexpr std::string_view kProjectEnding = ".qmx";

/// Writes a file whose name becomes the current one. After a stop that is what it was before, as is
/// the file.
bool Write(Context& context, FunctionRef<bool()> write) {
  std::string& current = context.workspace.currentFileName;
  std::string before = current;
  try {
    return write();
  } catch (const Stopped&) {
    context.view.SetStatus(StoppedText(WritingOf(current)));
    current = std::move(before);
    return false;
  }
}

/// Asks for a name that becomes the current file name, also where it stays empty. `ending` is what
/// will be appended to it.
bool AskForSaving(Context& context, std::string_view ending = {}) {
  context.workspace.currentFileName.clear();
  context.workspace.currentFileName = context.dialogs.AskSaveFile(ending);
  return !context.workspace.currentFileName.empty();
}

/// Asks for the name of a file to be read. A cancelled dialog leaves no current file name; any
/// other name becomes the current one when its file has been taken.
std::string AskForOpening(Context& context, std::string_view ending = {}) {
  std::string name = context.dialogs.AskOpenFile({}, ending);
  if (name.empty()) context.workspace.currentFileName.clear();
  return name;
}

/// Writes the bytes that `compose` makes to the current file.
bool WriteCurrentFile(Context& context, FunctionRef<std::string(Progress&)> compose) {
  return WriteFile(context, context.workspace.currentFileName, compose);
}

constexpr const char* kImportReadsIt =
    "\n\nThis looks like a file of another program. File > Import reads such files.";

/// What is said at the end where one of our readers has refused a file.
using Hint = std::string (*)(std::string_view bytes, const Memory& memory);

std::string NoHint(std::string_view, const Memory&) { return {}; }
std::string ImportHint(std::string_view bytes, const Memory& memory) {
  return IsForeign(bytes, memory) ? kImportReadsIt : std::string();
}

/// Reads and checks a file with one of the readers. After a problem the user has been told and
/// there is nothing.
template <typename Reader>
auto ReadFile(Context& context, const std::string& name, Reader reader, Hint hint = NoHint)
    -> std::optional<decltype(reader(std::string_view(), SystemMemory(), NoProgress()).content)> {
  decltype(reader(std::string_view(), SystemMemory(), NoProgress())) reading;
  std::string hinted;
  const auto read = [&](Progress& progress) {
    std::string bytes;
    Stage fetching(progress, 0, 1 - kNumbersPart);
    reading.problem = context.files.Read(name, bytes, fetching).problem;
    if (!reading.Ok()) return;
    Stage checking(progress, 1 - kNumbersPart, 1);
    reading = reader(bytes, context.memory, checking);
    if (!reading.Ok()) hinted = hint(bytes, context.memory);
  };
  context.work.Run(read, "Reading " + BaseName(name));
  if (reading.Ok()) return std::move(reading.content);
  ShowFileProblem(context, name, "could not be read. Nothing was changed.",
                  reading.problem + hinted);
  return std::nullopt;
}

bool HasProjectEnding(const std::string& name) { return name.ends_with(kProjectEnding); }

std::string WithProjectEnding(const std::string& name) {
  return HasProjectEnding(name) ? name : name + std::string(kProjectEnding);
}

bool WriteProject(Context& context) {
  context.workspace.currentFileName = WithProjectEnding(context.workspace.currentFileName);
  const EigenTexts texts = ReadEigenTexts(context.panel);
  return WriteCurrentFile(
      context, [&](Progress& progress) { return ProjectFile(context.workspace, texts, progress); });
}

bool ReadProject(Context& context, const std::string& name) {
  auto image = ReadFile(context, name, ReadProjectFile);
  if (!image) return false;
  context.workspace.currentFileName = name;
  ApplyProject(context, std::move(*image));
  context.windows.BringMainToFront();
  return true;
}

}  // namespace

void SaveSlot(Context& context, Slot slot) {
  const Workspace& workspace = context.workspace;
  const auto compose = [&](Progress& progress) {
    return slot == kSlotSystem ? SystemFile(workspace, progress)
                               : MatrixFile(slot, workspace.At(slot).array, progress);
  };
  Write(context, [&] { return AskForSaving(context) && WriteCurrentFile(context, compose); });
}

void RetrieveOperand(Context& context, Slot operand) {
  // The dialog proposes the file used last; a cancelled one leaves that name.
  const std::string name = context.dialogs.AskOpenFile(context.workspace.currentFileName, {});
  if (name.empty()) return;
  const auto read = [operand](std::string_view bytes, const Memory& memory, Progress& progress) {
    return ReadOperandFile(operand, bytes, memory, progress);
  };
  auto matrix = ReadFile(context, name, read, ImportHint);
  if (!matrix) return;
  context.workspace.currentFileName = name;
  const int rows = matrix->Rows();
  const int cols = matrix->Cols();
  ApplyMatrix(context, operand, {std::move(*matrix), rows, cols});
  context.windows.ShowWindow(operand);
  context.windows.BringMainToFront();
}

void RetrieveSystem(Context& context) {
  const std::string name = AskForOpening(context);
  if (name.empty()) return;
  auto section = ReadFile(context, name, ReadSystemFile, ImportHint);
  if (!section) return;
  context.workspace.currentFileName = name;
  Reset(context, kResultSystem);
  ApplySystem(context, std::move(*section));
  context.windows.ShowWindow(kSlotSystem);
  context.windows.BringMainToFront();
}

void SaveLU(Context& context) {
  const auto compose = [&](Progress& progress) {
    return LUFile(context.workspace.storedFactors, progress);
  };
  Write(context, [&] { return AskForSaving(context) && WriteCurrentFile(context, compose); });
}

void RetrieveLU(Context& context) {
  const std::string name = AskForOpening(context);
  if (name.empty()) return;
  auto factors = ReadFile(context, name, ReadLUFile);
  if (!factors) return;
  // Factors with another U are refused below.
  if (factors->uRows == factors->uCols) context.workspace.currentFileName = name;
  ApplyFactors(context, std::move(*factors));
  const std::string order = CStr(context.workspace.storedFactors.lRows);
  context.panel.SetText(txtEquations, order);
  context.panel.SetText(txtUnknowns, order);
  context.panel.SetEnabled(cmdCreateSystem, true);
  context.panel.SetEnabled(cmdRetrieveSystem, true);
}

bool SaveProject(Context& context) {
  const std::string& current = context.workspace.currentFileName;
  if (current.empty()) return SaveProjectAs(context);
  // No dialog has shown the user the name that the ending makes of this one.
  if (!HasProjectEnding(current) && !context.dialogs.MayReplace(WithProjectEnding(current)))
    return false;
  return Write(context, [&] { return WriteProject(context); });
}

bool SaveProjectAs(Context& context) {
  return Write(context,
               [&] { return AskForSaving(context, kProjectEnding) && WriteProject(context); });
}

bool OpenProject(Context& context) {
  const std::string name = AskForOpening(context, kProjectEnding);
  return !name.empty() && ReadProject(context, WithProjectEnding(name));
}

bool OpenNamedProject(Context& context, const std::string& given) {
  if (given.empty()) return false;
  std::string name = given;
  if (name.starts_with('"')) {
    name.erase(0, 1);
    if (!name.empty()) name.pop_back();
  }
  return ReadProject(context, name);
}

bool OpenKeptProject(Context& context, const std::string& name) {
  if (!ReadProject(context, name)) return false;
  context.workspace.currentFileName.clear();
  return true;
}

std::string NameToBeSaved(const Workspace& workspace) {
  return workspace.currentFileName.empty() ? std::string()
                                           : WithProjectEnding(workspace.currentFileName);
}

bool SaveProjectAfterFault(Context& context) {
  try {
    return AskForSaving(context, kProjectEnding) && WriteProject(context);
  } catch (...) {
    // The fault that brought us here is the one to report.
    return false;
  }
}

}  // namespace qmx
