// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace qmx {

/// A line of the contents. Its page is empty where it only groups the lines below it.
struct HelpHeading {
  std::string name;
  std::string page;
  int depth = 0;  ///< 0 for the outermost lines.
};

/// A key word and a page that it leads to.
struct HelpKeyword {
  std::string word;
  std::string page;
};

/// A compiled help file, opened for reading. Pages are named as in the file, without a leading "/".
class HelpBook {
 public:
  /// Nothing where the file is missing, or is no compiled help file.
  static std::unique_ptr<HelpBook> Open(const std::string& file);

  HelpBook(const HelpBook&) = delete;
  HelpBook& operator=(const HelpBook&) = delete;
  ~HelpBook();

  /// The bytes of a page (or style sheet); empty where there is no such page.
  std::string Read(std::string_view page) const;
  bool Has(std::string_view page) const;
  const std::vector<HelpHeading>& Contents() const { return contents_; }
  const std::vector<HelpKeyword>& Index() const { return index_; }
  /// The page that the help opens with: the first one of the contents.
  std::string FirstPage() const;
  /// What a page calls itself.
  std::string TitleOf(std::string_view page) const;

  /// The pages that hold all words of a query, in any case, each as the beginning of a word or
  /// inside one; pages with a word of the query in their title come first. None for an empty query.
  std::vector<std::string> Search(std::string_view query);

 private:
  struct Handle;
  struct PageText {
    std::string title;
    std::string words;
  };

  explicit HelpBook(std::unique_ptr<Handle> handle);
  void ReadPages();

  std::unique_ptr<Handle> handle_;
  std::vector<HelpHeading> contents_;
  std::vector<HelpKeyword> index_;
  std::map<std::string, PageText> texts_;  ///< In lower case; read when first searched.
};

}  // namespace qmx
