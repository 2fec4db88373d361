// SPDX-License-Identifier: MIT
#include "commands/computed_news.h"

#include "base/number_text.h"
#include "workspace/result_table.h"

namespace qmx {
namespace {

std::string NewsOfMatrix(const Workspace& workspace, Slot slot) {
  const Matrix& array = workspace.At(slot).array;
  const SlotInfo& info = InfoOf(slot);
  return std::string(info.title) + " computed, " + CStr(array.Rows()) +
         (info.filedAsVector ? " values" : " by " + CStr(array.Cols()));
}

/// "Determinant of A=" without its sign, and what it is.
std::string NewsOfValue(const ResultInfo& info, std::string_view value) {
  const std::size_t first = value.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return std::string(info.printed.substr(0, info.printed.size() - 1)) + ": " +
         std::string(value.substr(first, value.find_last_not_of(' ') - first + 1));
}

}  // namespace

std::string ComputedNews(const Workspace& workspace) {
  std::string all;
  const auto add = [&all](const std::string& news) {
    if (!news.empty()) all += (all.empty() ? "" : "; ") + news;
  };
  for (const ResultInfo& info : kResults) {
    if (!workspace.computedNow[info.result] || !(workspace.*info.flag)) continue;
    if (info.number != nullptr) {
      add(NewsOfValue(info, CStr(workspace.*info.number)));
    } else if (info.verdict != nullptr) {
      add(NewsOfValue(info, workspace.*info.verdict));
    } else if (info.operands != kFromNothing || info.result == kResultCreated) {
      ForEachSlot(info, [&](Slot slot) { add(NewsOfMatrix(workspace, slot)); });
    }
  }
  return all;
}

}  // namespace qmx
