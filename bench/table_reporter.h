// SPDX-License-Identifier: MIT
#pragma once

#include <benchmark/benchmark.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace qmx::bench {

/// Collects runs named task/n/who and prints tables of the best times of who = "program" and of how
/// many times longer the others took.
class TableReporter : public benchmark::BenchmarkReporter {
 public:
  /// One line for each task and size; one line for each size with the plain loops alone; or one
  /// line for each task and size with nothing to compare with.
  enum class Layout { kTasks, kSmallSizes, kTimes };

  /// The peak is in operations per second.
  explicit TableReporter(Layout layout, double peak = 0) : layout_(layout), peak_(peak) {}

  bool ReportContext(const Context& context) override;
  void ReportRuns(const std::vector<Run>& runs) override;
  void Finalize() override;

  /// How many additions and multiplications a task takes at size n.
  void SetOperations(const std::string& task, int n, double operations) {
    operations_[task + "/" + std::to_string(n)] = operations;
  }

 private:
  using Times = std::map<std::string, double>;
  Times& LineOf(const std::string& line);
  void PrintTasks() const;
  void PrintSmallSizes() const;
  void PrintTimes() const;

  const Layout layout_;
  const double peak_;
  std::map<std::string, double> operations_;
  std::vector<std::pair<std::string, Times>> lines_;
};

}  // namespace qmx::bench
