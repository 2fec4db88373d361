// SPDX-License-Identifier: MIT
#include "base/arithmetic.h"
#include "derivation/derivation.h"
#include "derivation/exact_elements.h"
#include "derivation/families.h"
#include "derivation/more_about.h"
#include "proof/library_caches.h"

namespace qmx {
namespace {

bool HasSameShape(const Matrix& A, const Matrix& B) {
  return A.Rows() == B.Rows() && A.Cols() == B.Cols();
}

bool FactorsFit(const DerivationQuestion& question) {
  const int n = question.system.Rows();
  if (n == 0 || question.system.Cols() == 0) return false;
  for (const Matrix* factor : {&question.a, &question.b}) {
    if (factor->Rows() < n || factor->Cols() < n) return false;
  }
  for (int i = 1; i <= n; ++i) {
    if (RowOfSystem(question, i) == 0) return false;
  }
  return true;
}

/// Whether the operands have the shapes that the task takes.
bool Fits(const DerivationQuestion& question) {
  const Matrix& A = question.a;
  if (A.Size() == 0) return false;
  switch (question.task) {
    case DerivationTask::kSum:
    case DerivationTask::kDifference:
      return HasSameShape(A, question.b);
    case DerivationTask::kProduct:
      return A.Cols() == question.b.Rows() && question.b.Size() != 0;
    case DerivationTask::kTranspose:
    case DerivationTask::kLu:
      return true;
    case DerivationTask::kQr:
      return A.Rows() >= A.Cols();
    case DerivationTask::kSolution:
      return A.Cols() > A.Rows();
    case DerivationTask::kSolutionByFactors:
      return FactorsFit(question);
    case DerivationTask::kLeastSquares:
      return A.Cols() >= 2 && A.Cols() - 1 <= A.Rows();
    case DerivationTask::kTrace:
    case DerivationTask::kSymmetry:
    case DerivationTask::kDeterminant:
    case DerivationTask::kInverse:
    case DerivationTask::kAdjoint:
    case DerivationTask::kDefiniteness:
    case DerivationTask::kEigenvalues:
    case DerivationTask::kEigenvectors:
      return A.IsSquare();
  }
  return false;
}

void Dispatch(const DerivationQuestion& question, Scribe& scribe) {
  switch (question.task) {
    case DerivationTask::kSum:
    case DerivationTask::kDifference:
      return DeriveElementwise(question, scribe);
    case DerivationTask::kProduct:
      return DeriveProduct(question, scribe);
    case DerivationTask::kTranspose:
      return DeriveTranspose(question, scribe);
    case DerivationTask::kTrace:
      return DeriveTrace(question, scribe);
    case DerivationTask::kSymmetry:
      return DeriveSymmetry(question, scribe);
    case DerivationTask::kDeterminant:
      return DeriveDeterminant(question, scribe);
    case DerivationTask::kInverse:
      return DeriveInverse(question, scribe);
    case DerivationTask::kAdjoint:
      return question.byCofactors ? DeriveAdjointByCofactors(question, scribe)
                                  : DeriveAdjointByInverse(question, scribe);
    case DerivationTask::kLu:
      return DeriveLu(question, scribe);
    case DerivationTask::kQr:
      return DeriveQr(question, scribe);
    case DerivationTask::kDefiniteness:
      return DeriveDefiniteness(question, scribe);
    case DerivationTask::kEigenvalues:
      return DeriveEigenvalues(question, scribe);
    case DerivationTask::kEigenvectors:
      return DeriveEigenvectors(question, scribe);
    case DerivationTask::kSolution:
      return DeriveSolution(question, scribe);
    case DerivationTask::kSolutionByFactors:
      return DeriveSolutionByFactors(question, scribe);
    case DerivationTask::kLeastSquares:
      return DeriveLeastSquares(question, scribe);
  }
}

class Fractions final : public Deriver {
 public:
  Document Derive(const DerivationQuestion& question, const DerivationLook& look) const override {
    const KeepArithmeticFaults faults;
    const LibraryCaches caches;
    Document document;
    Scribe scribe(document, look);
    if (Fits(question)) {
      Dispatch(question, scribe);
    } else {
      scribe.Title("Nothing to derive");
      scribe.Say("The matrices do not have the shapes that this task takes.");
    }
    return document;
  }
  Document MoreAbout(const Matrix& a, const DerivationLook& look) const override {
    const KeepArithmeticFaults faults;
    const LibraryCaches caches;
    return MoreAboutMatrix(a, look);
  }
  std::vector<std::vector<ExactNumber>> ExactElements(const DerivationQuestion& question,
                                                      const DerivationLook& look) const override {
    const KeepArithmeticFaults faults;
    const LibraryCaches caches;
    return Fits(question) ? ExactElementsOf(question, look)
                          : std::vector<std::vector<ExactNumber>>();
  }
};

}  // namespace

const Deriver& ExactDeriver() {
  static const Fractions fractions;
  return fractions;
}

}  // namespace qmx
