#pragma once

#include <string>

#include "apps/kivsys/command_table.h"

namespace kiv {

/// The manual page kivsys(1), as man reads it.
std::string manPage(const CommandTable& table);

}  // namespace kiv
