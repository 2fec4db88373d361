// SPDX-License-Identifier: MIT
#include "foreign_reading.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "exchange/foreign_file.h"
#include "exchange/mat_direct.h"
#include "exchange/mat_file.h"
#include "exchange/matrix_market.h"
#include "exchange/npy.h"
#include "exchange/octave_text.h"
#include "exchange/size_limits.h"

namespace qmx::fuzz {
namespace {

/// Larger ones are not written: that is not what is tried here.
constexpr std::size_t kLargestWritten = 10000;

bool SameBits(const Matrix& one, const Matrix& two) {
  return one.Rows() == two.Rows() && one.Cols() == two.Cols() &&
         std::memcmp(one.Data(), two.Data(), one.Size() * sizeof(double)) == 0;
}

std::string TryWriting(const Matrix& values, ForeignFormat format) {
  const auto written = WriteForeign(values, {.format = format});
  if (!written.Ok()) return "what was read cannot be written: " + written.problem;
  const auto contents = InspectForeign(written.content);
  if (!contents.Ok()) return "what was written is refused: " + contents.problem;
  const auto again = ReadForeign(written.content, contents.content, 0);
  if (!again.Ok()) return "what was written is not read: " + again.problem;
  return SameBits(values, again.content) ? std::string() : "what was written reads differently";
}

template <class Content>
std::string TryRefusal(const ForeignOutcome<Content>& outcome) {
  constexpr std::size_t kLongest = 400;
  if (outcome.problem.size() > kLongest) return "a refusal is too long";
  return outcome.line < 0 || outcome.column < 0 ? "a refusal has no place" : std::string();
}

std::string TryMatrix(const ForeignOutcome<Matrix>& outcome, std::string_view bytes,
                      ForeignFormat format) {
  const Matrix& values = outcome.content;
  if (!outcome.Ok())
    return values.Size() == 0 ? TryRefusal(outcome) : "a refusal comes with a matrix";
  if (values.Size() == 0) return "an empty matrix was read";
  if (values.Size() > std::max<std::size_t>(bytes.size(), kMostUnfolded))
    return "the matrix is larger than its bytes allow";
  if (!std::all_of(values.Data(), values.Data() + values.Size(),
                   [](double value) { return std::isfinite(value); }))
    return "what was read is not finite";
  return values.Size() > kLargestWritten ? std::string() : TryWriting(values, format);
}

/// Lists the variables of a file and reads the first few of them.
std::string TryVariables(std::string_view bytes, ForeignFormat format,
                         ForeignOutcome<std::vector<ForeignVariable>> (*list)(std::string_view),
                         ForeignOutcome<Matrix> (*read)(std::string_view, std::size_t,
                                                        const Memory&)) {
  const auto variables = list(bytes);
  if (!variables.Ok()) return TryRefusal(variables);
  if (variables.content.empty()) return "nothing was listed";
  constexpr std::size_t kMostRead = 4;
  for (std::size_t k = 0; k < std::min(variables.content.size(), kMostRead); ++k) {
    const auto outcome = read(bytes, k, SystemMemory());
    if (outcome.Ok() && !variables.content[k].problem.empty())
      return "what was said to be unreadable was read";
    std::string wrong = TryMatrix(outcome, bytes, format);
    if (!wrong.empty()) return wrong;
  }
  return {};
}

TableSettings SettingsFrom(unsigned char choice) {
  constexpr char kSeparators[] = {',', ';', '\t', ' '};
  constexpr char kComments[] = {'\0', '#', '%', '\0'};
  return {.separator = kSeparators[choice & 3],
          .decimalSign = (choice & 4) != 0 ? ',' : '.',
          .commentSign = kComments[choice >> 3 & 3],
          .headingRows = choice >> 5 & 1,
          .headingColumns = choice >> 6 & 1};
}

}  // namespace

std::string TryTextTable(std::string_view bytes) {
  const TableProposal proposal = ProposeTableSettings(bytes);
  const auto choice = static_cast<unsigned char>(bytes.empty() ? 0 : bytes.back());
  for (const TableSettings& settings : {proposal.settings, SettingsFrom(choice)}) {
    const TablePreview preview = PreviewTextTable(bytes, settings, 5, 5);
    if (preview.rows.size() > 5) return "the preview is too long";
    std::string wrong = TryMatrix(ReadTextTable(bytes, settings), bytes, ForeignFormat::kTextTable);
    if (!wrong.empty()) return wrong;
  }
  return {};
}

std::string TryMatrixMarket(std::string_view bytes) {
  return TryMatrix(ReadMatrixMarket(bytes), bytes, ForeignFormat::kMatrixMarket);
}

std::string TryNpy(std::string_view bytes) {
  const auto header = ReadNpyHeader(bytes);
  const auto outcome = ReadNpy(bytes);
  if (outcome.Ok() && !header.Ok()) return "a file without a header was read";
  return TryMatrix(outcome, bytes, ForeignFormat::kNpy);
}

std::string TryOctaveText(std::string_view bytes) {
  return TryVariables(bytes, ForeignFormat::kOctaveText, ListOctaveText, ReadOctaveText);
}

std::string TryMat(std::string_view bytes) {
  const std::string wrong =
      TryVariables(bytes, ForeignFormat::kMat, ListMatDirectly, ReadMatDirectly);
  return wrong.empty() ? TryVariables(bytes, ForeignFormat::kMat, ListMat, ReadMat) : wrong;
}

}  // namespace qmx::fuzz
