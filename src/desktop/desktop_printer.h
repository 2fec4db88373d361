#pragma once

#include <functional>
#include <string>
#include <vector>

#include "workspace/ports.h"

class QPagedPaintDevice;

namespace qmx {

/// The default printer of the desktop. Lines are kept until the document ends, then laid out at 10
/// points within the margins of the page. A line that is wider than the page goes on in the next
/// one. Where there is no printer, the document becomes a PDF file that the user names; without a
/// name nothing is printed.
///
/// Faults: 482 (printer error) where the document cannot be printed or its file not be written.
class DesktopPrinter : public Printer {
 public:
  using AskFileName = std::function<std::string()>;

  DesktopPrinter(FileStore& files, AskFileName askFileName);

  void PrintLine(const std::string& line) override;
  std::string FontName() const override { return fontName_; }
  void SetFontName(const std::string& name) override { fontName_ = name; }
  void EndDocument() override;

 private:
  struct Line {
    std::string text;
    std::string font;
  };

  void Print(const std::vector<Line>& lines);
  void WritePdf(const std::vector<Line>& lines);
  static void Paint(QPagedPaintDevice& device, const std::vector<Line>& lines);

  FileStore& files_;
  AskFileName askFileName_;
  std::string fontName_;
  std::vector<Line> lines_;
};

}  // namespace qmx
