#include "conversion/fitted_staves.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <vector>

#include "fit/rest_staff.h"

namespace kiv {
namespace {

/// Those that bound bars: not one at a position that is no number.
std::vector<fit::Barline> barsFrom(const BarlineList& barlines) {
  std::vector<fit::Barline> bars;
  bars.reserve(barlines.size());
  for (const ModelBarline& barline : barlines) {
    if (!std::isnan(barline.position)) {
      bars.push_back({barline.position, barline.kind});
    }
  }
  return bars;
}

/// A staff of the page to be made.
struct NumberedStaff {
  float instrument = 0;
  float before = 0;  ///< its number so far; 0 for a rest staff
};

/// From staff 1 upward.
std::vector<NumberedStaff> stavesOfResult(const ItemTable& items, const OrderTable& order) {
  std::vector<NumberedStaff> staves;
  for (const int i : staffRows(items)) {
    const NumberedStaff staff{items.itemPar(i, par::instrument), items.itemPar(i, par::staff)};
    const auto isSame = [&](const NumberedStaff& other) { return other.before == staff.before; };
    if (std::none_of(staves.begin(), staves.end(), isSame)) {
      staves.push_back(staff);
    }
  }
  std::stable_sort(staves.begin(), staves.end(),
                   [](const NumberedStaff& a, const NumberedStaff& b) { return a.before < b.before; });
  for (int k = 1; k <= order.count(); ++k) {
    if (order.entry(k).present == 0) {
      staves.push_back({static_cast<float>(order.entry(k).instr), 0});
    }
  }
  std::stable_sort(staves.begin(), staves.end(),
                   [](const NumberedStaff& a, const NumberedStaff& b) { return a.instrument > b.instrument; });
  return staves;
}

/// P6 of a new staff: that of the next real staff above it, else of the next one below.
float par6Of(const fit::System& system, float instrument) {
  float par6 = 0;
  bool isAbove = false;
  for (const fit::Staff& staff : system.staves) {  // from the top down
    if (staff.instrument() < instrument || !isAbove) {
      par6 = staff.staff[par::par6];
      isAbove = true;
    }
  }
  return par6;
}

/// The staff item of a rest staff that looks as the instrument's first staff does.
Item staffItem(const fit::System& system, const Item& first) {
  Item item(ItemType::staff, 0, system.leftEdge);
  item[par::par6] = par6Of(system, fit::instrumentOf(first));
  for (const int p : {par::size, par::lines, par::instrument, par::par11}) {
    item[p] = first[p];
  }
  return item;
}

}  // namespace

void FittedStaves::learn(const ItemTable& items, const BarlineList& barlines) {
  group_.add(fit::systemOf(items, barsFrom(barlines)));
}

void FittedStaves::addMissing(std::int16_t system, ItemTable& items, const OrderTable& order,
                              const BarlineList& barlines) const {
  const fit::System real = fit::systemOf(items, barsFrom(barlines));
  std::map<float, float> numbers;  // of the real staves
  std::vector<Item> added;
  float number = 0;
  for (const NumberedStaff& staff : stavesOfResult(items, order)) {
    ++number;
    if (staff.before != 0) {
      numbers[staff.before] = number;
      continue;
    }
    fit::MissingStaff missing{static_cast<std::size_t>(system - 1),
                              staffItem(real, group_.firstStaff(staff.instrument))};
    missing.staff[par::staff] = number;
    const std::vector<Item> ofStaff = fit::restStaff(group_, real, missing);
    added.insert(added.end(), ofStaff.begin(), ofStaff.end());
  }
  for (int i = 1; i <= items.itemCount(); ++i) {
    const auto renumbered = numbers.find(items.itemPar(i, par::staff));
    if (renumbered != numbers.end()) {
      items.itemPar(i, par::staff) = renumbered->second;
    }
  }
  for (const Item& item : added) {
    items.store_item(item);
  }
}

void FittedStaves::addBraces(ItemTable& items) const {
  for (const Item& brace : fit::braceItems(group_.braces().all(), items)) {
    items.store_item(brace);
  }
}

}  // namespace kiv
