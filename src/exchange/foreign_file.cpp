// SPDX-License-Identifier: MIT
#include "exchange/foreign_file.h"

#include <algorithm>
#include <cassert>

#include "exchange/mat_file.h"
#include "exchange/matrix_market.h"
#include "exchange/npy.h"
#include "exchange/octave_text.h"
#include "exchange/refusal.h"

namespace qmx {

constexpr std::array<ForeignFormatInfo, kForeignFormatCount> kForeignFormats = {{
    {ForeignFormat::kTextTable, "Text table (CSV)", ".csv", "*.csv *.tsv *.tab *.txt *.dat", false},
    {ForeignFormat::kMatrixMarket, "Matrix Market", ".mtx", "*.mtx", false},
    {ForeignFormat::kNpy, "NumPy array", ".npy", "*.npy", false},
    {ForeignFormat::kMat, "MAT file", ".mat", "*.mat", true},
    {ForeignFormat::kOctaveText, "Octave text", ".txt", "*.txt *.oct *.mat", true},
}};

namespace {

template <class Content>
Content Taken(ForeignOutcome<Content> outcome) {
  if (!outcome.Ok()) throw Refusal(outcome.problem, outcome.line, outcome.column);
  return std::move(outcome.content);
}

struct KnownStart {
  std::size_t at;
  std::string_view bytes;
  const char* problem;
};
constexpr const char* kSpreadsheet =
    "This is a spreadsheet. Save it as CSV in the program that made it; such files can be read.";
constexpr const char* kCompressed = "The file is compressed. Unpack it first.";
constexpr const char* kWideText =
    "The text has characters of 16 bits. Save it as UTF-8 or as plain text.";
/// What else may be brought here. The first that fits is it.
constexpr KnownStart kUnreadable[] = {
    {30, "mimetypeapplication/vnd.oasis.opendocument.spreadsheet", kSpreadsheet},
    {30, "[Content_Types].xml", kSpreadsheet},
    {30, "_rels/.rels", kSpreadsheet},
    {0, "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", kSpreadsheet},
    {0, "PK\x03\x04",
     "This is an archive of several files (such as .npz). Unpack it first; the files in it may be "
     "readable."},
    {0, "\x1F\x8B", kCompressed},
    {0, "BZh", kCompressed},
    {0, "\xFD\x37zXZ", kCompressed},
    {0, "\xFF\xFE", kWideText},
    {0, "\xFE\xFF", kWideText},
    {0, "\x89HDF\r\n\x1A\n", "This is an HDF5 file, but no MAT file of version 7.3."},
};

void RefuseUnreadable(std::string_view bytes) {
  for (const KnownStart& start : kUnreadable) {
    if (bytes.size() > start.at && bytes.substr(start.at).starts_with(start.bytes))
      throw Refusal(start.problem);
  }
  // No text has such characters in its first lines.
  constexpr std::size_t kSample = 1 << 16;
  if (bytes.substr(0, kSample).find('\0') != std::string_view::npos)
    throw Refusal("The file is neither a text nor of a format that can be read.");
}

bool IsLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }
bool IsDigit(char c) { return c >= '0' && c <= '9'; }

void Inspect(std::string_view bytes, ForeignContents& contents) {
  if (bytes.find_first_not_of(" \t\r\n") == std::string_view::npos)
    throw Refusal("The file is empty.");
  if (IsNpy(bytes)) {
    contents.format = ForeignFormat::kNpy;
    const NpyHeader header = Taken(ReadNpyHeader(bytes));
    contents.variables = {{.kind = header.kind, .shape = header.shape}};
  } else if (IsMat(bytes)) {
    contents.format = ForeignFormat::kMat;
    contents.variables = Taken(ListMat(bytes));
  } else if (IsMatrixMarket(bytes)) {
    contents.format = ForeignFormat::kMatrixMarket;
    contents.variables = {{.kind = "matrix"}};
  } else if (IsOctaveText(bytes)) {
    contents.format = ForeignFormat::kOctaveText;
    contents.variables = Taken(ListOctaveText(bytes));
  } else {
    RefuseUnreadable(bytes);
    contents.variables = {{.kind = "table"}};
    contents.table = ProposeTableSettings(bytes);
  }
  const auto& variables = contents.variables;
  const auto readable = std::find_if(variables.begin(), variables.end(),
                                     [](const auto& variable) { return variable.problem.empty(); });
  if (readable != variables.end())
    contents.proposed = static_cast<std::size_t>(readable - variables.begin());
}

}  // namespace

const ForeignFormatInfo& InfoOf(ForeignFormat format) {
  const auto info = std::find_if(kForeignFormats.begin(), kForeignFormats.end(),
                                 [=](const auto& row) { return row.format == format; });
  assert(info != kForeignFormats.end());
  return *info;
}

ForeignOutcome<ForeignContents> InspectForeign(std::string_view bytes) {
  return OutcomeOf<ForeignContents>(
      [&](ForeignOutcome<ForeignContents>& outcome) { Inspect(bytes, outcome.content); });
}

ForeignOutcome<Matrix> ReadForeign(std::string_view bytes, const ForeignContents& contents,
                                   std::size_t variable, const Memory& memory) {
  switch (contents.format) {
    case ForeignFormat::kMatrixMarket:
      return ReadMatrixMarket(bytes, memory);
    case ForeignFormat::kNpy:
      return ReadNpy(bytes, memory);
    case ForeignFormat::kOctaveText:
      return ReadOctaveText(bytes, variable, memory);
    case ForeignFormat::kMat:
      return ReadMat(bytes, variable, memory);
    default:
      return ReadTextTable(bytes, contents.table.settings, memory);
  }
}

ForeignOutcome<std::string> WriteForeign(const Matrix& values, const ForeignChoice& choice) {
  switch (choice.format) {
    case ForeignFormat::kMatrixMarket:
      return WriteMatrixMarket(values);
    case ForeignFormat::kNpy:
      return WriteNpy(values);
    case ForeignFormat::kOctaveText:
      return WriteOctaveText(values, VariableName(choice.name));
    case ForeignFormat::kMat:
      return WriteMat(values, VariableName(choice.name));
    default:
      return WriteTextTable(values, choice.separator, choice.decimalSign);
  }
}

std::string VariableName(std::string_view title) {
  constexpr std::size_t kLongest = 63;
  std::string name;
  for (const char c : title) {
    if (IsLetter(c) || IsDigit(c)) {
      name += c;
    } else if (!name.empty() && name.back() != '_') {
      name += '_';
    }
  }
  if (name.empty() || !IsLetter(name.front())) name.insert(0, 1, 'x');
  name.resize(std::min(name.size(), kLongest));
  while (name.back() == '_') name.pop_back();
  return name;
}

}  // namespace qmx
