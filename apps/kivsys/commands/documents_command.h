#pragma once

#include <string>

#include "apps/kivsys/command_table.h"

namespace kiv {

/// Prints the help of the command of that name, or of the program for "". Returns the program's exit status.
int runHelp(const CommandTable& table, const std::string& command);

/// Prints the script that completes command lines in one of the shells that `isShell` knows. Returns the program's exit
/// status.
int runCompletions(const CommandTable& table, const std::string& shell);

/// Prints the manual page. Returns the program's exit status.
int runMan(const CommandTable& table);

}  // namespace kiv
