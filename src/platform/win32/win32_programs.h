#pragma once

#include <cstdint>
#include <string>

#include "platform/host.h"
#include "platform/win32/windows_api.h"

namespace kiv {

/// Starts the command line as a process and waits for its end. Returns its exit code, -1 when it does not start.
std::int32_t runAndWait(const std::string& commandLine, ShowState show);

/// Starts a command whose program, which ends with its first ".EXE", is in the current folder or where the system
/// searches for programs, and waits for its end. Returns the system's error number when it does not start.
DWORD startAndWait(const std::string& command, WindowStyle style);

}  // namespace kiv
