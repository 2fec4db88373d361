// SPDX-License-Identifier: MIT
#pragma once

#include <atspi/atspi.h>

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace qmx::test {

/// One object of a running program as a screen reader meets it. Objects that have gone have no name
/// and no children.
class AccessibleNode {
 public:
  AccessibleNode() = default;
  /// Takes over a reference.
  explicit AccessibleNode(AtspiAccessible* object);

  explicit operator bool() const { return object_ != nullptr; }
  std::string Name() const;
  std::string Description() const;
  AtspiRole Role() const;
  bool Has(AtspiStateType state) const;
  std::vector<AccessibleNode> Children() const;

  /// The first object below this one that is wanted; none where there is none.
  AccessibleNode Find(const std::function<bool(const AccessibleNode&)>& wanted) const;
  /// All objects below this one.
  std::vector<AccessibleNode> All() const;

  /// Does what a press does. False where the object offers nothing.
  bool Press() const;
  bool SetText(const std::string& text) const;
  std::string Text() const;
  bool Focus() const;

  /// A table's rows and columns, and one of its cells, counted from 0.
  std::pair<int, int> TableSize() const;
  AccessibleNode TableCell(int row, int col) const;
  /// Where a table has one of its cells, counted from 0, and what it says of its rows and columns.
  std::pair<int, int> PlaceOf(const AccessibleNode& cell) const;
  std::string RowHeader(int row) const;
  std::string ColumnHeader(int col) const;

 private:
  std::shared_ptr<AtspiAccessible> object_;
};

/// All programs that can be met.
AccessibleNode AccessibleDesktop();

}  // namespace qmx::test
