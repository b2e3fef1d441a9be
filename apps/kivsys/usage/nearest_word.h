#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kiv {

/// The number of letters to insert, delete, replace or exchange with their neighbor that makes one word of another.
std::size_t editDistance(std::string_view from, std::string_view to);

/// The word that was probably meant, whatever its case: the first one of the nearest, if no more than a third of the
/// letters, or one, are wrong. Nullopt when there is none.
std::optional<std::string> nearestWord(const std::string& typed, const std::vector<std::string>& words);

}  // namespace kiv
