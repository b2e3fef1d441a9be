#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace kiv {

/// A word for every number; three and more that follow one another, up or down, are one: "4 to 7".
std::vector<std::string> inRanges(const std::vector<int>& numbers, const std::function<std::string(int)>& wordOf);

/// The words with commas between them, those beyond the limit only counted.
std::string joined(const std::vector<std::string>& words, std::size_t limit);

}  // namespace kiv
