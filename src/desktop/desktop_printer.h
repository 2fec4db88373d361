// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "workspace/ports.h"

namespace qmx {

/// The default printer of the desktop. Lines are laid out at 10 points within the margins of the
/// page. A line that is wider than the page goes on in the next
/// one. Where there is no printer, the document becomes a PDF file that the user names; without a
/// name nothing is printed.
///
/// Faults: 482 (printer error) where the document cannot be printed or its file not be written.
class DesktopPrinter : public Printer {
 public:
  using AskFileName = std::function<std::string()>;

  DesktopPrinter(FileStore& files, AskFileName askFileName);

  void Print(const std::vector<std::string>& lines, std::string_view font) override;

 private:
  void WritePdf(const std::vector<std::string>& lines, const QString& font);

  FileStore& files_;
  AskFileName askFileName_;
};

}  // namespace qmx
