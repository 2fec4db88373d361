// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "workspace/ports.h"

namespace qmx {

/// The default printer of the desktop. Lines are laid out at 10 points within the margins of the
/// page. A line that is wider than the page goes on in the next
/// one. Where there is no printer, the document becomes a PDF file that the user names; without a
/// name nothing is printed. What the printing system was given cannot be taken back: a long
/// document is first painted for nobody, so that it can be stopped meanwhile.
///
/// Faults: 482 (printer error) where the document cannot be printed or its file not be written.
class DesktopPrinter : public Printer {
 public:
  using AskFileName = std::function<std::string()>;

  DesktopPrinter(FileStore& files, AskFileName askFileName);

  ~DesktopPrinter() override;

  int Prepare(const std::vector<std::string>& lines, std::string_view font) override;
  void Print(Progress& progress) override;

 private:
  struct Job;

  FileStore& files_;
  AskFileName askFileName_;
  std::unique_ptr<Job> job_;  ///< What was prepared.
};

}  // namespace qmx
