#pragma once

#include <array>
#include <cstddef>
#include <iosfwd>
#include <map>
#include <string>
#include <vector>

#include "repair/suggestions.h"
#include "tests/suggestions/planned_group.h"

namespace kiv::test {

/// The suggestions for a group, after an analysis of its pages in memory.
Suggestions suggestFor(const WrittenGroup& group);

/// How suggestions compare with what was meant, of groups of one kind.
struct SuggestionRates {
  std::size_t groups = 0;
  std::size_t staves = 0;
  std::size_t damaged = 0;
  std::array<std::size_t, 3> proposed{};  ///< for staves, by confidence
  std::array<std::size_t, 3> right{};
  std::size_t covered = 0;  ///< damaged staves with a sure or likely proposal that is right
  std::size_t decided = 0;  ///< damaged staves with a sure or likely proposal
  std::size_t undecided = 0;
  std::size_t groupsWithSure = 0;  ///< a sure proposal for a staff
  std::size_t groupsWithAny = 0;

  void add(const WrittenGroup& group, const Suggestions& suggestions);
  void add(const SuggestionRates& other);
};

/// Prints a line for each kind and one for all.
void printRates(std::ostream& out, const std::map<std::string, SuggestionRates>& byKind);

}  // namespace kiv::test
