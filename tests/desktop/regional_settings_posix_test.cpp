// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <locale.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "desktop/decimal_guard.h"
#include "support/core_screen.h"

/// The C library does not free the search path that it makes of LOCPATH.
extern "C" const char* __lsan_default_suppressions();
extern "C" const char* __lsan_default_suppressions() { return "leak:__argz_add_sep\n"; }

namespace qmx {
namespace {

/// Compiles locales into a folder of their own and puts the environment back at the end.
class PosixRegionalSettings : public testing::Test {
 protected:
  void SetUp() override {
    char name[] = "/tmp/qmx-locales-XXXXXX";
    ASSERT_NE(mkdtemp(name), nullptr);
    folder_ = name;
    setenv("LOCPATH", name, 1);
  }
  void TearDown() override {
    for (const char* name : {"LC_ALL", "LC_NUMERIC", "LANG"}) unsetenv(name);
    unsetenv("LOCPATH");
    setlocale(LC_ALL, "C");
    std::filesystem::remove_all(folder_);
  }

  /// Installs a locale and makes an environment variable name it.
  void Use(const char* variable, const std::string& locale) {
    const std::string command =
        "localedef -i " + locale + " -f UTF-8 '" + folder_ + "/" + locale + ".UTF-8'";
    ASSERT_EQ(std::system(command.c_str()), 0) << command;
    setenv(variable, (locale + ".UTF-8").c_str(), 1);
  }
  static std::string Separator() { return SystemRegionalSettings()->DecimalSeparator(); }
  /// How this process writes one half.
  static std::string OneHalf() {
    char text[8];
    std::snprintf(text, sizeof text, "%.1f", 0.5);
    return text;
  }

 private:
  std::string folder_;
};

TEST_F(PosixRegionalSettings, SeparatorIsThatOfTheEnvironmentsLocale) {
  EXPECT_EQ(Separator(), ".");
  Use("LANG", "de_DE");
  EXPECT_EQ(Separator(), ",");
  Use("LC_NUMERIC", "en_US");
  EXPECT_EQ(Separator(), ".");
  Use("LC_ALL", "ps_AF");
  EXPECT_EQ(Separator(), "\xD9\xAB");
}

TEST_F(PosixRegionalSettings, LocaleThatIsNotInstalledWorksWithThePoint) {
  setenv("LC_ALL", "fr_FR.UTF-8", 1);
  EXPECT_EQ(Separator(), ".");
}

TEST_F(PosixRegionalSettings, ReadingLeavesTheProcessAsItIs) {
  Use("LC_ALL", "de_DE");
  EXPECT_EQ(Separator(), ",");
  EXPECT_EQ(OneHalf(), "0.5");
}

TEST_F(PosixRegionalSettings, YesMakesTheProcessUseThePointAndRestoreTheUsersLocale) {
  Use("LC_ALL", "de_DE");
  setlocale(LC_ALL, "");
  ASSERT_EQ(OneHalf(), "0,5");
  const auto settings = SystemRegionalSettings();
  test::RecordingScreen screen;
  screen.answers = {Answer::kYes};
  DecimalGuard guard(*settings);
  EXPECT_TRUE(guard.Check(screen));
  EXPECT_EQ(OneHalf(), "0.5");
  guard.Restore();
  EXPECT_EQ(OneHalf(), "0,5");
}

TEST_F(PosixRegionalSettings, NoLeavesTheProcessWithTheComma) {
  Use("LC_ALL", "de_DE");
  setlocale(LC_ALL, "");
  const auto settings = SystemRegionalSettings();
  test::RecordingScreen screen;
  screen.answers = {Answer::kNo};
  EXPECT_FALSE(DecimalGuard(*settings).Check(screen));
  EXPECT_EQ(OneHalf(), "0,5");
}

TEST_F(PosixRegionalSettings, SeparatorThatNoLocaleHasChangesNothing) {
  Use("LC_ALL", "de_DE");
  setlocale(LC_ALL, "");
  SystemRegionalSettings()->SetDecimalSeparator(";");
  EXPECT_EQ(OneHalf(), "0,5");
}

}  // namespace
}  // namespace qmx
