#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kiv {

// Whether the pages of a group can be used, in words for people: half sentences without a period.

inline constexpr std::string_view needConversion = "The pages need a conversion";
inline constexpr std::string_view canBeUsed = "The pages can be used as they are";

/// "2 pages cannot be read"
std::string unreadableWords(std::size_t pages);
/// "1 problem must be corrected first"
std::string problemWords(std::size_t problems);

}  // namespace kiv
