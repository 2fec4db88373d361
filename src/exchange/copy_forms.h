// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <functional>
#include <string>
#include <string_view>

#include "base/matrix.h"

namespace qmx {

/// The forms in which a matrix is copied as text for other programs.
enum class CopyForm { kText, kDecimalComma, kLatex, kMarkdown, kMatlab, kNumpy };
inline constexpr std::size_t kCopyFormCount = 6;

/// One row for each form, in the order in which a menu offers them.
struct CopyFormInfo {
  CopyForm form;
  std::string_view title;  ///< "LaTeX (bmatrix)"
};
extern const std::array<CopyFormInfo, kCopyFormCount> kCopyForms;

/// A matrix as text, each number with the fewest digits that read back to it (15 where these do).
/// Elements that are no finite number stand as words. For [1 -0.5; 1E+20 3]:
///
///   kText          "1\t-0.5\n1E+20\t3\n"
///   kDecimalComma  "1\t-0,5\n1E+20\t3\n"
///   kLatex         "\begin{bmatrix}", "1 & -0.5 \\", "1 \times 10^{20} & 3", "\end{bmatrix}", a
///                  line each; for more than ten columns behind a line that sets MaxMatrixCols
///   kMarkdown      a table without headings, aligned to the right
///   kMatlab        "[1, -0.5;", " 1E+20, 3]", a line each
///   kNumpy         "np.array([[1, -0.5],", "          [1E+20, 3]], dtype=float)", a line each
///
/// `fraction`, where given, tells of element (i, j) the fraction that stands in its place, "-1/3";
/// nothing where the number does. LaTeX has it as \frac.
using FractionOf = std::function<std::string(int row, int col)>;
std::string CopyText(const Matrix& values, CopyForm form, const FractionOf& fraction = {});

}  // namespace qmx
