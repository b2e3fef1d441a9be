#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kiv {

/// The columns that a help has at most.
constexpr std::size_t helpColumns = 80;

/// The words of a text in lines of at most helpColumns columns, unless a word is longer. All lines but the first one
/// are indented by blanks; of the first line, some columns are already used. Ends with a line end.
std::string wrapped(std::string_view text, std::size_t indent, std::size_t used);

}  // namespace kiv
