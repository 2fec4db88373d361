// SPDX-License-Identifier: MIT
#include "app/drawn_icon.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QImage>
#include <QPainter>
#include <QPalette>
#include <QPixmapCache>

// What lies in a static library has to be asked for, from outside of any namespace.
static void LoadIcons() { Q_INIT_RESOURCE(icons); }

namespace qmx {
namespace {

class DrawnIconEngine final : public QIconEngine {
 public:
  explicit DrawnIconEngine(QString name) : name_(std::move(name)) {}

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode,
             [[maybe_unused]] QIcon::State state) override {
    const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
    const QColor ink = QGuiApplication::palette().color(group, QPalette::ButtonText);
    const double ratio = painter->device()->devicePixelRatio();
    painter->drawPixmap(rect, Drawing(ink, rect.size() * ratio));
  }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap picture(size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    paint(&painter, QRect(QPoint(0, 0), size), mode, state);
    return picture;
  }

  QIconEngine* clone() const override { return new DrawnIconEngine(name_); }

 private:
  QPixmap Drawing(const QColor& ink, const QSize& size) const {
    const QString key =
        QString("%1 %2 %3x%4").arg(name_, ink.name()).arg(size.width()).arg(size.height());
    QPixmap picture;
    if (QPixmapCache::find(key, &picture)) return picture;
    // Larger than any button: the picture tells where ink is, and how much of it.
    const QImage lines = QImage(":/icons/" + name_ + ".png")
                             .scaled(size, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    if (lines.isNull()) return picture;
    picture = QPixmap(size);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    const QSize margin = (size - lines.size()) / 2;
    painter.drawImage(margin.width(), margin.height(), lines);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(picture.rect(), ink);
    painter.end();
    QPixmapCache::insert(key, picture);
    return picture;
  }

  QString name_;
};

}  // namespace

QIcon DrawnIcon(const char* name) {
  LoadIcons();
  return QIcon(new DrawnIconEngine(name));
}

}  // namespace qmx
