#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "mus/item_type.h"

namespace kiv {

/// How many characters a text item of the type is given at least.
std::size_t shortestTextOf(ItemType type);

/// The text with as many blanks as a text item of the type is given at least, and up to whole chunks of 4.
std::string padded(ItemType type, std::string_view text);

/// The standard trailer, byte for byte.
std::string_view standardTrailer();

}  // namespace kiv
