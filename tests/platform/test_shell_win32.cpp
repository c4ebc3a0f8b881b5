#include <gtest/gtest.h>

#include "platform/shell.h"
#include "platform/windows_system.h"

namespace veldra {

namespace {

constexpr const wchar_t* kColorsKey = L"Software\\Microsoft\\Windows\\CurrentVersion\\Themes\\Personalize";
constexpr const wchar_t* kLightName = L"AppsUseLightTheme";

void SetLight(DWORD light) {
  RegSetKeyValueW(HKEY_CURRENT_USER, kColorsKey, kLightName, REG_DWORD, &light, sizeof light);
}

TEST(Shell, KnowsWhetherProgramsAreToBeDark) {
  DWORD before = 0;
  DWORD size = sizeof before;
  const bool was_set =
      RegGetValueW(HKEY_CURRENT_USER, kColorsKey, kLightName, RRF_RT_REG_DWORD, nullptr, &before, &size) == 0;
  SetLight(0);
  EXPECT_TRUE(WantsDarkWindows());
  SetLight(1);
  EXPECT_FALSE(WantsDarkWindows());
  RegDeleteKeyValueW(HKEY_CURRENT_USER, kColorsKey, kLightName);
  EXPECT_FALSE(WantsDarkWindows());
  if (was_set) SetLight(before);
}

TEST(Shell, ListsRecentFilesAndTakesThemAway) {
  if (!ListRecentInTaskbar({})) GTEST_SKIP() << "this system has no such list";
  EXPECT_TRUE(ListRecentInTaskbar({"C:\\MODELS\\TRUCK.BIN", "C:\\M\xC3\xBCller\\a b.pod"}));
  EXPECT_TRUE(ListRecentInTaskbar({}));
}

}  // namespace

}  // namespace veldra
