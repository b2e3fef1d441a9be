#pragma once

#include <string>

#include "shell/kivsystem.h"

namespace kiv {

/// Shows the wait label with this caption, and the hourglass.
inline void showWait(KivSystem& program, const std::string& caption) {
  program.host.user.setPointer(Pointer::hourglass);
  program.panel.lblWait.text = caption;
  program.panel.lblWait.visible = true;
  program.host.user.processEvents();
}

/// Hides the label and the hourglass.
inline void hideWait(KivSystem& program) {
  program.host.user.setPointer(Pointer::normal);
  program.panel.lblWait.visible = false;
}

}  // namespace kiv
