// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <span>
#include <string_view>

#include "workspace/context.h"
#include "workspace/task_numbers.h"

namespace qmx {

enum class Operands { kNone, kA, kBoth };
enum class ShapeRule { kNone, kSameShape, kMultipliable, kSquare, kNoMoreColsThanRows };

/// All that is fixed about one task.
struct TaskInfo {
  Task index;
  std::string_view caption;
  std::string_view toolTip;
  Operands operands;
  ShapeRule shape;
  void (*routine)(Context&);
};

/// The tasks in the order of their indices.
std::span<const TaskInfo> Tasks();

/// The task with this index, or null.
const TaskInfo* FindTask(int index);

}  // namespace qmx
