// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "workspace/controls.h"
#include "workspace/system_kind.h"

namespace qmx {

/// What a field's text stands for when a command reads it: a count, which is refused where it is
/// none; a number; or a number that is rounded to a whole one.
enum class FieldKind { kDimension, kNumber, kWholeNumber };

/// All that is fixed about one text field of the main window.
struct FieldInfo {
  Control control;
  std::string_view start;    ///< Its text when the program starts.
  std::string_view caption;  ///< What stands beside it.
  std::string_view toolTip;
  std::string_view meaning;  ///< What it holds, for messages and for people who hear the window
                             ///< instead of seeing it.
  FieldKind kind;
};

inline constexpr std::string_view kDimensionReset =
    "2";  ///< What a reset writes into dimension fields.

inline constexpr std::array<FieldInfo, 16> kFields{{
    {txtRowsA, "2", "Rows:", "", "Rows of A", FieldKind::kDimension},
    {txtColsA, "2", "Cols:", "", "Columns of A", FieldKind::kDimension},
    {txtRowsB, "2", "Rows:", "", "Rows of B", FieldKind::kDimension},
    {txtColsB, "2", "Cols:", "", "Columns of B", FieldKind::kDimension},
    {txtScalar, "2", "Scalar:", "For scalar multiplication", "Scalar that multiplies A",
     FieldKind::kNumber},
    {txtShift, "1", "Scalar:", "For scalar shift", "Scalar that shifts the diagonal of A",
     FieldKind::kNumber},
    {txtRowsCreated, "2", "Rows:", "", "Rows of the special matrix", FieldKind::kDimension},
    {txtColsCreated, "2", "Cols:", "", "Columns of the special matrix", FieldKind::kDimension},
    {txtRandLow, "-10", "", "Controls magnitude of elements of random matrix",
     "Lower bound of random elements", FieldKind::kNumber},
    {txtRandHigh, "10", "", "Controls magnitude of elements of random matrix",
     "Upper bound of random elements", FieldKind::kNumber},
    {txtEquations, "2", "# of equations:", "", "Number of equations", FieldKind::kDimension},
    {txtUnknowns, "2", "# of unknowns:", "", "Number of unknowns", FieldKind::kDimension},
    {txtError, ".001", "Approximate error bound:", "Error MUST be >0", "Approximate error bound",
     FieldKind::kNumber},
    {txtMaxcy, "100", "Maximum # of iterations:", "Limits number of main loop iterations",
     "Maximum number of iterations", FieldKind::kWholeNumber},
    {txtErs, ".1", "Error reference for shift:", "Error MUST be >0", "Error reference for shift",
     FieldKind::kNumber},
    {txtPert, ".001", "Additional shift (if singularity):", "MUST be >0",
     "Additional shift (if singularity)", FieldKind::kNumber},
}};

/// The facts of a field; the control must be one of them.
constexpr const FieldInfo& InfoOf(const Control& field) {
  for (const FieldInfo& info : kFields) {
    if (info.control == field) return info;
  }
  return kFields.front();
}

/// A parameter of the eigen task: its field, and how the window, the printed report and messages
/// about files name it. In the order of all of these.
struct EigenParameter {
  Control field;
  Control label;
  std::string_view printed;
  const char* meaning;
};

inline constexpr std::array<EigenParameter, 4> kEigenParameters{{
    {txtError, {"lblError"}, "               MAXIMUM ERROR:", "the error bound"},
    {txtMaxcy, {"lblMaxcy"}, "         MAXIMUM # OF CYCLES:", "the limit of iterations"},
    {txtErs, {"lblErs"}, "  EIGENVALUE SHIFT CRITERION:", "the error reference for the shift"},
    {txtPert, {"lblPert"}, "EIGENVECTOR ADDITIONAL SHIFT:", "the additional shift"},
}};

/// What the fields of these parameters hold.
using EigenTexts = std::array<std::string, kEigenParameters.size()>;

/// One choice of an option group, or a check box.
struct OptionInfo {
  Control control;
  std::string_view caption;
  std::string_view toolTip;
  bool selectedAtStart;
};

inline constexpr std::array<OptionInfo, 11> kOptions{{
    {OptPivot(kPivotYes), "Yes", "", true},
    {OptPivot(kPivotNo), "No", "", false},
    {OptCreate(kCreateZeroes), "Of zeroes", "Create matrix of zeroes", true},
    {OptCreate(kCreateOnes), "Of ones", "Create matrix of ones", false},
    {OptCreate(kCreateIdentity), "Identity", "Create identity matrix", false},
    {OptCreate(kCreateRandom), "Random", "Create matrix of random elements", false},
    {chkSymmetric, "Symmetric", "Create symmetric matrix", false},
    {chkIntegers, "Integers", "All elements will be integers", false},
    {OptSystem(kSystemOneShot), "One-shot solution", "", true},
    {OptSystem(kSystemByFactors), "Solve by LU factors", "", false},
    {OptSystem(kSystemOverdetermined), "Overdetermined/inconsistent", "", false},
}};

}  // namespace qmx
