#pragma once

#include <string>

#include "platform/machine.h"

namespace kiv {

/// When and by what a page was made: "2026-11-22 10:30, kivsys v1.0.0.0".
std::string madeBy(Machine& machine);

}  // namespace kiv
