// SPDX-License-Identifier: MIT
#include "exchange/octave_text.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "exchange/exact_text.h"
#include "exchange/octave_variables.h"
#include "exchange/refusal.h"
#include "exchange/size_limits.h"
#include "exchange/word_reader.h"

namespace qmx {
namespace {

/// Reads the elements of one variable.
class BodyReader {
 public:
  BodyReader(std::string_view bytes, const OctaveVariable& entry, const Memory& memory)
      : reader_(bytes), memory_(memory), type_(*FindOctaveType(entry.variable.kind)) {
    reader_.Seek(entry.body);
  }

  Matrix Read() {
    Matrix values = ReadValues();
    // Nothing but the next variable may follow.
    if (!reader_.AtEnd() && !IsOctaveComment(reader_.PeekLine())) {
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
  const Memory& memory_;
  const OctaveType& type_;
};

std::uint64_t BodyReader::CountAfter(std::string_view key) {
  std::string_view line;
  reader_.NextLine(line);
  const auto value = OctaveValue(line, key);
  const auto count = value ? OctaveCount(*value) : std::nullopt;
  if (!count) reader_.RefuseLast("a line \"# " + std::string(key) + ":\" with a count");
  return *count;
}

Matrix BodyReader::Zeros(std::uint64_t rows, std::uint64_t cols) {
  CheckShape(rows, cols, 0, Storage::kUnfolds, memory_);
  return {static_cast<int>(rows), static_cast<int>(cols)};
}

Matrix BodyReader::ReadValues() {
  switch (type_.body) {
    case OctaveBody::kMatrix:
      return ReadFull();
    case OctaveBody::kDiagonal:
      return ReadDiagonal();
    case OctaveBody::kPermutation:
      return ReadPermutation();
    case OctaveBody::kSparse:
      return ReadSparse();
    case OctaveBody::kRange:
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
  const bool byColumns = OctaveValue(reader_.PeekLine(), "ndims").has_value();
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
  Matrix values = NewMatrix(rows, cols, reader_.BytesLeft() / 2 + 1, Storage::kFull, memory_);
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
  const auto orient = OctaveValue(line, "orient");
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
  if (!IsOctaveComment(line) || line.find("base, limit, increment") == std::string_view::npos)
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
    if (OctaveValue(line, "name")) return OctaveValue(reader.PeekLine(), "type").has_value();
    if (!IsOctaveComment(line) && line.find_first_not_of(" \t") != std::string_view::npos)
      return false;
  }
  return false;
}

ForeignOutcome<std::vector<ForeignVariable>> ListOctaveText(std::string_view bytes) {
  using Variables = std::vector<ForeignVariable>;
  return OutcomeOf<Variables>([&](ForeignOutcome<Variables>& outcome) {
    for (OctaveVariable& entry : FindOctaveVariables(bytes))
      outcome.content.push_back(std::move(entry.variable));
  });
}

ForeignOutcome<Matrix> ReadOctaveText(std::string_view bytes, std::size_t index,
                                      const Memory& memory) {
  return OutcomeOf<Matrix>([&](ForeignOutcome<Matrix>& outcome) {
    const std::vector<OctaveVariable> entries = FindOctaveVariables(bytes);
    if (index >= entries.size()) throw Refusal("The file has no such variable.");
    const OctaveVariable& entry = entries[index];
    if (!entry.variable.problem.empty()) throw Refusal(entry.variable.problem);
    outcome.content = BodyReader(bytes, entry, memory).Read();
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
