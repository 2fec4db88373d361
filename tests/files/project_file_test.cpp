// SPDX-License-Identifier: MIT
#include "files/project_file.h"

#include <gtest/gtest.h>

#include <limits>

#include "commands/parameters.h"
#include "support/core_bench.h"
#include "support/core_data.h"
#include "support/core_samples.h"

namespace qmx {
namespace {

using test::Rows;

class ProjectFileTest : public test::Workbench {
 protected:
  std::string Bytes(const Workspace& of) const { return ProjectFile(of, ReadEigenTexts(screen)); }
};

TEST_F(ProjectFileTest, OfAnEmptyWorkspaceHoldsOnlyFlags) {
  EXPECT_EQ(Bytes(workspace),
            "#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#\r\n"
            "#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#\r\n"
            "#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#\r\n");
  EXPECT_TRUE(ReadProjectFile(Bytes(workspace)).Ok());
}

TEST_F(ProjectFileTest, OfOnlyAIsTheSampleThatTheDocumentationShows) {
  EnterA(Rows({{1, -2.5}, {0.5, 1e-20}}));
  EXPECT_EQ(Bytes(workspace), test::DataFile("a.qmx"));
}

TEST_F(ProjectFileTest, OfEverythingIsTheSampleThatTheDocumentationShows) {
  EXPECT_EQ(Bytes(test::EverythingWorkspace()), test::DataFile("everything.qmx"));
}

TEST_F(ProjectFileTest, WritesTheSectionsInTheirOwnOrder) {
  Workspace small;
  const auto put = [&small](Slot slot, double value) { small.At(slot).array = Rows({{value}}); };
  for (const Slot slot : {kSlotA, kSlotSolution, kSlotCreated, kSlotTranspose}) put(slot, slot);
  small.CreatedPresent = true;
  small.ACreated = small.TraceComputed = small.SolutionComputed = small.TransposeComputed = true;
  small.trace = 1;
  EXPECT_EQ(Bytes(small),
            "#TRUE#,#FALSE#,#TRUE#,#FALSE#,#FALSE#,#FALSE#\r\n"
            "#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#\r\n"
            "#FALSE#,#FALSE#,#TRUE#,#FALSE#,#FALSE#,#TRUE#,#FALSE#,#TRUE#\r\n"
            "1,1\r\n 0 \r\n 1 \r\n1,1\r\n 11 \r\n1,1\r\n 15 \r\n1,0\r\n 14 \r\n");
}

TEST_F(ProjectFileTest, HoldsExchangesOnlyBesideFactors) {
  Workspace small;
  small.At(kSlotExchanges).array = Rows({{1}});
  small.ExchangesPresent = true;
  const std::string bytes = Bytes(small);
  EXPECT_EQ(bytes.find("1,0"), std::string::npos);
  EXPECT_TRUE(ReadProjectFile(bytes).Ok());
}

TEST_F(ProjectFileTest, WritesTheNumbersOfTheEigenFields) {
  Workspace eigen;
  eigen.EigenvaluesComputed = true;
  screen.SetText(txtError, " 1e-9 and more");
  screen.SetText(txtMaxcy, "");
  screen.SetText(txtErs, "abc");
  screen.SetText(txtPert, "-.25");
  const std::string bytes = Bytes(eigen);
  EXPECT_TRUE(bytes.ends_with("\r\n.000000001,0,0,-.25,0\r\n")) << bytes;
}

TEST_F(ProjectFileTest, ReadsBackEverything) {
  const Workspace everything = test::EverythingWorkspace();
  const auto reading = ReadProjectFile(Bytes(everything));
  ASSERT_EQ(reading.problem, "");
  const ProjectImage& image = reading.content;
  EXPECT_EQ(image.flags, FlagsOf(everything));
  for (const Slot slot : kAllSlots) {
    const bool inSectionOfItsOwn = IsFiled(slot) && ResultOf(slot).kind == ResultKind::kMatrices;
    if (!inSectionOfItsOwn) continue;
    EXPECT_EQ(image.matrices[slot].array, everything.At(slot).array) << slot;
  }
  EXPECT_EQ(image.numbers[kResultDeterminant], -6.5);
  EXPECT_EQ(image.numbers[kResultTrace], 1e16);
  EXPECT_EQ(image.verdicts[kResultDefiniteness], "Positive definite");
  EXPECT_EQ(image.verdicts[kResultSymmetry], "Yes");
  EXPECT_EQ(image.system.kind, 1);
  EXPECT_EQ(image.system.factors->U, everything.storedFactors.U);
  EXPECT_EQ(image.eigen.parameters, (std::array<double, 4>{.001, 100, .1, .001}));
  EXPECT_EQ(image.eigen.origin, everything.eigen.EigenOrigin);
  EXPECT_EQ(image.eigen.status, everything.eigen.VectorStatus);
  EXPECT_EQ(image.eigen.vectorCount, 1);
  EXPECT_EQ(image.eigen.Vectors(), Rows({{0.6, 0, 0}, {0.8, 0, 0}, {0, 0, 0}}));
}

TEST_F(ProjectFileTest, RefusesEveryCut) {
  const std::string bytes = test::DataFile("everything.qmx");
  for (std::size_t length = 0; length < bytes.size(); ++length)
    ASSERT_FALSE(ReadProjectFile(bytes.substr(0, length)).Ok()) << length;
  EXPECT_TRUE(ReadProjectFile(bytes).Ok());
}

TEST_F(ProjectFileTest, TakesLineFeedsAndExtraBlanks) {
  std::string bytes;
  for (const char c : test::DataFile("everything.qmx")) {
    if (c == '\r') continue;
    if (c == ',' || c == '\n') bytes += ' ';
    bytes += c;
    if (c == ',') bytes += '\t';
  }
  const auto reading = ReadProjectFile(bytes);
  EXPECT_EQ(reading.problem, "");
  EXPECT_EQ(reading.content.matrices[kSlotInverse].array, Rows({{9.25, -1.0 / 3}, {1e-20, 9e20}}));
}

TEST_F(ProjectFileTest, RefusesAFileOfAnotherKind) {
  for (const char* name :
       {"matrix.txt", "vector.txt", "lu.txt", "system.txt", "system-by-factors.txt"}) {
    EXPECT_EQ(ReadProjectFile(test::DataFile(name))
                  .problem.find("Line 1: expected the flag #TRUE# or #FALSE# of matrix A"),
              0U)
        << name;
  }
}

TEST_F(ProjectFileTest, RefusesAFlagWithoutItsSection) {
  const std::string bytes = Bytes(workspace);
  for (std::size_t at = bytes.find("#FALSE#"); at != std::string::npos;
       at = bytes.find("#FALSE#", at + 1)) {
    std::string flagged = bytes;
    flagged.replace(at, 7, "#TRUE#");
    const auto reading = ReadProjectFile(flagged);
    // Exchanges need LU as well, and eigenvectors travel with the eigenvalues.
    const auto flags = reading.content.flags;
    if (flags[kResultExchanges] || flags[kResultEigenvectors]) {
      EXPECT_TRUE(reading.Ok()) << at;
    } else {
      EXPECT_FALSE(reading.Ok()) << at;
    }
  }
}

TEST_F(ProjectFileTest, RefusesMoreThanItsFlagsSay) {
  EXPECT_EQ(ReadProjectFile(test::DataFile("a.qmx") + " 5 \r\n").problem,
            "Line 9: expected the end of the file, but found \"5\".");
  EXPECT_TRUE(ReadProjectFile(test::DataFile("a.qmx") + "\r\n \r\n").Ok());
}

/// A project that holds nothing but the eigenvalues, with this section.
std::string EigenProject(const std::string& section) {
  return "#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#\n"
         "#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#\n"
         "#FALSE#,#FALSE#,#FALSE#,#TRUE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#\n" +
         section;
}

struct BadSection {
  const char* bytes;
  const char* problem;
};

TEST_F(ProjectFileTest, ChecksTheEigenSection) {
  EXPECT_TRUE(ReadProjectFile(EigenProject("1,2,3,4,0\n")).Ok());
  EXPECT_TRUE(ReadProjectFile(EigenProject("1,2,3,4,1\n7,7\n2,1,1\n0\n")).Ok());
  EXPECT_TRUE(ReadProjectFile(EigenProject("1,2,3,4,1\n1,1\n2,0,1\n1\n3,1\n1 2 3\n")).Ok());
  constexpr BadSection kBad[] = {
      {"1,2,3,4,-1\n", "Line 4: expected the number of eigenvalues, at least 0, but found \"-1\"."},
      {"1,2,x,4,0\n", "Line 4: expected the error reference for the shift, but found \"x\"."},
      {"1,2,3,4,1\n1,1\n2,5,1\n0\n",
       "Line 6: expected the vector's status 0, 1 or -1 of eigenvalue 1, but found \"5\"."},
      {"1,2,3,4,1\n1,1\n2,0,0\n0\n",
       "Line 6: expected the position of eigenvalue 1, a whole number from 1 on, but found \"0\"."},
      {"1,2,3,4,1\n1,1\n2,0,1.5\n0\n",
       "Line 6: expected the position of eigenvalue 1, a whole number from 1 on, but found "
       "\"1.5\"."},
      {"1,2,3,4,1\n1,1\n2,0,1\n2\n1,1\n1\n",
       "Line 7: expected the number of eigenvectors found, 0 to 1, but found \"2\"."},
      {"1,2,3,4,1\n1,1\n2,0,1\n1\n1,2\n1 2\n",
       "Line 8: expected a column of eigenvectors for each of 1 eigenvalues, but found \"2\"."},
      {"1,2,3,4,1\n1,1\n2,0,1\n1\n2,1\n1 x\n",
       "Line 9: expected element (2,1) of the eigenvectors, but found \"x\"."},
      {"1,2,3,4,1\n1,1\n2,0,1\n1\n2000000000,1\n1\n",
       "Line 8: expected a file long enough for the 2000000000 elements of the eigenvectors, but "
       "found \"1\"."},
      {"1,2,3,4,1\nx,1\n2,0,1\n1\n1,1\n1\n",
       "Line 5: expected the number of rows of the eigenvalues, but found \"x\"."},
      {"1,2,3,4,1\n1,x\n2,0,1\n1\n1,1\n1\n",
       "Line 5: expected the number of columns of the eigenvalues, but found \"x\"."},
      {"1,2,3,4,2000000000\n1,1\n2,0,1\n",
       "Line 7: expected the value of eigenvalue 2, but found the end of the file."},
  };
  for (const auto& [bytes, problem] : kBad)
    EXPECT_EQ(ReadProjectFile(EigenProject(bytes)).problem, problem);
  // Only the vectors that were found stand in the file, but there is a column for each.
  memory.available = 50;
  const std::string found = "1,2,3,4,2\n2,1\n2,0,1\n3,1,2\n1\n2,2\n1 0\n";
  EXPECT_TRUE(ReadProjectFile(EigenProject(found)).Ok());
  EXPECT_EQ(ReadProjectFile(EigenProject(found), memory).problem,
            "Line 10: expected a size of the eigenvectors that fits into memory, but found \"0\".");
}

TEST_F(ProjectFileTest, ChecksThatExchangesNameRows) {
  const std::string flags =
      "#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#\n"
      "#FALSE#,#FALSE#,#FALSE#,#TRUE#,#TRUE#,#FALSE#\n"
      "#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#,#FALSE#\n"
      "2,2\n1 0 0 1\n2,2\n1 0 0 1\n";
  EXPECT_TRUE(ReadProjectFile(flags + "2,0\n2\n1\n").Ok());
  EXPECT_EQ(ReadProjectFile(flags + "2,0\n2\n3\n").problem,
            "Line 10: expected exchange record 2, a row number from 1 to 2, but found \"3\".");
  EXPECT_EQ(ReadProjectFile(flags + "2,0\n-1\n1\n").problem,
            "Line 9: expected exchange record 1, a row number from 1 to 2, but found \"-1\".");
  EXPECT_FALSE(ReadProjectFile(flags + "2,2\n2\n1\n2\n1\n").Ok());
}

TEST_F(ProjectFileTest, StopsAtFactorsWhoseUIsNotSquare) {
  std::string bytes = test::DataFile("everything.qmx");
  const std::size_t counts = bytes.rfind("2,2,2,2,2");
  ASSERT_NE(counts, std::string::npos);
  bytes.replace(counts, 9, "2,2,2,3,2");
  const auto reading = ReadProjectFile(bytes);
  EXPECT_EQ(reading.problem, "");
  EXPECT_TRUE(reading.content.system.StopsAtFactors());
  EXPECT_FALSE(reading.content.flags[kResultSolution]);
  EXPECT_TRUE(reading.content.flags[kResultSystem]);
}

TEST_F(ProjectFileTest, WritesWhatAFaultInTheMiddleOfATaskLeft) {
  Workspace broken = test::EverythingWorkspace();
  broken.At(kSlotInverse).array(1, 1) = std::numeric_limits<double>::infinity();
  broken.At(kSlotProduct).array = Matrix();
  broken.eigen.VectorStatus = {0};
  broken.eigen.EigenCount = 17;
  broken.At(kSlotEigenvectors).array = Matrix(2, 9);
  broken.storedFactors.exchangeRows = 99;
  broken.storedFactors.uCols = 7;
  const auto reading = ReadProjectFile(Bytes(broken));
  EXPECT_EQ(reading.problem, "");
  EXPECT_EQ(reading.content.matrices[kSlotInverse].array(1, 1), std::numeric_limits<double>::max());
  EXPECT_EQ(reading.content.eigen.Count(), 1);
  broken.eigen = EigenState();
  broken.eigen.EigenCount = 3;
  EXPECT_TRUE(ReadProjectFile(Bytes(broken)).Ok());
}

}  // namespace
}  // namespace qmx
