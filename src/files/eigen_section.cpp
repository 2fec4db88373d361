// SPDX-License-Identifier: MIT
#include "files/eigen_section.h"

#include <algorithm>
#include <cmath>

#include "base/number_text.h"
#include "workspace/known_eigenvalues.h"

namespace qmx {
namespace {

void WriteDimensions(RecordWriter& writer, int rows, int cols) {
  writer.Integer(rows);
  writer.Integer(cols);
  writer.EndRecord();
}

void WriteVectors(RecordWriter& writer, const Matrix& vectors, const EigenState& eigen) {
  WriteDimensions(writer, vectors.Rows(), vectors.Cols());
  for (int i = 1; i <= vectors.Rows(); ++i) {
    for (int j = 1; j <= vectors.Cols(); ++j) {
      if (eigen.VectorStatus[j - 1] == 0) writer.PrintNumber(vectors(i, j));
    }
  }
}

bool IsKnownStatus(double status) { return status == 0 || status == 1 || status == -1; }

bool ReadTriple(FieldScanner& scanner, EigenSection& section) {
  const std::string which = " of eigenvalue " + CStr(section.Count() + 1);
  double value = 0;
  double status = 0;
  double origin = 0;
  if (!scanner.ReadNumber(value)) return scanner.Refuse("the value" + which);
  if (!scanner.ReadNumber(status)) return scanner.Refuse("the vector's status" + which);
  if (!IsKnownStatus(status)) return scanner.RefuseLast("the vector's status 0, 1 or -1" + which);
  if (!scanner.ReadNumber(origin)) return scanner.Refuse("the position" + which);
  if (origin < 1 || origin != std::nearbyint(origin))
    return scanner.RefuseLast("the position" + which + ", a whole number from 1 on");
  section.values.push_back(value);
  section.status.push_back(status);
  section.origin.push_back(origin);
  return true;
}

bool ReadValues(FieldScanner& scanner, int count, EigenSection& section) {
  int ignored = 0;
  if (!ReadCount(scanner, "the number of rows of the eigenvalues", ignored) ||
      !ReadCount(scanner, "the number of columns of the eigenvalues", ignored))
    return false;
  for (int i = 1; i <= count; ++i) {
    if (!ReadTriple(scanner, section)) return false;
  }
  return true;
}

bool ReadVectors(FieldScanner& scanner, EigenSection& section) {
  int cols = 0;
  if (!ReadCount(scanner, "the number of rows of the eigenvectors", section.rows) ||
      !ReadCount(scanner, "the number of columns of the eigenvectors", cols))
    return false;
  if (cols != section.Count()) {
    return scanner.RefuseLast("a column of eigenvectors for each of " + CStr(section.Count()) +
                              " eigenvalues");
  }
  const auto stored =
      static_cast<int>(std::count(section.status.begin(), section.status.end(), 0.0));
  return ReadElements(scanner, "the eigenvectors", section.rows, stored, section.converged) &&
         (scanner.HasRoomFor(section.rows, cols) ||
          scanner.RefuseLast("a size of the eigenvectors that fits into memory"));
}

}  // namespace

Matrix EigenSection::Vectors() const {
  Matrix vectors(rows, Count());
  for (int i = 1; i <= rows; ++i) {
    int stored = 0;
    for (int j = 1; j <= Count(); ++j) {
      if (status[j - 1] == 0) vectors(i, j) = converged(i, ++stored);
    }
  }
  return vectors;
}

void WriteEigenSection(RecordWriter& writer, const Workspace& workspace, const EigenTexts& texts) {
  const EigenState& eigen = workspace.eigen;
  const Matrix& vectors = workspace.At(kSlotEigenvectors).array;
  const int count = KnownEigenvalues(workspace);
  for (const std::string& text : texts) writer.Number(Val(text));
  writer.Integer(count);
  writer.EndRecord();
  if (count == 0) return;
  WriteDimensions(writer, count, 1);
  for (int i = 1; i <= count; ++i) {
    writer.Number(workspace.At(kSlotEigenvalues).array(i, 1));
    writer.Number(eigen.VectorStatus[i - 1]);
    writer.Number(eigen.EigenOrigin[i - 1]);
    writer.EndRecord();
  }
  const int found = vectors.Cols() == count ? eigen.ConvergedCount : 0;
  writer.PrintInteger(found);
  if (found > 0) WriteVectors(writer, vectors, eigen);
}

bool ReadEigenSection(FieldScanner& scanner, EigenSection& section) {
  for (std::size_t i = 0; i < kEigenParameters.size(); ++i) {
    if (!scanner.ReadNumber(section.parameters[i]))
      return scanner.Refuse(kEigenParameters[i].meaning);
  }
  int count = 0;
  if (!ReadCount(scanner, "the number of eigenvalues", count)) return false;
  if (count == 0) return true;
  if (!ReadValues(scanner, count, section)) return false;
  const std::string meaning = "the number of eigenvectors found, 0 to " + CStr(count);
  if (!ReadCount(scanner, meaning, section.vectorCount)) return false;
  if (section.vectorCount > count) return scanner.RefuseLast(meaning);
  return section.vectorCount == 0 || ReadVectors(scanner, section);
}

}  // namespace qmx
