// SPDX-License-Identifier: MIT
#include "desktop/printing_tools.h"

#include <gtest/gtest.h>

#include <QProcess>
#include <QProcessEnvironment>
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>

namespace qmx::test {
namespace {

constexpr int kLongestRun = 30000;  // milliseconds

QString TextOf(const std::string& text) { return QString::fromStdString(text); }

}  // namespace

Outcome RunProgram(const std::vector<std::string>& arguments, const std::string& input,
                   const std::vector<std::string>& environment) {
  QStringList rest;
  for (std::size_t i = 1; i < arguments.size(); ++i) rest << TextOf(arguments[i]);
  QProcessEnvironment surroundings = QProcessEnvironment::systemEnvironment();
  for (const std::string& entry : environment) {
    const std::size_t equals = entry.find('=');
    surroundings.insert(TextOf(entry.substr(0, equals)), TextOf(entry.substr(equals + 1)));
  }
  QProcess process;
  process.setProcessEnvironment(surroundings);
  process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  process.start(TextOf(arguments[0]), rest);
  process.write(QByteArray::fromStdString(input));
  process.closeWriteChannel();
  if (!process.waitForFinished(kLongestRun)) {
    ADD_FAILURE() << arguments[0] << ": " << process.errorString().toStdString();
    process.kill();
    process.waitForFinished();
  }
  Outcome outcome;
  if (process.exitStatus() == QProcess::NormalExit) outcome.status = process.exitCode();
  outcome.output = process.readAllStandardOutput().replace('\r', QByteArray()).toStdString();
  return outcome;
}

Folder::Folder() : folder_(TextOf(testing::TempDir() + "qmx_print_XXXXXX")) {
  using std::filesystem::perms;
  if (!folder_.isValid()) ADD_FAILURE() << "no temporary folder";
  // A print server gives up its rights before it looks into it.
  std::filesystem::permissions(Path("."), perms(0755));
}

std::string Folder::Path(const std::string& name) const {
  return folder_.filePath(TextOf(name)).toStdString();
}

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
  return RunProgram(
      {QMX_PRINT_PROGRAM, font, pdfName, std::to_string(stopAt)}, input,
      {"CUPS_SERVER=" + printServer, "QT_QPA_PLATFORM=offscreen;windows", "LC_ALL=C.UTF-8"});
}

}  // namespace qmx::test
