// SPDX-License-Identifier: MIT
#include "support/core_samples.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstring>

#include "files/project_file.h"
#include "support/core_rows.h"

namespace qmx::test {
namespace {

void Put(Workspace& workspace, Slot slot, Matrix array) {
  SlotData& data = workspace.At(slot);
  data.rows = array.Rows();
  data.cols = array.Cols();
  data.array = std::move(array);
}

void PutEigen(Workspace& workspace) {
  Put(workspace, kSlotEigenvalues, Rows({{4}, {0.5}, {-1}}));
  Put(workspace, kSlotEigenvectors, Rows({{0.6, 0.25, 0}, {0.8, -0.75, 0}, {0, 1, 0}}));
  workspace.eigen.EigenOrigin = {3, 1, 2};
  workspace.eigen.VectorStatus = {0, 1, -1};
  workspace.eigen.EigenCount = 3;
  workspace.eigen.ConvergedCount = 1;
}

void PutFactors(Workspace& workspace) {
  StoredFactors& factors = workspace.storedFactors;
  factors.L = Rows({{1, 0}, {0.5, 1}});
  factors.U = Rows({{4, 3}, {0, -1.5}});
  factors.exchanges = Rows({{2}, {1}});
  factors.lRows = factors.lCols = factors.uRows = factors.uCols = factors.exchangeRows = 2;
  factors.exchangeCols = 1;
  workspace.StoredFactorsValid = true;
}

class Generator {
 public:
  explicit Generator(std::mt19937& random) : random_(random) {}

  bool Coin() { return random_() % 2 == 0; }
  int UpTo(int most) { return static_cast<int>(random_() % static_cast<unsigned>(most + 1)); }

  double Number() {
    switch (random_() % 6) {
      case 0:
        return UpTo(20) - 10;
      case 1:
        return 0.0;
      case 2:
        return -0.0;
      case 3:
        return (UpTo(2000) - 1000) / 7.0;
      default: {
        const std::uint64_t bits = (static_cast<std::uint64_t>(random_()) << 32) | random_();
        const auto value = std::bit_cast<double>(bits);
        return std::isfinite(value) ? value : 1e300;
      }
    }
  }

  Matrix Values(int rows, int cols) {
    Matrix values(rows, cols);
    for (std::size_t i = 0; i < values.Size(); ++i) values.Data()[i] = Number();
    return values;
  }

  Matrix Permutation(int count) {
    Matrix exchanges(count, 1);
    for (int i = 1; i <= count; ++i) exchanges(i, 1) = i;
    for (int i = count; i > 1; --i) exchanges.SwapRows(i, 1 + UpTo(i - 1));
    return exchanges;
  }

  /// A number of rows or columns, now and then 0.
  int Extent() { return UpTo(9) == 0 ? 0 : 1 + UpTo(5); }

 private:
  std::mt19937& random_;
};

void PutRandomEigen(Workspace& workspace, Generator& any) {
  const int order = 1 + any.UpTo(4);
  const int count = any.UpTo(order);
  EigenState& eigen = workspace.eigen;
  eigen.EigenCount = count;
  if (count == 0) return;
  Put(workspace, kSlotEigenvalues, any.Values(count, 1));
  for (int i = 0; i < count; ++i) {
    eigen.EigenOrigin.push_back(1 + any.UpTo(order - 1));
    eigen.VectorStatus.push_back(any.UpTo(2) - 1);
    if (eigen.VectorStatus.back() == 0) ++eigen.ConvergedCount;
  }
  if (eigen.ConvergedCount == 0) return;
  Put(workspace, kSlotEigenvectors, any.Values(order, count));
  workspace.EigenvectorsComputed = true;
}

void PutRandomSystem(Workspace& workspace, Generator& any) {
  Put(workspace, kSlotSystem, any.Values(1 + any.UpTo(4), 1 + any.UpTo(4)));
  workspace.SystemMethod = static_cast<std::int16_t>(any.UpTo(2));
  if (any.Coin()) return;
  const int order = 1 + any.UpTo(4);
  StoredFactors& factors = workspace.storedFactors;
  factors.L = any.Values(order, order);
  factors.U = any.Values(order, order);
  factors.exchanges = any.Permutation(any.Coin() ? order : 1);
  if (factors.exchanges.Rows() != order) {
    factors.exchanges = Matrix(order, 1);
    for (int i = 1; i <= order; ++i) factors.exchanges(i, 1) = i;
  } else {
    factors.exchangeRows = order;
  }
  factors.lRows = factors.lCols = factors.uRows = factors.uCols = order;
  factors.exchangeCols = 1;
  workspace.StoredFactorsValid = true;
}

void PutRandomLU(Workspace& workspace, Generator& any) {
  const int rows = 1 + any.UpTo(4);
  const int cols = 1 + any.UpTo(4);
  Put(workspace, kSlotL, any.Values(rows, rows));
  Put(workspace, kSlotU, any.Values(rows, cols));
  if (any.Coin()) return;
  Put(workspace, kSlotExchanges, any.Permutation(rows));
  Matrix permutation(rows, rows);
  for (int i = 1; i <= rows; ++i)
    permutation(i, static_cast<int>(workspace.At(kSlotExchanges).array(i, 1))) = 1;
  Put(workspace, kSlotPermutation, std::move(permutation));
  workspace.ExchangesPresent = true;
}

bool SameVectors(const Workspace& one, const Workspace& two) {
  const Matrix& a = one.At(kSlotEigenvectors).array;
  const Matrix& b = two.At(kSlotEigenvectors).array;
  if (one.eigen.ConvergedCount == 0) return true;
  if (a.Rows() != b.Rows() || a.Cols() != b.Cols()) return false;
  for (int j = 1; j <= a.Cols(); ++j) {
    for (int i = 1; i <= a.Rows(); ++i) {
      const double wanted = one.eigen.VectorStatus[j - 1] == 0 ? a(i, j) : 0;
      if (b(i, j) != wanted) return false;
    }
  }
  return true;
}

bool SameEigen(const Workspace& one, const Workspace& two) {
  if (one.eigen.EigenCount != two.eigen.EigenCount) return false;
  if (one.eigen.EigenCount == 0) return true;
  return one.eigen.EigenOrigin == two.eigen.EigenOrigin &&
         one.eigen.VectorStatus == two.eigen.VectorStatus &&
         one.eigen.ConvergedCount == two.eigen.ConvergedCount &&
         one.At(kSlotEigenvalues).array == two.At(kSlotEigenvalues).array && SameVectors(one, two);
}

bool SameSystem(const Workspace& one, const Workspace& two) {
  if (one.SystemMethod != two.SystemMethod ||
      !(one.At(kSlotSystem).array == two.At(kSlotSystem).array))
    return false;
  if (one.SystemMethod != 1) return true;
  return one.StoredFactorsValid == two.StoredFactorsValid &&
         one.storedFactors.L == two.storedFactors.L && one.storedFactors.U == two.storedFactors.U &&
         one.storedFactors.exchanges == two.storedFactors.exchanges &&
         one.storedFactors.exchangeRows == two.storedFactors.exchangeRows;
}

bool SameResult(const ResultInfo& info, const Workspace& one, const Workspace& two) {
  bool same = true;
  switch (info.kind) {
    case ResultKind::kMatrices:
      ForEachSlot(info, [&](Slot slot) { same &= one.At(slot).array == two.At(slot).array; });
      return same;
    case ResultKind::kNumber:
      return one.*info.number == two.*info.number;
    case ResultKind::kVerdict:
      return one.*info.verdict == two.*info.verdict;
    case ResultKind::kEigenvalues:
      return SameEigen(one, two);
    case ResultKind::kEigenvectors:
      return true;
    case ResultKind::kSystem:
      return SameSystem(one, two);
  }
  return false;
}

}  // namespace

Workspace EverythingWorkspace() {
  Workspace workspace;
  ResultFlags flags{};
  flags.fill(true);
  SetFlags(workspace, flags);
  for (const Slot slot : {kSlotA, kSlotB, kSlotSum, kSlotDifference, kSlotProduct, kSlotL, kSlotU,
                          kSlotQ, kSlotR, kSlotInverse, kSlotAdjoint, kSlotTranspose}) {
    Put(workspace, slot, Rows({{int{slot} + 0.25, -1.0 / 3}, {1e-20, int{slot} * 1e20}}));
  }
  Put(workspace, kSlotExchanges, Rows({{2}, {1}}));
  Put(workspace, kSlotPermutation, Rows({{0, 1}, {1, 0}}));
  Put(workspace, kSlotCreated, Rows({{1, 1, 1}}));
  Put(workspace, kSlotSolution, Rows({{-0.125}, {0.1 + 0.2}}));
  Put(workspace, kSlotSystem, Rows({{5}, {-0.5}}));
  workspace.SystemMethod = 1;
  PutFactors(workspace);
  PutEigen(workspace);
  workspace.determinant = -6.5;
  workspace.trace = 1e16;
  workspace.definitenessText = "Positive definite";
  workspace.symmetryText = "Yes";
  return workspace;
}

Workspace RandomWorkspace(std::mt19937& random) {
  Generator any(random);
  Workspace workspace;
  ResultFlags flags{};
  for (bool& flag : flags) flag = any.Coin();
  flags[kResultExchanges] = flags[kResultEigenvectors] = false;
  SetFlags(workspace, flags);
  for (const ResultInfo& info : kResults) {
    if (info.kind != ResultKind::kMatrices || !flags[info.result]) continue;
    ForEachSlot(info, [&](Slot slot) {
      const bool vector = InfoOf(slot).filedAsVector;
      Put(workspace, slot, any.Values(any.Extent(), vector ? 1 : any.Extent()));
    });
  }
  workspace.ExchangesPresent = false;
  if (flags[kResultLU]) PutRandomLU(workspace, any);
  if (flags[kResultEigenvalues]) PutRandomEigen(workspace, any);
  if (flags[kResultSystem]) PutRandomSystem(workspace, any);
  workspace.determinant = any.Number();
  workspace.trace = any.Number();
  workspace.definitenessText = any.Coin() ? "Indefinite" : "";
  workspace.symmetryText = any.Coin() ? "Yes" : "No";
  return workspace;
}

bool SameProject(const Workspace& one, const Workspace& two) {
  const ResultFlags flags = FlagsOf(one);
  if (flags != FlagsOf(two)) return false;
  for (const ResultInfo& info : kResults) {
    if (Holds(flags, info.result) && !SameResult(info, one, two)) return false;
  }
  return true;
}

std::string FlagLine(const Workspace& workspace) {
  std::string line;
  for (const bool flag : FlagsOf(workspace)) line += flag ? 'T' : '-';
  return line;
}

}  // namespace qmx::test
