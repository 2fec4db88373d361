// SPDX-License-Identifier: MIT
#include "derivation/row_words.h"

#include <algorithm>

#include "derivation/scribe.h"
#include "derivation/shown.h"
#include "derivation/terms.h"

namespace qmx {
namespace {

Line With(Line line, RowOperation operation) {
  line.operation = std::move(operation);
  return line;
}

}  // namespace

Line SayExchange(int one, int two) {
  RowOperation operation;
  operation.kind = RowOperation::Kind::kExchange;
  operation.target = std::min(one, two);
  operation.source = std::max(one, two);
  return With(MakeLine("Rows ", operation.target, " and ", operation.source, " change places."),
              operation);
}

Line SaySubtract(int target, const Traced& factor, int source, bool isOfColumns) {
  const bool isNegative = IsNegative(factor);
  const Traced magnitude = isNegative ? -factor : factor;
  RowOperation operation;
  operation.kind = RowOperation::Kind::kSubtract;
  operation.isOfColumns = isOfColumns;
  operation.target = target;
  operation.source = source;
  operation.value = factor.value;
  operation.factor = Show(magnitude);
  const std::string whole = isOfColumns ? "Column " : "Row ";
  const std::string part = isOfColumns ? "column " : "row ";
  if (IsJust(factor, 0)) return With(MakeLine(whole, target, " stays as it is."), operation);
  const std::string sign = isNegative ? " plus " : " minus ";
  if (IsJust(magnitude, 1))
    return With(MakeLine(whole, target, sign + part, source, "."), operation);
  return With(MakeLine(whole, target, sign, operation.factor, " of " + part, source, "."),
              operation);
}

Line SayDivide(int target, const Traced& factor) {
  RowOperation operation;
  operation.kind = RowOperation::Kind::kDivide;
  operation.target = target;
  operation.value = factor.value;
  operation.factor = Show(factor);
  if (IsJust(factor, 1)) return With(MakeLine("Row ", target, " divided by 1."), operation);
  return With(MakeLine("Row ", target, " divided by ", operation.factor, "."), operation);
}

Line SayDivideColumn(int target, const TracedRoot& factor) {
  RowOperation operation;
  operation.kind = RowOperation::Kind::kDivide;
  operation.isOfColumns = true;
  operation.target = target;
  operation.value = factor.value;
  operation.factor = Show(factor);
  return With(MakeLine("Column ", target, " divided by ", operation.factor, "."), operation);
}

Line SayReorder(const std::vector<int>& order) {
  RowOperation operation;
  operation.kind = RowOperation::Kind::kReorder;
  operation.order = order;
  std::string text;
  ForTerms(
      static_cast<int>(order.size()),
      [&](int k) {
        const std::string row = CStr(order[static_cast<std::size_t>(k) - 1]);
        text += k == 1 ? "Row " + row + " becomes row " : ", row " + row + " row ";
        text += CStr(k);
      },
      [&text] { text += ", …"; });
  return With(MakeLine(text + "."), operation);
}

}  // namespace qmx
