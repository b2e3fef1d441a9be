#pragma once

#include <vector>

#include "platform/win32/windows_api.h"
#include "shell/panel.h"
#include "shell/panel_layout.h"

namespace kiv {

/// A font of the system, deleted with its owner.
class Font {
 public:
  Font() = default;
  /// The height is that of the characters, in pixels.
  Font(const char* face, int height, int weight);
  Font(const Font&) = delete;
  Font& operator=(const Font&) = delete;
  Font(Font&& other) noexcept;
  Font& operator=(Font&& other) noexcept;
  ~Font();

  HFONT handle() const { return handle_; }

 private:
  HFONT handle_ = nullptr;
};

/// The panel's controls as windows. They show the state of the panel that they are given.
class PanelControls {
 public:
  /// Creates the controls in the window, which owns them.
  void create(HWND parent, const Panel& panel, int dpi);
  /// Moves and sizes them for this number of dots per inch.
  void place(int dpi);
  /// Changes what differs from the panel's state.
  void show(const Panel& panel);
  /// Copies what the user changed in a control to the panel: the text of the text box, the check of a box.
  void readBack(int id, Panel& panel);
  /// Undoes what the user changed in a control.
  void undo(int id) const;

  /// The layout of the control with this identifier; null for others.
  const ControlLayout* layoutOf(int id) const;
  HWND window(Control Panel::*control) const;
  /// The first control that accepts the keyboard; null when none does.
  HWND first() const;

 private:
  struct Shown {
    const ControlLayout* layout = nullptr;
    HWND window = nullptr;
    Control state;
  };
  void createTooltips(HWND parent);
  void update(Shown& shown, const Control& state) const;
  void showTooltip(const Shown& shown) const;

  std::vector<Shown> controls_;
  HWND tooltips_ = nullptr;
  Font font_;
  Font waitFont_;
};

}  // namespace kiv
