#pragma once

#include <string_view>

namespace kiv {

/// The text after the program's name in a command line as the system has it: bytes of any code page. The name may be
/// quoted, as a whole or in parts. Blanks between the two are left out, those at the end are kept.
std::string_view argumentText(std::string_view commandLine);

}  // namespace kiv
