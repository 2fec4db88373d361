// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace qmx {

inline constexpr std::string_view kProgramTitle = "Orvane";

enum class Buttons { kOk, kYesNoCancel };
enum class Icon { kNone, kCritical };
enum class Answer { kOk, kYes, kNo, kCancel };

/// A modal message box.
struct Message {
  std::string text;
  Icon icon = Icon::kNone;
  Buttons buttons = Buttons::kOk;
  std::string title = std::string(kProgramTitle);
};

/// What waits for the user.
class Dialogs {
 public:
  Dialogs() = default;
  Dialogs(const Dialogs&) = delete;
  Dialogs& operator=(const Dialogs&) = delete;
  virtual ~Dialogs() = default;

  virtual Answer ShowMessage(const Message& message) = 0;
  /// The common file dialog. `name` is what it proposes; `ending`, if any, is what the caller
  /// appends to a name that has not got it. Empty when the user cancels.
  virtual std::string AskOpenFile(const std::string& name, std::string_view ending) = 0;
  /// The same for a file to be written. `ending`, if any, is what the caller appends to a name that
  /// has not got it. Before a file is replaced the user is asked, whichever way its name came
  /// about.
  virtual std::string AskSaveFile(std::string_view ending) = 0;
  /// The question of that dialog for a name that came about without it. True where there is no
  /// such file or the user lets it be replaced.
  virtual bool MayReplace(const std::string& name) = 0;
};

}  // namespace qmx
