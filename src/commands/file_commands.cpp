#include "commands/file_commands.h"

#include <optional>
#include <utility>

#include "base/number_text.h"
#include "commands/file_apply.h"
#include "commands/parameters.h"
#include "files/lu_file.h"
#include "files/matrix_file.h"
#include "files/project_file.h"
#include "files/system_file.h"
#include "workspace/availability.h"
#include "workspace/reset.h"

namespace qmx {
namespace {

constexpr std::string_view kProjectEnding = ".qmx";

void ShowFileProblem(Context& context, const std::string& what, const std::string& problem) {
  context.dialogs.ShowMessage(
      {"The file \"" + context.workspace.currentFileName + "\" " + what + "\n\n" + problem,
       Icon::kCritical});
}

/// Asks for a name that becomes the current file name, also where it stays empty. `ending` is what
/// will be appended to it.
bool AskForSaving(Context& context, std::string_view ending = {}) {
  context.workspace.currentFileName.clear();
  context.workspace.currentFileName = context.dialogs.AskSaveFile(ending);
  return !context.workspace.currentFileName.empty();
}

bool AskForOpening(Context& context, std::string_view ending = {}) {
  context.workspace.currentFileName.clear();
  context.workspace.currentFileName = context.dialogs.AskOpenFile({}, ending);
  return !context.workspace.currentFileName.empty();
}

bool WriteCurrentFile(Context& context, const std::string& bytes) {
  const FileOutcome outcome = context.files.Replace(context.workspace.currentFileName, bytes);
  if (!outcome.Ok())
    ShowFileProblem(context, "could not be written. It is as it was before.", outcome.problem);
  return outcome.Ok();
}

/// Reads and checks the current file with one of the readers. After a problem the user has been
/// told and there is nothing.
template <typename Reader>
auto ReadCurrentFile(Context& context, Reader reader)
    -> std::optional<decltype(reader(std::string_view(), SystemMemory()).content)> {
  std::string bytes;
  const FileOutcome outcome = context.files.Read(context.workspace.currentFileName, bytes);
  if (outcome.Ok()) {
    auto reading = reader(bytes, context.memory);
    if (reading.Ok()) return std::move(reading.content);
    ShowFileProblem(context, "could not be read. Nothing was changed.", reading.problem);
  } else {
    ShowFileProblem(context, "could not be read. Nothing was changed.", outcome.problem);
  }
  return std::nullopt;
}

void EndWithProjectEnding(std::string& name) {
  if (!name.ends_with(kProjectEnding)) name += kProjectEnding;
}

bool WriteProject(Context& context) {
  EndWithProjectEnding(context.workspace.currentFileName);
  return WriteCurrentFile(context, ProjectFile(context.workspace, ReadEigenTexts(context.panel)));
}

void ReadProject(Context& context) {
  auto image = ReadCurrentFile(context, ReadProjectFile);
  if (!image) return;
  ApplyProject(context, std::move(*image));
  context.windows.BringMainToFront();
}

}  // namespace

void SaveSlot(Context& context, Slot slot) {
  if (!AskForSaving(context)) return;
  const Workspace& workspace = context.workspace;
  WriteCurrentFile(context, slot == kSlotSystem ? SystemFile(workspace)
                                                : MatrixFile(slot, workspace.At(slot).array));
}

void RetrieveOperand(Context& context, Slot operand) {
  // The dialog proposes the file used last; a cancelled one leaves that name.
  std::string name = context.dialogs.AskOpenFile(context.workspace.currentFileName, {});
  if (name.empty()) return;
  context.workspace.currentFileName = std::move(name);
  auto matrix = ReadCurrentFile(context, [operand](std::string_view bytes, const Memory& memory) {
    return ReadOperandFile(operand, bytes, memory);
  });
  if (!matrix) return;
  const int rows = matrix->Rows();
  const int cols = matrix->Cols();
  ApplyMatrix(context, operand, {std::move(*matrix), rows, cols});
  context.windows.ShowWindow(operand);
  context.windows.BringMainToFront();
}

void RetrieveSystem(Context& context) {
  if (!AskForOpening(context)) return;
  auto section = ReadCurrentFile(context, ReadSystemFile);
  if (!section) return;
  Reset(context, kResultSystem);
  ApplySystem(context, std::move(*section));
  context.windows.ShowWindow(kSlotSystem);
  context.windows.BringMainToFront();
}

void SaveLU(Context& context) {
  if (AskForSaving(context)) WriteCurrentFile(context, LUFile(context.workspace.storedFactors));
}

void RetrieveLU(Context& context) {
  if (!AskForOpening(context)) return;
  auto factors = ReadCurrentFile(context, ReadLUFile);
  if (!factors) return;
  ApplyFactors(context, std::move(*factors));
  const std::string order = CStr(context.workspace.storedFactors.lRows);
  context.panel.SetText(txtEquations, order);
  context.panel.SetText(txtUnknowns, order);
  context.panel.SetEnabled(cmdCreateSystem, true);
  context.panel.SetEnabled(cmdRetrieveSystem, true);
}

void SaveProject(Context& context) {
  if (context.workspace.currentFileName.empty() && !AskForSaving(context, kProjectEnding)) return;
  WriteProject(context);
}

void SaveProjectAs(Context& context) {
  if (AskForSaving(context, kProjectEnding)) WriteProject(context);
}

void OpenProject(Context& context) {
  if (!AskForOpening(context, kProjectEnding)) return;
  EndWithProjectEnding(context.workspace.currentFileName);
  ReadProject(context);
}

void OpenNamedProject(Context& context, const std::string& name) {
  std::string& current = context.workspace.currentFileName;
  current = name;
  if (current.empty()) return;
  if (current.starts_with('"')) {
    current.erase(0, 1);
    if (!current.empty()) current.pop_back();
  }
  ReadProject(context);
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
