// SPDX-License-Identifier: MIT
#include "files/project_file.h"

#include <vector>

#include "base/number_text.h"

namespace qmx {
namespace {

/// The flags stand in three records, each of which ends with one of these.
constexpr bool EndsRecord(Result result) {
  return result == kResultB || result == kResultQR || result == kResultSolution;
}

void WriteFlags(RecordWriter& writer, const ResultFlags& flags) {
  for (const ResultInfo& info : kResults) {
    writer.Flag(flags[info.result]);
    if (EndsRecord(info.result)) writer.EndRecord();
  }
}

bool ReadFlags(FieldScanner& scanner, ResultFlags& flags) {
  for (const ResultInfo& info : kResults) {
    if (!scanner.ReadFlag(flags[info.result]))
      return scanner.Refuse("the flag #TRUE# or #FALSE# of " + std::string(info.name));
  }
  return true;
}

/// Runs through a result's matrices that are sections of their own.
template <typename Action>
void ForEachFiled(const ResultInfo& info, Action action) {
  ForEachSlot(info, [&](Slot slot) {
    if (IsFiled(slot)) action(slot);
  });
}

void WriteResult(RecordWriter& writer, const ResultInfo& info, const Workspace& workspace,
                 const EigenTexts& eigenTexts) {
  switch (info.kind) {
    case ResultKind::kMatrices:
      return ForEachFiled(
          info, [&](Slot slot) { WriteMatrixSection(writer, slot, workspace.At(slot).array); });
    case ResultKind::kNumber:
      return writer.PrintNumber(workspace.*info.number);
    case ResultKind::kVerdict:
      return writer.PrintText(workspace.*info.verdict);
    case ResultKind::kEigenvalues:
      return WriteEigenSection(writer, workspace, eigenTexts);
    case ResultKind::kEigenvectors:
      return;  // They travel with the eigenvalues.
    case ResultKind::kSystem:
      return WriteSystemSection(writer, workspace);
  }
}

bool ReadVerdict(FieldScanner& scanner, const std::string& name, std::string& text) {
  const std::string meaning = "the verdict on " + name.substr(name.find(' ') + 1);
  if (!scanner.ReadText(text)) return scanner.Refuse(meaning);
  return text.find(',') == std::string::npos || scanner.RefuseLast(meaning + " without a comma");
}

/// The map of exchanges must name rows of the Permutation matrix that is made of it.
bool ReadExchanges(FieldScanner& scanner, MatrixSection& section) {
  const FieldScanner before = scanner;
  if (!ReadMatrixSection(scanner, kSlotExchanges, section)) return false;
  const int rows = section.array.Rows();
  if (!scanner.HasRoomFor(rows, rows))
    return scanner.RefuseLast("a map of exchanges whose permutation fits into memory");
  for (int i = 1; i <= rows; ++i) {
    const int row = RoundToInteger(section.array(i, 1));
    if (row >= 1 && row <= rows) continue;
    // Back to the record, after the two counts.
    scanner = before;
    std::vector<double> passed(static_cast<std::size_t>(i) + 2);
    scanner.ReadNumbers(passed.data(), passed.size());
    return scanner.RefuseLast("exchange record " + CStr(i) + ", a row number from 1 to " +
                              CStr(rows));
  }
  return true;
}

bool ReadMatrices(FieldScanner& scanner, const ResultInfo& info, ProjectImage& image) {
  bool read = true;
  ForEachFiled(info, [&](Slot slot) {
    if (!read) return;
    read = slot == kSlotExchanges ? ReadExchanges(scanner, image.matrices[slot])
                                  : ReadMatrixSection(scanner, slot, image.matrices[slot]);
  });
  return read;
}

bool ReadResult(FieldScanner& scanner, const ResultInfo& info, ProjectImage& image) {
  const std::string name(info.name);
  switch (info.kind) {
    case ResultKind::kMatrices:
      return ReadMatrices(scanner, info, image);
    case ResultKind::kNumber:
      return scanner.ReadNumber(image.numbers[info.result]) || scanner.Refuse(name);
    case ResultKind::kVerdict:
      return ReadVerdict(scanner, name, image.verdicts[info.result]);
    case ResultKind::kEigenvalues:
      return ReadEigenSection(scanner, image.eigen);
    case ResultKind::kEigenvectors:
      return true;
    case ResultKind::kSystem:
      return ReadSystemSection(scanner, image.system);
  }
  return false;
}

bool ReadProject(FieldScanner& scanner, ProjectImage& image) {
  if (!ReadFlags(scanner, image.flags)) return false;
  for (const ResultInfo& info : kResults) {
    if (!Holds(image.flags, info.result)) continue;
    if (!ReadResult(scanner, info, image)) return false;
    if (image.system.StopsAtFactors()) {
      image.flags[kResultSolution] = false;
      return true;
    }
  }
  return ReadEnd(scanner);
}

}  // namespace

std::string ProjectFile(const Workspace& workspace, const EigenTexts& eigenTexts,
                        Progress& progress) {
  const ResultFlags flags = FlagsOf(workspace);
  std::size_t numbers = SystemSectionSize(workspace);
  for (const ResultInfo& info : kResults) {
    if (!Holds(flags, info.result)) continue;
    ForEachFiled(info, [&](Slot slot) { numbers += workspace.At(slot).array.Size(); });
  }
  RecordWriter writer(numbers, progress);
  WriteFlags(writer, flags);
  for (const ResultInfo& info : kResults) {
    if (Holds(flags, info.result)) WriteResult(writer, info, workspace, eigenTexts);
  }
  return writer.Take();
}

FileReading<ProjectImage> ReadProjectFile(std::string_view bytes, const Memory& memory,
                                          Progress& progress) {
  FileReading<ProjectImage> reading;
  FieldScanner scanner(bytes, memory, progress);
  ReadProject(scanner, reading.content);
  reading.problem = scanner.ProblemText();
  return reading;
}

}  // namespace qmx
