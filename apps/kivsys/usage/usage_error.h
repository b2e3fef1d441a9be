#pragma once

#include <string>
#include <vector>

#include "apps/kivsys/command_table.h"

namespace kiv {

/// A command line that cannot be understood.
struct UsageError {
  std::string reason;  ///< one line, after "kivsys: "
  std::string hint;    ///< one line of its own
};

/// What is wrong with the words of a command line, without the program's name. The parser's reason is used for what is
/// not wrong by the table of commands.
UsageError usageErrorOf(const CommandTable& table, const std::vector<std::string>& words,
                        const std::string& parserReason);

/// The error of a command that does not exist, with the one that was probably meant.
UsageError unknownCommand(const CommandTable& table, const std::string& typed);

/// Prints both lines on standard error. Returns the exit status.
int printUsageError(const UsageError& error);

}  // namespace kiv
