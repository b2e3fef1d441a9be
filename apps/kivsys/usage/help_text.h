#pragma once

#include <string>

#include "apps/kivsys/command_table.h"

namespace kiv {

/// The help of the program: its commands and its own options.
std::string programHelp(const CommandTable& table);
/// The help of a command: its operands and options.
std::string commandHelp(const CommandRow& command);

}  // namespace kiv
