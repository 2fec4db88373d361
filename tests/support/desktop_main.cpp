#include <gtest/gtest.h>

#include "app/application.h"

// Tests of windows need no display: unless another platform is asked for, a screen of 1366 x 768
// that nobody sees serves.
int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
    qputenv("QT_QPA_PLATFORM",
            "offscreen:configfile=" QMX_SOURCE_DIR "/tests/support/small_screen.json");
  }
  const qmx::Application application(argv);
  return RUN_ALL_TESTS();
}
