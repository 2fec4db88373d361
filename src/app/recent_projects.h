// SPDX-License-Identifier: MIT
#pragma once

#include <QMenu>
#include <QStringList>
#include <functional>

namespace qmx {

/// The submenu of the projects that were opened and saved last, kept in the desktop's settings.
/// Those that are no longer there are greyed.
class RecentProjects {
 public:
  static constexpr int kMost = 9;

  /// `open` opens the project of a name.
  RecentProjects(QMenu* menu, std::function<void(const QString&)> open);

  /// A project was opened or saved: it becomes the first one.
  void Add(const QString& name);

 private:
  static QStringList Names();
  void Fill();

  QMenu* menu_;
  std::function<void(const QString&)> open_;
};

}  // namespace qmx
