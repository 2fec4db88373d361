// SPDX-License-Identifier: MIT
#include "files/system_file.h"

#include <gtest/gtest.h>

#include "support/core_bench.h"
#include "support/core_data.h"

namespace qmx {
namespace {

using test::Rows;

Workspace WithSystem(Matrix system, int kind) {
  Workspace workspace;
  workspace.System().array = std::move(system);
  workspace.SystemMethod = static_cast<std::int16_t>(kind);
  return workspace;
}

Workspace ByFactors() {
  Workspace workspace = WithSystem(Rows({{5}, {-0.5}}), kSystemByFactors);
  StoredFactors& factors = workspace.storedFactors;
  factors.L = Rows({{1, 0}, {0.5, 1}});
  factors.U = Rows({{4, 3}, {0, -1.5}});
  factors.exchanges = Rows({{2}, {1}});
  factors.exchangeRows = 2;
  return workspace;
}

TEST(SystemFile, EndsWithTheKind) {
  EXPECT_EQ(SystemFile(WithSystem(Rows({{1, 2}, {3, 4}}), 0)),
            "2,2\r\n 1 \r\n 2 \r\n 3 \r\n 4 \r\n 0 \r\n");
  EXPECT_EQ(SystemFile(WithSystem(Rows({{1, 2}}), 2)), "1,2\r\n 1 \r\n 2 \r\n 2 \r\n");
}

TEST(SystemFile, HoldsTheFactorsThatSolveIt) {
  const Workspace workspace = ByFactors();
  EXPECT_EQ(SystemFile(workspace),
            "2,1\r\n 5 \r\n-.5 \r\n 1 \r\n" + LUFile(workspace.storedFactors));
}

TEST(SystemFile, HoldsCountsOfNoneWithoutFactors) {
  EXPECT_EQ(SystemFile(WithSystem(Rows({{1}}), kSystemByFactors)),
            "1,1\r\n 1 \r\n 1 \r\n0,0,0,0,0\r\n");
}

TEST(SystemFile, IsTheSampleThatTheDocumentationShows) {
  EXPECT_EQ(SystemFile(WithSystem(Rows({{2, 1, 3}, {1, -1, 0.25}}), 0)),
            test::DataFile("system.txt"));
  EXPECT_EQ(SystemFile(ByFactors()), test::DataFile("system-by-factors.txt"));
}

TEST(SystemFile, ReadsBackWhatWasWritten) {
  for (const Workspace& workspace :
       {WithSystem(Rows({{1, 2}, {3, 4}}), 0), WithSystem(Rows({{1, 2}}), 2), ByFactors(),
        WithSystem(Rows({{1}}), kSystemByFactors)}) {
    const auto reading = ReadSystemFile(SystemFile(workspace));
    EXPECT_EQ(reading.problem, "");
    EXPECT_EQ(reading.content.matrix.array, workspace.At(kSlotSystem).array);
    EXPECT_EQ(reading.content.kind, workspace.SystemMethod);
    EXPECT_EQ(reading.content.factors.has_value(), workspace.SystemMethod == kSystemByFactors);
    if (!reading.content.factors) continue;
    EXPECT_EQ(reading.content.factors->L, workspace.storedFactors.L);
    EXPECT_EQ(reading.content.factors->U, workspace.storedFactors.U);
    EXPECT_EQ(reading.content.factors->exchanges.Rows(), workspace.storedFactors.U.Rows());
  }
}

TEST(SystemFile, StopsAtFactorsWhoseUIsNotSquare) {
  const auto reading = ReadSystemFile("2,1\n5 6\n1\n3,3,3,4,0\nanything");
  EXPECT_EQ(reading.problem, "");
  EXPECT_TRUE(reading.content.StopsAtFactors());
}

TEST(SystemFile, RefusesOtherKinds) {
  for (const char* kind : {"3", "-1", "99999999999", "0.5", "one", ""}) {
    const auto reading = ReadSystemFile("1,2\n1 2\n" + std::string(kind) + "\n");
    EXPECT_NE(reading.problem.find("Line "), std::string::npos);
    EXPECT_NE(reading.problem.find("the kind of the system, 0 to 2"), std::string::npos) << kind;
  }
}

TEST(SystemFile, RefusesEveryCut) {
  for (const Workspace& workspace : {WithSystem(Rows({{1, 2}, {3, 4}}), 0), ByFactors()}) {
    const std::string bytes = SystemFile(workspace);
    for (std::size_t length = 0; length < bytes.size(); ++length)
      EXPECT_FALSE(ReadSystemFile(bytes.substr(0, length)).Ok()) << length;
  }
}

TEST(SystemFile, RefusesAFileOfAnotherKind) {
  for (const char* name : {"matrix.txt", "vector.txt", "lu.txt", "a.qmx", "everything.qmx"})
    EXPECT_FALSE(ReadSystemFile(test::DataFile(name)).Ok()) << name;
}

TEST(SystemFile, ReadsIntoAnOperandAsItsAugmentedMatrix) {
  const FileReading<Matrix> reading = ReadOperandFile(kSlotA, "2,3\n1\n2\n3\n4\n5\n6\n0\n");
  EXPECT_EQ(reading.problem, "");
  EXPECT_EQ(reading.content, Rows({{1, 2, 3}, {4, 5, 6}}));
  EXPECT_EQ(ReadOperandFile(kSlotA, "1,1\n7\n").content, Rows({{7}}));
}

TEST(SystemFile, OtherRemaindersAreRefusedForAnOperand) {
  EXPECT_EQ(ReadOperandFile(kSlotA, "1,1\n7\n3\n").problem,
            "Line 3: expected the end of the file, but found \"3\".");
  EXPECT_FALSE(ReadOperandFile(kSlotA, "1,1\n7\n0\n0\n").Ok());
}

}  // namespace
}  // namespace qmx
