// SPDX-License-Identifier: MIT
#include "desktop/printing_tools.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

namespace qmx::test {
namespace {

constexpr unsigned kLongestRun = 30;  // seconds

[[noreturn]] void Become(const std::vector<std::string>& arguments, const std::string& input,
                         const std::string& output, const std::vector<std::string>& environment) {
  const int in = open(input.c_str(), O_RDONLY);
  const int out = open(output.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
  dup2(in, STDIN_FILENO);
  dup2(out, STDOUT_FILENO);
  for (const std::string& entry : environment) {
    const std::size_t equals = entry.find('=');
    setenv(entry.substr(0, equals).c_str(), entry.substr(equals + 1).c_str(), 1);
  }
  std::vector<char*> pointers;
  for (const std::string& argument : arguments)
    pointers.push_back(const_cast<char*>(argument.c_str()));
  pointers.push_back(nullptr);
  // The alarm survives the change of program and ends one that hangs.
  alarm(kLongestRun);
  execvp(pointers[0], pointers.data());
  _exit(127);
}

}  // namespace

Outcome RunProgram(const std::vector<std::string>& arguments, const std::string& input,
                   const std::vector<std::string>& environment) {
  const Folder folder;
  const std::string inputName = folder.Path("input");
  const std::string outputName = folder.Path("output");
  Put(inputName, input);
  const pid_t child = fork();
  if (child == 0) Become(arguments, inputName, outputName, environment);
  int status = 0;
  waitpid(child, &status, 0);
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, ContentOf(outputName)};
}

Folder::Folder() : path_(testing::TempDir() + "qmx_print_XXXXXX") {
  if (mkdtemp(path_.data()) == nullptr) ADD_FAILURE() << "no temporary folder";
  chmod(path_.c_str(), 0755);
}

Folder::~Folder() { std::filesystem::remove_all(path_); }

std::string ContentOf(const std::string& name) {
  std::ifstream file(name, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

void Put(const std::string& name, const std::string& bytes) {
  std::ofstream(name, std::ios::binary) << bytes;
}

std::vector<std::string> LinesOfPdf(const std::string& name) {
  const Outcome text = RunProgram({"pdftotext", "-fixed", "6", name, "-"});
  EXPECT_EQ(text.status, 0) << "pdftotext (package poppler-utils)";
  std::vector<std::string> lines;
  std::istringstream stream(text.output);
  std::string line;
  std::size_t margin = std::string::npos;
  while (std::getline(stream, line)) {
    line.erase(line.find_last_not_of(' ') + 1);
    lines.push_back(line);
    const std::size_t first = line.find_first_not_of(" \f");
    if (first == std::string::npos) continue;
    margin = std::min(margin, first - (line[0] == '\f' ? 1 : 0));
  }
  for (std::string& each : lines) {
    const std::size_t at = each.starts_with('\f') ? 1 : 0;
    each.erase(at, std::min(margin, each.size() - at));
  }
  return lines;
}

Outcome PrintLines(const std::vector<std::string>& lines, const std::string& font,
                   const std::string& pdfName, const std::string& printServer, int stopAt) {
  std::string input;
  for (const std::string& line : lines) input += line + "\n";
  return RunProgram({QMX_PRINT_PROGRAM, font, pdfName, std::to_string(stopAt)}, input,
                    {"CUPS_SERVER=" + printServer, "QT_QPA_PLATFORM=offscreen", "LC_ALL=C.UTF-8"});
}

}  // namespace qmx::test
