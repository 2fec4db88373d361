// SPDX-License-Identifier: MIT
#pragma once

#include <deque>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "commands/foreign_dialogs.h"

namespace qmx::test {

/// Answers the questions of import and export from a script, and keeps what was asked.
class ScriptedForeign : public ForeignDialogs {
 public:
  using ImportAnswer = std::function<bool(ImportQuestion& question)>;

  std::deque<ImportAnswer> imports;       ///< Cancels once they are used up.
  std::vector<std::string> problems;      ///< What each question for an import told.
  ImportQuestion seen;                    ///< The question asked last, as it was asked.
  std::optional<ForeignChoice> exported;  ///< The answer to the next question for an export.
  ForeignChoice proposed;                 ///< What that question proposed.
  std::optional<int> column;
  int columnsAsked = 0;

  /// Answers the next question as it stands.
  void Accept() {
    imports.emplace_back([](ImportQuestion&) { return true; });
  }

  bool AskImport(ImportQuestion& question) override {
    problems.push_back(question.problem);
    seen = question;
    if (imports.empty()) return false;
    const ImportAnswer answer = std::move(imports.front());
    imports.pop_front();
    return answer(question);
  }
  bool AskExport(Slot, ForeignChoice& choice) override {
    proposed = choice;
    if (!exported) return false;
    exported->name = choice.name;
    choice = *exported;
    return true;
  }
  std::optional<int> AskRightSide(int columns) override {
    columnsAsked = columns;
    return column;
  }
};

}  // namespace qmx::test
