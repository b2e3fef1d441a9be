#include "apps/kivsystem/report_menu.h"

#include <array>
#include <string>

#include <gtest/gtest.h>

namespace kiv::test {
namespace {

/// A window with a menu of its own.
class ReportMenuOfAWindow : public ::testing::Test {
 protected:
  void TearDown() override { DestroyWindow(window); }
  std::string lastText() const {
    std::array<char, 100> text{};
    return {text.data(), static_cast<std::size_t>(GetMenuStringA(menu, static_cast<UINT>(GetMenuItemCount(menu) - 1),
                                                                 text.data(), 100, MF_BYPOSITION))};
  }
  UINT stateOf(int position) const { return GetMenuState(menu, static_cast<UINT>(position), MF_BYPOSITION); }
  bool isGrayed() const { return (stateOf(GetMenuItemCount(menu) - 1) & MF_GRAYED) != 0; }

  HWND window = CreateWindowExA(0, "STATIC", "", WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_MINIMIZEBOX, 0, 0, 100,
                                100, nullptr, nullptr, GetModuleHandleA(nullptr), nullptr);
  HMENU menu = GetSystemMenu(window, FALSE);
};

TEST_F(ReportMenuOfAWindow, HasALineAndACommandAfterTheCommandsOfTheSystem) {
  const int before = GetMenuItemCount(menu);
  ReportMenu::addTo(window);
  EXPECT_EQ(GetMenuItemCount(menu), before + 2);
  EXPECT_TRUE(stateOf(before) & MF_SEPARATOR);
  EXPECT_EQ(lastText(), "Show report in &browser");
}

TEST_F(ReportMenuOfAWindow, IsGrayedUntilItIsEnabled) {
  ReportMenu::addTo(window);
  EXPECT_TRUE(isGrayed());
  ReportMenu::enable(window, true);
  EXPECT_FALSE(isGrayed());
  ReportMenu::enable(window, false);
  EXPECT_TRUE(isGrayed());
}

TEST_F(ReportMenuOfAWindow, HasACommandThatTheSystemLeavesToPrograms) {
  ReportMenu::addTo(window);
  const UINT id = GetMenuItemID(menu, GetMenuItemCount(menu) - 1);
  EXPECT_LT(id, 0xF000U);
  EXPECT_EQ(id & 0xFU, 0U);
  EXPECT_TRUE(ReportMenu::isChosen(id));
  EXPECT_TRUE(ReportMenu::isChosen(id | 2U)) << "the system uses the lowest bits";
  for (const WPARAM other : {WPARAM{SC_CLOSE}, WPARAM{SC_MINIMIZE}, WPARAM{SC_MOVE}, WPARAM{SC_KEYMENU}, WPARAM{0}}) {
    EXPECT_FALSE(ReportMenu::isChosen(other));
  }
}

}  // namespace
}  // namespace kiv::test
