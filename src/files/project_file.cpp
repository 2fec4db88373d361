#include "files/project_file.h"

#include <vector>

#include "base/number_text.h"

namespace qmx {
namespace {

void WriteFlags(RecordWriter& writer, const ProjectFlags& flags) {
  for (const ProjectFlagInfo& info : kProjectFlags) {
    writer.Flag(flags[info.flag]);
    if (info.endsRecord) writer.EndRecord();
  }
}

bool ReadFlags(FieldScanner& scanner, ProjectFlags& flags) {
  for (const ProjectFlagInfo& info : kProjectFlags) {
    if (!scanner.ReadFlag(flags[info.flag]))
      return scanner.Refuse("the flag #TRUE# or #FALSE# of " + std::string(info.name));
  }
  return true;
}

void WriteSection(RecordWriter& writer, const ProjectSectionInfo& section,
                  const Workspace& workspace, const Screen& screen) {
  switch (section.kind) {
    case SectionKind::kMatrix:
      return WriteMatrixSection(writer, section.slot, workspace.At(section.slot).array);
    case SectionKind::kDeterminant:
      return writer.PrintNumber(workspace.determinant);
    case SectionKind::kTrace:
      return writer.PrintNumber(workspace.trace);
    case SectionKind::kDefiniteness:
      return writer.PrintText(workspace.definitenessText);
    case SectionKind::kSymmetry:
      return writer.PrintText(workspace.symmetryText);
    case SectionKind::kEigen:
      return WriteEigenSection(writer, workspace, screen);
    case SectionKind::kSystem:
      return WriteSystemSection(writer, workspace);
  }
}

bool ReadScalar(FieldScanner& scanner, const char* meaning, double& value) {
  return scanner.ReadNumber(value) || scanner.Refuse(meaning);
}

bool ReadVerdict(FieldScanner& scanner, const char* meaning, std::string& text) {
  if (!scanner.ReadText(text)) return scanner.Refuse(meaning);
  return text.find(',') == std::string::npos ||
         scanner.RefuseLast(std::string(meaning) + " without a comma");
}

/// The map of exchanges must name rows of the Permutation matrix that is made of it.
bool ReadExchanges(FieldScanner& scanner, MatrixSection& section) {
  const FieldScanner before = scanner;
  if (!ReadMatrixSection(scanner, kSlotExchanges, section)) return false;
  const int rows = section.array.Rows();
  if (!CanAllocate(rows, rows))
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

bool ReadSection(FieldScanner& scanner, const ProjectSectionInfo& section, ProjectImage& image) {
  switch (section.kind) {
    case SectionKind::kMatrix: {
      MatrixSection& matrix = image.matrices[section.slot];
      return section.slot == kSlotExchanges ? ReadExchanges(scanner, matrix)
                                            : ReadMatrixSection(scanner, section.slot, matrix);
    }
    case SectionKind::kDeterminant:
      return ReadScalar(scanner, "the determinant", image.determinant);
    case SectionKind::kTrace:
      return ReadScalar(scanner, "the trace", image.trace);
    case SectionKind::kDefiniteness:
      return ReadVerdict(scanner, "the verdict on definiteness", image.definiteness);
    case SectionKind::kSymmetry:
      return ReadVerdict(scanner, "the verdict on symmetry", image.symmetry);
    case SectionKind::kEigen:
      return ReadEigenSection(scanner, image.eigen);
    case SectionKind::kSystem:
      return ReadSystemSection(scanner, image.system);
  }
  return false;
}

bool ReadProject(FieldScanner& scanner, ProjectImage& image) {
  if (!ReadFlags(scanner, image.flags)) return false;
  for (const ProjectSectionInfo& section : kProjectSections) {
    if (!Holds(image.flags, section)) continue;
    if (!ReadSection(scanner, section, image)) return false;
    if (image.system.StopsAtFactors()) {
      image.flags[kFlagSolution] = false;
      return true;
    }
  }
  return ReadEnd(scanner);
}

}  // namespace

std::string ProjectFile(const Workspace& workspace, const Screen& screen) {
  const ProjectFlags flags = FlagsOf(workspace);
  std::size_t numbers = SystemSectionSize(workspace);
  for (const ProjectSectionInfo& section : kProjectSections) {
    if (Holds(flags, section) && section.slot >= 0)
      numbers += workspace.At(section.slot).array.Size();
  }
  RecordWriter writer(numbers);
  WriteFlags(writer, flags);
  for (const ProjectSectionInfo& section : kProjectSections) {
    if (Holds(flags, section)) WriteSection(writer, section, workspace, screen);
  }
  return writer.Take();
}

FileReading<ProjectImage> ReadProjectFile(std::string_view bytes) {
  FileReading<ProjectImage> reading;
  FieldScanner scanner(bytes);
  ReadProject(scanner, reading.content);
  reading.problem = scanner.ProblemText();
  return reading;
}

}  // namespace qmx
