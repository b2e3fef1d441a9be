#pragma once

#include <cstdint>
#include <string>

#include "platform/host.h"

namespace kiv {

/// Starts the command line as a process and waits for its end. Returns its exit code, -1 when it does not start.
std::int32_t runAndWait(const std::string& commandLine, ShowState show);

}  // namespace kiv
