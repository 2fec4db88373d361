#include "exchange/octave_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>

#include "exchange/exact_text.h"
#include "exchange/refusal.h"
#include "exchange/size_limits.h"
#include "exchange/word_reader.h"

namespace qmx {
namespace {

constexpr std::size_t kMostVariables = 10000;

enum class Body { kNumber, kMatrix, kDiagonal, kPermutation, kSparse, kRange };

struct KnownType {
  std::string_view name;
  Body body;
  bool integers = false;
};
constexpr std::array<KnownType, 29> kTypes = {{
    {"scalar", Body::kNumber},
    {"float scalar", Body::kNumber},
    {"bool", Body::kNumber},
    {"int8 scalar", Body::kNumber, true},
    {"int16 scalar", Body::kNumber, true},
    {"int32 scalar", Body::kNumber, true},
    {"int64 scalar", Body::kNumber, true},
    {"uint8 scalar", Body::kNumber, true},
    {"uint16 scalar", Body::kNumber, true},
    {"uint32 scalar", Body::kNumber, true},
    {"uint64 scalar", Body::kNumber, true},
    {"matrix", Body::kMatrix},
    {"float matrix", Body::kMatrix},
    {"bool matrix", Body::kMatrix},
    {"int8 matrix", Body::kMatrix, true},
    {"int16 matrix", Body::kMatrix, true},
    {"int32 matrix", Body::kMatrix, true},
    {"int64 matrix", Body::kMatrix, true},
    {"uint8 matrix", Body::kMatrix, true},
    {"uint16 matrix", Body::kMatrix, true},
    {"uint32 matrix", Body::kMatrix, true},
    {"uint64 matrix", Body::kMatrix, true},
    {"diagonal matrix", Body::kDiagonal},
    {"float diagonal matrix", Body::kDiagonal},
    {"permutation matrix", Body::kPermutation},
    {"sparse matrix", Body::kSparse},
    {"sparse bool matrix", Body::kSparse},
    {"range", Body::kRange},
    {"double_range", Body::kRange},
}};

const KnownType* FindType(std::string_view name) {
  const auto known = std::find_if(kTypes.begin(), kTypes.end(),
                                  [&](const KnownType& type) { return type.name == name; });
  return known == kTypes.end() ? nullptr : &*known;
}

std::string TypeProblem(std::string_view type) {
  if (FindType(type) != nullptr) return {};
  if (type.find("complex") != std::string_view::npos)
    return "The variable holds complex numbers; the program has real numbers only.";
  return "The variable is of type " + Shown(type) + " and no matrix of numbers.";
}

/// The value of a line "# key: value"; nothing for any other line.
std::optional<std::string_view> ValueOf(std::string_view line, std::string_view key) {
  if (!line.starts_with('#') && !line.starts_with('%')) return std::nullopt;
  line.remove_prefix(1);
  line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
  if (!line.starts_with(key) || !line.substr(key.size()).starts_with(':')) return std::nullopt;
  line.remove_prefix(key.size() + 1);
  line.remove_prefix(std::min(line.find_first_not_of(" \t"), line.size()));
  return line.substr(0, line.find_last_not_of(" \t") + 1);
}

bool IsComment(std::string_view line) { return line.starts_with('#') || line.starts_with('%'); }

std::optional<std::uint64_t> CountIn(std::string_view text) {
  std::uint64_t count = 0;
  const auto parsed = std::from_chars(text.data(), text.data() + text.size(), count);
  if (text.empty() || parsed.ec != std::errc() || parsed.ptr != text.data() + text.size())
    return std::nullopt;
  return count;
}

/// A variable as it stands in the text.
struct Entry {
  ForeignVariable variable;
  std::size_t body = 0;  ///< Where the line behind its type begins.
};

/// Goes through a file from variable to variable.
class FileScanner {
 public:
  explicit FileScanner(std::string_view bytes) : reader_(bytes) {}
  std::vector<Entry> Scan();

 private:
  std::optional<std::string_view> TakeValue(std::string_view key);
  std::uint64_t TakeCount(std::string_view key);
  bool NextName(std::string_view& name);
  void ReadType(Entry& entry, std::string_view type);
  std::uint64_t TakeShape(std::string& shape);
  void SkipTexts();

  WordReader reader_;
  /// How many of the next variables are parts of those before.
  std::uint64_t parts_ = 0;
};

std::optional<std::string_view> FileScanner::TakeValue(std::string_view key) {
  const auto value = ValueOf(reader_.PeekLine(), key);
  std::string_view line;
  if (value) reader_.NextLine(line);
  return value;
}

std::uint64_t FileScanner::TakeCount(std::string_view key) {
  const auto value = TakeValue(key);
  return value ? CountIn(*value).value_or(0) : 0;
}

bool FileScanner::NextName(std::string_view& name) {
  std::string_view line;
  while (reader_.NextLine(line)) {
    const auto value = ValueOf(line, "name");
    if (!value) continue;
    name = *value;
    return true;
  }
  return false;
}

/// Reads the lines that tell a shape, whichever there are; returns the number of elements.
std::uint64_t FileScanner::TakeShape(std::string& shape) {
  constexpr std::uint64_t kMany = 1ULL << 31;
  std::vector<std::uint64_t> counts;
  TakeCount("nnz");
  if (TakeValue("ndims")) {
    std::string_view line;
    reader_.NextLine(line);
    WordReader words(line);
    for (std::string_view word = words.NextWord(); !word.empty(); word = words.NextWord())
      counts.push_back(CountIn(word).value_or(0));
  } else if (const auto rows = TakeValue("rows")) {
    counts = {CountIn(*rows).value_or(0), TakeCount("columns")};
  } else if (const auto size = TakeValue("size")) {
    counts.assign(2, CountIn(*size).value_or(0));
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
    const std::uint64_t bytes = CountIn(*length).value_or(0);
    reader_.Seek(reader_.Offset() + std::min<std::uint64_t>(bytes, reader_.BytesLeft()));
    std::string_view line;
    reader_.NextLine(line);
  }
}

void FileScanner::ReadType(Entry& entry, std::string_view type) {
  ForeignVariable& variable = entry.variable;
  variable.kind = type;
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
  } else if (const KnownType* known = FindType(type); known && known->body == Body::kNumber) {
    variable.shape = "1 x 1";
  }
  if (variable.problem.empty() && std::count(variable.shape.begin(), variable.shape.end(), 'x') > 1)
    variable.problem = "The variable has more than two dimensions (" + variable.shape + ").";
}

std::vector<Entry> FileScanner::Scan() {
  std::vector<Entry> entries;
  std::string_view name;
  while (NextName(name)) {
    Entry entry;
    auto type = TakeValue("type");
    if (!type) {
      std::string_view line;
      reader_.NextLine(line);
      reader_.RefuseLast("a line \"# type:\"");
    }
    if (type->starts_with("global ")) type->remove_prefix(7);
    const bool isPart = parts_ > 0;
    if (isPart) --parts_;
    entry.variable.name = name.substr(0, 80);
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

/// Reads the elements of one variable.
class BodyReader {
 public:
  BodyReader(std::string_view bytes, const Entry& entry)
      : reader_(bytes), type_(*FindType(entry.variable.kind)) {
    reader_.Seek(entry.body);
  }

  Matrix Read() {
    Matrix values = ReadValues();
    // Nothing but the next variable may follow.
    if (!reader_.AtEnd() && !IsComment(reader_.PeekLine())) {
      reader_.NextWord();
      reader_.RefuseLast("the end of the variable");
    }
    if (reader_.AtEnd()) reader_.CheckLastLineEnds();
    return values;
  }

 private:
  Matrix ReadValues();
  Matrix ReadFull();
  Matrix ReadDiagonal();
  Matrix ReadPermutation();
  Matrix ReadSparse();
  Matrix ReadRange();
  std::uint64_t CountAfter(std::string_view key);
  Matrix Zeros(std::uint64_t rows, std::uint64_t cols);
  double NextElement() {
    return type_.integers ? reader_.NextInteger("an integer") : reader_.NextNumber("a number");
  }
  int NextIndex(int most);

  WordReader reader_;
  const KnownType& type_;
};

std::uint64_t BodyReader::CountAfter(std::string_view key) {
  std::string_view line;
  reader_.NextLine(line);
  const auto value = ValueOf(line, key);
  const auto count = value ? CountIn(*value) : std::nullopt;
  if (!count) reader_.RefuseLast("a line \"# " + std::string(key) + ":\" with a count");
  return *count;
}

Matrix BodyReader::Zeros(std::uint64_t rows, std::uint64_t cols) {
  CheckShape(rows, cols, 0, Storage::kUnfolds);
  return {static_cast<int>(rows), static_cast<int>(cols)};
}

Matrix BodyReader::ReadValues() {
  switch (type_.body) {
    case Body::kMatrix:
      return ReadFull();
    case Body::kDiagonal:
      return ReadDiagonal();
    case Body::kPermutation:
      return ReadPermutation();
    case Body::kSparse:
      return ReadSparse();
    case Body::kRange:
      return ReadRange();
    default: {
      Matrix values(1, 1);
      values(1, 1) = NextElement();
      return values;
    }
  }
}

/// Row by row below the counts of rows and columns, column by column below a list of dimensions.
Matrix BodyReader::ReadFull() {
  const bool byColumns = ValueOf(reader_.PeekLine(), "ndims").has_value();
  std::uint64_t rows = 0;
  std::uint64_t cols = 0;
  if (byColumns) {
    if (CountAfter("ndims") != 2) reader_.ComplainOfLast("the variable has not two dimensions.");
    rows = reader_.NextCount("the number of rows");
    cols = reader_.NextCount("the number of columns");
  } else {
    rows = CountAfter("rows");
    cols = CountAfter("columns");
  }
  Matrix values = NewMatrix(rows, cols, reader_.BytesLeft() / 2 + 1, Storage::kFull);
  if (byColumns) {
    for (int j = 1; j <= values.Cols(); ++j) {
      for (int i = 1; i <= values.Rows(); ++i) values(i, j) = NextElement();
    }
  } else {
    std::generate_n(values.Data(), values.Size(), [this] { return NextElement(); });
  }
  return values;
}

Matrix BodyReader::ReadDiagonal() {
  const std::uint64_t rows = CountAfter("rows");
  const std::uint64_t cols = CountAfter("columns");
  Matrix values = Zeros(rows, cols);
  for (int i = 1; i <= std::min(values.Rows(), values.Cols()); ++i) values(i, i) = NextElement();
  return values;
}

int BodyReader::NextIndex(int most) {
  const std::uint64_t index = reader_.NextCount("an index");
  if (index < 1 || index > static_cast<std::uint64_t>(most))
    reader_.RefuseLast("an index from 1 to " + std::to_string(most));
  return static_cast<int>(index);
}

/// Index k is the row of the 1 in column k, or the other way round.
Matrix BodyReader::ReadPermutation() {
  const std::uint64_t size = CountAfter("size");
  std::string_view line;
  reader_.NextLine(line);
  const auto orient = ValueOf(line, "orient");
  if (!orient || (*orient != "c" && *orient != "r")) reader_.RefuseLast("a line \"# orient: c\"");
  Matrix values = Zeros(size, size);
  for (int k = 1; k <= values.Cols(); ++k) {
    const int index = NextIndex(values.Rows());
    (*orient == "c" ? values(index, k) : values(k, index)) = 1;
  }
  return values;
}

Matrix BodyReader::ReadSparse() {
  const std::uint64_t entries = CountAfter("nnz");
  const std::uint64_t rows = CountAfter("rows");
  const std::uint64_t cols = CountAfter("columns");
  Matrix values = Zeros(rows, cols);
  for (std::uint64_t k = 0; k < entries; ++k) {
    const int i = NextIndex(values.Rows());
    const int j = NextIndex(values.Cols());
    values(i, j) = NextElement();
  }
  return values;
}

/// The number of elements forgives the last step a few roundings; no element lies beyond the limit.
Matrix BodyReader::ReadRange() {
  std::string_view line;
  reader_.NextLine(line);
  if (!IsComment(line) || line.find("base, limit, increment") == std::string_view::npos)
    reader_.RefuseLast("a line \"# base, limit, increment\"");
  const double base = reader_.NextNumber("a number");
  const double limit = reader_.NextNumber("a number");
  const double increment = reader_.NextNumber("a number");
  constexpr double kForgiven = 3 * 0x1p-52;
  const double steps = (limit - base) / increment;
  const double whole = std::floor(steps * (1 + kForgiven) + kForgiven);
  if (!(whole >= 0)) throw Refusal("The range is empty.");
  Matrix values = Zeros(1, whole < 1e15 ? static_cast<std::uint64_t>(whole) + 1 : 1ULL << 60);
  for (int j = 1; j <= values.Cols(); ++j) values(1, j) = base + (j - 1) * increment;
  double& last = values(1, values.Cols());
  last = increment > 0 ? std::min(last, limit) : std::max(last, limit);
  return values;
}

}  // namespace

bool IsOctaveText(std::string_view bytes) {
  WordReader reader(bytes);
  std::string_view line;
  constexpr int kLinesBefore = 10;
  for (int k = 0; k < kLinesBefore && reader.NextLine(line); ++k) {
    if (ValueOf(line, "name")) return ValueOf(reader.PeekLine(), "type").has_value();
    if (!IsComment(line) && line.find_first_not_of(" \t") != std::string_view::npos) return false;
  }
  return false;
}

ForeignOutcome<std::vector<ForeignVariable>> ListOctaveText(std::string_view bytes) {
  using Variables = std::vector<ForeignVariable>;
  return OutcomeOf<Variables>([&](ForeignOutcome<Variables>& outcome) {
    for (Entry& entry : FileScanner(bytes).Scan())
      outcome.content.push_back(std::move(entry.variable));
  });
}

ForeignOutcome<Matrix> ReadOctaveText(std::string_view bytes, std::size_t index) {
  return OutcomeOf<Matrix>([&](ForeignOutcome<Matrix>& outcome) {
    const std::vector<Entry> entries = FileScanner(bytes).Scan();
    if (index >= entries.size()) throw Refusal("The file has no such variable.");
    const Entry& entry = entries[index];
    if (!entry.variable.problem.empty()) throw Refusal(entry.variable.problem);
    outcome.content = BodyReader(bytes, entry).Read();
  });
}

ForeignOutcome<std::string> WriteOctaveText(const Matrix& values, const std::string& name) {
  return OutcomeOf<std::string>([&](ForeignOutcome<std::string>& outcome) {
    CheckWritable(values);
    std::string& text = outcome.content;
    constexpr std::size_t kUsualLength = 20;
    text.reserve(values.Size() * kUsualLength);
    text += "# Created by Orvane\n# name: " + name +
            "\n# type: matrix\n# rows: " + std::to_string(values.Rows()) +
            "\n# columns: " + std::to_string(values.Cols()) + "\n";
    for (int i = 1; i <= values.Rows(); ++i) {
      for (int j = 1; j <= values.Cols(); ++j) {
        text += ' ';
        AppendExact(text, values(i, j));
      }
      text += '\n';
    }
    text += "\n\n";
  });
}

}  // namespace qmx
