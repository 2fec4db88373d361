// SPDX-License-Identifier: MIT
#include <string>

#include "derivation/families.h"
#include "derivation/terms.h"

namespace qmx {
namespace {

/// Of so many elements each is told.
constexpr int kMostToldElements = kFullOrder * kFullOrder;

bool IsChosen(const DerivationQuestion& question) { return question.row > 0 && question.col > 0; }

/// Tells the chosen element or, as far as there is room, all of them.
template <class Tell>
void TellElements(const DerivationQuestion& question, int rows, int cols, Scribe& scribe,
                  Tell&& tell) {
  if (IsChosen(question)) return tell(question.row, question.col);
  int told = 0;
  for (int i = 1; i <= rows; ++i) {
    for (int j = 1; j <= cols && told < kMostToldElements; ++j, ++told) tell(i, j);
  }
  if (told < rows * cols) {
    scribe.Say("And in the same way the other ", rows * cols - told, " elements.");
  }
}

/// a sign b = result, where they are not too large; `element(i, j)` is one of the result. Marks the
/// chosen element.
template <class Element>
void ShowThree(const DerivationQuestion& question, Scribe& scribe, const char* sign,
               Element&& element) {
  const Matrix& A = question.a;
  const Matrix& B = question.b;
  if (!IsShown(A.Rows(), A.Cols()) || !IsShown(B.Rows(), B.Cols())) {
    scribe.Say("The matrices are too large to be written out here.");
    return;
  }
  Elements<Traced> result(A.Rows(), B.Cols());
  for (int i = 1; i <= result.Rows(); ++i) {
    for (int j = 1; j <= result.Cols(); ++j) result(i, j) = element(i, j);
  }
  ShownMatrix a = ShowMatrix(ElementsOf<Traced>(A));
  ShownMatrix b = ShowMatrix(ElementsOf<Traced>(B));
  ShownMatrix shown = ShowMatrix(result);
  if (IsChosen(question)) shown.At(question.row, question.col).mark = CellMark::kAsked;
  scribe.Formula(std::move(a), Sign(sign), std::move(b), kEquals, std::move(shown));
}

void ShowOperand(Scribe& scribe, const Matrix& A) {
  if (IsShown(A.Rows(), A.Cols())) ShowNamed(scribe, Name{"A"}, ElementsOf<Traced>(A));
}

}  // namespace

void DeriveElementwise(const DerivationQuestion& question, Scribe& scribe) {
  const bool isSum = question.task == DerivationTask::kSum;
  const auto a = [&](int i, int j) { return TracedElement(question.a(i, j)); };
  const auto b = [&](int i, int j) { return TracedElement(question.b(i, j)); };
  const auto element = [&](int i, int j) {
    scribe.Look();
    return isSum ? a(i, j) + b(i, j) : a(i, j) - b(i, j);
  };
  scribe.Title(isSum ? "Sum of A and B" : "Difference of A and B");
  const char* sign = isSum ? "+" : "−";
  scribe.Say(isSum ? "Elements in the same place are added."
                   : "Of each element of A the one of B in the same place is taken off.");
  TellElements(question, question.a.Rows(), question.a.Cols(), scribe, [&](int i, int j) {
    scribe.Formula(Name{isSum ? "s" : "d", IndexText(i, j)}, kEquals, a(i, j), Sign(sign), b(i, j),
                   kEquals, element(i, j));
  });
  ShowThree(question, scribe, sign, element);
}

void DeriveProduct(const DerivationQuestion& question, Scribe& scribe) {
  const int count = question.a.Cols();
  const auto a = [&](int i, int j) { return TracedElement(question.a(i, j)); };
  const auto b = [&](int i, int j) { return TracedElement(question.b(i, j)); };
  const auto element = [&](int i, int j) {
    scribe.Look();
    Traced sum;
    for (int k = 1; k <= count; ++k) sum = a(i, k) * b(k, j) + sum;
    return sum;
  };
  scribe.Title("Product of A and B");
  scribe.Say(
      "Element (i, j) is row i of A times column j of B: the products of their elements, one "
      "after the other, added up.");
  TellElements(question, question.a.Rows(), question.b.Cols(), scribe, [&](int i, int j) {
    Line line = MakeLine(Name{"p", IndexText(i, j)}, kEquals);
    AppendSumOfProducts(
        line, count, [&](int k) { return a(i, k); }, [&](int k) { return b(k, j); });
    line.pieces.emplace_back(kEquals);
    line.pieces.emplace_back(Show(element(i, j)));
    line.isFormula = true;
    scribe.Add(std::move(line));
  });
  ShowThree(question, scribe, "·", element);
}

void DeriveTranspose(const DerivationQuestion& question, Scribe& scribe) {
  const Matrix& A = question.a;
  scribe.Title("Transpose of A");
  scribe.Say("Row i of A becomes column i.");
  if (!IsShown(A.Rows(), A.Cols()) || !IsShown(A.Cols(), A.Rows())) {
    scribe.Say("The matrices are too large to be written out here.");
    return;
  }
  const auto elements = ElementsOf<Traced>(A);
  Elements<Traced> transposed(A.Cols(), A.Rows());
  for (int i = 1; i <= A.Rows(); ++i) {
    for (int j = 1; j <= A.Cols(); ++j) transposed(j, i) = elements(i, j);
  }
  ShowNamed(scribe, Name{"A"}, elements);
  ShowNamed(scribe, Name{"A", "", "T"}, transposed, CellMark::kFound);
}

void DeriveTrace(const DerivationQuestion& question, Scribe& scribe) {
  const int n = question.a.Rows();
  const auto element = [&](int k) { return TracedElement(question.a(k, k)); };
  scribe.Title("Trace of A");
  ShowOperand(scribe, question.a);
  scribe.Say("The elements of the diagonal are added up.");
  Traced sum(0.0);
  Line line = MakeLine(Name{"tr"}, Sign("("), Name{"A"}, Sign(")"), kEquals);
  for (int k = 1; k <= n; ++k) {
    sum = sum + element(k);
    if (n > kMostTerms) continue;
    if (k > 1) line.pieces.emplace_back(Sign("+"));
    line.pieces.emplace_back(Show(element(k)));
  }
  if (n <= kMostTerms && n > 0) line.pieces.emplace_back(kEquals);
  line.pieces.emplace_back(Show(sum));
  line.isFormula = true;
  scribe.Add(std::move(line));
}

void DeriveSymmetry(const DerivationQuestion& question, Scribe& scribe) {
  const Matrix& A = question.a;
  const int n = A.Rows();
  scribe.Title("Symmetry of A");
  ShowOperand(scribe, A);
  scribe.Say(
      "Each element above the diagonal is compared with the one in its mirror place, until "
      "two of them differ.");
  int told = 0;
  for (int i = 1; i <= n; ++i) {
    scribe.Look();
    for (int j = i + 1; j <= n; ++j) {
      const bool differs = A(i, j) != A(j, i);
      if (differs || told++ < kMostToldElements) {
        const Traced one = TracedElement(A(i, j));
        const Traced other = TracedElement(A(j, i));
        scribe.Formula(Name{"a", IndexText(i, j)}, kEquals, one, Sign(","),
                       Name{"a", IndexText(j, i)}, kEquals, other);
        if (differs && one.isKnown && other.isKnown && one.exact == other.exact)
          scribe.Say("They look alike and differ in digits that are not shown.");
      }
      if (differs) return scribe.Say("These differ: A is not symmetric.");
    }
  }
  if (told > kMostToldElements)
    scribe.Say("The other ", told - kMostToldElements, " pairs are alike as well.");
  scribe.Say("No two of them differ: A is symmetric.");
}

}  // namespace qmx
