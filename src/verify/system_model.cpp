#include "verify/system_model.h"

#include <algorithm>
#include <set>

#include "verify/item_order.h"
#include "verify/numbers.h"

namespace kiv::proof {
namespace {

bool isBarline(const Item& item) {
  return item.type() == ItemType::barline;
}

std::string numberOf(const ModelItem& model) {
  return "item " + std::to_string(model.origin.number) + " of " + (model.origin.isInput() ? *model.origin.file : "");
}

}  // namespace

void SystemModel::fail(const std::string& reason) {
  if (error_.empty()) {
    error_ = reason;
  }
}

void SystemModel::add(ModelStaff& staff, const Item& item) {
  staff.items.push_back({item, {}, order_++});
}

/// A barline that is there while staves are added, and that others replace.
void SystemModel::addReplaced(ModelStaff& staff, const Item& barline) {
  staff.barlines.push_back({barline, {}, order_++});
}

void SystemModel::addStaff(const Record& record, const std::string& file, const std::vector<PageItem>& items) {
  ModelStaff staff;
  staff.number = record.newStaff;
  staff.items.reserve(items.size() + 1);  // barlines and an identifier are added, as many barlines as left out
  int staffItems = 0;
  for (const PageItem& read : items) {
    if (isBarline(read.item)) {
      staff.barlines.push_back({read.item, {&file, read.number}, order_++});
      continue;
    }
    if (read.item.type() == ItemType::staff) {
      staff.staff = read.item;
      ++staffItems;
    }
    staff.items.push_back({read.item, {&file, read.number}, order_++});
  }
  if (staffItems != 1) {
    fail("staff " + std::to_string(record.staff) + " of " + file + " has " + std::to_string(staffItems) +
         " staff items");
  } else if (roundedTo16Bits(staff.instrument()) != record.instrument) {
    fail("staff " + std::to_string(record.staff) + " of " + file + " is of instrument " +
         generalForm(staff.instrument()) + ", which the report calls " + std::to_string(record.instrument));
  }
  staves_.push_back(std::move(staff));
}

void SystemModel::prepare() {
  numberFromOne();
  if (error_.empty()) {
    collectBars();
    group_.instruments.learn(staves_);
    collectBraces();
  }
}

void SystemModel::complete(bool showNumbers) {
  if (error_.empty()) {
    addMissingStaves();
  }
  finish(showNumbers);
  addKnownBraces();
}

/// Adds what all staves get.
void SystemModel::finish(bool showNumbers) {
  if (error_.empty()) {
    addBarlines();
  }
  if (error_.empty() && showNumbers) {
    addNumbers();
  }
}

void SystemModel::numberFromOne() {
  std::set<int> numbers;
  std::set<float> instruments;
  for (const ModelStaff& staff : staves_) {
    if (!numbers.insert(staff.number).second) {
      fail("it has two staves with the number " + std::to_string(staff.number));
    }
    if (!instruments.insert(staff.instrument()).second) {
      fail("it has two staves of instrument " + generalForm(staff.instrument()));
    }
  }
  for (ModelStaff& staff : staves_) {
    staff.number -= *numbers.begin() - 1;
  }
}

/// A staff that is the only one of its system gets the barline at its left end that it may lack.
void SystemModel::closeSingleStaff(ModelStaff& staff) {
  const float left = staff.staff[par::position];
  const bool closed = std::any_of(staff.barlines.begin(), staff.barlines.end(),
                                  [&](const ModelItem& barline) { return barline.item[par::position] == left; });
  if (!closed) {
    addReplaced(staff, barlineOf(staff, {left, 0}));
  }
}

void SystemModel::collectBars() {
  const auto lowest = std::find_if(staves_.begin(), staves_.end(), [](const auto& staff) { return staff.number == 1; });
  if (staves_.size() == 1) {
    closeSingleStaff(*lowest);
  }
  std::vector<Bar> bars;
  std::vector<OrderKey> keys;
  for (const ModelItem& model : lowest->barlines) {
    const Item& barline = model.item;
    if (barline[par::kind] < lowestBraceKind) {
      const auto kind = roundedTo16Bits(barline[par::kind]);
      if (!kind) {
        fail(numberOf(model) + " is a barline of a kind that 16 bits do not hold");
        return;
      }
      bars.push_back({barline[par::position], *kind});
      keys.push_back({0, barline[par::position], 0});
    }
  }
  for (const std::size_t i : orderOf(keys)) {
    bars_.push_back(bars[i]);
  }
  if (bars_.empty()) {
    fail("its lowest staff has no barline");
  }
}

void SystemModel::collectBraces() {
  for (const ModelStaff& staff : staves_) {
    for (const ModelItem& model : staff.barlines) {
      const Item& brace = model.item;
      const bool known = std::any_of(group_.braces.begin(), group_.braces.end(),
                                     [&](const auto& entry) { return entry.first == staff.instrument(); });
      const bool isBrace = brace[par::kind] >= lowestBraceKind;  // which a NaN is not
      if (!isBrace || staff.instrument() == 0 || known) {
        continue;
      }
      const auto kind = roundedTo16Bits(brace[par::braceKind]);
      if (!kind) {
        fail(numberOf(model) + " is a brace of a kind that 16 bits do not hold");
      }
      group_.braces.emplace_back(staff.instrument(), kind.value_or(0));
    }
  }
}

/// A barline of a single staff.
Item SystemModel::barlineOf(const ModelStaff& staff, const Bar& bar) const {
  const float reach = group_.instruments.barlineReach(staff.instrument());
  Item barline(ItemType::barline, 0, bar.position);
  barline[par::spannedStaves] = 1;
  barline[par::kind] = bar.kind;
  barline[par::spanCode] = reach;
  barline[par::spanSize] = reach == 1 ? 5.0F : 0.0F;
  return barline;
}

void SystemModel::addBarlines() {
  for (ModelStaff& staff : staves_) {
    for (std::size_t b = 1; b < bars_.size(); ++b) {
      add(staff, barlineOf(staff, bars_[b]));
    }
  }
  systemBarline_ = Item(ItemType::barline, 0, bars_.front().position);
  systemBarline_[par::spannedStaves] = static_cast<float>(staves_.size());
  systemBarline_[par::kind] = bars_.front().kind;
  systemBarlineOrder_ = order_++;
}

void SystemModel::addNumbers() {
  constexpr float leftOfStaff = 4;
  for (ModelStaff& staff : staves_) {
    Item number(ItemType::instrumentNumber, 0, staff.staff[par::position] - leftOfStaff);
    number[par::shownNumber] = staff.instrument();
    number[par::textSize] = 0.7F;
    add(staff, number);
  }
}

}  // namespace kiv::proof
