// SPDX-License-Identifier: MIT
#include "app/zoom_menu.h"

#include <QMenu>

#include "app/settings.h"

namespace qmx {
namespace {

constexpr const char* kZoom = "zoom";

}  // namespace

void AddZoomMenu(frmQMX& window, Zoom& zoom) {
  zoom.Set(Settings().value(kZoom, zoom.Percent()).toInt());
  QObject::connect(&zoom, &Zoom::Changed, &zoom,
                   [](int percent) { Settings().setValue(kZoom, percent); });
  auto* windows = window.findChild<QMenu*>("mnuWindows");
  auto* menu = new QMenu(QObject::tr("&Zoom of grids"), windows);
  menu->setObjectName("mnuZoom");
  menu->setToolTipsVisible(true);
  menu->addActions(zoom.Entries());
  windows->insertMenu(window.Action("mnuMain"), menu);
  windows->insertSeparator(window.Action("mnuMain"));
}

}  // namespace qmx
