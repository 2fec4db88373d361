// SPDX-License-Identifier: MIT
#include "desktop/accessible_node.h"

// The functions that ask for an interface are marked as old, but the ones that are to replace them
// need a binding language.
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"

namespace qmx::test {
namespace {

struct Unreference {
  void operator()(void* object) const {
    if (object != nullptr) g_object_unref(object);
  }
};

template <typename T>
std::unique_ptr<T, Unreference> Owned(T* object) {
  return std::unique_ptr<T, Unreference>(object);
}

std::string Taken(gchar* text) {
  const std::string copy = text == nullptr ? "" : text;
  g_free(text);
  return copy;
}

}  // namespace

AccessibleNode::AccessibleNode(AtspiAccessible* object) : object_(object, Unreference()) {}

std::string AccessibleNode::Name() const {
  return Taken(atspi_accessible_get_name(object_.get(), nullptr));
}

std::string AccessibleNode::Description() const {
  return Taken(atspi_accessible_get_description(object_.get(), nullptr));
}

AtspiRole AccessibleNode::Role() const { return atspi_accessible_get_role(object_.get(), nullptr); }

bool AccessibleNode::Has(AtspiStateType state) const {
  const auto states = Owned(atspi_accessible_get_state_set(object_.get()));
  return states != nullptr && atspi_state_set_contains(states.get(), state) != 0;
}

std::vector<AccessibleNode> AccessibleNode::Children() const {
  std::vector<AccessibleNode> children;
  const int count = atspi_accessible_get_child_count(object_.get(), nullptr);
  for (int i = 0; i < count; ++i) {
    AccessibleNode child(atspi_accessible_get_child_at_index(object_.get(), i, nullptr));
    if (child) children.push_back(child);
  }
  return children;
}

AccessibleNode AccessibleNode::Find(
    const std::function<bool(const AccessibleNode&)>& wanted) const {
  for (const AccessibleNode& child : Children()) {
    if (wanted(child)) return child;
    if (const AccessibleNode below = child.Find(wanted)) return below;
  }
  return {};
}

std::vector<AccessibleNode> AccessibleNode::All() const {
  std::vector<AccessibleNode> all;
  for (const AccessibleNode& child : Children()) {
    all.push_back(child);
    const std::vector<AccessibleNode> below = child.All();
    all.insert(all.end(), below.begin(), below.end());
  }
  return all;
}

bool AccessibleNode::Press() const {
  const auto action = Owned(atspi_accessible_get_action_iface(object_.get()));
  return action != nullptr && atspi_action_do_action(action.get(), 0, nullptr) != 0;
}

bool AccessibleNode::SetText(const std::string& text) const {
  const auto edit = Owned(atspi_accessible_get_editable_text_iface(object_.get()));
  return edit != nullptr &&
         atspi_editable_text_set_text_contents(edit.get(), text.c_str(), nullptr) != 0;
}

std::string AccessibleNode::Text() const {
  const auto text = Owned(atspi_accessible_get_text_iface(object_.get()));
  if (text == nullptr) return {};
  const int length = atspi_text_get_character_count(text.get(), nullptr);
  return Taken(atspi_text_get_text(text.get(), 0, length, nullptr));
}

bool AccessibleNode::Focus() const {
  const auto component = Owned(atspi_accessible_get_component_iface(object_.get()));
  return component != nullptr && atspi_component_grab_focus(component.get(), nullptr) != 0;
}

std::pair<int, int> AccessibleNode::TableSize() const {
  const auto table = Owned(atspi_accessible_get_table_iface(object_.get()));
  if (table == nullptr) return {-1, -1};
  return {atspi_table_get_n_rows(table.get(), nullptr),
          atspi_table_get_n_columns(table.get(), nullptr)};
}

AccessibleNode AccessibleNode::TableCell(int row, int col) const {
  const auto table = Owned(atspi_accessible_get_table_iface(object_.get()));
  if (table == nullptr) return {};
  return AccessibleNode(atspi_table_get_accessible_at(table.get(), row, col, nullptr));
}

std::pair<int, int> AccessibleNode::PlaceOf(const AccessibleNode& cell) const {
  const auto table = Owned(atspi_accessible_get_table_iface(object_.get()));
  if (table == nullptr) return {-1, -1};
  const int index = atspi_accessible_get_index_in_parent(cell.object_.get(), nullptr);
  return {atspi_table_get_row_at_index(table.get(), index, nullptr),
          atspi_table_get_column_at_index(table.get(), index, nullptr)};
}

std::string AccessibleNode::RowHeader(int row) const {
  const auto table = Owned(atspi_accessible_get_table_iface(object_.get()));
  return table == nullptr ? "" : Taken(atspi_table_get_row_description(table.get(), row, nullptr));
}

std::string AccessibleNode::ColumnHeader(int col) const {
  const auto table = Owned(atspi_accessible_get_table_iface(object_.get()));
  return table == nullptr ? ""
                          : Taken(atspi_table_get_column_description(table.get(), col, nullptr));
}

AccessibleNode AccessibleDesktop() { return AccessibleNode(atspi_get_desktop(0)); }

}  // namespace qmx::test
