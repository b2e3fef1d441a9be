#pragma once

#include "platform/host.h"
#include "shell/panel.h"

namespace kiv {

/// Places the window where the user's profile says, in twips, or in the middle of the screen.
void positionPanel(Host& host, Panel& panel);

}  // namespace kiv
