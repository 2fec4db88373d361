// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <map>
#include <set>

#include "base/number_text.h"
#include "commands/digit_texts.h"
#include "commands/dispatcher.h"
#include "commands/file_commands.h"
#include "commands/grid_commands.h"
#include "commands/lifecycle.h"
#include "commands/parameters.h"
#include "commands/print_commands.h"
#include "commands/steps_question.h"
#include "commands/task_table.h"
#include "derivation/document_reading.h"
#include "derivation/document_text.h"
#include "desktop/help_page.h"
#include "output/reports.h"
#include "proof/prover.h"
#include "support/core_bench.h"
#include "support/core_folder.h"
#include "workspace/field_table.h"

namespace qmx::test {
namespace {

Matrix MatrixOf(const HelpStep& step) {
  Matrix matrix(static_cast<int>(step.cells.size()), static_cast<int>(step.cells.front().size()));
  for (int i = 1; i <= matrix.Rows(); ++i) {
    for (int j = 1; j <= matrix.Cols(); ++j) {
      const std::optional<double> value = ParseNumber(step.cells[i - 1].at(j - 1));
      EXPECT_TRUE(value) << step.cells[i - 1][j - 1];
      matrix(i, j) = value.value_or(0);
    }
  }
  return matrix;
}

Slot SlotNumbered(const std::string& number) { return static_cast<Slot>(std::stoi(number)); }

Slot SlotOfWindow(const std::string& window) {
  const auto info = std::find_if(kSlots.begin(), kSlots.end(),
                                 [&](const SlotInfo& slot) { return slot.window == window; });
  EXPECT_NE(info, kSlots.end()) << window;
  return info == kSlots.end() ? kSlotA : info->slot;
}

std::string Trimmed(const std::string& text) {
  const std::size_t start = text.find_first_not_of(' ');
  return start == std::string::npos ? std::string() : text.substr(start);
}

/// Does with the program what a page of the help tells the reader to do, and compares what the
/// program then shows with what the page says it shows.
class HelpExamples : public Workbench, public testing::WithParamInterface<std::string> {
 protected:
  void Follow(const HelpStep& step) {
    static const std::map<std::string, void (HelpExamples::*)(const HelpStep&)> kActions{
        {"type", &HelpExamples::Type},
        {"field", &HelpExamples::TypeField},
        {"option", &HelpExamples::Choose},
        {"press", &HelpExamples::PressButton},
        {"intoa", &HelpExamples::IntoA},
        {"intob", &HelpExamples::IntoB},
        {"exchange", &HelpExamples::Exchange},
        {"show", &HelpExamples::ExpectGrid},
        {"caption", &HelpExamples::ExpectCaption},
        {"message", &HelpExamples::ExpectMessage},
        {"lines", &HelpExamples::ExpectReport},
        {"firstlines", &HelpExamples::ExpectReportStart},
        {"save", &HelpExamples::ExpectFile},
        {"savelu", &HelpExamples::ExpectFactorFile},
        {"saveproject", &HelpExamples::ExpectProject},
        {"print", &HelpExamples::ExpectPrint},
        {"start", &HelpExamples::ExpectStart},
        {"narrow", &HelpExamples::ExpectNarrow},
        {"wide", &HelpExamples::ExpectWide},
        {"clipboard", &HelpExamples::ExpectClipboard},
        {"paste", &HelpExamples::ExpectRefusedBlock},
        {"retrieve", &HelpExamples::Retrieve},
        {"digits", &HelpExamples::ExpectDigits},
        {"digitswide", &HelpExamples::ExpectWideDigits},
        {"beside", &HelpExamples::ExpectBeside},
        {"widecell", &HelpExamples::ExpectWideCell},
        {"celltip", &HelpExamples::ExpectCellTip},
        {"steps", &HelpExamples::ExpectStep},
        {"fractions", &HelpExamples::ExpectFractions},
    };
    const auto action = kActions.find(step.action);
    ASSERT_NE(action, kActions.end()) << "nobody does data-" << step.action;
    (this->*action->second)(step);
  }

  void ExpectNoMessageLeft() {
    for (const Message& message : screen.messages) ADD_FAILURE() << "unexpected: " << message.text;
  }

 private:
  /// A matrix of the size that stands already is typed over; another size is created anew.
  void Type(const HelpStep& step) {
    const Matrix values = MatrixOf(step);
    if (step.target == "System") return TypeSystem(values);
    const Slot operand = step.target == "A" ? kSlotA : kSlotB;
    const bool created = operand == kSlotA ? workspace.ACreated : workspace.BCreated;
    if (created && SameShape(operand, values)) return TypeOver(operand, values);
    if (created) {
      ExpectNoMessageLeft();
      Reset(operand);
      screen.messages.clear();
    }
    operand == kSlotA ? EnterA(values) : EnterB(values);
  }
  void TypeSystem(const Matrix& values) {
    if (workspace.SystemPresent && SameShape(kSlotSystem, values)) {
      return TypeOver(kSlotSystem, values);
    }
    ASSERT_FALSE(workspace.SystemPresent);
    if (workspace.SystemMethod != 1) return EnterSystem(values);
    CreateSystem(context);
    ASSERT_TRUE(SameShape(kSlotSystem, values));
    TypeOver(kSlotSystem, values);
  }
  bool SameShape(Slot slot, const Matrix& values) const {
    return Array(slot).Rows() == values.Rows() && Array(slot).Cols() == values.Cols();
  }
  void TypeOver(Slot slot, const Matrix& values) {
    for (int i = 1; i <= values.Rows(); ++i) {
      for (int j = 1; j <= values.Cols(); ++j) {
        CommitCell(context, slot, i, j, FileNumber(values(i, j)));
      }
    }
  }
  void TypeField(const HelpStep& step) { screen.Type({step.target}, step.text); }
  void Choose(const HelpStep& step) {
    const std::size_t mark = step.target.find('_');
    const int index = std::stoi(step.target.substr(mark + 1));
    const auto option = std::find_if(kOptions.begin(), kOptions.end(), [&](const OptionInfo& info) {
      return info.control.ObjectName() == step.target;
    });
    ASSERT_NE(option, kOptions.end()) << step.target;
    EXPECT_EQ(option->caption, step.text);
    if (option->control.name == "OptSystem") return SelectSystemMethod(context, index);
    screen.Select(option->control);
    if (option->control.name == "OptCreate") OptCreateClick(context, index);
  }
  void PressButton(const HelpStep& step) {
    ExpectNoMessageLeft();
    linesBefore_ = screen.lines.size();
    if (step.target == "Solve") return PressSolve(context);
    const TaskInfo* task = FindTask(std::stoi(step.target));
    ASSERT_NE(task, nullptr) << step.target;
    EXPECT_EQ(task->caption, step.text);
    Press(task->index);
  }
  void IntoA(const HelpStep& step) { CopyInto(context, kSlotA, SlotNumbered(step.target)); }
  void IntoB(const HelpStep& step) { CopyInto(context, kSlotB, SlotNumbered(step.target)); }
  void Exchange(const HelpStep&) { ExchangeAandB(context); }

  void ExpectGrid(const HelpStep& step) {
    const Slot slot = SlotOfWindow(step.target);
    const RecordedGrid& grid = screen.grids[slot];
    const int headerRows = InfoOf(slot).kind == WindowKind::kColumnViewer ? 0 : 1;
    ASSERT_EQ(grid.rows - headerRows, static_cast<int>(step.cells.size())) << step.target;
    ASSERT_EQ(grid.cols - 1, static_cast<int>(step.cells.front().size())) << step.target;
    for (int i = headerRows; i < grid.rows; ++i) {
      for (int j = 1; j < grid.cols; ++j) {
        EXPECT_EQ(grid.Text(i, j), step.cells[i - headerRows].at(j - 1))
            << step.target << " row " << i - headerRows + 1 << " column " << j;
      }
    }
  }
  void ExpectCaption(const HelpStep& step) {
    EXPECT_EQ(Trimmed(screen.Text({step.target})), step.text) << step.target;
  }
  void ExpectMessage(const HelpStep& step) {
    EXPECT_EQ(screen.LastMessage(), step.text);
    screen.messages.clear();
  }
  void ExpectReport(const HelpStep& step) {
    EXPECT_EQ(LastReport(), step.text + "\n" + ClosingLine() + "\n");
  }
  void ExpectReportStart(const HelpStep& step) {
    EXPECT_EQ(LastReport().substr(0, step.text.size()), step.text);
  }
  /// What the last press added to the results list.
  std::string LastReport() const {
    std::string report;
    for (std::size_t i = linesBefore_; i < screen.lines.size(); ++i) {
      report += screen.lines[i] + "\n";
    }
    return report;
  }
  void ExpectFile(const HelpStep& step) {
    screen.fileNames.push_back("saved");
    SaveSlot(context, SlotNumbered(step.target));
    ExpectSaved("saved", step);
  }
  void ExpectFactorFile(const HelpStep& step) {
    screen.fileNames.push_back("saved");
    SaveLU(context);
    ExpectSaved("saved", step);
  }
  void ExpectProject(const HelpStep& step) {
    screen.fileNames.push_back("saved");
    SaveProjectAs(context);
    ExpectSaved("saved.qmx", step);
  }
  /// The page shows the lines; the file ends each with carriage return and line feed.
  void ExpectSaved(const std::string& name, const HelpStep& step) {
    std::string expected;
    for (const char c : step.text) expected += c == '\n' ? "\r\n" : std::string(1, c);
    EXPECT_EQ(files.files[name], expected);
  }
  void ExpectPrint(const HelpStep& step) {
    PrintSlot(context, SlotNumbered(step.target));
    std::string printed;
    for (const std::string& line : printer.lines) printed += line + "\n";
    EXPECT_EQ(printed, step.text);
  }
  void ExpectStart(const HelpStep& step) {
    EXPECT_EQ(screen.Text({step.target}), step.text) << step.target;
  }
  void ExpectNarrow(const HelpStep& step) {
    EXPECT_EQ(CStrSingle(ParseNumber(step.target).value()), step.text);
  }
  void ExpectWide(const HelpStep& step) {
    EXPECT_EQ(CStr(ParseNumber(step.target).value()), step.text);
  }

  void ExpectClipboard(const HelpStep& step) {
    std::array<char, kFileNumberRoom> room;
    char* end = WriteClipboardNumber(room.data(), ParseNumber(step.target).value());
    EXPECT_EQ(std::string(room.data(), end), step.text);
  }
  /// Pastes into A(2,2) of a 3 x 3 matrix; the page has "|" for a tab and "/" for the end of a row.
  void ExpectRefusedBlock(const HelpStep& step) {
    if (!workspace.ACreated) EnterA(Matrix(3, 3));
    std::string block = step.target;
    std::replace(block.begin(), block.end(), '|', '\t');
    std::replace(block.begin(), block.end(), '/', '\n');
    EXPECT_FALSE(PasteBlock(context, kSlotA, 2, 2, block));
    const std::string said = screen.LastMessage();
    EXPECT_EQ(said.substr(0, said.find(" Edit > Paste as A makes a matrix of ")),
              "The block cannot be pasted: " + step.text + "\n\nNothing was changed.");
    screen.messages.clear();
  }

  /// Reads one of the files that lie beside the program's sources.
  void Retrieve(const HelpStep& step) {
    ASSERT_EQ(step.target, "A");
    if (workspace.ACreated) Reset(kSlotA);
    screen.messages.clear();
    std::ifstream file(SourceFolder() + "/examples/" + step.text, std::ios::binary);
    files.files[step.text] = {std::istreambuf_iterator<char>(file), {}};
    screen.fileNames.push_back(step.text);
    RetrieveOperand(context, kSlotA);
    ASSERT_TRUE(workspace.ACreated) << step.text;
  }
  /// What is known of a result's digits, once it is checked.
  DigitStanding Checked(Result result) {
    keeper_.Follow(workspace);
    while (const std::optional<DigitCheck> check = keeper_.Next(workspace)) {
      auto finding = RunDigitCheck(BallProver(), *check, [] { return false; });
      keeper_.Take(workspace, *check, std::move(*finding));
    }
    return keeper_.Of(workspace, result);
  }
  std::string Line(const HelpStep& step, bool wide) {
    const Slot slot = SlotOfWindow(step.target);
    return DigitLine(workspace, slot, Checked(ResultOf(slot).result), wide);
  }
  void ExpectDigits(const HelpStep& step) { EXPECT_EQ(Line(step, false), step.text); }
  void ExpectWideDigits(const HelpStep& step) { EXPECT_EQ(Line(step, true), step.text); }
  void ExpectBeside(const HelpStep& step) {
    ASSERT_EQ(step.target, "lblDigitsOfDeterminant");
    const DigitStanding standing = Checked(kResultDeterminant);
    const std::string shown = screen.Text(lblDeterminantOfA);
    EXPECT_EQ(TellScalar(workspace, kResultDeterminant, standing, shown).text, step.text);
  }
  /// "frmEigenvalues 3": the third number of a column.
  struct ColumnCell {
    Slot slot;
    int row;
    std::string text;
  };
  ColumnCell CellOf(const HelpStep& step) const {
    const std::size_t blank = step.target.find(' ');
    const Slot slot = SlotOfWindow(step.target.substr(0, blank));
    const int row = std::stoi(step.target.substr(blank));
    return {slot, row, CStr(Array(slot)(row, 1))};
  }
  void ExpectWideCell(const HelpStep& step) { EXPECT_EQ(CellOf(step).text, step.text); }
  void ExpectCellTip(const HelpStep& step) {
    const ColumnCell cell = CellOf(step);
    const DigitStanding standing = Checked(ResultOf(cell.slot).result);
    ASSERT_NE(standing.finding, nullptr);
    EXPECT_EQ(CellDigitTip(*standing.finding->matrices[FindingIndex(cell.slot)], cell.row, 1,
                           cell.text, kWideDigits),
              step.text);
  }

  /// The steps of a result have this line.
  void ExpectStep(const HelpStep& step) {
    const auto result = static_cast<Result>(std::stoi(step.target));
    ASSERT_EQ(WhyNoSteps(workspace, result), "");
    const Document steps = ExactDeriver().Derive(StepsQuestion(workspace, result, 1, 1), [] {});
    const std::string text = SpokenText(steps, NumberForm::kFractions);
    EXPECT_NE(text.find("\n" + step.text + "\n"), std::string::npos) << text;
  }
  void ExpectFractions(const HelpStep& step) {
    const Result result = ResultOf(SlotOfWindow(step.target)).result;
    const auto exact = ExactDeriver().ExactElements(StepsQuestion(workspace, result, 0, 0), [] {});
    ASSERT_FALSE(exact.empty());
    std::vector<std::string> wanted;
    for (const auto& row : step.cells) wanted.insert(wanted.end(), row.begin(), row.end());
    std::vector<std::string> found;
    for (const ExactNumber& number : exact.front()) found.push_back(ExactText(number));
    EXPECT_EQ(found, wanted);
  }

  std::size_t linesBefore_ = 0;
  DigitKeeper keeper_;
};

TEST_P(HelpExamples, AreWhatTheProgramDoes) {
  for (const HelpStep& step : StepsOf(ReadHelpFile(GetParam()))) Follow(step);
  ExpectNoMessageLeft();
}

std::string TestName(const testing::TestParamInfo<std::string>& info) {
  std::string name;
  for (const char c : info.param.substr(0, info.param.rfind('.'))) name += c == '-' ? '_' : c;
  return name;
}

std::vector<std::string> PagesWithSteps() {
  std::vector<std::string> pages = HelpPages();
  std::erase_if(pages, [](const std::string& page) { return StepsOf(ReadHelpFile(page)).empty(); });
  return pages;
}

INSTANTIATE_TEST_SUITE_P(Help, HelpExamples, testing::ValuesIn(PagesWithSteps()), TestName);

/// The pages that must show a task at work: every task button, and every way of solving.
TEST(HelpExamplesOfTasks, EveryTaskHasOneWithAResult) {
  std::set<std::string> shown;
  for (const std::string& page : HelpPages()) {
    std::string pressed;
    for (const HelpStep& step : StepsOf(ReadHelpFile(page))) {
      if (step.action == "press") pressed = step.target == "Solve" ? page : step.target;
      if (step.action == "show" || step.action == "caption") shown.insert(pressed);
    }
  }
  for (const TaskInfo& task : Tasks()) {
    EXPECT_TRUE(shown.contains(CStr(task.index))) << task.caption;
  }
  for (const char* page : {"one-shot.html", "by-factors.html", "least-squares.html"}) {
    EXPECT_TRUE(shown.contains(page)) << page;
  }
}

}  // namespace
}  // namespace qmx::test
