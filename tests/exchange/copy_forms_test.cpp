// SPDX-License-Identifier: MIT
#include "exchange/copy_forms.h"

#include <gtest/gtest.h>

#include <limits>

#include "bits.h"

namespace qmx {
namespace {

using test::Rows;

TEST(CopyForms, WriteAMatrixAsOtherProgramsReadIt) {
  const Matrix values = Rows({{1, -0.5}, {1e20, 3e-7}});
  EXPECT_EQ(CopyText(values, CopyForm::kText), "1\t-0.5\n1E+20\t0.0000003\n");
  EXPECT_EQ(CopyText(values, CopyForm::kDecimalComma), "1\t-0,5\n1E+20\t0,0000003\n");
  EXPECT_EQ(CopyText(values, CopyForm::kLatex),
            "\\begin{bmatrix}\n1 & -0.5 \\\\\n1 \\times 10^{20} & 0.0000003\n\\end{bmatrix}\n");
  EXPECT_EQ(CopyText(values, CopyForm::kMarkdown),
            "|   |   |\n| ---: | ---: |\n| 1 | -0.5 |\n| 1E+20 | 0.0000003 |\n");
  EXPECT_EQ(CopyText(values, CopyForm::kMatlab), "[1, -0.5;\n 1E+20, 0.0000003]\n");
  EXPECT_EQ(CopyText(values, CopyForm::kNumpy),
            "np.array([[1, -0.5],\n          [1E+20, 0.0000003]], dtype=float)\n");
}

TEST(CopyForms, KeepEveryBit) {
  EXPECT_EQ(CopyText(Rows({{0.1 + 0.2}}), CopyForm::kMatlab), "[0.30000000000000004]\n");
  EXPECT_EQ(CopyText(Rows({{-0.0}}), CopyForm::kMatlab), "[-0]\n");
  EXPECT_EQ(CopyText(Rows({{-0.0}}), CopyForm::kNumpy), "np.array([[-0.0]], dtype=float)\n");
  EXPECT_EQ(CopyText(Rows({{-1.5e-300}}), CopyForm::kLatex),
            "\\begin{bmatrix}\n-1.5 \\times 10^{-300}\n\\end{bmatrix}\n");
}

TEST(CopyForms, MakeRoomForManyColumnsInLatex) {
  EXPECT_TRUE(CopyText(Matrix(1, 10), CopyForm::kLatex).starts_with("\\begin{bmatrix}\n"));
  EXPECT_TRUE(CopyText(Matrix(1, 11), CopyForm::kLatex)
                  .starts_with("\\setcounter{MaxMatrixCols}{11}\n\\begin{bmatrix}\n"));
}

TEST(CopyForms, HaveWordsForWhatIsNotFinite) {
  const double infinity = std::numeric_limits<double>::infinity();
  const Matrix values = Rows({{infinity, -infinity, std::numeric_limits<double>::quiet_NaN()}});
  EXPECT_EQ(CopyText(values, CopyForm::kMatlab), "[Inf, -Inf, NaN]\n");
  EXPECT_EQ(CopyText(values, CopyForm::kNumpy),
            "np.array([[np.inf, -np.inf, np.nan]], dtype=float)\n");
}

TEST(CopyForms, AreNothingForAnEmptyMatrix) {
  for (const CopyFormInfo& info : kCopyForms) EXPECT_EQ(CopyText(Matrix(2, 0), info.form), "");
}

}  // namespace
}  // namespace qmx
