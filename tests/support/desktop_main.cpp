#include <gtest/gtest.h>

#include "app/application.h"

// Tests of windows need no display: the offscreen platform serves unless another one is asked for.
int main(int argc, char** argv) {
  testing::InitGoogleTest(&argc, argv);
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const qmx::Application application(argv);
  return RUN_ALL_TESTS();
}
