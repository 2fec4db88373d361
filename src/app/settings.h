// SPDX-License-Identifier: MIT
#pragma once

#include <QSettings>

#include "desktop/home_folder.h"

namespace qmx {

/// The desktop's settings of this program for this user.
class Settings : public QSettings {
 public:
  Settings()
      : QSettings(KeepsSettingsInIniFiles() ? IniFormat : NativeFormat, UserScope, "Orvane",
                  "Orvane") {}
};

}  // namespace qmx
