// SPDX-License-Identifier: MIT
#pragma once

#include <QSettings>

namespace qmx {

/// The desktop's settings of this program for this user.
class Settings : public QSettings {
 public:
  Settings() : QSettings("Orvane", "Orvane") {}
};

}  // namespace qmx
