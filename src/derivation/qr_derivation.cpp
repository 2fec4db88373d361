// SPDX-License-Identifier: MIT
#include <algorithm>

#include "derivation/elimination_teller.h"
#include "derivation/families.h"
#include "derivation/plain_qr.h"
#include "derivation/row_words.h"
#include "derivation/terms.h"

namespace qmx {
namespace {

Name V(int j) { return {"v", CStr(j)}; }
Name A(int j) { return {"a", CStr(j)}; }

/// Tells the orthogonalisation column by column.
class QrTeller {
 public:
  QrTeller(Scribe& scribe, const Matrix& A)
      : scribe_(scribe), choice_(A.Cols(), std::max(A.Rows(), A.Cols())) {}

  void OnColumn(int column);
  void OnProjection(Elements<Traced>& V, int column, int onto, const Traced& product,
                    const Traced& square, const Traced& quotient);
  void OnNorm(Elements<Traced>& V, int column, const Traced& square);

 private:
  void ShowNow(const Elements<Traced>& V, int column);

  Scribe& scribe_;
  StepChoice choice_;
  bool isTold_ = true;
};

void QrTeller::OnColumn(int column) {
  scribe_.Look();
  isTold_ = choice_.Tells(column);
  if (!isTold_) return choice_.SayLeftOut(scribe_, column);
  scribe_.Step("Column " + CStr(column));
  if (column == 1) scribe_.Say("The first column stays: ", V(1), kEquals, A(1), ".");
}

void QrTeller::OnProjection(Elements<Traced>& V, int column, int onto, const Traced& product,
                            const Traced& square, const Traced& quotient) {
  scribe_.Look();
  if (isTold_ && !choice_.IsFull() && onto > kFullOrder) {
    if (onto == kFullOrder + 1) {
      scribe_.Say("And in the same way the columns from ", onto, " to ", column - 1, ".");
    }
  } else if (isTold_) {
    scribe_.Formula(qmx::V(onto), Sign("·"), A(column), kEquals, product, Sign(","), qmx::V(onto),
                    Sign("·"), qmx::V(onto), kEquals, square);
    scribe_.Add(SaySubtract(column, quotient, onto, true));
  }
  if (product.value == 0) Part(scribe_, product, isTold_, "Column " + CStr(column), V);
}

void QrTeller::OnNorm(Elements<Traced>& V, int column, const Traced& square) {
  if (isTold_) {
    if (column > 1) ShowNow(V, column);
    scribe_.Formula(qmx::V(column), Sign("·"), qmx::V(column), kEquals, square, Sign(","),
                    Name{"r", IndexText(column, column)}, kEquals, Sign("√"), Sign("("), square,
                    Sign(")"), kEquals, RootOf(square));
  }
  Part(scribe_, square, isTold_, "Column " + CStr(column), V);
}

void QrTeller::ShowNow(const Elements<Traced>& V, int column) {
  if (!IsShown(V.Rows(), V.Cols())) return;
  ShownMatrix now = ShowMatrix(V);
  for (int r = 1; r <= now.rows; ++r) now.At(r, column).mark = CellMark::kChanged;
  scribe_.Formula(std::move(now));
}

void TellDivisions(Scribe& scribe, const plain::Qr<Traced>& qr) {
  const int n = qr.R.Rows();
  scribe.Step("Q and R");
  scribe.Say("Each column divided by its length gives Q; ", Name{"r", "i,j"}, " is ",
             Name{"v", "i"}, Sign("·"), Name{"a", "j"}, " divided by the length of ",
             Name{"v", "i"}, ", and ", Name{"r", "j,j"}, " the length of ", Name{"v", "j"}, ".");
  const int told = n <= kMostShownRows ? n : kFullOrder;
  for (int j = 1; j <= told; ++j) scribe.Add(SayDivideColumn(j, qr.R(j, j)));
  if (told < n) scribe.Say("And in the same way columns ", told + 1, " to ", n, ".");
}

}  // namespace

void DeriveQr(const DerivationQuestion& question, Scribe& scribe) {
  const auto start = ElementsOf<Traced>(
      question.a, std::max(question.a.Rows(), question.a.Cols()) <= kMostExactOrder);
  scribe.Title("QR factors of A");
  ShowNamed(scribe, Name{"A"}, start);
  scribe.Say(
      "From each column its parts along the columns before it are taken off, which leaves "
      "columns at right angles to each other (Gram-Schmidt); the parts are those of the "
      "column of A itself.");
  plain::Qr<Traced> qr;
  QrTeller teller(scribe, question.a);
  plain::FactorQr(start, qr, teller);
  if (qr.failedColumn != 0) {
    scribe.Say("Nothing is left of column ", qr.failedColumn,
               ": it depends on the columns before it, and A has no such factors.");
    return;
  }
  TellDivisions(scribe, qr);
  ShowNamed(scribe, Name{"Q"}, qr.Q, CellMark::kFound);
  ShowNamed(scribe, Name{"R"}, qr.R, CellMark::kFound);
}

}  // namespace qmx
