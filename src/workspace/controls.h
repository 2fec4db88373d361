// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace qmx {

/// Names one control of the main window. An element of a control array has an index beside the
/// array's name; its own name then is array, underscore, index: cmdTask_5.
struct Control {
  std::string_view name;
  int index = -1;

  std::string ObjectName() const {
    std::string text(name);
    if (index >= 0) text += "_" + std::to_string(index);
    return text;
  }
  friend bool operator==(const Control&, const Control&) = default;
};

// Text fields.
inline constexpr Control txtRowsA{"txtRowsA"};
inline constexpr Control txtColsA{"txtColsA"};
inline constexpr Control txtRowsB{"txtRowsB"};
inline constexpr Control txtColsB{"txtColsB"};
inline constexpr Control txtScalar{"txtScalar"};
inline constexpr Control txtShift{"txtShift"};
inline constexpr Control txtRowsCreated{"txtRowsCreated"};
inline constexpr Control txtColsCreated{"txtColsCreated"};
inline constexpr Control txtRandLow{"txtRandLow"};
inline constexpr Control txtRandHigh{"txtRandHigh"};
inline constexpr Control txtEquations{"txtEquations"};
inline constexpr Control txtUnknowns{"txtUnknowns"};
inline constexpr Control txtError{"txtError"};
inline constexpr Control txtMaxcy{"txtMaxcy"};
inline constexpr Control txtErs{"txtErs"};
inline constexpr Control txtPert{"txtPert"};

// Labels whose caption is a result.
inline constexpr Control lblDeterminantOfA{"lblDeterminantOfA"};
inline constexpr Control lblTraceOfA{"lblTraceOfA"};
inline constexpr Control lblDefiniteness{"lblDefiniteness"};
inline constexpr Control lblSymmetry{"lblSymmetry"};

// Buttons and menu entries that commands enable and disable.
inline constexpr Control cmdCreateA{"cmdCreateA"};
inline constexpr Control cmdCreateB{"cmdCreateB"};
inline constexpr Control cmdRetrieveA{"cmdRetrieveA"};
inline constexpr Control cmdRetrieveB{"cmdRetrieveB"};
inline constexpr Control cmdClearA{"cmdClearA"};
inline constexpr Control cmdClearB{"cmdClearB"};
inline constexpr Control cmdResetA{"cmdResetA"};
inline constexpr Control cmdResetB{"cmdResetB"};
inline constexpr Control cmdExchangeAandB{"cmdExchangeAandB"};
inline constexpr Control cmdCreateSystem{"cmdCreateSystem"};
inline constexpr Control cmdRetrieveSystem{"cmdRetrieveSystem"};
inline constexpr Control cmdClearSystem{"cmdClearSystem"};
inline constexpr Control cmdResetSystem{"cmdResetSystem"};
inline constexpr Control cmdSolve{"cmdSolve"};
inline constexpr Control cmdRetrieveLU{"cmdRetrieveLU"};
inline constexpr Control cmdSaveLU{"cmdSaveLU"};
inline constexpr Control cmdShowResults{"cmdShowResults"};
inline constexpr Control mnuPrint{"mnuPrint"};

// Check boxes.
inline constexpr Control chkSymmetric{"chkSymmetric"};
inline constexpr Control chkIntegers{"chkIntegers"};

/// The options of the groups.
enum PivotOption : int { kPivotYes, kPivotNo };
enum CreateOption : int { kCreateZeroes, kCreateOnes, kCreateIdentity, kCreateRandom };
inline constexpr int kCreateOptions = 4;

// Control arrays, indexed by slot, task or option.
inline constexpr Control fraFrame(int slot) { return {"fraFrame", slot}; }
inline constexpr Control cmdShow(int slot) { return {"cmdShow", slot}; }
inline constexpr Control cmdSave(int slot) { return {"cmdSave", slot}; }
inline constexpr Control cmdPrint(int slot) { return {"cmdPrint", slot}; }
inline constexpr Control cmdIntoA(int slot) { return {"cmdIntoA", slot}; }
inline constexpr Control cmdIntoB(int slot) { return {"cmdIntoB", slot}; }
inline constexpr Control cmdTask(int task) { return {"cmdTask", task}; }
inline constexpr Control OptPivot(int option) { return {"OptPivot", option}; }
inline constexpr Control OptCreate(int option) { return {"OptCreate", option}; }
inline constexpr Control OptSystem(int option) { return {"OptSystem", option}; }

}  // namespace qmx
