#pragma once

#include <string>

namespace kiv {

/// The text after the program's name in this process's own command line, in bytes of the ANSI code page. The C library
/// may end the name at a letter that is not ASCII, so what it passes to the program is not used.
std::string argumentsOfProcess();

}  // namespace kiv
