#pragma once

#include <optional>
#include <string>

#include "platform/console/console_host.h"

namespace kiv {

/// The command line that takes back what a run has written until a signal stopped it; nullopt when no signal came, or
/// nothing can be undone.
std::optional<std::string> stepAfterStop(ConsoleHost& console);

/// Says how far the run has come that the signal stopped, what it has written, and how to undo that. Returns the exit
/// status.
int reportStop(ConsoleHost& console, int signal);

}  // namespace kiv
