#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <vector>

namespace qmx::bench {

/// Collects the times of benchmarks that are named "task/size/who" and prints one line for each
/// task and size: the program's time and how many times longer the others take.
class TableReporter : public benchmark::BenchmarkReporter {
 public:
  bool ReportContext(const Context& context) override;
  void ReportRuns(const std::vector<Run>& runs) override;
  void Finalize() override;

 private:
  using Times = std::map<std::string, double>;
  Times& LineOf(const std::string& line);

  std::vector<std::pair<std::string, Times>> lines_;
};

}  // namespace qmx::bench
