#pragma once

#include <string>

namespace kiv {

/// The text as one word of a command line, which the system's shell passes on unchanged.
std::string shellWord(const std::string& text);

/// The name of a file as one word of a command line, where it must not look like an option.
std::string fileWord(const std::string& name);

}  // namespace kiv
