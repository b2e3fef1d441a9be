#pragma once

#include <optional>
#include <string>

#include "shell/panel_layout.h"
#include "tests/window/page_folder.h"
#include "tests/window/started_program.h"

namespace kiv::test {

/// The windowed program with its panel, started in the current folder.
class PanelOnScreen {
 public:
  explicit PanelOnScreen(const std::string& commandLine = "CALLEDBY=KIV,FUNCTION=MAIN");
  /// The panel of a program that was started in another way.
  explicit PanelOnScreen(WatchedProcess process);

  WatchedProcess& process() { return process_; }
  /// The panel's window, null when none came up.
  HWND window() const { return window_; }
  /// The control as a window.
  HWND control(Control Panel::*control) const;

  std::string textOf(Control Panel::*control) const;
  /// What the control tells when the pointer rests on it, as far as another process is told: 80 characters.
  std::string tooltipOf(Control Panel::*control) const;
  bool isEnabled(Control Panel::*control) const { return IsWindowEnabled(this->control(control)) != FALSE; }
  bool isVisible(Control Panel::*control) const { return IsWindowVisible(this->control(control)) != FALSE; }
  bool isChecked(Control Panel::*control) const;
  /// The control's place inside the window, in pixels.
  RECT placeOf(Control Panel::*control) const;

  /// Presses a button, and does not wait for what comes of it.
  void press(Control Panel::*control) const;
  /// Presses a check box, or any control while a handler runs, and waits until that is dealt with.
  void pressAndWait(Control Panel::*control) const;
  void type(const std::string& text) const;
  /// Waits for a box with this text and closes it.
  void answer(const std::string& text, const std::string& button = "OK");
  bool waitUntil(const std::function<bool()>& condition) { return process_.waitUntil(condition); }
  /// Waits until the handler that was seen at work has ended.
  void waitUntilIdle();
  /// Presses Return and waits for the end.
  void leave();

 private:
  WatchedProcess process_;
  HWND window_ = nullptr;
};

/// Puts the settings file into the current folder; the names file lies beside it as NAMES.TXT.
void bringSettings(const WorkFolder& folder);

}  // namespace kiv::test
