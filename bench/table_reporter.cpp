#include "table_reporter.h"

#include <cstdio>

namespace qmx::bench {
namespace {

constexpr const char* kOthers[] = {"plain", "openblas", "lapack", "eigen"};

std::string TimeText(double seconds) {
  char text[32];
  const char* unit = seconds < 1e-3 ? "us" : seconds < 1 ? "ms" : "s";
  const double scale = seconds < 1e-3 ? 1e6 : seconds < 1 ? 1e3 : 1;
  std::snprintf(text, sizeof text, "%.3g %s", seconds * scale, unit);
  return text;
}

}  // namespace

bool TableReporter::ReportContext(const Context& context) {
  PrintBasicContext(&GetErrorStream(), context);
  return true;
}

void TableReporter::ReportRuns(const std::vector<Run>& runs) {
  for (const Run& run : runs) {
    if (run.error_occurred || run.run_type != Run::RT_Iteration) continue;
    const std::string& name = run.run_name.function_name;
    const std::size_t slash = name.rfind('/');
    const std::string line = name.substr(0, slash);
    Times& times = LineOf(line);
    // Processor time: other work on the machine does not count. What starts another process gives
    // its time itself.
    const bool isOwnTime = !run.run_name.time_type.empty();
    const double total = isOwnTime ? run.real_accumulated_time : run.cpu_accumulated_time;
    const double seconds = total / static_cast<double>(run.iterations);
    double& best = times.try_emplace(name.substr(slash + 1), seconds).first->second;
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
  std::printf("| task | n | time | plain loop | OpenBLAS | LAPACK | Eigen |\n");
  std::printf("|---|---:|---:|---:|---:|---:|---:|\n");
  for (const auto& [line, times] : lines_) {
    const std::size_t slash = line.rfind('/');
    const auto ours = times.find("program");
    if (ours == times.end()) continue;
    std::printf("| %s | %s | %s |", line.substr(0, slash).c_str(), line.substr(slash + 1).c_str(),
                TimeText(ours->second).c_str());
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

}  // namespace qmx::bench
