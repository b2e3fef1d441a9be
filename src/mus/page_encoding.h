#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kiv {

/// How many characters a text item of the type is given at least.
std::size_t shortestTextOf(float type);

/// The text with as many blanks as a text item of the type is given at least, and up to whole chunks of 4.
std::string padded(float type, std::string_view text);

/// The standard trailer, byte for byte.
std::string_view standardTrailer();

}  // namespace kiv
