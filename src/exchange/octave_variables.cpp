// SPDX-License-Identifier: MIT
#include "exchange/octave_variables.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string>

#include "base/words.h"
#include "exchange/refusal.h"
#include "exchange/word_reader.h"

namespace qmx {
namespace {

constexpr std::size_t kMostVariables = 10000;
constexpr std::size_t kLongestName = 80;

constexpr std::array<OctaveType, 29> kTypes = {{
    {"scalar", OctaveBody::kNumber},
    {"float scalar", OctaveBody::kNumber},
    {"bool", OctaveBody::kNumber},
    {"int8 scalar", OctaveBody::kNumber, true},
    {"int16 scalar", OctaveBody::kNumber, true},
    {"int32 scalar", OctaveBody::kNumber, true},
    {"int64 scalar", OctaveBody::kNumber, true},
    {"uint8 scalar", OctaveBody::kNumber, true},
    {"uint16 scalar", OctaveBody::kNumber, true},
    {"uint32 scalar", OctaveBody::kNumber, true},
    {"uint64 scalar", OctaveBody::kNumber, true},
    {"matrix", OctaveBody::kMatrix},
    {"float matrix", OctaveBody::kMatrix},
    {"bool matrix", OctaveBody::kMatrix},
    {"int8 matrix", OctaveBody::kMatrix, true},
    {"int16 matrix", OctaveBody::kMatrix, true},
    {"int32 matrix", OctaveBody::kMatrix, true},
    {"int64 matrix", OctaveBody::kMatrix, true},
    {"uint8 matrix", OctaveBody::kMatrix, true},
    {"uint16 matrix", OctaveBody::kMatrix, true},
    {"uint32 matrix", OctaveBody::kMatrix, true},
    {"uint64 matrix", OctaveBody::kMatrix, true},
    {"diagonal matrix", OctaveBody::kDiagonal},
    {"float diagonal matrix", OctaveBody::kDiagonal},
    {"permutation matrix", OctaveBody::kPermutation},
    {"sparse matrix", OctaveBody::kSparse},
    {"sparse bool matrix", OctaveBody::kSparse},
    {"range", OctaveBody::kRange},
    {"double_range", OctaveBody::kRange},
}};

std::string TypeProblem(std::string_view type) {
  if (FindOctaveType(type) != nullptr) return {};
  if (type.find("complex") != std::string_view::npos)
    return "The variable holds complex numbers; the program has real numbers only.";
  return "The variable is of type " + Quoted(type) + " and no matrix of numbers.";
}

/// Goes through a file from variable to variable.
class FileScanner {
 public:
  explicit FileScanner(std::string_view bytes) : reader_(bytes) {}
  std::vector<OctaveVariable> Scan();

 private:
  std::optional<std::string_view> TakeValue(std::string_view key);
  std::uint64_t TakeCount(std::string_view key);
  bool NextName(std::string_view& name);
  void ReadType(OctaveVariable& entry, std::string_view type);
  std::uint64_t TakeShape(std::string& shape);
  void SkipTexts();

  WordReader reader_;
  /// How many of the next variables are parts of those before.
  std::uint64_t parts_ = 0;
};

std::optional<std::string_view> FileScanner::TakeValue(std::string_view key) {
  const auto value = OctaveValue(reader_.PeekLine(), key);
  std::string_view line;
  if (value) reader_.NextLine(line);
  return value;
}

std::uint64_t FileScanner::TakeCount(std::string_view key) {
  const auto value = TakeValue(key);
  return value ? OctaveCount(*value).value_or(0) : 0;
}

bool FileScanner::NextName(std::string_view& name) {
  std::string_view line;
  while (reader_.NextLine(line)) {
    const auto value = OctaveValue(line, "name");
    if (!value) continue;
    name = *value;
    return true;
  }
  return false;
}

/// Reads the lines that tell a shape, whichever there are; returns the number of elements.
std::uint64_t FileScanner::TakeShape(std::string& shape) {
  constexpr std::uint64_t kMany = 1ULL << 31;
  constexpr std::size_t kMostDimensions = 32;
  std::vector<std::uint64_t> counts;
  TakeCount("nnz");
  if (TakeValue("ndims")) {
    std::string_view line;
    reader_.NextLine(line);
    WordReader words(line);
    for (std::string_view word = words.NextWord(); !word.empty() && counts.size() < kMostDimensions;
         word = words.NextWord())
      counts.push_back(OctaveCount(word).value_or(0));
  } else if (const auto rows = TakeValue("rows")) {
    counts = {OctaveCount(*rows).value_or(0), TakeCount("columns")};
  } else if (const auto size = TakeValue("size")) {
    counts.assign(2, OctaveCount(*size).value_or(0));
  }
  std::uint64_t elements = 1;
  for (const std::uint64_t count : counts) {
    shape += (shape.empty() ? "" : " x ") + std::to_string(count);
    elements *= std::min(count, kMany);
    elements = std::min(elements, kMany);
  }
  return elements;
}

/// Texts are skipped by their length: they may look like anything.
void FileScanner::SkipTexts() {
  for (std::uint64_t texts = TakeCount("elements"); texts > 0; --texts) {
    const auto length = TakeValue("length");
    if (!length) return;
    const std::uint64_t bytes = OctaveCount(*length).value_or(0);
    reader_.Seek(reader_.Offset() + std::min<std::uint64_t>(bytes, reader_.BytesLeft()));
    std::string_view line;
    reader_.NextLine(line);
  }
}

void FileScanner::ReadType(OctaveVariable& entry, std::string_view type) {
  ForeignVariable& variable = entry.variable;
  variable.kind = type.substr(0, kLongestName);
  variable.problem = TypeProblem(type);
  if (type.find("string") != std::string_view::npos) return SkipTexts();
  const std::uint64_t elements = TakeShape(variable.shape);
  if (type == "cell") {
    parts_ += elements;
  } else if (type.find("struct") != std::string_view::npos) {
    parts_ += TakeCount("length");
  } else if (type == "function handle") {
    std::string_view line;
    TakeValue("octaveroot");
    reader_.NextLine(line);
    parts_ += TakeCount("length");
  } else if (const OctaveType* known = FindOctaveType(type);
             known && known->body == OctaveBody::kNumber) {
    variable.shape = "1 x 1";
  }
  if (variable.problem.empty() && std::count(variable.shape.begin(), variable.shape.end(), 'x') > 1)
    variable.problem = "The variable has more than two dimensions (" + variable.shape + ").";
}

std::vector<OctaveVariable> FileScanner::Scan() {
  std::vector<OctaveVariable> entries;
  std::string_view name;
  while (NextName(name)) {
    OctaveVariable entry;
    auto type = TakeValue("type");
    if (!type) {
      std::string_view line;
      reader_.NextLine(line);
      reader_.RefuseLast("a line \"# type:\"");
    }
    if (type->starts_with("global ")) type->remove_prefix(7);
    const bool isPart = parts_ > 0;
    if (isPart) --parts_;
    entry.variable.name = name.substr(0, kLongestName);
    entry.body = reader_.Offset();
    ReadType(entry, *type);
    if (isPart) continue;
    if (entries.size() == kMostVariables)
      throw Refusal("There are more than " + std::to_string(kMostVariables) + " variables.");
    entries.push_back(std::move(entry));
  }
  if (entries.empty()) throw Refusal("The file holds no variables.");
  return entries;
}

}  // namespace

const OctaveType* FindOctaveType(std::string_view name) {
  const auto known = std::find_if(kTypes.begin(), kTypes.end(),
                                  [&](const OctaveType& type) { return type.name == name; });
  return known == kTypes.end() ? nullptr : &*known;
}

std::optional<std::string_view> OctaveValue(std::string_view line, std::string_view key) {
  if (!line.starts_with('#') && !line.starts_with('%')) return std::nullopt;
  line.remove_prefix(1);
  line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
  if (!line.starts_with(key) || !line.substr(key.size()).starts_with(':')) return std::nullopt;
  line.remove_prefix(key.size() + 1);
  line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
  return line.substr(0, line.find_last_not_of(" \t") + 1);
}

bool IsOctaveComment(std::string_view line) {
  return line.starts_with('#') || line.starts_with('%');
}

std::optional<std::uint64_t> OctaveCount(std::string_view text) {
  std::uint64_t count = 0;
  const auto parsed = std::from_chars(text.data(), text.data() + text.size(), count);
  if (text.empty() || parsed.ec != std::errc() || parsed.ptr != text.data() + text.size())
    return std::nullopt;
  return count;
}

std::vector<OctaveVariable> FindOctaveVariables(std::string_view bytes) {
  return FileScanner(bytes).Scan();
}

}  // namespace qmx
