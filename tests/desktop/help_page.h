// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace qmx::test {

/// An element of a help page that its mark-up ties to the program: <b data-press="5">...</b> has
/// the action "press" and the target "5".
struct HelpStep {
  std::string action;
  std::string target;
  std::string text;                             ///< What the reader sees.
  std::vector<std::vector<std::string>> cells;  ///< The rows of a table.
};

/// What a reader sees of a piece of HTML: no tags, entities as characters (beyond ASCII in UTF-8).
std::string ReadableText(std::string_view html);

/// The marked elements of a page, in their order.
std::vector<HelpStep> StepsOf(std::string_view page);

/// The values of an attribute in a page, in their order.
std::vector<std::string> AttributeValues(std::string_view page, std::string_view attribute);

/// A page of the help, or all of its pages' file names in alphabetical order.
std::string ReadHelpFile(const std::string& name);
std::vector<std::string> HelpPages();

}  // namespace qmx::test
