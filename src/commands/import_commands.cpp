// SPDX-License-Identifier: MIT
#include "commands/import_commands.h"

#include <new>
#include <optional>
#include <utility>

#include "base/fault.h"
#include "base/progress.h"
#include "commands/file_apply.h"
#include "commands/file_boxes.h"
#include "commands/system_columns.h"
#include "files/system_file.h"
#include "workspace/reset.h"

namespace qmx {
namespace {

/// A file that was read: one of our own, whose content is known, or a foreign one that was
/// recognised.
struct Source {
  std::string name;
  std::string bytes;
  std::optional<SystemSection> system;
  std::optional<Matrix> matrix;
  ForeignContents contents;
  std::string problem;
};

/// Our own files have a number on each line below the counts. A table whose first row is "1,2" has
/// two, though Retrieve would take it.
bool HasSingleNumbers(std::string_view bytes) {
  const std::size_t first = bytes.find('\n');
  if (first == std::string_view::npos) return true;
  const std::string_view second = bytes.substr(first + 1, bytes.find('\n', first + 1) - first - 1);
  return second.find(',') == std::string_view::npos;
}

/// Our own matrix file, or one of a vector, which gives a column. Nothing for any other file, also
/// for one without elements: "3,0" is rather a row of two numbers.
std::optional<Matrix> OwnMatrix(Slot target, std::string_view bytes, const Memory& memory) {
  const Slot operand = target == kSlotB ? kSlotB : kSlotA;
  FileReading<Matrix> reading = ReadOperandFile(operand, bytes, memory);
  if (!reading.Ok()) return std::nullopt;
  if (reading.content.Size() > 0) return std::move(reading.content);
  FieldScanner scanner(bytes, memory);
  MatrixSection vector;
  const bool isVector = ReadMatrixSection(scanner, kSlotSolution, vector) && ReadEnd(scanner) &&
                        vector.array.Size() > 0;
  if (!isVector) return std::nullopt;
  return std::move(vector.array);
}

bool IsProject(std::string_view bytes) {
  return bytes.starts_with("#TRUE#,") || bytes.starts_with("#FALSE#,");
}

/// Recognises the bytes of a source: our own files first.
void Recognise(Source& source, Slot target, const Memory& memory) {
  if (IsProject(source.bytes)) {
    source.problem = "This is a project. File > Open opens it.";
    return;
  }
  const bool mayBeOwn = HasSingleNumbers(source.bytes);
  if (mayBeOwn && target == kSlotSystem) {
    FileReading<SystemSection> system = ReadSystemFile(source.bytes, memory);
    if (system.Ok() && !system.content.StopsAtFactors()) {
      source.system = std::move(system.content);
      return;
    }
  }
  if (mayBeOwn) source.matrix = OwnMatrix(target, source.bytes, memory);
  if (source.matrix) return;
  ForeignOutcome<ForeignContents> found = InspectForeign(source.bytes);
  source.problem = std::move(found.problem);
  source.contents = std::move(found.content);
}

Source ReadSource(Context& context, Slot target, const std::string& name) {
  Source source;
  source.name = name;
  const auto read = [&](Progress& progress) {
    Stage fetching(progress, 0, 0.5);
    source.problem = context.files.Read(name, source.bytes, fetching).problem;
    if (source.problem.empty()) Recognise(source, target, context.memory);
    progress.Report(1);
  };
  context.work.Run(read, "Reading " + BaseName(name));
  return source;
}

/// The matrix goes where it was wanted. Returns why it cannot.
std::string Take(Context& context, Slot target, const std::string& name, Matrix values,
                 int rightColumn) {
  if (target == kSlotSystem) {
    std::string problem = TakeSystem(context, values, rightColumn);
    if (problem.empty()) context.workspace.currentFileName = name;
    return problem;
  }
  context.workspace.currentFileName = name;
  const int rows = values.Rows();
  const int cols = values.Cols();
  ApplyMatrix(context, target, {std::move(values), rows, cols});
  context.windows.ShowWindow(target);
  context.windows.BringMainToFront();
  return {};
}

/// Reads the variables of a foreign file, and keeps what was read last.
class VariableReader {
 public:
  VariableReader(Context& context, const Source& source) : context_(context), source_(source) {}

  /// Throws what ends a computation: Stopped, and faults.
  ForeignOutcome<Matrix> Read(const ForeignContents& contents, std::size_t variable) {
    const bool isTable = contents.format == ForeignFormat::kTextTable;
    if (!isTable && variable_ == variable) {
      variable_.reset();
      return std::move(last_);
    }
    ForeignOutcome<Matrix> outcome;
    const auto read = [&](Progress& progress) {
      outcome = ReadForeign(source_.bytes, contents, variable, context_.memory);
      progress.Report(1);
    };
    context_.work.Run(read, "Reading " + BaseName(source_.name));
    return outcome;
  }

  /// For a preview, from within a dialog.
  const ForeignOutcome<Matrix>& Look(std::size_t variable) {
    if (variable_ == variable) return last_;
    variable_.reset();
    try {
      last_ = Read(source_.contents, variable);
      variable_ = variable;
    } catch (const Stopped&) {
      last_ = {};
      last_.problem = "Reading was stopped.";
    } catch (const std::bad_alloc&) {
      last_ = {};
      last_.problem = "There is not enough memory.";
    } catch (const RuntimeFault&) {
      last_ = {};
      last_.problem = "There is not enough memory.";
    }
    return last_;
  }

 private:
  Context& context_;
  const Source& source_;
  std::optional<std::size_t> variable_;
  ForeignOutcome<Matrix> last_;
};

int RightColumn(const ImportQuestion& question, int cols) {
  switch (question.rightSide) {
    case RightSide::kLastColumn:
      return cols;
    case RightSide::kColumn:
      return question.rightColumn;
    default:
      return 0;
  }
}

/// Asks until what was answered can be done, or the user cancels.
void AskAndTake(Context& context, ForeignDialogs& dialogs, Slot target, Source& source) {
  VariableReader reader(context, source);
  ImportQuestion question;
  question.fileName = source.name;
  question.target = target;
  question.bytes = source.bytes;
  question.look = [&reader](std::size_t variable) -> const ForeignOutcome<Matrix>& {
    return reader.Look(variable);
  };
  question.rightSideOnly = target == kSlotSystem && TakesRightSideOnly(context.workspace);
  question.contents = source.contents;
  question.variable = source.contents.proposed;
  while (dialogs.AskImport(question)) {
    ForeignOutcome<Matrix> read = reader.Read(question.contents, question.variable);
    question.problem = std::move(read.problem);
    if (!question.problem.empty()) continue;
    const int rightColumn = RightColumn(question, read.content.Cols());
    question.problem = Take(context, target, source.name, std::move(read.content), rightColumn);
    if (!question.problem.empty()) continue;
    if (!read.note.empty())
      context.dialogs.ShowMessage({"The file \"" + source.name + "\" was read.\n\n" + read.note});
    return;
  }
}

}  // namespace

bool IsForeign(std::string_view bytes, const Memory& memory) {
  const ForeignOutcome<ForeignContents> found = InspectForeign(bytes);
  if (!found.Ok()) return false;
  // Any text may be a table: only reading tells.
  return found.content.format != ForeignFormat::kTextTable ||
         ReadForeign(bytes, found.content, 0, memory).Ok();
}

void ImportFile(Context& context, ForeignDialogs& dialogs, Slot target) {
  const std::string name = context.dialogs.AskOpenFile({}, {});
  if (!name.empty()) ImportNamedFile(context, dialogs, target, name);
}

void ImportNamedFile(Context& context, ForeignDialogs& dialogs, Slot target,
                     const std::string& name) {
  Source source = ReadSource(context, target, name);
  if (!source.problem.empty()) {
    return ShowFileProblem(context, name, "could not be read. Nothing was changed.",
                           source.problem);
  }
  if (source.system) {
    context.workspace.currentFileName = name;
    Reset(context, kResultSystem);
    ApplySystem(context, std::move(*source.system));
    context.windows.ShowWindow(kSlotSystem);
    return context.windows.BringMainToFront();
  }
  if (!source.matrix) return AskAndTake(context, dialogs, target, source);
  const int lastColumn = source.matrix->Cols();
  const std::string problem = Take(context, target, name, std::move(*source.matrix), lastColumn);
  if (!problem.empty())
    ShowFileProblem(context, name, "could not be taken. Nothing was changed.", problem);
}

}  // namespace qmx
