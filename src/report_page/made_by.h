#pragma once

#include <string>

#include "platform/machine.h"

namespace kiv::report {

/// When and by what program a page was made: "2026-11-22 10:30, kivsys v1.0.0.0".
std::string madeBy(Machine& machine, const std::string& program);

}  // namespace kiv::report
