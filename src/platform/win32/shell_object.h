#pragma once

#include <optional>
#include <string>

#include "platform/host.h"

namespace kiv {

/// Lets the scripting host's shell object run the command and wait for its end. Returns the failure.
std::optional<ShellFailure> runThroughShellObject(const std::string& command, WindowStyle style);

}  // namespace kiv
