#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "platform/machine.h"

namespace kiv {

/// The text after the last backslash; all of it when there is none.
std::string withoutPath(Machine& machine, const std::string& path);
/// The text up to and including the last backslash. There must be one.
std::string justPath(Machine& machine, const std::string& path);

/// The text without its last characters; nullopt when it has fewer.
std::optional<std::string> withoutLastCharacters(Machine& machine, const std::string& text, std::size_t count);

// Page files are named by a name part, a number part, an optional page letter and a suffix: C:\MUSIC\ABC012B.MUS is
// ABC, 012, B, .MUS. The functions below upper-case the path and leave its folder aside before they look at it.

/// The name part.
std::string extractPartName(Machine& machine, const std::string& path);
/// 2 when a second group of digits follows the first, else 1.
std::int16_t IsGroupOfDigits(Machine& machine, const std::string& path);
/// The digits of the number part, leading zeros kept.
std::string extractPartNumb(Machine& machine, const std::string& path);
/// All letters after the number part; a page letter is a single one.
std::string extractPartPage(Machine& machine, const std::string& path);
/// The suffix part from the first period on; "" without a period.
std::string extractPartSuff(Machine& machine, const std::string& path);

}  // namespace kiv
