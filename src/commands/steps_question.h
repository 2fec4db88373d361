// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

#include "derivation/derivation.h"
#include "workspace/computation.h"

namespace qmx {

/// True for the results whose derivation there is: not for the order of the rows, nor for matrices
/// that nothing was computed from.
bool HasDerivation(Result result);

/// What the derivation of a result is called: "Inverse of A".
std::string_view DerivationTitle(Result result);

/// What keeps the steps of a result from being derived, in words for the user; empty where nothing
/// does. A result can be derived while its operands are what they were when it was computed, and
/// while it is known how that was done.
std::string WhyNoSteps(const Workspace& workspace, Result result);

/// True where the derivation of a result, as it was computed, is about one of its elements.
bool IsAboutElement(const Workspace& workspace, Result result);

/// What is to be derived of a result that nothing keeps from it. Matrices share their elements.
/// Element (row, col) is the one that is asked about, where the derivation is about one.
DerivationQuestion StepsQuestion(const Workspace& workspace, Result result, int row, int col);

/// Which of the matrices that ExactElements finds is a slot's.
std::size_t ExactIndex(Slot slot);

}  // namespace qmx
