#include "verify/compare_layout.h"

#include <cmath>
#include <map>
#include <set>
#include <string>

#include "base/exact_number.h"
#include "base/number.h"

namespace kiv::proof {
namespace {

using Bars = std::multiset<std::string>;

/// What the staves of a page are, by their numbers.
struct Staves {
  std::map<float, std::string> instruments;  ///< of each staff item of the staff, with a comma
  std::map<float, Bars> bars;                ///< the positions of the barlines that hold no other staff
};

Staves stavesOf(const LoadedPage& page) {
  Staves staves;
  for (const PageItem& read : page.items) {
    const auto& value = read.item.par;
    if (value[par::type] == type::staff && !std::isnan(value[par::staff])) {
      staves.instruments[value[par::staff]].append(generalNumber(value[par::instrument])).append(",");
      staves.bars[value[par::staff]];
    }
  }
  for (const PageItem& read : page.items) {
    const auto& value = read.item.par;
    const bool holdsAll = value[par::spannedStaves] == static_cast<float>(staves.instruments.size());
    if (value[par::type] == type::barline && value[par::kind] < lowestBraceKind && !std::isnan(value[par::staff]) &&
        (!holdsAll || staves.instruments.size() == 1)) {
      staves.bars[value[par::staff]].insert(exactNumber(value[par::position]));
    }
  }
  return staves;
}

std::string listOf(const Staves& staves) {
  std::string list;
  for (const auto& [staff, instruments] : staves.instruments) {
    list += instruments;
  }
  return list.substr(0, list.empty() ? 0 : list.size() - 1);
}

}  // namespace

std::vector<Finding> compareLayout(const std::vector<ResultPage>& results) {
  std::vector<Finding> findings;
  std::string first;
  for (const ResultPage& result : results) {
    const Staves staves = stavesOf(result.found);
    const std::string list = listOf(staves);
    if (&result == &results.front()) {
      first = list;
    } else if (list != first) {
      std::string what = "has the instruments ";
      what.append(list).append(" where ").append(results.front().name).append(" has ").append(first);
      findings.push_back({result.name, 0, what});
    }
    for (const auto& [staff, bars] : staves.bars) {
      if (bars != staves.bars.begin()->second) {
        findings.push_back({result.name, 0,
                            "has other bars on staff " + generalNumber(staff) + " than on staff " +
                                generalNumber(staves.bars.begin()->first)});
      }
    }
  }
  return findings;
}

}  // namespace kiv::proof
