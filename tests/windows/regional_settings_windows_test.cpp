// SPDX-License-Identifier: MIT
#include <gtest/gtest.h>
#include <windows.h>

#include "desktop/decimal_guard.h"
#include "desktop/wide_text.h"
#include "support/core_screen.h"
#include "windows/registry.h"

namespace qmx::test {
namespace {

/// Changes the user's real setting and puts it back.
class WindowsRegionalSettings : public testing::Test {
 protected:
  void SetUp() override { before_ = settings_->DecimalSeparator(); }
  void TearDown() override { settings_->SetDecimalSeparator(before_); }

  /// What every other program sees.
  static std::string SystemsSeparator() {
    wchar_t text[16] = L"";
    GetLocaleInfoW(GetUserDefaultLCID(), LOCALE_SDECIMAL, text, 16);
    return Narrow(text);
  }
  static std::optional<std::string> StoredSeparator() {
    return RegistryText(HKEY_CURRENT_USER, "Control Panel\\International", "sDecimal");
  }

  std::unique_ptr<RegionalSettings> settings_ = SystemRegionalSettings();
  std::string before_;
};

TEST_F(WindowsRegionalSettings, WrittenSeparatorIsTheUsersOwnSetting) {
  for (const char* separator : {",", ".", "'", "..", "\xD9\xAB", ","}) {
    settings_->SetDecimalSeparator(separator);
    EXPECT_EQ(settings_->DecimalSeparator(), separator);
    EXPECT_EQ(SystemsSeparator(), separator);
    EXPECT_EQ(StoredSeparator(), separator);
  }
}

TEST_F(WindowsRegionalSettings, YesChangesTheSettingUntilTheEnd) {
  settings_->SetDecimalSeparator(",");
  DecimalGuard guard(*settings_);
  RecordingScreen screen;
  screen.answers = {Answer::kYes};
  EXPECT_TRUE(guard.Check(screen));
  EXPECT_EQ(guard.SavedSeparator(), ",");
  EXPECT_EQ(SystemsSeparator(), ".");
  EXPECT_EQ(StoredSeparator(), ".");
  guard.Restore();
  EXPECT_EQ(SystemsSeparator(), ",");
  EXPECT_EQ(StoredSeparator(), ",");
}

TEST_F(WindowsRegionalSettings, NoLeavesTheSettingAlone) {
  settings_->SetDecimalSeparator(",");
  DecimalGuard guard(*settings_);
  RecordingScreen screen;
  screen.answers = {Answer::kNo};
  EXPECT_FALSE(guard.Check(screen));
  EXPECT_EQ(StoredSeparator(), ",");
}

TEST_F(WindowsRegionalSettings, PointRaisesNoBox) {
  settings_->SetDecimalSeparator(".");
  DecimalGuard guard(*settings_);
  RecordingScreen screen;
  EXPECT_TRUE(guard.Check(screen));
  EXPECT_TRUE(screen.messages.empty());
  guard.Restore();
  EXPECT_EQ(StoredSeparator(), ".");
}

}  // namespace
}  // namespace qmx::test
