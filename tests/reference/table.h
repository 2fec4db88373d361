// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <vector>

namespace qmx::reference {

/// An element was asked for that the table does not have.
struct SubscriptFault {};

/// A result was not a finite number: 6, 11 or 5.
struct ArithmeticFault {
  int number;
};

/// Throws the fault of the floating-point flags raised so far, if any.
void CheckFlags();

/// A rows x cols table of zeros, numbered from 0 in both directions although the algorithms begin
/// with 1. Every access is checked.
class Table {
 public:
  Table() = default;
  Table(int rows, int cols)
      : rows_(rows), cols_(cols), elements_(static_cast<std::size_t>(rows + 1) * (cols + 1)) {}

  int Rows() const { return rows_; }
  int Cols() const { return cols_; }
  double& operator()(int i, int j) { return elements_[Place(i, j)]; }
  double operator()(int i, int j) const { return elements_[Place(i, j)]; }

 private:
  std::size_t Place(int i, int j) const {
    if (i < 0 || i > rows_ || j < 0 || j > cols_) throw SubscriptFault();
    return static_cast<std::size_t>(i) * (cols_ + 1) + j;
  }

  int rows_ = 0;
  int cols_ = 0;
  std::vector<double> elements_ = std::vector<double>(1);
};

/// Zeros numbered 0..n. Every access is checked.
template <class T>
class Row {
 public:
  explicit Row(int n) : elements_(static_cast<std::size_t>(n) + 1) {}
  T& operator()(int i) { return elements_[Place(i)]; }
  T operator()(int i) const { return elements_[Place(i)]; }

 private:
  std::size_t Place(int i) const {
    if (i < 0 || static_cast<std::size_t>(i) >= elements_.size()) throw SubscriptFault();
    return static_cast<std::size_t>(i);
  }

  std::vector<T> elements_;
};

}  // namespace qmx::reference
