// SPDX-License-Identifier: MIT
#include "app/window_memory.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <cstdlib>

#include "app/settings.h"
#include "app/window_geometry.h"
#include "grids/document_window.h"
#include "grids/grid_window.h"
#include "grids/picture_window.h"
#include "grids/qt_text.h"

namespace qmx {
namespace {

constexpr QSize kUsualFrame(10, 30);

QString KeyOf(const QWidget& window, const char* what) {
  QString name = window.objectName();
  if (const auto* picture = qobject_cast<const PictureWindow*>(&window)) {
    name += '_' + ToQString(InfoOf(picture->Slot()).name);
  }
  // The steps of each result have windows of one name.
  if (qobject_cast<const DocumentWindow*>(&window) != nullptr) name += '_' + window.windowTitle();
  return "windows/" + name + '/' + what;
}

/// What the desktop adds around a window.
QSize FrameOf(const QWidget& window) { return window.frameGeometry().size() - window.size(); }

/// A desktop may count the place of a window without its frame when it is moved and with it when
/// asked: so far it has not been moved by anybody.
bool IsAt(const QWidget& window, const QPoint& place) {
  const QPoint frame = window.geometry().topLeft() - window.frameGeometry().topLeft();
  const QPoint way = window.pos() - place;
  return std::abs(way.x()) <= frame.x() && std::abs(way.y()) <= frame.y();
}

bool HasChosenSize(const QWidget& window, const QSize& programs) {
  const auto* grid = qobject_cast<const GridWindow*>(&window);
  return window.size() != programs && (grid == nullptr || grid->HasChosenSize());
}

QList<QRect> Screens() {
  QList<QRect> screens;
  for (const QScreen* screen : QGuiApplication::screens())
    screens.append(screen->availableGeometry());
  return screens;
}

}  // namespace

bool WindowMemory::Recall(QWidget& window) {
  const Settings settings;
  const QSize frame = settings.value(KeyOf(window, "frame"), kUsualFrame).toSize();
  const QVariant size = settings.value(KeyOf(window, "size"));
  if (size.isValid()) {
    const QSize wanted = size.toSize() + frame;
    window.resize(wanted.boundedTo(window.screen()->availableSize()) - frame);
  }
  const QVariant place = settings.value(KeyOf(window, "place"));
  if (!place.isValid()) return false;
  const QRect rect = OntoScreen({place.toPoint(), window.size() + frame}, Screens());
  window.resize(rect.size() - frame);
  window.move(rect.topLeft());
  chosen_.remove(&window);
  window.removeEventFilter(this);
  window.installEventFilter(this);
  return true;
}

void WindowMemory::Watch(QWidget& window) {
  chosen_.insert(&window, {window.pos(), window.size()});
  window.removeEventFilter(this);
  window.installEventFilter(this);
}

void WindowMemory::Keep(const QWidget& window) const {
  if ((window.windowState() & (Qt::WindowMinimized | Qt::WindowMaximized)) != 0) return;
  const auto programs = chosen_.constFind(&window);
  const bool isKnown = programs != chosen_.constEnd();
  const bool moved = !isKnown || !IsAt(window, programs->place);
  const bool resized = HasChosenSize(window, isKnown ? programs->size : QSize());
  if (!moved && !resized) return;
  Settings settings;
  settings.setValue(KeyOf(window, "frame"), FrameOf(window));
  if (moved) settings.setValue(KeyOf(window, "place"), window.pos());
  if (resized) settings.setValue(KeyOf(window, "size"), window.size());
}

bool WindowMemory::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Hide && !event->spontaneous())
    if (const auto* window = qobject_cast<QWidget*>(watched)) Keep(*window);
  return QObject::eventFilter(watched, event);
}

}  // namespace qmx
