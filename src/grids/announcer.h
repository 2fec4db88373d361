// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QWidget>

namespace qmx {

/// Says something to people who hear the windows instead of seeing them; nobody sees it. Screen
/// readers speak the name of a notification whenever it is shown: each window that has something to
/// say holds one, and shows it anew for every text.
void Announce(QWidget& anywhereInWindow, const QString& text);

/// The notification of a window. It takes no room, no keys and no clicks.
class Announcer : public QWidget {
  Q_OBJECT

 public:
  explicit Announcer(QWidget* window);

  void Say(const QString& text);
};

}  // namespace qmx
