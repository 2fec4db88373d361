// SPDX-License-Identifier: MIT
#include "desktop/desktop_printer.h"

#include <QBuffer>
#include <QFont>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QLibrary>
#include <QLocale>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>
#include <QPrinterInfo>
#include <QString>
#include <utility>

#include "base/fault.h"
#include "workspace/dialogs.h"

namespace qmx {
namespace {

constexpr qreal kPointSize = 10;
constexpr qreal kMarginInMillimetres = 15;

[[noreturn]] void RaisePrinterError() { throw RuntimeFault(Fault::kPrinterError); }

QString TextOf(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QFont FontOf(const QString& name) {
  QFont font(name);
  font.setStyleHint(QFont::TypeWriter);
  font.setFixedPitch(true);
  font.setPointSizeF(kPointSize);
  font.setHintingPreference(QFont::PreferNoHinting);
  return font;
}

/// The most characters from `start` on that fit into the width, at least one.
qsizetype FittingCharacters(const QString& text, qsizetype start, const QFontMetricsF& metrics,
                            qreal width) {
  qsizetype fits = 1;
  qsizetype tooMany = text.size() - start + 1;
  while (tooMany - fits > 1) {
    const qsizetype middle = (fits + tooMany) / 2;
    (metrics.horizontalAdvance(text.mid(start, middle)) <= width ? fits : tooMany) = middle;
  }
  const bool halfCharacter = start + fits < text.size() && text[start + fits - 1].isHighSurrogate();
  if (!halfCharacter) return fits;
  return fits > 1 ? fits - 1 : 2;
}

/// Writes lines from the top of a page to its bottom, page after page.
class PageWriter {
 public:
  PageWriter(QPagedPaintDevice& device, const QString& fontName)
      : device_(device), painter_(&device), font_(FontOf(fontName)), metrics_(font_, &device) {
    if (!painter_.isActive()) RaisePrinterError();
    painter_.setFont(font_);
  }

  void Write(const QString& text) {
    qsizetype start = 0;
    do {
      const qsizetype count = FittingCharacters(text, start, metrics_, device_.width());
      WriteRow(text.mid(start, count));
      start += count;
    } while (start < text.size());
  }

  void Finish() {
    if (!painter_.end()) RaisePrinterError();
  }

 private:
  void WriteRow(const QString& row) {
    if (top_ > 0 && top_ + metrics_.height() > device_.height()) {
      if (!device_.newPage()) RaisePrinterError();
      top_ = 0;
    }
    if (!row.isEmpty()) painter_.drawText(QPointF(0, top_ + metrics_.ascent()), row);
    top_ += metrics_.lineSpacing();
  }

  QPagedPaintDevice& device_;
  QPainter painter_;
  QFont font_;
  QFontMetricsF metrics_;
  qreal top_ = 0;
};

QPageLayout UsualPage() {
  const bool metric = QLocale().measurementSystem() != QLocale::ImperialUSSystem;
  const QMarginsF margins(kMarginInMillimetres, kMarginInMillimetres, kMarginInMillimetres,
                          kMarginInMillimetres);
  return {QPageSize(metric ? QPageSize::A4 : QPageSize::Letter), QPageLayout::Portrait, margins,
          QPageLayout::Millimeter};
}

/// The toolkit hands its pages to the printing system and does not tell whether that took them; the
/// printing system itself keeps the outcome of its last operation.
bool PrintingSystemTookTheJob() {
  using LastError = int (*)();
  constexpr int kFirstFailure = 0x0100;
  const auto lastError = reinterpret_cast<LastError>(QLibrary::resolve("cups", 2, "cupsLastError"));
  if (lastError == nullptr) return true;
  const int status = lastError();
  return status >= 0 && status < kFirstFailure;
}

void Paint(QPagedPaintDevice& device, const std::vector<std::string>& lines, const QString& font) {
  PageWriter pages(device, font);
  for (const std::string& line : lines) pages.Write(TextOf(line));
  pages.Finish();
}

void PrintOn(const QPrinterInfo& info, const std::vector<std::string>& lines, const QString& font) {
  QPrinter printer(info, QPrinter::HighResolution);
  printer.setDocName(TextOf(kProgramTitle));
  Paint(printer, lines, font);
  const bool failed =
      printer.printerState() == QPrinter::Error || printer.printerState() == QPrinter::Aborted;
  if (failed || !PrintingSystemTookTheJob()) RaisePrinterError();
}

}  // namespace

DesktopPrinter::DesktopPrinter(FileStore& files, AskFileName askFileName)
    : files_(files), askFileName_(std::move(askFileName)) {}

void DesktopPrinter::Print(const std::vector<std::string>& lines, std::string_view font) {
  if (lines.empty()) return;
  const QString name =
      font.empty() ? QFontDatabase::systemFont(QFontDatabase::FixedFont).family() : TextOf(font);
  const QPrinterInfo printer = QPrinterInfo::defaultPrinter();
  printer.isNull() ? WritePdf(lines, name) : PrintOn(printer, lines, name);
}

void DesktopPrinter::WritePdf(const std::vector<std::string>& lines, const QString& font) {
  const std::string name = askFileName_();
  if (name.empty()) return;
  QBuffer bytes;
  bytes.open(QIODevice::WriteOnly);
  {
    QPdfWriter pdf(&bytes);
    pdf.setTitle(TextOf(kProgramTitle));
    pdf.setPageLayout(UsualPage());
    Paint(pdf, lines, font);
  }
  const QByteArray& content = bytes.data();
  const std::string_view view(content.constData(), static_cast<std::size_t>(content.size()));
  if (!files_.Replace(name, view).Ok()) RaisePrinterError();
}

}  // namespace qmx
