#pragma once

#include <string>
#include <vector>

#include "apps/kivsys/command_table.h"

namespace kiv {

/// The shells that there are scripts for, as they are named on the command line.
const std::vector<std::string>& shells();
bool isShell(const std::string& name);

/// The script for one of the `shells()`.
std::string completionsFor(const CommandTable& table, const std::string& shell);

std::string bashCompletion(const CommandTable& table);
std::string zshCompletion(const CommandTable& table);
std::string fishCompletion(const CommandTable& table);
std::string powershellCompletion(const CommandTable& table);

/// The words with a separator between them.
std::string joined(const std::vector<std::string>& words, const std::string& separator);
/// The text with each of these characters replaced; in the replacement `by`, a '?' stands for the character itself.
std::string escaped(const std::string& text, const std::string& characters, const std::string& by);

}  // namespace kiv
