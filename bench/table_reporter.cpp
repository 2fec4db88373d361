// SPDX-License-Identifier: MIT
#include "table_reporter.h"

#include <algorithm>
#include <cstdio>

namespace qmx::bench {
namespace {

constexpr const char* kOthers[] = {"plain", "reference", "openblas", "lapack", "eigen"};

std::string TimeText(double seconds) {
  char text[32];
  const char* unit = seconds < 1e-3 ? "us" : seconds < 1 ? "ms" : "s";
  const double scale = seconds < 1e-3 ? 1e6 : seconds < 1 ? 1e3 : 1;
  std::snprintf(text, sizeof text, "%.3g %s", seconds * scale, unit);
  return text;
}

/// "task/n" in its two halves.
std::pair<std::string, std::string> SplitLine(const std::string& line) {
  const std::size_t slash = line.rfind('/');
  return {line.substr(0, slash), line.substr(slash + 1)};
}

}  // namespace

bool TableReporter::ReportContext(const Context& context) {
  PrintBasicContext(&GetErrorStream(), context);
  return true;
}

void TableReporter::ReportRuns(const std::vector<Run>& runs) {
  for (const Run& run : runs) {
    if (run.error_occurred || run.run_type != Run::RT_Iteration) continue;
    const auto [line, who] = SplitLine(run.run_name.function_name);
    // Processor time: other work on the machine does not count. What starts another process gives
    // its time itself.
    const bool isOwnTime = !run.run_name.time_type.empty();
    const double total = isOwnTime ? run.real_accumulated_time : run.cpu_accumulated_time;
    const double seconds = total / static_cast<double>(run.iterations);
    double& best = LineOf(line).try_emplace(who, seconds).first->second;
    if (seconds < best) best = seconds;
  }
}

TableReporter::Times& TableReporter::LineOf(const std::string& line) {
  for (auto& [known, times] : lines_) {
    if (known == line) return times;
  }
  return lines_.emplace_back(line, Times()).second;
}

void TableReporter::Finalize() {
  switch (layout_) {
    case Layout::kTasks:
      return PrintTasks();
    case Layout::kSmallSizes:
      return PrintSmallSizes();
    case Layout::kTimes:
      return PrintTimes();
  }
}

void TableReporter::PrintTasks() const {
  if (peak_ > 0) std::printf("Peak: %.1f GF/s\n\n", peak_ / 1e9);
  std::printf(
      "| task | n | time | of peak | plain loop | checked loop | OpenBLAS | LAPACK | Eigen |\n"
      "|---|---:|---:|---:|---:|---:|---:|---:|---:|\n");
  for (const auto& [line, times] : lines_) {
    const auto ours = times.find("program");
    if (ours == times.end()) continue;
    const auto [task, n] = SplitLine(line);
    std::printf("| %s | %s | %s |", task.c_str(), n.c_str(), TimeText(ours->second).c_str());
    const auto operations = operations_.find(line);
    if (operations == operations_.end()) {
      std::printf(" |");
    } else {
      std::printf(" %.0f %% |", 100 * operations->second / ours->second / peak_);
    }
    for (const char* other : kOthers) {
      const auto found = times.find(other);
      if (found == times.end()) {
        std::printf(" |");
      } else {
        std::printf(" %.2f |", found->second / ours->second);
      }
    }
    std::printf("\n");
  }
}

void TableReporter::PrintTimes() const {
  std::printf("| what | n | time |\n|---|---:|---:|\n");
  for (const auto& [line, times] : lines_) {
    const auto [task, n] = SplitLine(line);
    std::printf("| %s | %s | %s |\n", task.c_str(), n.c_str(),
                TimeText(times.at("program")).c_str());
  }
}

void TableReporter::PrintSmallSizes() const {
  std::vector<std::string> tasks;
  std::vector<std::string> sizes;
  std::map<std::string, double> ratio;
  const auto note = [](std::vector<std::string>& all, const std::string& one) {
    if (std::find(all.begin(), all.end(), one) == all.end()) all.push_back(one);
  };
  for (const auto& [line, times] : lines_) {
    if (!times.contains("program") || !times.contains("plain")) continue;
    const auto [task, n] = SplitLine(line);
    note(tasks, task);
    note(sizes, n);
    ratio[line] = times.at("plain") / times.at("program");
  }
  std::printf("| n |");
  for (const std::string& task : tasks) std::printf(" %s |", task.c_str());
  std::printf("\n|---:|");
  for (std::size_t k = 0; k < tasks.size(); ++k) std::printf("---:|");
  for (const std::string& n : sizes) {
    std::printf("\n| %s |", n.c_str());
    for (const std::string& task : tasks)
      std::printf(" %.2f |", ratio[std::string(task).append("/").append(n)]);
  }
  std::printf("\n");
}

}  // namespace qmx::bench
