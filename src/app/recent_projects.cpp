// SPDX-License-Identifier: MIT
#include "app/recent_projects.h"

#include <QAction>
#include <QDir>
#include <QFileInfo>
#include <QSettings>
#include <utility>

#include "app/settings.h"

namespace qmx {
namespace {

constexpr const char* kKey = "recentProjects";

}  // namespace

RecentProjects::RecentProjects(QMenu* menu, std::function<void(const QString&)> open)
    : menu_(menu), open_(std::move(open)) {
  menu_->setToolTipsVisible(true);
  QObject::connect(menu_, &QMenu::aboutToShow, menu_, [this] { Fill(); });
  Fill();
}

QStringList RecentProjects::Names() { return Settings().value(kKey).toStringList(); }

void RecentProjects::Add(const QString& name) {
  const QString path = QDir::cleanPath(QFileInfo(name).absoluteFilePath());
  QStringList names = Names();
  names.removeAll(path);
  names.prepend(path);
  Settings().setValue(kKey, names.mid(0, kMost));
  Fill();
}

void RecentProjects::Fill() {
  menu_->clear();
  int number = 0;
  for (const QString& name : Names()) {
    QString text = QDir::toNativeSeparators(name);
    QAction* entry =
        menu_->addAction(QString("&%1  %2").arg(++number).arg(text.replace('&', "&&")));
    entry->setToolTip(name);
    entry->setEnabled(QFileInfo(name).isFile());
    QObject::connect(entry, &QAction::triggered, menu_, [this, name] { open_(name); });
  }
  menu_->setEnabled(number > 0);
}

}  // namespace qmx
