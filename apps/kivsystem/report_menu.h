#pragma once

#include "platform/win32/windows_api.h"

namespace kiv {

/// The command of the window's own menu that shows the report.
class ReportMenu {
 public:
  /// Adds the command at the end of the menu, grayed.
  static void addTo(HWND window);
  /// Grays the command, or lets it be chosen.
  static void enable(HWND window, bool isEnabled);
  /// Whether the wParam of a WM_SYSCOMMAND is this command.
  static bool isChosen(WPARAM command);
};

}  // namespace kiv
