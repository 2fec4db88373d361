// SPDX-License-Identifier: MIT
#include <algorithm>
#include <cmath>
#include <fstream>
#include <iterator>

#include "commands/file_commands.h"
#include "support/core_bench.h"
#include "support/core_folder.h"

namespace qmx {
namespace {

/// The 8 x 8 Rosser matrix, as it is shipped with the program.
class RosserTest : public test::Workbench {
 public:
  RosserTest() {
    std::ifstream file(test::SourceFolder() + "/examples/rosser.txt", std::ios::binary);
    files.files["rosser.txt"] = {std::istreambuf_iterator<char>(file), {}};
    screen.fileNames = {"rosser.txt"};
    RetrieveOperand(context, kSlotA);
    random.sequence = {0.1F, 0.9F, 0.3F, 0.8F, 0.2F, 0.6F, 0.7F, 0.4F};
  }

  std::vector<double> SortedEigenvalues() const {
    const Matrix& values = Array(kSlotEigenvalues);
    std::vector<double> sorted(values.Data(), values.Data() + values.Size());
    std::sort(sorted.begin(), sorted.end());
    return sorted;
  }

  /// The largest element of A·v - lambda·v over all converged vectors.
  double LargestResidual() const {
    const Matrix& a = Array(kSlotA);
    const Matrix& vectors = Array(kSlotEigenvectors);
    double largest = 0;
    for (int t = 1; t <= vectors.Cols(); ++t) {
      if (workspace.eigen.VectorStatus[t - 1] != 0) continue;
      for (int i = 1; i <= a.Rows(); ++i) {
        double sum = 0;
        for (int j = 1; j <= a.Cols(); ++j) sum += a(i, j) * vectors(j, t);
        largest = std::max(largest, std::abs(sum - Array(kSlotEigenvalues)(t, 1) * vectors(i, t)));
      }
    }
    return largest;
  }
};

const std::vector<double>& ExactEigenvalues() {
  static const std::vector<double> exact = {
      -10 * std::sqrt(10405.0),    0,    510 - 100 * std::sqrt(26.0), 1000, 1000,
      510 + 100 * std::sqrt(26.0), 1020, 10 * std::sqrt(10405.0)};
  return exact;
}

TEST_F(RosserTest, TheMatrixIsSymmetricAndSingular) {
  ASSERT_EQ(Array(kSlotA).Rows(), 8);
  Press(19);
  EXPECT_EQ(screen.Text(lblSymmetry), "Yes");
  Press(4);
  EXPECT_EQ(screen.Text(lblTraceOfA), " 4040");
}

TEST_F(RosserTest, TightParametersGiveEveryEigenvalueToTheLastDigits) {
  screen.Type(txtError, "1e-9");
  screen.Type(txtMaxcy, "2000");
  screen.Type(txtPert, "1e-5");
  Press(14);
  const std::vector<double> found = SortedEigenvalues();
  ASSERT_EQ(found.size(), 8U);
  for (int i = 0; i < 8; ++i) EXPECT_NEAR(found[i], ExactEigenvalues()[i], 1e-9);
  EXPECT_GE(workspace.eigen.ConvergedCount, 7);
  EXPECT_LT(LargestResidual(), 1e-9);
}

TEST_F(RosserTest, DefaultParametersGiveEveryEigenvalueAndVector) {
  Press(14);
  const std::vector<double> found = SortedEigenvalues();
  ASSERT_EQ(found.size(), 8U);
  for (int i = 0; i < 8; ++i) EXPECT_NEAR(found[i], ExactEigenvalues()[i], 1e-6);
  EXPECT_EQ(workspace.eigen.ConvergedCount, 8);
  EXPECT_LT(LargestResidual(), 1e-4);
}

}  // namespace
}  // namespace qmx
