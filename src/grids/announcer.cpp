// SPDX-License-Identifier: MIT
#include "grids/announcer.h"

#include <QAccessible>
#include <QAccessibleWidget>

namespace qmx {
namespace {

QAccessibleInterface* MakeNotification(const QString& kind, QObject* object) {
  if (kind != QLatin1String("qmx::Announcer")) return nullptr;
  return new QAccessibleWidget(static_cast<QWidget*>(object), QAccessible::Notification);
}

}  // namespace

void Announce(QWidget& anywhereInWindow, const QString& text) {
  QWidget* window = anywhereInWindow.window();
  auto* announcer = window->findChild<Announcer*>(QString(), Qt::FindDirectChildrenOnly);
  if (announcer == nullptr) announcer = new Announcer(window);
  announcer->Say(text);
}

Announcer::Announcer(QWidget* window) : QWidget(window) {
  static const bool isInstalled = [] {
    QAccessible::installFactory(MakeNotification);
    return true;
  }();
  Q_UNUSED(isInstalled);
  setObjectName("lblAnnouncement");
  setAttribute(Qt::WA_TransparentForMouseEvents);
  setGeometry(0, 0, 1, 1);
  lower();
  hide();
}

void Announcer::Say(const QString& text) {
  hide();
  setAccessibleName(text);
  // Nobody listens, and to be shown takes longer than a small task.
  if (QAccessible::isActive()) show();
}

}  // namespace qmx
