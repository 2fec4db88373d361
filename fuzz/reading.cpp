// SPDX-License-Identifier: MIT
#include "reading.h"

#include "commands/file_commands.h"
#include "commands/parameters.h"
#include "files/lu_file.h"
#include "files/project_file.h"
#include "support/core_ports.h"
#include "support/core_samples.h"
#include "support/core_screen.h"

namespace qmx::fuzz {
namespace {

constexpr const char* kName = "file";
constexpr std::string_view kNotSquare = "ERROR: INCORRECT DIMENSIONALITY. U FACTOR IS NOT SQUARE.";

/// A screen that forgets what its grids show: the cells of large ones are not what is tried here.
class GridlessScreen : public test::RecordingScreen {
 public:
  void Show(Slot, const GridContent&) override {}
  void Write(Slot, int, int, TextBlock&&) override {}
};

/// A program with something in every slot.
struct Program {
  Workspace workspace = test::EverythingWorkspace();
  GridlessScreen screen;
  test::MemoryFiles files;
  test::RecordingPrinter printer;
  test::FixedRandom random;
  test::FixedClock clock;
  Context context{workspace, screen, {files, printer, random, clock, SystemMemory()}};

  Program() { SetStartState(context); }

  std::string State() const {
    std::string state =
        ProjectFile(workspace, ReadEigenTexts(screen)) + LUFile(workspace.storedFactors);
    for (const auto& [name, text] : screen.texts)
      state.append(name).append("=").append(text).append("\n");
    for (const auto& [name, on] : screen.enabled) state += name + (on ? "+\n" : "-\n");
    for (const auto& [name, on] : screen.selected) state += name + (on ? "*\n" : " \n");
    for (const bool frame : screen.frames) state += frame ? 'F' : 'f';
    for (const auto window : screen.windows)
      state += static_cast<char>('0' + static_cast<int>(window));
    return state + std::to_string(screen.timesBroughtToFront);
  }
  bool Refused() const {
    return !screen.messages.empty() && screen.messages.front().text != kNotSquare;
  }
};

/// What a session holds after reading must be fit for saving and opening.
std::string TrySaving(Program& program) {
  const std::string saved = ProjectFile(program.workspace, ReadEigenTexts(program.screen));
  Program other;
  other.workspace = Workspace();
  other.files.files[kName] = saved;
  OpenNamedProject(other.context, kName);
  if (!other.screen.messages.empty())
    return "what was saved is refused: " + other.screen.messages.front().text;
  if (ProjectFile(other.workspace, ReadEigenTexts(other.screen)) != saved)
    return "what was saved is saved differently after opening";
  return {};
}

std::string Try(std::string_view bytes, void (*read)(Context&)) {
  Program program;
  static const std::string before = program.State();
  program.files.files[kName] = std::string(bytes);
  program.screen.fileNames.push_back(kName);
  read(program.context);
  if (program.screen.messages.size() > 1) return "more than one message";
  if (!program.Refused()) return TrySaving(program);
  return program.State() == before ? std::string() : "a refused file changed something";
}

}  // namespace

std::string TryProject(std::string_view bytes) {
  return Try(bytes, [](Context& context) { OpenNamedProject(context, kName); });
}

std::string TryMatrix(std::string_view bytes) {
  return Try(bytes, [](Context& context) { RetrieveOperand(context, kSlotB); });
}

std::string TrySystem(std::string_view bytes) { return Try(bytes, RetrieveSystem); }

std::string TryFactors(std::string_view bytes) { return Try(bytes, RetrieveLU); }

}  // namespace qmx::fuzz
