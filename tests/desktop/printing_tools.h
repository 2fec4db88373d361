// SPDX-License-Identifier: MIT
#pragma once

#include <QTemporaryDir>
#include <string>
#include <vector>

namespace qmx::test {

/// What became of a program: its exit status (-1 where it was killed or took too long) and what it
/// wrote to its standard output.
struct Outcome {
  int status = -1;
  std::string output;
};

/// Runs a program that is looked for in the usual places, with this text as its input and these
/// additions to its environment. It is stopped after half a minute.
Outcome RunProgram(const std::vector<std::string>& arguments, const std::string& input = {},
                   const std::vector<std::string>& environment = {});

/// A folder of its own that goes with the object.
class Folder {
 public:
  Folder();
  std::string Path(const std::string& name) const;

 private:
  QTemporaryDir folder_;
};

std::string ContentOf(const std::string& name);
void Put(const std::string& name, const std::string& bytes);

/// The lines of a PDF document on a raster of 10 point Courier, each without blanks at its end and
/// without the columns of the left margin; form feeds stand at the start of a page's first line.
std::vector<std::string> LinesOfPdf(const std::string& name);

/// Prints lines through the desktop's printer, in a process that meets this printing system; it is
/// stopped at a report of its progress, counted from 1, unless that is 0.
Outcome PrintLines(const std::vector<std::string>& lines, const std::string& font,
                   const std::string& pdfName, const std::string& printServer, int stopAt = 0);

}  // namespace qmx::test
