#pragma once

#include <cstddef>
#include <string_view>

#include "platform/machine.h"

namespace kiv {

// Backslashes that separate folders. In code pages with characters of two bytes, the second byte of one may be that of
// a backslash; such a byte separates nothing.

/// The index of the last backslash; npos when there is none.
std::size_t lastBackslash(Machine& machine, std::string_view text);
/// Whether the last character is a backslash.
bool endsWithBackslash(Machine& machine, std::string_view text);
/// Whether the text has a backslash after a backslash.
bool hasTwoBackslashes(Machine& machine, std::string_view text);

}  // namespace kiv
