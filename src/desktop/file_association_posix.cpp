// SPDX-License-Identifier: MIT
#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>

#include "association_files.h"
#include "desktop/association_text.h"
#include "desktop/file_association.h"
#include "desktop/file_store_system.h"

namespace qmx {

namespace {

namespace fs = std::filesystem;

constexpr const char* kMimeType = "application/x-qmx";
constexpr const char* kEntryName = "orvane.desktop";

/// A base folder of the desktop: from its variable if that holds an absolute path, else below the
/// home folder. Empty where there is none.
fs::path BaseFolder(const char* variable, const char* belowHome) {
  const char* value = std::getenv(variable);
  if (value != nullptr && value[0] == '/') return value;
  const char* home = std::getenv("HOME");
  return home != nullptr && home[0] == '/' ? fs::path(home) / belowHome : fs::path();
}

/// The bytes of a file; none for a file that does not exist, nothing for one that cannot be read.
std::optional<std::string> ReadAll(const fs::path& file) {
  std::error_code unknown;
  std::ifstream in(file, std::ios::binary);
  if (!in) return fs::exists(file, unknown) || unknown ? std::nullopt : std::optional("");
  std::string bytes{std::istreambuf_iterator<char>(in), {}};
  return in.bad() ? std::nullopt : std::optional(bytes);
}

/// True if files can be made in a folder, which need not exist.
bool IsUsable(fs::path folder) {
  std::error_code unknown;
  while (fs::symlink_status(folder, unknown).type() == fs::file_type::not_found)
    folder = folder.parent_path();
  return fs::is_directory(folder, unknown) && access(folder.c_str(), W_OK | X_OK) == 0;
}

/// Replaces a file whole, in a folder that is made where it is missing.
bool WriteAll(const fs::path& file, const std::string& text) {
  std::error_code failed;
  fs::create_directories(file.parent_path(), failed);
  return MakeSystemFileStore()->Replace(file.string(), text).Ok();
}

/// Runs one of the desktop's tools on a folder and waits for it; nothing where there is no such
/// tool.
void RunTool(const char* tool, const fs::path& folder) {
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    posix_spawn_file_actions_addopen(&actions, stream, "/dev/null", O_RDWR, 0);
  }
  std::string name = tool;
  std::string argument = folder.string();
  char* const arguments[] = {name.data(), argument.data(), nullptr};
  pid_t child = 0;
  if (posix_spawnp(&child, tool, &actions, nullptr, arguments, environ) == 0) {
    waitpid(child, nullptr, 0);
  }
  posix_spawn_file_actions_destroy(&actions);
}

/// Gives the program and its files their icon: the drawing for every size, and the smallest picture
/// that an icon theme must have for desktops that cannot draw.
void InstallIcons(const fs::path& programFolder, const fs::path& data) {
  struct Picture {
    const char* file;
    const char* folder;
    const char* ending;
  };
  for (const Picture& picture :
       {Picture{"pi_data.svg", "scalable", ".svg"}, Picture{"pi_data_48.png", "48x48", ".png"}}) {
    const std::string bytes = ReadAll(programFolder / picture.file).value_or("");
    if (bytes.empty()) continue;
    const fs::path size = data / "icons" / "hicolor" / picture.folder;
    WriteAll(size / "apps" / (std::string("orvane") + picture.ending), bytes);
    WriteAll(size / "mimetypes" / (std::string("application-x-qmx") + picture.ending), bytes);
  }
}

void MakeDefault(const fs::path& configuration) {
  const fs::path list = configuration / "mimeapps.list";
  const std::optional<std::string> text = ReadAll(list);
  if (text) WriteAll(list, WithDefaultApplication(*text, kMimeType, kEntryName));
}

}  // namespace

std::string ProgramFolder() {
  std::error_code failed;
  const fs::path program = fs::read_symlink("/proc/self/exe", failed);
  return failed ? fs::current_path(failed).string() : program.parent_path().string();
}

void AssociateProjectFiles(const std::string& programFolder) {
  const fs::path data = BaseFolder("XDG_DATA_HOME", ".local/share");
  const fs::path configuration = BaseFolder("XDG_CONFIG_HOME", ".config");
  if (data.empty() || configuration.empty()) return;
  // Half an association would be worse than none.
  for (const char* folder : {"mime", "mime/packages", "applications"}) {
    if (!IsUsable(data / folder)) return;
  }
  const fs::path program = fs::path(programFolder) / "qmx.exe";
  if (!WriteAll(data / "mime" / "packages" / "orvane.xml", std::string(kMimeTypeXml)) ||
      !WriteAll(data / "applications" / kEntryName, WithProgram(kDesktopEntry, program.string())))
    return;
  InstallIcons(programFolder, data);
  RunTool("update-mime-database", data / "mime");
  RunTool("update-desktop-database", data / "applications");
  MakeDefault(configuration);
}

}  // namespace qmx
