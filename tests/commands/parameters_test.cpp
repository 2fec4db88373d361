// SPDX-License-Identifier: MIT
#include "commands/parameters.h"

#include "support/core_bench.h"
#include "workspace/field_table.h"

namespace qmx {
namespace {

using test::Rows;
using ParametersTest = test::Workbench;

TEST_F(ParametersTest, FieldsStartWithTheirTexts) {
  const std::pair<Control, std::string> expected[] = {
      {txtRowsA, "2"},     {txtColsA, "2"},     {txtRowsB, "2"},       {txtColsB, "2"},
      {txtScalar, "2"},    {txtShift, "1"},     {txtRowsCreated, "2"}, {txtColsCreated, "2"},
      {txtRandLow, "-10"}, {txtRandHigh, "10"}, {txtEquations, "2"},   {txtUnknowns, "2"},
      {txtError, ".001"},  {txtMaxcy, "100"},   {txtErs, ".1"},        {txtPert, ".001"},
  };
  ASSERT_EQ(kFields.size(), std::size(expected));
  for (const auto& [field, text] : expected) EXPECT_EQ(screen.Text(field), text) << field.name;
}

TEST_F(ParametersTest, CaptionsAndToolTipsOfTheFields) {
  EXPECT_EQ(InfoOf(txtRowsA).caption, "Rows:");
  EXPECT_EQ(InfoOf(txtColsCreated).caption, "Cols:");
  EXPECT_EQ(InfoOf(txtScalar).caption, "Scalar:");
  EXPECT_EQ(InfoOf(txtScalar).toolTip, "For scalar multiplication");
  EXPECT_EQ(InfoOf(txtShift).caption, "Scalar:");
  EXPECT_EQ(InfoOf(txtShift).toolTip, "For scalar shift");
  EXPECT_EQ(InfoOf(txtRandLow).toolTip, "Controls magnitude of elements of random matrix");
  EXPECT_EQ(InfoOf(txtRandHigh).toolTip, "Controls magnitude of elements of random matrix");
  EXPECT_EQ(InfoOf(txtEquations).caption, "# of equations:");
  EXPECT_EQ(InfoOf(txtUnknowns).caption, "# of unknowns:");
  EXPECT_EQ(InfoOf(txtError).caption, "Approximate error bound:");
  EXPECT_EQ(InfoOf(txtError).toolTip, "Error MUST be >0");
  EXPECT_EQ(InfoOf(txtMaxcy).caption, "Maximum # of iterations:");
  EXPECT_EQ(InfoOf(txtMaxcy).toolTip, "Limits number of main loop iterations");
  EXPECT_EQ(InfoOf(txtErs).caption, "Error reference for shift:");
  EXPECT_EQ(InfoOf(txtErs).toolTip, "Error MUST be >0");
  EXPECT_EQ(InfoOf(txtPert).caption, "Additional shift (if singularity):");
  EXPECT_EQ(InfoOf(txtPert).toolTip, "MUST be >0");
}

TEST_F(ParametersTest, OptionsStartAsTheyShould) {
  for (const Control& option : {OptPivot(0), OptCreate(0), OptSystem(0)}) {
    EXPECT_TRUE(screen.IsSelected(option)) << option.ObjectName();
  }
  for (const Control& option :
       {OptPivot(1), OptCreate(3), OptSystem(1), chkSymmetric, chkIntegers}) {
    EXPECT_FALSE(screen.IsSelected(option)) << option.ObjectName();
  }
  EXPECT_EQ(workspace.SystemMethod, 0);
}

TEST_F(ParametersTest, CaptionsAndToolTipsOfTheOptions) {
  const std::pair<std::string_view, std::string_view> expected[] = {
      {"Yes", ""},
      {"No", ""},
      {"Of zeroes", "Create matrix of zeroes"},
      {"Of ones", "Create matrix of ones"},
      {"Identity", "Create identity matrix"},
      {"Random", "Create matrix of random elements"},
      {"Symmetric", "Create symmetric matrix"},
      {"Integers", "All elements will be integers"},
      {"One-shot solution", ""},
      {"Solve by LU factors", ""},
      {"Overdetermined/inconsistent", ""},
  };
  ASSERT_EQ(kOptions.size(), std::size(expected));
  for (std::size_t i = 0; i < kOptions.size(); ++i) {
    EXPECT_EQ(kOptions[i].caption, expected[i].first);
    EXPECT_EQ(kOptions[i].toolTip, expected[i].second);
  }
}

TEST_F(ParametersTest, AtStartWhatHoldsNothingIsDisabledAndHidden) {
  for (const Control& control :
       {txtUnknowns, mnuPrint, cmdShowResults, cmdRetrieveLU, cmdSaveLU, cmdSolve, cmdExchangeAandB,
        cmdClearA, cmdResetB, cmdIntoB(0), cmdIntoA(1)}) {
    EXPECT_FALSE(screen.Enabled(control)) << control.ObjectName();
  }
  for (const Slot k : kAllSlots) {
    EXPECT_FALSE(screen.Enabled(cmdShow(k))) << k;
    EXPECT_FALSE(screen.Enabled(cmdSave(k))) << k;
    EXPECT_FALSE(screen.Enabled(cmdPrint(k))) << k;
    EXPECT_FALSE(screen.frames[k]) << k;
  }
  for (const Control& control :
       {cmdCreateA, cmdRetrieveB, cmdCreateSystem, cmdRetrieveSystem, txtEquations}) {
    EXPECT_TRUE(screen.Enabled(control)) << control.ObjectName();
  }
}

TEST_F(ParametersTest, AnIdentityIsAsWideAsItIsHigh) {
  screen.Select(OptCreate(2));
  OptCreateClick(context, 2);
  EXPECT_FALSE(screen.Enabled(txtColsCreated));
  screen.Type(txtRowsCreated, "5");
  TxtRowsCreatedChange(context);
  EXPECT_EQ(screen.Text(txtColsCreated), "5");
  EXPECT_FALSE(screen.Enabled(txtColsCreated));
  screen.Select(OptCreate(3));
  OptCreateClick(context, 3);
  EXPECT_TRUE(screen.Enabled(txtColsCreated));
}

TEST_F(ParametersTest, ChoosingIdentityTakesOverTheRows) {
  screen.Type(txtRowsCreated, "7");
  TxtRowsCreatedChange(context);
  EXPECT_EQ(screen.Text(txtColsCreated), "2");
  screen.Select(OptCreate(2));
  OptCreateClick(context, 2);
  EXPECT_EQ(screen.Text(txtColsCreated), "7");
}

TEST_F(ParametersTest, ASymmetricMatrixIsAsWideAsItIsHigh) {
  screen.Type(txtRowsCreated, "4");
  screen.Check(chkSymmetric, true);
  ChkSymmetricClick(context);
  EXPECT_EQ(screen.Text(txtColsCreated), "4");
  EXPECT_FALSE(screen.Enabled(txtColsCreated));
  screen.Type(txtRowsCreated, "6");
  TxtRowsCreatedChange(context);
  EXPECT_EQ(screen.Text(txtColsCreated), "6");
  OptCreateClick(context, 1);
  EXPECT_FALSE(screen.Enabled(txtColsCreated));
  screen.Check(chkSymmetric, false);
  ChkSymmetricClick(context);
  EXPECT_TRUE(screen.Enabled(txtColsCreated));
}

TEST_F(ParametersTest, AOneShotSystemIsSquareAsItIsTyped) {
  screen.Type(txtEquations, "4");
  TxtEquationsChange(context);
  EXPECT_EQ(screen.Text(txtUnknowns), "4");
  SelectSystemMethod(context, 2);
  screen.Type(txtEquations, "9");
  TxtEquationsChange(context);
  EXPECT_EQ(screen.Text(txtUnknowns), "4");
}

TEST_F(ParametersTest, SolvingByFactorsWithoutFactorsCreatesNoSystem) {
  SelectSystemMethod(context, 1);
  EXPECT_FALSE(screen.Enabled(cmdCreateSystem));
  EXPECT_FALSE(screen.Enabled(cmdRetrieveSystem));
  EXPECT_TRUE(screen.Enabled(cmdRetrieveLU));
  EXPECT_FALSE(screen.Enabled(txtEquations));
  EXPECT_FALSE(screen.Enabled(txtUnknowns));
  EXPECT_EQ(workspace.SystemMethod, 1);
  SelectSystemMethod(context, 2);
  EXPECT_TRUE(screen.Enabled(cmdCreateSystem));
  EXPECT_TRUE(screen.Enabled(txtUnknowns));
  EXPECT_FALSE(screen.Enabled(cmdRetrieveLU));
  SelectSystemMethod(context, 0);
  EXPECT_FALSE(screen.Enabled(txtUnknowns));
  EXPECT_TRUE(screen.Enabled(txtEquations));
}

TEST_F(ParametersTest, SolvingByFactorsTakesTheirOrder) {
  EnterA(Rows({{2, 1, 0}, {1, 2, 1}, {0, 1, 2}}));
  Press(8);
  SelectSystemMethod(context, 1);
  EXPECT_EQ(screen.Text(txtEquations), "3");
  EXPECT_EQ(screen.Text(txtUnknowns), "3");
  EXPECT_TRUE(screen.Enabled(cmdCreateSystem));
  EXPECT_TRUE(screen.Enabled(cmdRetrieveSystem));
}

}  // namespace
}  // namespace qmx
