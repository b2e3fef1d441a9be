#pragma once

#include <string_view>

namespace kiv {

/// Prints a line of the program's own on standard error, after "kivsys: ". Control characters in it, such as those of a
/// name, are escaped.
void printError(std::string_view line);

}  // namespace kiv
