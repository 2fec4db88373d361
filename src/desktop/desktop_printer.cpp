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

/// Lines divided into rows that fit on a page side by side, and so many rows on each.
struct Rows {
  QStringList texts;
  qsizetype perPage = 1;

  int Pages() const { return static_cast<int>((texts.size() + perPage - 1) / perPage); }
};

Rows Divide(const QPagedPaintDevice& device, const std::vector<std::string>& lines,
            const QFont& font) {
  const QFontMetricsF metrics(font, &device);
  Rows rows;
  for (const std::string& line : lines) {
    const QString text = TextOf(line);
    qsizetype start = 0;
    do {
      const qsizetype count = FittingCharacters(text, start, metrics, device.width());
      rows.texts << text.mid(start, count);
      start += count;
    } while (start < text.size());
  }
  for (qreal top = metrics.lineSpacing(); top + metrics.height() <= device.height();
       top += metrics.lineSpacing()) {
    ++rows.perPage;
  }
  return rows;
}

/// Writes rows from the top of a page to its bottom, page after page.
void Paint(QPagedPaintDevice& device, const Rows& rows, const QFont& font, Progress& progress) {
  QPainter painter(&device);
  if (!painter.isActive()) RaisePrinterError();
  painter.setFont(font);
  const QFontMetricsF metrics(font, &device);
  qreal top = 0;
  for (qsizetype i = 0; i < rows.texts.size(); ++i) {
    if (i % rows.perPage == 0) {
      progress.Report(static_cast<double>(i) / static_cast<double>(rows.texts.size()));
      if (i > 0 && !device.newPage()) RaisePrinterError();
      top = 0;
    }
    if (!rows.texts[i].isEmpty())
      painter.drawText(QPointF(0, top + metrics.ascent()), rows.texts[i]);
    top += metrics.lineSpacing();
  }
  if (!painter.end()) RaisePrinterError();
}

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

/// Paints what nobody will see.
void Rehearse(const QPrinter& printer, const Rows& rows, const QFont& font, Progress& progress) {
  QBuffer bytes;
  bytes.open(QIODevice::WriteOnly);
  QPdfWriter pdf(&bytes);
  pdf.setResolution(printer.resolution());
  pdf.setPageLayout(printer.pageLayout());
  Paint(pdf, rows, font, progress);
}

void PrintOn(QPrinter& printer, const Rows& rows, const QFont& font) {
  Paint(printer, rows, font, NoProgress());
  const bool failed =
      printer.printerState() == QPrinter::Error || printer.printerState() == QPrinter::Aborted;
  if (failed || !PrintingSystemTookTheJob()) RaisePrinterError();
}

}  // namespace

/// A document for a printer, or else for a file.
struct DesktopPrinter::Job {
  QFont font;
  Rows rows;
  std::unique_ptr<QPrinter> printer;
  std::string fileName;
  QBuffer bytes;
  std::unique_ptr<QPdfWriter> pdf;
};

DesktopPrinter::DesktopPrinter(FileStore& files, AskFileName askFileName)
    : files_(files), askFileName_(std::move(askFileName)) {}

DesktopPrinter::~DesktopPrinter() = default;

int DesktopPrinter::Prepare(const std::vector<std::string>& lines, std::string_view font) {
  job_.reset();
  if (lines.empty()) return 0;
  auto job = std::make_unique<Job>();
  job->font = FontOf(font.empty() ? QFontDatabase::systemFont(QFontDatabase::FixedFont).family()
                                  : TextOf(font));
  const QPrinterInfo info = QPrinterInfo::defaultPrinter();
  if (info.isNull()) {
    job->fileName = askFileName_();
    if (job->fileName.empty()) return 0;
    job->bytes.open(QIODevice::WriteOnly);
    job->pdf = std::make_unique<QPdfWriter>(&job->bytes);
    job->pdf->setTitle(TextOf(kProgramTitle));
    job->pdf->setPageLayout(UsualPage());
    job->rows = Divide(*job->pdf, lines, job->font);
  } else {
    job->printer = std::make_unique<QPrinter>(info, QPrinter::HighResolution);
    job->printer->setDocName(TextOf(kProgramTitle));
    job->rows = Divide(*job->printer, lines, job->font);
  }
  job_ = std::move(job);
  return job_->rows.Pages();
}

void DesktopPrinter::Print(Progress& progress) {
  const std::unique_ptr<Job> job = std::exchange(job_, nullptr);
  if (job == nullptr) return;
  if (job->printer != nullptr) {
    if (job->rows.Pages() > kFewPages) Rehearse(*job->printer, job->rows, job->font, progress);
    return PrintOn(*job->printer, job->rows, job->font);
  }
  Paint(*job->pdf, job->rows, job->font, progress);
  job->pdf.reset();
  const QByteArray& content = job->bytes.data();
  const std::string_view view(content.constData(), static_cast<std::size_t>(content.size()));
  if (!files_.Replace(job->fileName, view).Ok()) RaisePrinterError();
}

}  // namespace qmx
