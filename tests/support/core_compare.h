// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "base/matrix.h"
#include "reference/table.h"

namespace qmx::testing {

/// All that a computation shows, as one row of numbers: shapes, elements, verdicts.
using Record = std::vector<double>;

void Append(Record& record, const Matrix& A);
void Append(Record& record, const reference::Table& A);
void Append(Record& record, const std::vector<double>& column);

/// What came out of a computation.
struct Observation {
  int fault = 0;  ///< Number of the fault that was thrown, 0 for none.
  int flags = 0;  ///< Overflow, division by zero and invalid operation, as the processor saw them.
  Record result;  ///< Empty after a fault.
};

/// Cases that each algorithm is compared on, at the least.
inline constexpr int kCases = 50000;

/// Runs a computation with clean flags and writes down what happens.
Observation Observe(const std::function<Record()>& computation);

/// True if both agree to the last bit, a NaN being equal to any other.
bool Identical(const Observation& one, const Observation& two);

reference::Table ToTable(const Matrix& A);

/// The elements row by row, exactly and readably.
std::string Print(const Matrix& A);

/// Compares the program with the plain loop, case by case.
class Comparison {
 public:
  explicit Comparison(std::string name) : name_(std::move(name)) {}
  Comparison(const Comparison&) = delete;
  Comparison& operator=(const Comparison&) = delete;
  /// Says how many cases were compared, in the test's output and in its properties.
  ~Comparison();

  /// Fails the running test, with the matrices printed, unless both give the same.
  void Compare(const std::function<Record()>& program, const std::function<Record()>& plainLoop,
               const std::vector<const Matrix*>& operands, const std::string& parameters = {});
  int Count() const { return count_; }
  int Faults() const { return faults_; }
  /// True once so many cases failed that more would only bury the first.
  bool HasSeenEnough() const { return mismatches_ >= 3; }

 private:
  std::string name_;
  int count_ = 0;
  int faults_ = 0;
  int mismatches_ = 0;
};

}  // namespace qmx::testing
