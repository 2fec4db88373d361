// SPDX-License-Identifier: MIT
#include "desktop/help_book.h"

#include <chm_lib.h>

#include <algorithm>

namespace qmx {

namespace {

// Help files are ASCII, so letters are changed one byte at a time.
std::string LowerCase(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  return lower;
}

/// The few entities that occur in titles, key words and what is searched for.
std::string WithoutEntities(std::string text) {
  constexpr std::pair<std::string_view, std::string_view> kEntities[] = {
      {"&lt;", "<"}, {"&gt;", ">"}, {"&quot;", "\""}, {"&nbsp;", " "}, {"&amp;", "&"}};
  for (const auto& [entity, character] : kEntities) {
    for (std::size_t at = text.find(entity); at != std::string::npos; at = text.find(entity, at)) {
      text.replace(at, entity.size(), character);
      at += character.size();
    }
  }
  return text;
}

/// The readable text of a page: a blank for each tag.
std::string TextOf(std::string_view page) {
  std::string text;
  bool inTag = false;
  for (const char c : page) {
    if (c == '<') inTag = true;
    if (!inTag) text += c == '\n' || c == '\r' ? ' ' : c;
    if (c == '>') {
      inTag = false;
      text += ' ';
    }
  }
  return WithoutEntities(std::move(text));
}

std::string_view Between(std::string_view text, std::string_view before, std::string_view after) {
  const std::size_t start = text.find(before);
  if (start == std::string_view::npos) return {};
  const std::size_t end = text.find(after, start + before.size());
  if (end == std::string_view::npos) return {};
  return text.substr(start + before.size(), end - start - before.size());
}

/// The tags of a contents or index file, one after the other, without their brackets.
std::vector<std::string_view> TagsOf(std::string_view text) {
  std::vector<std::string_view> tags;
  for (std::size_t at = text.find('<'); at != std::string_view::npos; at = text.find('<', at + 1)) {
    const std::size_t end = text.find('>', at);
    if (end == std::string_view::npos) break;
    tags.push_back(text.substr(at + 1, end - at - 1));
  }
  return tags;
}

bool IsTag(std::string_view tag, std::string_view name) {
  return LowerCase(tag.substr(0, name.size())) == name;
}

std::string ValueOf(std::string_view parameter) {
  return WithoutEntities(std::string(Between(parameter, "value=\"", "\"")));
}

bool IsParameter(std::string_view tag, std::string_view name) {
  return IsTag(tag, "param") && LowerCase(Between(tag, "name=\"", "\"")) == name;
}

std::vector<HelpHeading> ParseContents(std::string_view text) {
  std::vector<HelpHeading> headings;
  int depth = -1;
  for (const std::string_view tag : TagsOf(text)) {
    if (IsTag(tag, "ul")) ++depth;
    if (IsTag(tag, "/ul")) --depth;
    if (IsTag(tag, "object")) headings.push_back({{}, {}, std::max(depth, 0)});
    if (headings.empty()) continue;
    if (IsParameter(tag, "name")) headings.back().name = ValueOf(tag);
    if (IsParameter(tag, "local")) headings.back().page = ValueOf(tag);
  }
  return headings;
}

/// In an index, an object's first name is the key word, every further one a page's title.
std::vector<HelpKeyword> ParseIndex(std::string_view text) {
  std::vector<HelpKeyword> keywords;
  std::string word;
  for (const std::string_view tag : TagsOf(text)) {
    if (IsTag(tag, "object")) word.clear();
    if (word.empty() && IsParameter(tag, "name")) word = ValueOf(tag);
    if (IsParameter(tag, "local")) keywords.push_back({word, ValueOf(tag)});
  }
  return keywords;
}

std::vector<std::string> WordsOf(std::string_view query) {
  std::vector<std::string> words;
  std::string word;
  for (const char c : LowerCase(query) + " ") {
    if (c != ' ' && c != '\t') {
      word += c;
    } else if (!word.empty()) {
      words.push_back(std::move(word));
      word.clear();
    }
  }
  return words;
}

int RememberName(chmFile*, chmUnitInfo* unit, void* names) {
  static_cast<std::vector<std::string>*>(names)->emplace_back(unit->path);
  return CHM_ENUMERATOR_CONTINUE;
}

std::vector<std::string> NamesIn(chmFile* file) {
  std::vector<std::string> names;
  chm_enumerate(file, CHM_ENUMERATE_NORMAL | CHM_ENUMERATE_FILES, RememberName, &names);
  return names;
}

}  // namespace

struct HelpBook::Handle {
  explicit Handle(chmFile* opened) : file(opened) {}
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  ~Handle() { chm_close(file); }
  chmFile* file;
};

std::unique_ptr<HelpBook> HelpBook::Open(const std::string& file) {
  chmFile* opened = chm_open(file.c_str());
  if (opened == nullptr) return nullptr;
  std::unique_ptr<HelpBook> book(new HelpBook(std::make_unique<Handle>(opened)));
  return book->contents_.empty() ? nullptr : std::move(book);
}

HelpBook::HelpBook(std::unique_ptr<Handle> handle) : handle_(std::move(handle)) {
  for (const std::string& name : NamesIn(handle_->file)) {
    if (name.ends_with(".hhc")) contents_ = ParseContents(Read(name.substr(1)));
    if (name.ends_with(".hhk")) index_ = ParseIndex(Read(name.substr(1)));
  }
}

HelpBook::~HelpBook() = default;

std::string HelpBook::Read(std::string_view page) const {
  chmUnitInfo unit;
  const std::string path = "/" + std::string(page);
  if (chm_resolve_object(handle_->file, path.c_str(), &unit) != CHM_RESOLVE_SUCCESS) return {};
  std::string bytes(unit.length, '\0');
  const LONGINT64 read =
      chm_retrieve_object(handle_->file, &unit, reinterpret_cast<unsigned char*>(bytes.data()), 0,
                          static_cast<LONGINT64>(bytes.size()));
  bytes.resize(static_cast<std::size_t>(std::max<LONGINT64>(read, 0)));
  return bytes;
}

bool HelpBook::Has(std::string_view page) const { return !page.empty() && !Read(page).empty(); }

std::string HelpBook::FirstPage() const {
  for (const HelpHeading& heading : contents_) {
    if (!heading.page.empty()) return heading.page;
  }
  return {};
}

std::string HelpBook::TitleOf(std::string_view page) const {
  return WithoutEntities(std::string(Between(Read(page), "<title>", "</title>")));
}

void HelpBook::ReadPages() {
  if (!texts_.empty()) return;
  for (const HelpHeading& heading : contents_) {
    if (heading.page.empty()) continue;
    const std::string page = Read(heading.page);
    texts_[heading.page] = {LowerCase(Between(page, "<title>", "</title>")),
                            LowerCase(TextOf(page))};
  }
}

std::vector<std::string> HelpBook::Search(std::string_view query) {
  const std::vector<std::string> words = WordsOf(query);
  if (words.empty()) return {};
  ReadPages();
  std::vector<std::string> titled;
  std::vector<std::string> others;
  for (const auto& [page, text] : texts_) {
    const auto in = [](const std::string& where) {
      return [&where](const std::string& word) { return where.find(word) != std::string::npos; };
    };
    if (!std::all_of(words.begin(), words.end(), in(text.words))) continue;
    const bool named = std::any_of(words.begin(), words.end(), in(text.title));
    (named ? titled : others).push_back(page);
  }
  titled.insert(titled.end(), others.begin(), others.end());
  return titled;
}

}  // namespace qmx
