// SPDX-License-Identifier: MIT
#include "grids/svg_drawing.h"

#include <QBuffer>
#include <QPaintDevice>
#include <QPaintEngine>
#include <QPainterPath>
#include <QXmlStreamWriter>
#include <algorithm>

namespace qmx {
namespace {

constexpr int kDotsPerInch = 96;

QString NumberOf(qreal number) { return QString::number(number, 'g', 7); }

QString PathText(const QPainterPath& path) {
  QString text;
  for (int i = 0; i < path.elementCount(); ++i) {
    const QPainterPath::Element element = path.elementAt(i);
    if (element.type == QPainterPath::MoveToElement) text += "M";
    if (element.type == QPainterPath::LineToElement) text += "L";
    if (element.type == QPainterPath::CurveToElement) text += "C";
    if (element.type == QPainterPath::CurveToDataElement) text += " ";
    text += NumberOf(element.x) + " " + NumberOf(element.y);
  }
  return text;
}

class SvgEngine final : public QPaintEngine {
 public:
  explicit SvgEngine(QXmlStreamWriter& writer)
      : QPaintEngine(PrimitiveTransform | PixmapTransform | PainterPaths | Antialiasing |
                     AlphaBlend),
        writer_(writer) {}

  bool begin([[maybe_unused]] QPaintDevice* device) override { return true; }
  bool end() override { return true; }
  Type type() const override { return User; }

  void updateState(const QPaintEngineState& now) override {
    const DirtyFlags changed = now.state();
    if (changed & DirtyPen) pen_ = now.pen();
    if (changed & DirtyBrush) brush_ = now.brush();
    if (changed & DirtyTransform) transform_ = now.transform();
  }

  void drawRects(const QRectF* rects, int count) override {
    for (int i = 0; i < count; ++i) {
      writer_.writeEmptyElement("rect");
      WriteRect(rects[i]);
      WriteInk(brush_.style() != Qt::NoBrush);
    }
  }

  void drawPath(const QPainterPath& path) override {
    writer_.writeEmptyElement("path");
    writer_.writeAttribute("d", PathText(path));
    WriteInk(brush_.style() != Qt::NoBrush);
  }

  void drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) override {
    QPainterPath path;
    path.addPolygon(QPolygonF(QList<QPointF>(points, points + count)));
    if (mode != PolylineMode) path.closeSubpath();
    writer_.writeEmptyElement("path");
    writer_.writeAttribute("d", PathText(path));
    WriteInk(mode != PolylineMode && brush_.style() != Qt::NoBrush);
  }

  void drawTextItem(const QPointF& at, const QTextItem& item) override {
    const QFont font = item.font();
    writer_.writeStartElement("text");
    writer_.writeAttribute("x", NumberOf(at.x()));
    writer_.writeAttribute("y", NumberOf(at.y()));
    writer_.writeAttribute("font-family", font.family());
    writer_.writeAttribute("font-size", NumberOf(QFontInfo(font).pixelSize()));
    if (font.weight() != QFont::Normal)
      writer_.writeAttribute("font-weight", QString::number(font.weight()));
    if (font.italic()) writer_.writeAttribute("font-style", "italic");
    WriteColour("fill", pen_.color());
    WriteTransform();
    writer_.writeAttribute("xml:space", "preserve");
    writer_.writeCharacters(item.text());
    writer_.writeEndElement();
  }

  void drawPixmap(const QRectF& target, const QPixmap& pixmap, const QRectF& source) override {
    drawImage(target, pixmap.toImage(), source, Qt::AutoColor);
  }

  void drawImage(const QRectF& target, const QImage& image, const QRectF& source,
                 [[maybe_unused]] Qt::ImageConversionFlags flags) override {
    QBuffer picture;
    image.copy(source.toRect()).save(&picture, "PNG");
    writer_.writeEmptyElement("image");
    WriteRect(target);
    writer_.writeAttribute("preserveAspectRatio", "none");
    writer_.writeAttribute("image-rendering", "pixelated");
    writer_.writeAttribute("xlink:href", "data:image/png;base64," + picture.data().toBase64());
    WriteTransform();
  }

 private:
  void WriteRect(const QRectF& rect) {
    writer_.writeAttribute("x", NumberOf(rect.x()));
    writer_.writeAttribute("y", NumberOf(rect.y()));
    writer_.writeAttribute("width", NumberOf(rect.width()));
    writer_.writeAttribute("height", NumberOf(rect.height()));
  }

  void WriteColour(const QString& name, const QColor& colour) {
    writer_.writeAttribute(name, colour.name());
    if (colour.alpha() < 255) writer_.writeAttribute(name + "-opacity", NumberOf(colour.alphaF()));
  }

  void WriteInk(bool isFilled) {
    if (isFilled) {
      WriteColour("fill", brush_.color());
    } else {
      writer_.writeAttribute("fill", "none");
    }
    if (pen_.style() != Qt::NoPen) {
      WriteColour("stroke", pen_.color());
      // A pen without a width is as wide as a pixel.
      writer_.writeAttribute("stroke-width", NumberOf(std::max(pen_.widthF(), 1.0)));
    }
    WriteTransform();
  }

  void WriteTransform() {
    if (transform_.isIdentity()) return;
    QStringList numbers;
    for (const qreal number : {transform_.m11(), transform_.m12(), transform_.m21(),
                               transform_.m22(), transform_.dx(), transform_.dy()})
      numbers += NumberOf(number);
    writer_.writeAttribute("transform", "matrix(" + numbers.join(' ') + ")");
  }

  QXmlStreamWriter& writer_;
  QPen pen_;
  QBrush brush_;
  QTransform transform_;
};

class SvgDevice final : public QPaintDevice {
 public:
  SvgDevice(const QSize& size, QXmlStreamWriter& writer) : size_(size), engine_(writer) {}
  QPaintEngine* paintEngine() const override { return &engine_; }

 protected:
  int metric(PaintDeviceMetric metric) const override {
    constexpr double kMillimetresPerInch = 25.4;
    const double millimetres = kMillimetresPerInch / kDotsPerInch;
    switch (metric) {
      case PdmWidth:
        return size_.width();
      case PdmHeight:
        return size_.height();
      case PdmWidthMM:
        return qRound(size_.width() * millimetres);
      case PdmHeightMM:
        return qRound(size_.height() * millimetres);
      case PdmDpiX:
      case PdmDpiY:
      case PdmPhysicalDpiX:
      case PdmPhysicalDpiY:
        return kDotsPerInch;
      case PdmNumColors:
        return 1 << 24;
      case PdmDepth:
        return 32;
      case PdmDevicePixelRatio:
        return 1;
      default:
        // Any other is a ratio, in the unit of its own.
        return qRound(QPaintDevice::devicePixelRatioFScale());
    }
  }

 private:
  QSize size_;
  mutable SvgEngine engine_;  // Whoever paints is given it by a device that does not change.
};

}  // namespace

QByteArray DrawSvg(const QSize& size, const QString& title, FunctionRef<void(QPainter&)> paint) {
  QByteArray drawing;
  QXmlStreamWriter writer(&drawing);
  writer.writeStartDocument();
  writer.writeStartElement("svg");
  writer.writeDefaultNamespace("http://www.w3.org/2000/svg");
  writer.writeNamespace("http://www.w3.org/1999/xlink", "xlink");
  writer.writeAttribute("version", "1.1");
  writer.writeAttribute("width", QString::number(size.width()));
  writer.writeAttribute("height", QString::number(size.height()));
  writer.writeAttribute("viewBox", QString("0 0 %1 %2").arg(size.width()).arg(size.height()));
  writer.writeTextElement("title", title);
  SvgDevice device(size, writer);
  QPainter painter(&device);
  paint(painter);
  painter.end();
  writer.writeEndDocument();
  return drawing;
}

}  // namespace qmx
