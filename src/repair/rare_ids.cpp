#include "repair/rare_ids.h"

#include <algorithm>
#include <limits>
#include <map>
#include <vector>

namespace kiv {
namespace {

/// An id that is wrong only because it is rare might as well be right.
constexpr double usualMargin = 2;
/// In another set of instruments, rather so: staves are divided, or share one, and solo instruments come and go.
constexpr double otherSizeMargin = 5;

const std::vector<std::uint32_t>& systemsOf(const CodedGroup& group, std::int16_t id) {
  static const std::vector<std::uint32_t> none;
  const auto found = group.idSystems.find(id);
  return found == group.idSystems.end() ? none : found->second;
}

/// Whether two ids stand one below the other in a system: then neither is written for the other.
bool areNeighbors(const CodedGroup& group, std::int16_t a, std::int16_t b) {
  const std::vector<std::uint32_t>& systems = systemsOf(group, a);
  return std::any_of(systems.begin(), systems.end(), [&](std::size_t system) {
    const CodedSystem staves = group.systems[system];
    const auto next = std::adjacent_find(staves.begin(), staves.end(), [&](const auto& above, const auto& below) {
      return (above.id == a && below.id == b) || (above.id == b && below.id == a);
    });
    return next != staves.end();
  });
}

/// Whether at least half of the systems have one number of staves, and this system has another.
bool hasOtherSize(const CodedGroup& group, std::size_t system) {
  std::map<std::size_t, std::size_t> systemsOfSize;
  for (const CodedSystem staves : group.systems) {
    ++systemsOfSize[staves.size()];
  }
  return std::any_of(systemsOfSize.begin(), systemsOfSize.end(), [&](const auto& size) {
    return size.first != group.systems[system].size() && 2 * size.second >= group.systems.size();
  });
}

}  // namespace

bool mayBeSlip(const CodedGroup& group, std::int16_t id) {
  return 4 * systemsOf(group, id).size() <= 3 * group.systems.size();
}

double marginForRare(const CodedGroup& group, std::size_t system, std::int16_t id, std::int16_t other) {
  if (hasOtherSize(group, system) && areNeighbors(group, id, other)) {
    return std::numeric_limits<double>::infinity();
  }
  return hasOtherSize(group, system) ? otherSizeMargin : usualMargin;
}

}  // namespace kiv
