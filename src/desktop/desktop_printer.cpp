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
#include <optional>
#include <utility>

#include "base/fault.h"
#include "workspace/screen.h"

namespace qmx {
namespace {

constexpr qreal kPointSize = 10;
constexpr qreal kMarginInMillimetres = 15;

[[noreturn]] void RaisePrinterError() { throw RuntimeFault(Fault::kPrinterError); }

QString TextOf(const std::string& text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QFont FontOf(const std::string& name) {
  QFont font(TextOf(name));
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
  explicit PageWriter(QPagedPaintDevice& device) : device_(device), painter_(&device) {
    if (!painter_.isActive()) RaisePrinterError();
  }

  void UseFont(const std::string& name) {
    if (metrics_ && name == fontName_) return;
    fontName_ = name;
    painter_.setFont(FontOf(name));
    metrics_.emplace(painter_.font(), &device_);
  }

  void Write(const QString& text) {
    qsizetype start = 0;
    do {
      const qsizetype count = FittingCharacters(text, start, *metrics_, device_.width());
      WriteRow(text.mid(start, count));
      start += count;
    } while (start < text.size());
  }

  void Finish() {
    if (!painter_.end()) RaisePrinterError();
  }

 private:
  void WriteRow(const QString& row) {
    if (top_ > 0 && top_ + metrics_->height() > device_.height()) {
      if (!device_.newPage()) RaisePrinterError();
      top_ = 0;
    }
    if (!row.isEmpty()) painter_.drawText(QPointF(0, top_ + metrics_->ascent()), row);
    top_ += metrics_->lineSpacing();
  }

  QPagedPaintDevice& device_;
  QPainter painter_;
  std::string fontName_;
  std::optional<QFontMetricsF> metrics_;
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

}  // namespace

DesktopPrinter::DesktopPrinter(FileStore& files, AskFileName askFileName)
    : files_(files),
      askFileName_(std::move(askFileName)),
      fontName_(QFontDatabase::systemFont(QFontDatabase::FixedFont).family().toStdString()) {}

void DesktopPrinter::PrintLine(const std::string& line) { lines_.push_back({line, fontName_}); }

void DesktopPrinter::EndDocument() {
  const std::vector<Line> lines = std::exchange(lines_, {});
  if (lines.empty()) return;
  QPrinterInfo::defaultPrinter().isNull() ? WritePdf(lines) : Print(lines);
}

void DesktopPrinter::Paint(QPagedPaintDevice& device, const std::vector<Line>& lines) {
  PageWriter pages(device);
  for (const Line& line : lines) {
    pages.UseFont(line.font);
    pages.Write(TextOf(line.text));
  }
  pages.Finish();
}

void DesktopPrinter::Print(const std::vector<Line>& lines) {
  QPrinter printer(QPrinterInfo::defaultPrinter(), QPrinter::HighResolution);
  printer.setDocName(TextOf(std::string(kProgramTitle)));
  Paint(printer, lines);
  const bool failed =
      printer.printerState() == QPrinter::Error || printer.printerState() == QPrinter::Aborted;
  if (failed || !PrintingSystemTookTheJob()) RaisePrinterError();
}

void DesktopPrinter::WritePdf(const std::vector<Line>& lines) {
  const std::string name = askFileName_();
  if (name.empty()) return;
  QBuffer bytes;
  bytes.open(QIODevice::WriteOnly);
  {
    QPdfWriter pdf(&bytes);
    pdf.setTitle(TextOf(std::string(kProgramTitle)));
    pdf.setPageLayout(UsualPage());
    Paint(pdf, lines);
  }
  const QByteArray& content = bytes.data();
  const std::string_view view(content.constData(), static_cast<std::size_t>(content.size()));
  if (!files_.Replace(name, view).Ok()) RaisePrinterError();
}

}  // namespace qmx
