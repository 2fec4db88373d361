// SPDX-License-Identifier: MIT
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "workspace/context.h"
#include "workspace/field_table.h"

namespace qmx {

/// Puts the main window into the state it starts with: texts of the fields, selected options, which
/// controls are enabled and which frames are hidden.
void SetStartState(Context& context);

/// What follows from a click on an option, a check box, or a change of a field's text.
void OptCreateClick(Context& context, int option);
void ChkSymmetricClick(Context& context);
void TxtRowsCreatedChange(Context& context);
void TxtEquationsChange(Context& context);
void OptSystemClick(Context& context, int method);

/// Selects a way of solving as a click on it would.
void SelectSystemMethod(Context& context, int method);

/// What stands in the fields of the eigen task's parameters.
EigenTexts ReadEigenTexts(const Panel& panel);

/// How many controls are enabled, or not, by the way of solving.
inline constexpr std::size_t kSolvingControlCount = 5;

/// What the user sets on the main window and a project file holds: no step of its own.
struct ProjectSettings {
  EigenTexts eigen;
  std::int16_t systemMethod = kSystemOneShot;
  std::string equations;
  std::string unknowns;
  /// Which of the controls are enabled that depend on the way of solving.
  std::array<bool, kSolvingControlCount> enabled{};
  bool operator==(const ProjectSettings&) const = default;
};

ProjectSettings ReadSettings(const Context& context);
/// Brings back settings that have changed meanwhile.
void RestoreSettings(Context& context, const ProjectSettings& settings);

/// The part of the settings that a project saved now would hold: nothing of what belongs to results
/// that are not there.
struct FiledSettings {
  std::optional<std::array<double, kEigenParameters.size()>> eigen;
  std::optional<std::int16_t> systemMethod;
  bool operator==(const FiledSettings&) const = default;
};

FiledSettings FiledSettingsOf(const Context& context);

}  // namespace qmx
