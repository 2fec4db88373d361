// SPDX-License-Identifier: MIT
#include "exchange/foreign_file.h"

#include <gtest/gtest.h>

#include "bits.h"
#include "support/core_data.h"
#include "support/core_ports.h"

namespace qmx {
namespace {

using test::Rows;
using test::SameBits;
using test::TellingMatrix;

void ExpectFormat(const char* name, ForeignFormat format) {
  const auto contents = InspectForeign(test::DataFile(std::string("exchange/") + name));
  EXPECT_EQ(contents.problem, "") << name;
  EXPECT_EQ(contents.content.format, format) << name;
  EXPECT_FALSE(contents.content.variables.empty()) << name;
}

TEST(ForeignFile, RecognisesFormatsByTheirBytes) {
  ExpectFormat("numpy.npy", ForeignFormat::kNpy);
  ExpectFormat("numpy-savetxt.csv", ForeignFormat::kTextTable);
  ExpectFormat("octave.txt", ForeignFormat::kOctaveText);
  ExpectFormat("r-table.txt", ForeignFormat::kTextTable);
  ExpectFormat("scipy-array.mtx", ForeignFormat::kMatrixMarket);
}

TEST(ForeignFile, RecognisesMatFilesByTheirBytes) {
  ExpectFormat("octave-4.mat", ForeignFormat::kMat);
  ExpectFormat("octave-7.mat", ForeignFormat::kMat);
}

TEST(ForeignFile, ReadsWhatItWritesInEveryFormat) {
  for (const ForeignFormatInfo& info : kForeignFormats) {
    const auto bytes = WriteForeign(TellingMatrix(), {.format = info.format, .name = "A + B"});
    ASSERT_TRUE(bytes.Ok()) << info.title;
    const auto contents = InspectForeign(bytes.content);
    ASSERT_TRUE(contents.Ok()) << info.title << contents.problem;
    EXPECT_EQ(contents.content.format, info.format) << info.title;
    EXPECT_EQ(contents.content.variables.at(0).name, info.named ? "A_B" : "") << info.title;
    const auto outcome = ReadForeign(bytes.content, contents.content, 0);
    EXPECT_EQ(outcome.problem, "") << info.title;
    EXPECT_EQ(outcome.note, "") << info.title;
    EXPECT_TRUE(SameBits(outcome.content, TellingMatrix())) << info.title;
    EXPECT_EQ(&InfoOf(info.format), &info);
  }
}

TEST(ForeignFile, NeedsRoomForTheMatrixAndACopy) {
  for (const ForeignFormatInfo& info : kForeignFormats) {
    const std::string bytes = WriteForeign(TellingMatrix(), {.format = info.format}).content;
    const auto contents = InspectForeign(bytes);
    test::FixedMemory memory;
    memory.available = 2 * 12 * sizeof(double);
    EXPECT_TRUE(ReadForeign(bytes, contents.content, 0, memory).Ok()) << info.title;
    --memory.available;
    EXPECT_EQ(ReadForeign(bytes, contents.content, 0, memory).problem,
              "A matrix of 3 x 4 does not fit into memory.")
        << info.title;
  }
}

TEST(ForeignFile, ProposesTheFirstVariableThatCanBeRead) {
  const std::string bytes =
      "# name: t\n# type: string\n# elements: 1\n# length: 1\na\n\n\n"
      "# name: x\n# type: scalar\n2\n\n\n";
  const auto contents = InspectForeign(bytes);
  ASSERT_TRUE(contents.Ok());
  EXPECT_EQ(contents.content.variables.size(), 2U);
  EXPECT_EQ(contents.content.proposed, 1U);
  EXPECT_TRUE(SameBits(ReadForeign(bytes, contents.content, 1).content, Rows({{2}})));
}

TEST(ForeignFile, ReadsATableWithTheSettingsThatWereChosen) {
  const std::string bytes = "1,5\n2,5\n";
  auto contents = InspectForeign(bytes).content;
  EXPECT_FALSE(contents.table.certain);
  EXPECT_TRUE(SameBits(ReadForeign(bytes, contents, 0).content, Rows({{1, 5}, {2, 5}})));
  contents.table.settings.separator = ';';
  contents.table.settings.decimalSign = ',';
  EXPECT_TRUE(SameBits(ReadForeign(bytes, contents, 0).content, Rows({{1.5}, {2.5}})));
}

TEST(ForeignFile, SaysWhatToDoAboutWhatItCannotRead) {
  const std::string zip("PK\x03\x04", 4);
  const std::string spreadsheet =
      "This is a spreadsheet. Save it as CSV in the program that made it; such files can be read.";
  const std::vector<std::pair<std::string, std::string>> cases = {
      {"", "The file is empty."},
      {" \r\n\t", "The file is empty."},
      {zip + std::string(26, '\0') + "mimetypeapplication/vnd.oasis.opendocument.spreadsheet",
       spreadsheet},
      {zip + std::string(26, '\0') + "[Content_Types].xml", spreadsheet},
      {"\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", spreadsheet},
      {zip + std::string(26, '\0') + "A.npy",
       "This is an archive of several files (such as .npz). Unpack it first; the files in it may "
       "be "
       "readable."},
      {"\x1F\x8B\x08", "The file is compressed. Unpack it first."},
      {"\xFF\xFE"
       "1",
       "The text has characters of 16 bits. Save it as UTF-8 or as plain text."},
      {"\x89HDF\r\n\x1A\n", "This is an HDF5 file, but no MAT file of version 7.3."},
      {std::string("1,2\n\0", 5), "The file is neither a text nor of a format that can be read."},
  };
  for (const auto& [bytes, problem] : cases) EXPECT_EQ(InspectForeign(bytes).problem, problem);
}

TEST(ForeignFile, MakesNamesForVariables) {
  EXPECT_EQ(VariableName("A"), "A");
  EXPECT_EQ(VariableName("Adjoint of A"), "Adjoint_of_A");
  EXPECT_EQ(VariableName("A + B"), "A_B");
  EXPECT_EQ(VariableName("2x"), "x2x");
  EXPECT_EQ(VariableName(""), "x");
  EXPECT_EQ(VariableName("_ "), "x");
  EXPECT_EQ(VariableName("A*"), "A");
  EXPECT_EQ(VariableName(std::string(100, 'a')).size(), 63U);
}

}  // namespace
}  // namespace qmx
