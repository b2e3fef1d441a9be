#pragma once

#include <string>

#include "platform/host.h"

namespace kiv {

/// Ends the program over a file that is missing or whose name does not follow the naming convention.
[[noreturn]] void refuseFileName(Host& host, const std::string& musFileName);

}  // namespace kiv
