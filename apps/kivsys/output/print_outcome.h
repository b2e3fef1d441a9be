#pragma once

#include <string>

namespace kiv {

/// Prints the outcome on standard output and returns the status; output that cannot be printed makes it critical.
int printOutcome(const std::string& text, int status);

}  // namespace kiv
