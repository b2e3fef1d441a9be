#include "tests/support/patterns.h"

#include <regex>

namespace kiv::test {

std::vector<std::vector<std::string>> matchesIn(const std::string& text, const std::string& pattern) {
  const std::regex expression(pattern);
  std::vector<std::vector<std::string>> matches;
  for (std::sregex_iterator match(text.begin(), text.end(), expression), end; match != end; ++match) {
    matches.emplace_back(match->begin(), match->end());
  }
  return matches;
}

std::set<std::string> firstGroupsIn(const std::string& text, const std::string& pattern) {
  std::set<std::string> groups;
  for (const auto& match : matchesIn(text, pattern)) {
    groups.insert(match.at(1));
  }
  return groups;
}

std::string replaceMatches(const std::string& text, const std::string& pattern, const std::string& replacement) {
  return std::regex_replace(text, std::regex(pattern), replacement);
}

}  // namespace kiv::test
