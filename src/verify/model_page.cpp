// The order of the items of an expected result.

#include <algorithm>
#include <utility>

#include "verify/item_order.h"
#include "verify/system_model.h"

namespace kiv::proof {
namespace {

/// An item with its instrument and its staff in the file.
struct PlacedItem {
  float instrument = 0;
  int staff = 0;
  const ModelItem* model = nullptr;
  bool isReplaced = false;
};

/// The items in their order. Those that others replace take part, and are left out then.
std::vector<PlacedItem> sorted(std::vector<PlacedItem> placed) {
  std::sort(placed.begin(), placed.end(), [](const auto& a, const auto& b) { return a.model->order < b.model->order; });
  std::vector<OrderKey> keys;
  keys.reserve(placed.size());
  for (const PlacedItem& item : placed) {
    keys.push_back({item.instrument, item.model->item[par::position], item.model->item[par::height]});
  }
  std::vector<PlacedItem> inOrder;
  for (const std::size_t i : orderOf(keys)) {
    if (!placed[i].isReplaced) {
      inOrder.push_back(placed[i]);
    }
  }
  return inOrder;
}

/// The staff of an instrument in the file: the highest identifier is on staff 1.
int staffOf(float instrument, const std::vector<ModelStaff>& staves) {
  return 1 + static_cast<int>(std::count_if(staves.begin(), staves.end(),
                                            [&](const ModelStaff& staff) { return staff.instrument() > instrument; }));
}

Item braceOf(int staff, std::int16_t kind) {
  Item brace(ItemType::barline, static_cast<float>(staff), 0);
  brace[par::braceKind] = kind;
  brace[par::kind] = lowestBraceKind;
  return brace;
}

}  // namespace

/// Adds one to every staff of an instrument that has had one.
void SystemModel::addKnownBraces() {
  for (const ModelStaff& staff : staves_) {
    const auto brace = std::find_if(group_.braces.begin(), group_.braces.end(),
                                    [&](const auto& entry) { return entry.first == staff.instrument(); });
    if (brace != group_.braces.end()) {
      braces_.push_back(braceOf(staffOf(staff.instrument(), staves_), brace->second));
    }
  }
}

ExpectedPage SystemModel::page() const {
  ExpectedPage page;
  const ModelItem systemBarline{systemBarline_, {}, systemBarlineOrder_};
  std::vector<PlacedItem> placed;
  for (const ModelStaff& staff : staves_) {
    const int number = staffOf(staff.instrument(), staves_);
    for (const ModelItem& model : staff.items) {
      placed.push_back({staff.instrument(), number, &model});
    }
    for (const ModelItem& barline : staff.barlines) {
      page.barlines += barline.origin.isInput() ? 1U : 0U;
      placed.push_back({staff.instrument(), number, &barline, true});
    }
    if (staff.number == 1) {
      placed.push_back({staff.instrument(), 1, &systemBarline});
    }
  }
  placed = sorted(std::move(placed));
  std::vector<ModelItem> braces;
  braces.reserve(braces_.size());
  for (const Item& brace : braces_) {
    braces.push_back({brace, {}, 0});
    placed.push_back({0, static_cast<int>(brace[par::staff]), &braces.back()});
  }
  std::stable_sort(placed.begin(), placed.end(),
                   [](const PlacedItem& a, const PlacedItem& b) { return a.staff < b.staff; });
  page.items.reserve(placed.size());
  for (const PlacedItem& placedItem : placed) {
    Item item = placedItem.model->item;
    item[par::staff] = static_cast<float>(placedItem.staff);
    page.items.push_back({asWritten(std::move(item)), placedItem.model->origin});
  }
  return page;
}

}  // namespace kiv::proof
