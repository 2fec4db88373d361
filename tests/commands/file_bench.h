// SPDX-License-Identifier: MIT
#pragma once

#include <string>

#include "commands/parameters.h"
#include "files/lu_file.h"
#include "files/project_file.h"
#include "support/core_bench.h"
#include "support/core_samples.h"

namespace qmx::test {

/// A workbench whose dialogs and files are scripted.
class FileBench : public Workbench {
 protected:
  void Answer(const std::string& name) { screen.fileNames.push_back(name); }
  void Put(const std::string& name, const std::string& bytes) { files.files[name] = bytes; }
  std::string Text(const Control& control) const { return screen.Text(control); }

  /// All that a refused file must leave alone.
  std::string Everything() {
    std::string state = ProjectFile(workspace, ReadEigenTexts(screen)) + FlagLine(workspace);
    state += LUFile(workspace.storedFactors);
    for (const auto& [name, text] : screen.texts) state += name + "=" + text + ";";
    for (const auto& [name, on] : screen.enabled) state += name + (on ? "+" : "-");
    for (const auto& [name, on] : screen.selected) state += name + (on ? "*" : " ");
    for (const bool frame : screen.frames) state += frame ? "F" : "f";
    for (const WindowState window : screen.windows)
      state += std::to_string(static_cast<int>(window));
    for (const auto& grid : screen.grids) {
      state += std::to_string(grid.rows) + "x" + std::to_string(grid.cols) + ":";
      for (const auto& [cell, text] : grid.texts) state += text + "|";
    }
    return state + std::to_string(screen.timesBroughtToFront);
  }
};

}  // namespace qmx::test
