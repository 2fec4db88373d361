// SPDX-License-Identifier: MIT
#include "grids/svg_drawing.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QXmlStreamReader>
#include <map>
#include <utility>
#include <vector>

namespace qmx::test {
namespace {

struct Element {
  QString name;
  std::map<QString, QString> attributes;
  QString text;
};

std::vector<Element> ElementsOf(const QByteArray& drawing) {
  std::vector<Element> elements;
  QXmlStreamReader reader(drawing);
  while (!reader.atEnd()) {
    const auto token = reader.readNext();
    if (token == QXmlStreamReader::StartElement) {
      Element element{reader.name().toString(), {}, {}};
      for (const QXmlStreamAttribute& attribute : reader.attributes())
        element.attributes[attribute.qualifiedName().toString()] = attribute.value().toString();
      elements.push_back(std::move(element));
    } else if (token == QXmlStreamReader::Characters && !elements.empty()) {
      elements.back().text += reader.text();
    }
  }
  EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString();
  return elements;
}

Element Only(const QByteArray& drawing, const QString& name) {
  std::vector<Element> found;
  for (const Element& element : ElementsOf(drawing)) {
    if (element.name == name) found.push_back(element);
  }
  EXPECT_EQ(found.size(), 1U) << drawing.toStdString();
  return found.empty() ? Element() : found.front();
}

/// The drawing as another program shows it.
QImage Shown(const QByteArray& drawing) {
  const QTemporaryDir folder;
  QFile file(folder.filePath("a.svg"));
  EXPECT_TRUE(file.open(QIODevice::WriteOnly));
  file.write(drawing);
  file.close();
  const QString picture = folder.filePath("a.png");
  EXPECT_EQ(QProcess::execute("rsvg-convert", {"-b", "white", file.fileName(), "-o", picture}), 0);
  return QImage(picture);
}

TEST(SvgDrawingTest, ItHasItsSizeAndTitle) {
  const QByteArray drawing = DrawSvg(QSize(30, 20), "A < B & \"C\"", [](QPainter&) {});
  const Element whole = Only(drawing, "svg");
  EXPECT_EQ(whole.attributes.at("width"), "30");
  EXPECT_EQ(whole.attributes.at("height"), "20");
  EXPECT_EQ(whole.attributes.at("viewBox"), "0 0 30 20");
  EXPECT_EQ(Only(drawing, "title").text, "A < B & \"C\"");
  EXPECT_EQ(Shown(drawing).size(), QSize(30, 20));
}

TEST(SvgDrawingTest, AFilledRectangleHasItsColourAndNoEdge) {
  const QByteArray drawing = DrawSvg(QSize(30, 20), "", [](QPainter& painter) {
    painter.setPen(Qt::red);
    painter.fillRect(QRectF(2.5, 3, 10, 4), QColor(1, 2, 3, 51));
  });
  const auto rect = Only(drawing, "rect").attributes;
  EXPECT_EQ(rect.at("x"), "2.5");
  EXPECT_EQ(rect.at("y"), "3");
  EXPECT_EQ(rect.at("width"), "10");
  EXPECT_EQ(rect.at("height"), "4");
  EXPECT_EQ(rect.at("fill"), "#010203");
  EXPECT_NEAR(rect.at("fill-opacity").toDouble(), 0.2, 1e-4);
  EXPECT_EQ(rect.count("stroke"), 0U);
}

TEST(SvgDrawingTest, LinesEllipsesAndPolygonsAreSeenAsTheyWerePainted) {
  const auto paint = [](QPainter& painter) {
    painter.setPen(QPen(QColor(0, 0, 255), 3));
    painter.drawLine(QPointF(5, 35), QPointF(45, 35));
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(255, 0, 0));
    painter.drawEllipse(QPointF(15, 15), 8, 8);
    painter.setBrush(QColor(0, 128, 0));
    painter.drawPolygon(QPolygonF({{30, 5}, {45, 5}, {45, 25}, {30, 25}}));
  };
  const QImage seen = Shown(DrawSvg(QSize(50, 40), "", paint));
  ASSERT_EQ(seen.size(), QSize(50, 40));
  EXPECT_EQ(seen.pixelColor(25, 35), QColor(0, 0, 255));
  EXPECT_EQ(seen.pixelColor(25, 38), QColor(Qt::white));
  EXPECT_EQ(seen.pixelColor(15, 15), QColor(255, 0, 0));
  EXPECT_EQ(seen.pixelColor(8, 8), QColor(Qt::white)) << "the corner of the round's square";
  EXPECT_EQ(seen.pixelColor(40, 20), QColor(0, 128, 0));
}

TEST(SvgDrawingTest, TextStaysTextWithItsFontAndPlace) {
  QFont font("DejaVu Sans");
  font.setPixelSize(13);
  font.setBold(true);
  const QByteArray drawing = DrawSvg(QSize(90, 40), "", [&](QPainter& painter) {
    painter.setFont(font);
    painter.setPen(QColor(4, 5, 6));
    painter.drawText(QPointF(7, 21), "1 < 2");
  });
  const Element text = Only(drawing, "text");
  EXPECT_EQ(text.text, "1 < 2");
  EXPECT_EQ(text.attributes.at("x"), "7");
  EXPECT_EQ(text.attributes.at("y"), "21");
  EXPECT_EQ(text.attributes.at("font-family"), "DejaVu Sans");
  EXPECT_EQ(text.attributes.at("font-size"), "13");
  EXPECT_EQ(text.attributes.at("font-weight"), "700");
  EXPECT_EQ(text.attributes.at("fill"), "#040506");
}

TEST(SvgDrawingTest, AnImageKeepsEachOfItsPixels) {
  QImage image(2, 1, QImage::Format_RGB32);
  image.setPixelColor(0, 0, QColor(10, 20, 30));
  image.setPixelColor(1, 0, QColor(200, 100, 50));
  const QByteArray drawing = DrawSvg(QSize(40, 20), "", [&](QPainter& painter) {
    painter.drawImage(QRectF(0, 0, 40, 20), image);
  });
  const QString link = Only(drawing, "image").attributes.at("xlink:href");
  const QString head = "data:image/png;base64,";
  ASSERT_TRUE(link.startsWith(head));
  const QImage kept =
      QImage::fromData(QByteArray::fromBase64(link.mid(head.size()).toLatin1()), "PNG");
  ASSERT_EQ(kept.size(), image.size());
  EXPECT_EQ(kept.pixelColor(0, 0), QColor(10, 20, 30));
  EXPECT_EQ(kept.pixelColor(1, 0), QColor(200, 100, 50));
}

TEST(SvgDrawingTest, WhatIsMovedAndScaledIsSeenThere) {
  const QImage seen = Shown(DrawSvg(QSize(50, 40), "", [](QPainter& painter) {
    painter.translate(10, 20);
    painter.scale(2, 1);
    painter.fillRect(QRectF(0, 0, 10, 10), QColor(9, 9, 9));
    painter.resetTransform();
    painter.fillRect(QRectF(0, 0, 4, 4), QColor(90, 0, 0));
  }));
  EXPECT_EQ(seen.pixelColor(12, 22), QColor(9, 9, 9));
  EXPECT_EQ(seen.pixelColor(28, 28), QColor(9, 9, 9));
  EXPECT_EQ(seen.pixelColor(32, 28), QColor(Qt::white));
  EXPECT_EQ(seen.pixelColor(2, 2), QColor(90, 0, 0));
}

}  // namespace
}  // namespace qmx::test
