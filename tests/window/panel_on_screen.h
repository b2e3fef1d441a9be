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
  /// The tooltip of the control, as far as another process can read it: 80 characters.
  std::string tooltipOf(Control Panel::*control) const;
  bool isEnabled(Control Panel::*control) const { return IsWindowEnabled(this->control(control)) != FALSE; }
  bool isVisible(Control Panel::*control) const { return IsWindowVisible(this->control(control)) != FALSE; }
  bool isChecked(Control Panel::*control) const;
  /// The control's place inside the window, in pixels.
  RECT placeOf(Control Panel::*control) const;

  /// Clicks a button without waiting for the effect.
  void click(Control Panel::*control) const;
  /// Clicks a check box, or any control while a handler runs, and waits until that is processed.
  void clickAndWait(Control Panel::*control) const;
  void type(const std::string& text) const;
  /// Waits for a box with this text and closes it.
  void answer(const std::string& text, const std::string& button = "OK");
  bool waitUntil(const std::function<bool()>& condition) { return process_.waitUntil(condition); }
  /// Waits until the running handler has ended.
  void waitUntilIdle();
  /// Clicks Return and waits for the end.
  void leave();

 private:
  WatchedProcess process_;
  HWND window_ = nullptr;
};

/// Puts the settings file into the current folder; the names file is NAMES.TXT beside it.
void bringSettings(const WorkFolder& folder);

}  // namespace kiv::test
