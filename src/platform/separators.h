#pragma once

#include <cstddef>
#include <string>
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

// Paths as they are typed have slashes, too.

/// Whether the path ends with a slash or a backslash.
bool endsWithSeparator(Machine& machine, std::string_view path);
/// The path without the separators at its end, which make no difference to a folder; those of "/" and "C:\" stay.
std::string withoutEndSeparators(Machine& machine, std::string path);

}  // namespace kiv
