#pragma once

#include "platform/machine.h"
#include "shell/panel.h"

namespace kiv {

/// Places the window where the user's profile says, in twips, or in the middle of the screen.
void positionPanel(Machine& machine, Panel& panel);

}  // namespace kiv
