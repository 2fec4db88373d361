// SPDX-License-Identifier: MIT
#include "files/system_file.h"

#include <utility>

namespace qmx {

std::size_t SystemSectionSize(const Workspace& workspace) {
  std::size_t numbers = workspace.At(kSlotSystem).array.Size();
  if (workspace.SystemMethod == kSystemByFactors)
    numbers += workspace.storedFactors.L.Size() + workspace.storedFactors.U.Size();
  return numbers;
}

void WriteSystemSection(RecordWriter& writer, const Workspace& workspace) {
  WriteMatrixSection(writer, kSlotSystem, workspace.At(kSlotSystem).array);
  writer.PrintInteger(workspace.SystemMethod);
  if (workspace.SystemMethod == kSystemByFactors) WriteLUFactors(writer, workspace.storedFactors);
}

bool ReadSystemSection(FieldScanner& scanner, SystemSection& section) {
  if (!ReadMatrixSection(scanner, kSlotSystem, section.matrix)) return false;
  const std::string expected = "the kind of the system, 0 to 2";
  std::int32_t kind = 0;
  if (!scanner.ReadInteger(kind)) return scanner.Refuse(expected);
  if (kind < 0 || kind >= kSystemKinds) return scanner.RefuseLast(expected);
  section.kind = kind;
  if (kind != kSystemByFactors) return true;
  return ReadLUFactors(scanner, section.factors.emplace());
}

std::string SystemFile(const Workspace& workspace, Progress& progress) {
  RecordWriter writer(SystemSectionSize(workspace), progress);
  WriteSystemSection(writer, workspace);
  return writer.Take();
}

FileReading<SystemSection> ReadSystemFile(std::string_view bytes, const Memory& memory,
                                          Progress& progress) {
  FileReading<SystemSection> reading;
  FieldScanner scanner(bytes, memory, progress);
  if (ReadSystemSection(scanner, reading.content) && !reading.content.StopsAtFactors())
    ReadEnd(scanner);
  reading.problem = scanner.ProblemText();
  return reading;
}

FileReading<Matrix> ReadOperandFile(Slot operand, std::string_view bytes, const Memory& memory,
                                    Progress& progress) {
  FileReading<Matrix> reading = ReadMatrixFile(operand, bytes, memory, progress);
  if (reading.Ok()) return reading;
  FileReading<SystemSection> system = ReadSystemFile(bytes, memory, progress);
  if (system.Ok()) return {std::move(system.content.matrix.array), {}};
  return reading;
}

}  // namespace qmx
