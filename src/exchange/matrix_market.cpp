// SPDX-License-Identifier: MIT
#include "exchange/matrix_market.h"

#include <cmath>

#include "exchange/exact_text.h"
#include "exchange/refusal.h"
#include "exchange/size_limits.h"
#include "exchange/word_reader.h"

namespace qmx {
namespace {

constexpr std::string_view kBanner = "%%MatrixMarket";

enum class Field { kReal, kInteger, kPattern };
enum class Symmetry { kGeneral, kSymmetric, kSkew };

struct Header {
  bool isArray = false;
  Field field = Field::kReal;
  Symmetry symmetry = Symmetry::kGeneral;
};

class MarketReader {
 public:
  MarketReader(std::string_view bytes, const Memory& memory) : reader_(bytes), memory_(memory) {}
  Matrix Read();

 private:
  void ReadHeader();
  void ReadField();
  void ReadSymmetry();
  void SkipComments();
  double NextValue();
  int NextIndex(const char* expected, std::uint64_t most);
  void ReadArray();
  void AddEntry();

  WordReader reader_;
  const Memory& memory_;
  Header header_;
  Matrix values_;
};

void MarketReader::ReadHeader() {
  reader_.NextWord();
  if (!EqualsIgnoringCase(reader_.NextWord(), "matrix")) reader_.RefuseLast("\"matrix\"");
  const std::string_view form = reader_.NextWord();
  header_.isArray = EqualsIgnoringCase(form, "array");
  if (!header_.isArray && !EqualsIgnoringCase(form, "coordinate"))
    reader_.RefuseLast("\"array\" or \"coordinate\"");
  ReadField();
  ReadSymmetry();
}

void MarketReader::ReadField() {
  const std::string_view field = reader_.NextWord();
  if (EqualsIgnoringCase(field, "complex"))
    reader_.ComplainOfLast("complex matrices cannot be read; the program has real numbers only.");
  if (EqualsIgnoringCase(field, "integer") || EqualsIgnoringCase(field, "unsigned-integer")) {
    header_.field = Field::kInteger;
  } else if (EqualsIgnoringCase(field, "pattern") && !header_.isArray) {
    header_.field = Field::kPattern;
  } else if (!EqualsIgnoringCase(field, "real") && !EqualsIgnoringCase(field, "double")) {
    reader_.RefuseLast(header_.isArray ? "\"real\" or \"integer\""
                                       : "\"real\", \"integer\" or \"pattern\"");
  }
}

void MarketReader::ReadSymmetry() {
  const std::string_view symmetry = reader_.NextWord();
  if (EqualsIgnoringCase(symmetry, "hermitian"))
    reader_.ComplainOfLast("Hermitian matrices cannot be read; the program has real numbers only.");
  if (EqualsIgnoringCase(symmetry, "symmetric")) {
    header_.symmetry = Symmetry::kSymmetric;
  } else if (EqualsIgnoringCase(symmetry, "skew-symmetric") && header_.field != Field::kPattern) {
    header_.symmetry = Symmetry::kSkew;
  } else if (!EqualsIgnoringCase(symmetry, "general")) {
    reader_.RefuseLast("\"general\", \"symmetric\" or \"skew-symmetric\"");
  }
  std::string_view rest;
  reader_.NextLine(rest);
  if (rest.find_first_not_of(" \t") != std::string_view::npos)
    reader_.RefuseLast("the end of the line");
}

void MarketReader::SkipComments() {
  std::string_view line = reader_.PeekLine();
  while (reader_.BytesLeft() > 0 &&
         (line.starts_with('%') || line.find_first_not_of(" \t") == std::string_view::npos)) {
    reader_.NextLine(line);
    line = reader_.PeekLine();
  }
}

Matrix MarketReader::Read() {
  ReadHeader();
  SkipComments();
  const std::uint64_t rows = reader_.NextCount("the number of rows");
  const std::uint64_t cols = reader_.NextCount("the number of columns");
  const bool general = header_.symmetry == Symmetry::kGeneral;
  if (!general && rows != cols)
    reader_.ComplainOfLast("a symmetric matrix has as many columns as rows.");
  if (header_.isArray) {
    // A symmetric file holds half of the elements at least; each takes two bytes.
    const std::uint64_t held = (reader_.BytesLeft() / 2 + 1) * (general ? 1 : 3);
    values_ = NewMatrix(rows, cols, held, Storage::kFull, memory_);
    ReadArray();
  } else {
    const std::uint64_t entries = reader_.NextCount("the number of entries");
    constexpr std::uint64_t kShortestEntry = 4;
    if (entries > reader_.BytesLeft() / kShortestEntry + 1)
      reader_.ComplainOfLast("the file is too short for " + std::to_string(entries) + " entries.");
    CheckShape(rows, cols, 0, Storage::kUnfolds, memory_);
    values_ = Matrix(static_cast<int>(rows), static_cast<int>(cols));
    for (std::uint64_t k = 0; k < entries; ++k) AddEntry();
  }
  if (!reader_.AtEnd()) {
    reader_.NextWord();
    reader_.RefuseLast("the end of the file");
  }
  reader_.CheckLastLineEnds();
  return std::move(values_);
}

double MarketReader::NextValue() {
  if (header_.field == Field::kPattern) return 1;
  return header_.field == Field::kInteger ? reader_.NextInteger("an integer")
                                          : reader_.NextNumber("a number");
}

void MarketReader::ReadArray() {
  const bool skew = header_.symmetry == Symmetry::kSkew;
  for (int j = 1; j <= values_.Cols(); ++j) {
    int i = 1;
    if (header_.symmetry != Symmetry::kGeneral) i = j;
    if (skew) values_(i++, j) = 0;
    for (; i <= values_.Rows(); ++i) {
      values_(i, j) = NextValue();
      if (header_.symmetry != Symmetry::kGeneral && i != j)
        values_(j, i) = skew ? -values_(i, j) : values_(i, j);
    }
  }
}

int MarketReader::NextIndex(const char* expected, std::uint64_t most) {
  const std::uint64_t index = reader_.NextCount(expected);
  if (index < 1 || index > most)
    reader_.RefuseLast(std::string(expected) + " from 1 to " + std::to_string(most));
  return static_cast<int>(index);
}

void MarketReader::AddEntry() {
  const int i = NextIndex("a row", values_.Rows());
  const int j = NextIndex("a column", values_.Cols());
  const bool skew = header_.symmetry == Symmetry::kSkew;
  if (header_.symmetry != Symmetry::kGeneral && (skew ? i <= j : i < j)) {
    reader_.ComplainOfLast(skew ? "a skew-symmetric file lists elements below the diagonal only."
                                : "a symmetric file lists no elements above the diagonal.");
  }
  // A negative zero that is listed once keeps its sign, which adding it to 0 would take.
  const double value = NextValue();
  double& element = values_(i, j);
  element = element == 0 ? value : element + value;
  if (!std::isfinite(element)) reader_.ComplainOfLast("the sum of the entries here is too large.");
  if (header_.symmetry != Symmetry::kGeneral && i != j) values_(j, i) = skew ? -element : element;
}

}  // namespace

bool IsMatrixMarket(std::string_view bytes) {
  return bytes.size() >= kBanner.size() &&
         EqualsIgnoringCase(bytes.substr(0, kBanner.size()), kBanner);
}

ForeignOutcome<Matrix> ReadMatrixMarket(std::string_view bytes, const Memory& memory) {
  return OutcomeOf<Matrix>([&](ForeignOutcome<Matrix>& outcome) {
    if (!IsMatrixMarket(bytes)) RefuseAt(1, 1, "expected \"" + std::string(kBanner) + "\".");
    outcome.content = MarketReader(bytes, memory).Read();
  });
}

ForeignOutcome<std::string> WriteMatrixMarket(const Matrix& values) {
  return OutcomeOf<std::string>([&](ForeignOutcome<std::string>& outcome) {
    CheckWritable(values);
    std::string& text = outcome.content;
    constexpr std::size_t kUsualLength = 20;
    text.reserve(values.Size() * kUsualLength);
    text += std::string(kBanner) + " matrix array real general\n" + std::to_string(values.Rows()) +
            " " + std::to_string(values.Cols()) + "\n";
    for (int j = 1; j <= values.Cols(); ++j) {
      for (int i = 1; i <= values.Rows(); ++i) {
        AppendExact(text, values(i, j));
        text += '\n';
      }
    }
  });
}

}  // namespace qmx
