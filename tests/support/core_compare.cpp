// SPDX-License-Identifier: MIT
#include "support/core_compare.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <bit>
#include <cfenv>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <iostream>
#include <optional>

#include "base/arithmetic.h"
#include "base/fault.h"

namespace qmx::testing {
namespace {

bool SameBits(double one, double two) {
  if (std::isnan(one) || std::isnan(two)) return std::isnan(one) && std::isnan(two);
  return std::bit_cast<std::uint64_t>(one) == std::bit_cast<std::uint64_t>(two);
}

std::optional<int> ArithmeticFaultMet() {
  try {
    reference::CheckFlags();
  } catch (const reference::ArithmeticFault& fault) {
    return fault.number;
  }
  return std::nullopt;
}

std::string Number(double value) {
  char text[64];
  std::snprintf(text, sizeof text, "%.17g", value);
  return text;
}

std::string Difference(const Observation& program, const Observation& plain) {
  std::string text =
      "fault " + std::to_string(program.fault) + " / " + std::to_string(plain.fault) + ", flags " +
      std::to_string(program.flags) + " / " + std::to_string(plain.flags) + ", numbers " +
      std::to_string(program.result.size()) + " / " + std::to_string(plain.result.size());
  const std::size_t common = std::min(program.result.size(), plain.result.size());
  for (std::size_t k = 0; k < common; ++k) {
    if (SameBits(program.result[k], plain.result[k])) continue;
    return text + "; number " + std::to_string(k) + ": " + Number(program.result[k]) + " / " +
           Number(plain.result[k]);
  }
  return text;
}

}  // namespace

void Append(Record& record, const Matrix& A) {
  record.push_back(A.Rows());
  record.push_back(A.Cols());
  record.insert(record.end(), A.Data(), A.Data() + A.Size());
}

void Append(Record& record, const reference::Table& A) {
  record.push_back(A.Rows());
  record.push_back(A.Cols());
  for (int i = 1; i <= A.Rows(); ++i) {
    for (int j = 1; j <= A.Cols(); ++j) record.push_back(A(i, j));
  }
}

void Append(Record& record, const std::vector<double>& column) {
  record.push_back(static_cast<double>(column.size()));
  record.push_back(1);
  record.insert(record.end(), column.begin(), column.end());
}

Observation Observe(const std::function<Record()>& computation) {
  Observation seen;
  ClearArithmeticFaults();
  try {
    seen.result = computation();
  } catch (const RuntimeFault& fault) {
    seen.fault = static_cast<int>(fault.Number());
  } catch (const reference::SubscriptFault&) {
    // A run ends with its first fault, and the arithmetic came before this access.
    seen.fault = ArithmeticFaultMet().value_or(static_cast<int>(Fault::kSubscriptOutOfRange));
  } catch (const reference::ArithmeticFault& fault) {
    seen.fault = fault.number;
  }
  seen.flags = std::fetestexcept(FE_OVERFLOW | FE_DIVBYZERO | FE_INVALID);
  return seen;
}

bool Identical(const Observation& one, const Observation& two) {
  return one.fault == two.fault && one.flags == two.flags &&
         std::equal(one.result.begin(), one.result.end(), two.result.begin(), two.result.end(),
                    SameBits);
}

reference::Table ToTable(const Matrix& A) {
  reference::Table table(A.Rows(), A.Cols());
  for (int i = 1; i <= A.Rows(); ++i) {
    for (int j = 1; j <= A.Cols(); ++j) table(i, j) = A(i, j);
  }
  return table;
}

std::string Print(const Matrix& A) {
  std::string text = std::to_string(A.Rows()) + " x " + std::to_string(A.Cols()) + "\n";
  for (int i = 1; i <= A.Rows(); ++i) {
    for (int j = 1; j <= A.Cols(); ++j) text += (j == 1 ? "  " : ", ") + Number(A(i, j));
    text += '\n';
  }
  return text;
}

Comparison::~Comparison() {
  std::cout << "[ compared ] " << name_ << ": " << count_ << " cases, " << faults_
            << " of them with faults, " << mismatches_ << " mismatches\n";
  ::testing::Test::RecordProperty("compared", count_);
}

void Comparison::Compare(const std::function<Record()>& program,
                         const std::function<Record()>& plainLoop,
                         const std::vector<const Matrix*>& operands,
                         const std::string& parameters) {
  const Observation shipped = Observe(program);
  const Observation plain = Observe(plainLoop);
  ++count_;
  if (plain.fault != 0 || plain.flags != 0) ++faults_;
  if (Identical(shipped, plain)) return;
  ++mismatches_;
  std::string text = name_ + ", case " + std::to_string(count_) + " " + parameters + ": " +
                     Difference(shipped, plain) + "\n";
  for (const Matrix* operand : operands) text += Print(*operand);
  ADD_FAILURE() << text;
}

}  // namespace qmx::testing
