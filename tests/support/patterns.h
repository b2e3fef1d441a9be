#pragma once

#include <set>
#include <string>
#include <vector>

namespace kiv::test {

// Regular expressions, of the standard library's own kind. Its templates take long to compile, so they are in one
// place.

/// Where a pattern matches in a text: of each match first the whole of it, then what its groups matched.
std::vector<std::vector<std::string>> matchesIn(const std::string& text, const std::string& pattern);
/// What the first group of a pattern matches in a text.
std::set<std::string> firstGroupsIn(const std::string& text, const std::string& pattern);
/// The text with a replacement for each match.
std::string replaceMatches(const std::string& text, const std::string& pattern, const std::string& replacement);

}  // namespace kiv::test
