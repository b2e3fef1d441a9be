#pragma once

#include <optional>
#include <string>

#include "platform/host.h"

namespace kiv {

/// Lets the scripting host's shell object run the command and wait for its end. Where there is no such object, the
/// program is started directly. Returns the failure. Tests name another object.
std::optional<ShellFailure> runThroughShellObject(const std::string& command, WindowStyle style,
                                                  const wchar_t* shellObject = L"Wscript.Shell");

}  // namespace kiv
