#include "apps/kivsystem/report_menu.h"

namespace kiv {
namespace {

/// The system has the commands from 0xF000, and uses the lowest four bits of each itself.
constexpr UINT showReportCommand = 0x0100;
constexpr WPARAM ownBits = 0xFFF0;

}  // namespace

void ReportMenu::addTo(HWND window) {
  HMENU menu = GetSystemMenu(window, FALSE);
  AppendMenuA(menu, MF_SEPARATOR, 0, nullptr);
  AppendMenuA(menu, MF_STRING | MF_GRAYED, showReportCommand, "Show report in &browser");
}

void ReportMenu::enable(HWND window, bool isEnabled) {
  EnableMenuItem(GetSystemMenu(window, FALSE), showReportCommand, isEnabled ? MF_ENABLED : MF_GRAYED);
}

bool ReportMenu::isChosen(WPARAM command) {
  return (command & ownBits) == showReportCommand;
}

}  // namespace kiv
