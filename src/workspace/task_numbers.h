// SPDX-License-Identifier: MIT
#pragma once

namespace qmx {

/// The indices of the task buttons. There are no tasks 11 to 13.
enum Task : int {
  kTaskSum = 0,
  kTaskDifference = 1,
  kTaskProduct = 2,
  kTaskDeterminant = 3,
  kTaskTrace = 4,
  kTaskInverse = 5,
  kTaskAdjoint = 6,
  kTaskAdjointByInverse = 7,
  kTaskLU = 8,
  kTaskQR = 9,
  kTaskDefiniteness = 10,
  kTaskEigen = 14,
  kTaskTranspose = 15,
  kTaskScale = 16,
  kTaskShift = 17,
  kTaskSpecialMatrix = 18,
  kTaskSymmetry = 19,
};

}  // namespace qmx
