// SPDX-License-Identifier: MIT
#include "app/system_palette.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QPalette>

#include "grids/contrast.h"

namespace qmx::test {
namespace {

class SystemPaletteTest : public testing::Test {
 protected:
  ~SystemPaletteTest() override { QApplication::setPalette(before_); }

  static void MakeDark() {
    QPalette dark(QColor(0x3c, 0x3c, 0x3c), QColor(0x1e, 0x1e, 0x1e));
    dark.setColor(QPalette::Base, QColor(0x2d, 0x2d, 0x2d));
    dark.setColor(QPalette::Link, Qt::blue);
    QApplication::setPalette(dark);
    QPalette filled = dark;
    filled.setColor(QPalette::Base, QColor(0, 0x78, 0xd7));
    QApplication::setPalette(filled, "QCheckBox");
    QApplication::setPalette(filled, "QRadioButton");
  }

 private:
  QPalette before_ = QApplication::palette();
};

TEST_F(SystemPaletteTest, BoxesThatAreNotSetAreAsPlainAsFields) {
  MakeDark();
  MendSystemPalette();
  for (const char* kind : {"QCheckBox", "QRadioButton"})
    EXPECT_EQ(QApplication::palette(kind).color(QPalette::Base), QColor(0x2d, 0x2d, 0x2d)) << kind;
}

TEST_F(SystemPaletteTest, LinksCanBeReadInTheDark) {
  MakeDark();
  MendSystemPalette();
  const QPalette mended = QApplication::palette();
  EXPECT_GE(Contrast(mended.color(QPalette::Link), mended.color(QPalette::Base)), 4.5);
  EXPECT_GT(mended.color(QPalette::Link).blue(), mended.color(QPalette::Link).red());
  EXPECT_EQ(mended.color(QPalette::Window), QColor(0x1e, 0x1e, 0x1e));
}

TEST_F(SystemPaletteTest, ALightPaletteStaysAsItIs) {
  QPalette light(QColor(0xf0, 0xf0, 0xf0), Qt::white);
  light.setColor(QPalette::Base, Qt::white);
  light.setColor(QPalette::Link, Qt::blue);
  QApplication::setPalette(light);
  MendSystemPalette();
  EXPECT_EQ(QApplication::palette().color(QPalette::Link), QColor(Qt::blue));
}

}  // namespace
}  // namespace qmx::test
