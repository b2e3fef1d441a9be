#include "verify/compare_layout.h"

#include <cmath>
#include <map>
#include <set>
#include <string>

#include "base/exact_number.h"
#include "verify/numbers.h"

namespace kiv::proof {
namespace {

using Bars = std::multiset<std::string>;

/// The layout of a page, by the numbers of its staves.
struct Layout {
  std::map<float, std::string> instruments;  ///< of each staff item of the staff, each followed by a comma
  std::map<float, Bars> bars;                ///< the positions of the barlines that do not span all staves
};

Layout layoutOf(const LoadedPage& page) {
  Layout layout;
  for (const PageItem& read : page.items) {
    const Item& item = read.item;
    if (item.type() == ItemType::staff && !std::isnan(item[par::staff])) {
      layout.instruments[item[par::staff]].append(generalForm(item[par::instrument])).append(",");
      layout.bars[item[par::staff]];
    }
  }
  for (const PageItem& read : page.items) {
    const Item& item = read.item;
    const bool spansAll = item[par::spannedStaves] == static_cast<float>(layout.instruments.size());
    if (item.type() == ItemType::barline && item[par::kind] < lowestBraceKind && !std::isnan(item[par::staff]) &&
        (!spansAll || layout.instruments.size() == 1)) {
      layout.bars[item[par::staff]].insert(exactNumber(item[par::position]));
    }
  }
  return layout;
}

std::string instrumentsOf(const Layout& layout) {
  std::string list;
  for (const auto& [staff, instruments] : layout.instruments) {
    list += instruments;
  }
  return list.substr(0, list.empty() ? 0 : list.size() - 1);
}

}  // namespace

void LayoutComparison::add(const std::string& name, const LoadedPage& found) {
  const Layout layout = layoutOf(found);
  const std::string list = instrumentsOf(layout);
  if (!first_) {
    first_ = FirstResult{name, list};
  } else if (list != first_->instruments) {
    std::string what = "has the instruments ";
    what.append(list).append(" where ").append(first_->name).append(" has ").append(first_->instruments);
    findings_.push_back({name, 0, what});
  }
  for (const auto& [staff, bars] : layout.bars) {
    if (bars != layout.bars.begin()->second) {
      findings_.push_back({name, 0,
                           "has other bars on staff " + generalForm(staff) + " than on staff " +
                               generalForm(layout.bars.begin()->first)});
    }
  }
}

}  // namespace kiv::proof
