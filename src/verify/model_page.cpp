// The order of the items of an expected result.

#include <algorithm>
#include <cmath>

#include "verify/system_model.h"

namespace kiv::proof {
namespace {

/// An item with its instrument and its staff in the file.
struct PlacedItem {
  float instrument = 0;
  int staff = 0;
  ModelItem model;

  float par(int p) const { return model.item[p]; }
};

bool isBefore(const PlacedItem& a, const PlacedItem& b) {
  if (a.instrument != b.instrument) {
    return a.instrument > b.instrument;
  }
  if (a.par(par::position) != b.par(par::position)) {
    return a.par(par::position) < b.par(par::position);
  }
  if (a.par(par::height) != b.par(par::height)) {
    return a.par(par::height) < b.par(par::height);
  }
  return a.model.order < b.model.order;
}

bool hasPosition(const PlacedItem& item) {
  return !std::isnan(item.par(par::position)) && !std::isnan(item.par(par::height));
}

/// The staff of an instrument in the file: the highest identifier is on staff 1.
int staffOf(float instrument, const std::vector<ModelStaff>& staves) {
  return 1 + static_cast<int>(std::count_if(staves.begin(), staves.end(),
                                            [&](const ModelStaff& staff) { return staff.instrument() > instrument; }));
}

Item braceOf(std::int16_t kind) {
  Item brace(ItemType::barline, 0, 0);
  brace[par::braceKind] = kind;
  brace[par::kind] = lowestBraceKind;
  return brace;
}

}  // namespace

ExpectedPage SystemModel::page() const {
  ExpectedPage page;
  std::vector<PlacedItem> placed;
  for (const ModelStaff& staff : staves_) {
    page.barlines += staff.barlines.size();
    const int number = staffOf(staff.instrument(), staves_);
    for (const ModelItem& model : staff.items) {
      placed.push_back({staff.instrument(), number, model});
    }
    if (staff.number == 1) {
      placed.push_back({staff.instrument(), 1, {systemBarline_, {}, systemBarlineOrder_}});
    }
  }
  page.isOrdered = std::all_of(placed.begin(), placed.end(), hasPosition);
  if (page.isOrdered) {
    std::sort(placed.begin(), placed.end(), isBefore);
  }
  for (const ModelStaff& staff : staves_) {
    const auto brace = std::find_if(group_.braces.begin(), group_.braces.end(),
                                    [&](const auto& entry) { return entry.first == staff.instrument(); });
    if (brace != group_.braces.end()) {
      placed.push_back({staff.instrument(), staffOf(staff.instrument(), staves_), {braceOf(brace->second), {}, 0}});
    }
  }
  std::stable_sort(placed.begin(), placed.end(),
                   [](const PlacedItem& a, const PlacedItem& b) { return a.staff < b.staff; });
  for (PlacedItem& item : placed) {
    item.model.item[par::staff] = static_cast<float>(item.staff);
    page.items.push_back({asWritten(item.model.item), item.model.origin});
  }
  return page;
}

}  // namespace kiv::proof
