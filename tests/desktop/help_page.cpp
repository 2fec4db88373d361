// SPDX-License-Identifier: MIT
#include "desktop/help_page.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>

#include "support/core_folder.h"

namespace qmx::test {
namespace {

const std::filesystem::path kFolder = std::filesystem::path(SourceFolder()) / "docs" / "help";

std::string Between(std::string_view text, std::size_t& from, std::string_view open,
                    std::string_view close) {
  const std::size_t start = text.find(open, from);
  if (start == std::string_view::npos) {
    from = start;
    return {};
  }
  const std::size_t end = text.find(close, start + open.size());
  from = end;
  if (end == std::string_view::npos) return {};
  from = end + close.size();
  return std::string(text.substr(start + open.size(), end - start - open.size()));
}

/// The pieces of a text that stand between an opening and a closing tag.
std::vector<std::string> Pieces(std::string_view text, std::string_view open,
                                std::string_view close) {
  std::vector<std::string> pieces;
  for (std::size_t at = 0;;) {
    std::string piece = Between(text, at, open, close);
    if (at == std::string_view::npos) return pieces;
    pieces.push_back(std::move(piece));
  }
}

}  // namespace

std::string ReadableText(std::string_view html) {
  static const std::map<std::string_view, std::string_view> kEntities{
      {"amp", "&"}, {"lt", "<"}, {"gt", ">"}, {"quot", "\""}, {"nbsp", " "}, {"minus", "-"}};
  std::string text;
  for (std::size_t i = 0; i < html.size(); ++i) {
    if (html[i] == '<') {
      i = html.find('>', i);
    } else if (html[i] == '&') {
      const std::size_t end = html.find(';', i);
      const auto entity = kEntities.find(html.substr(i + 1, end - i - 1));
      text += entity == kEntities.end() ? "?" : entity->second;
      i = end;
    } else {
      text += html[i];
    }
  }
  return text;
}

std::vector<HelpStep> StepsOf(std::string_view page) {
  std::vector<HelpStep> steps;
  constexpr std::string_view kMark = " data-";
  for (std::size_t at = page.find(kMark); at != std::string_view::npos;
       at = page.find(kMark, at + 1)) {
    const std::size_t tagStart = page.rfind('<', at) + 1;
    const std::string tag(page.substr(tagStart, page.find(' ', tagStart) - tagStart));
    const std::size_t nameStart = at + kMark.size();
    const std::size_t equals = page.find('=', nameStart);
    const std::size_t valueEnd = page.find('"', equals + 2);
    const std::size_t contentStart = page.find('>', valueEnd) + 1;
    const std::size_t contentEnd = page.find("</" + tag + ">", contentStart);
    const std::string_view content = page.substr(contentStart, contentEnd - contentStart);
    HelpStep step{std::string(page.substr(nameStart, equals - nameStart)),
                  std::string(page.substr(equals + 2, valueEnd - equals - 2)),
                  ReadableText(content),
                  {}};
    for (const std::string& row : Pieces(content, "<tr>", "</tr>")) {
      step.cells.emplace_back();
      for (const std::string& cell : Pieces(row, "<td>", "</td>")) {
        step.cells.back().push_back(ReadableText(cell));
      }
    }
    steps.push_back(std::move(step));
  }
  return steps;
}

std::vector<std::string> AttributeValues(std::string_view page, std::string_view attribute) {
  return Pieces(page, " " + std::string(attribute) + "=\"", "\"");
}

std::string ReadHelpFile(const std::string& name) {
  std::ifstream in(kFolder / name, std::ios::binary);
  return {std::istreambuf_iterator<char>(in), {}};
}

std::vector<std::string> HelpPages() {
  std::vector<std::string> pages;
  for (const auto& entry : std::filesystem::directory_iterator(kFolder)) {
    if (entry.path().extension() == ".html") pages.push_back(entry.path().filename().string());
  }
  std::sort(pages.begin(), pages.end());
  return pages;
}

}  // namespace qmx::test
