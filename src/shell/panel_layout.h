#pragma once

#include <cstddef>
#include <span>

#include "shell/panel.h"

namespace kiv {

enum class ControlKind { button, checkBox, frame, label, textBox };

/// The position of a control in twips from the left and upper edge of the window's inside, or of its frame.
struct ControlPlace {
  int left = 0;
  int top = 0;
  int width = 0;
  int height = 0;
};

struct ControlLayout {
  const char* name = nullptr;
  Control Panel::*control = nullptr;
  ControlKind kind = ControlKind::label;
  ControlPlace place;
  Control Panel::*frame = nullptr;  ///< the frame that the control is in; null for most
};

/// The inside of the window, in twips.
inline constexpr int panelWidth = 8580;
inline constexpr int panelHeight = 6255;

/// All controls: those that the Tab key goes to in its order, and each label right before the control that it names.
std::span<const ControlLayout> panelLayout();

/// The control's place from the edge of the window's inside.
ControlPlace placeInWindow(const ControlLayout& control);

}  // namespace kiv
