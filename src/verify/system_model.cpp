#include "verify/system_model.h"

#include <algorithm>
#include <cmath>
#include <set>

#include "verify/numbers.h"

namespace kiv::proof {
namespace {

bool isBarline(const Item& item) {
  return item.type() == ItemType::barline;
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

void SystemModel::addStaff(const Record& record, const std::vector<PageItem>& items) {
  ModelStaff staff;
  staff.number = record.newStaff;
  int staffItems = 0;
  for (const PageItem& read : items) {
    if (isBarline(read.item)) {
      staff.barlines.push_back(read.item);
      continue;
    }
    if (read.item.type() == ItemType::staff) {
      staff.staff = read.item;
      ++staffItems;
    }
    staff.items.push_back({read.item, {record.file, read.number}, order_++});
  }
  if (staffItems != 1) {
    fail("staff " + std::to_string(record.staff) + " of " + record.file + " has " + std::to_string(staffItems) +
         " staff items");
  } else if (staff.instrument() < 0 || roundedTo16Bits(staff.instrument()) != record.instrument) {
    fail("staff " + std::to_string(record.staff) + " of " + record.file + " is of instrument " +
         generalForm(staff.instrument()) + ", which the report calls " + std::to_string(record.instrument));
  }
  staves_.push_back(std::move(staff));
}

void SystemModel::complete(bool showNumbers) {
  numberFromOne();
  if (error_.empty()) {
    collectBars();
    group_.instruments.learn(staves_);
    collectBraces();
  }
  if (error_.empty()) {
    addMissingStaves();
  }
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

void SystemModel::collectBars() {
  const auto lowest = std::find_if(staves_.begin(), staves_.end(), [](const auto& staff) { return staff.number == 1; });
  for (const Item& barline : lowest->barlines) {
    if (barline[par::kind] < lowestBraceKind) {
      const auto kind = roundedTo16Bits(barline[par::kind]);
      if (!kind || std::isnan(barline[par::position])) {
        fail("a barline of its lowest staff is of no kind, or stands nowhere");
        return;
      }
      bars_.push_back({barline[par::position], kind.value_or(0)});
    }
  }
  const float left = lowest->staff[par::position];
  const bool closed = std::any_of(lowest->barlines.begin(), lowest->barlines.end(),
                                  [&](const Item& barline) { return barline[par::position] == left; });
  if (staves_.size() == 1 && !closed) {
    bars_.push_back({left, 0});
  }
  std::stable_sort(bars_.begin(), bars_.end(), [](const Bar& a, const Bar& b) { return a.position < b.position; });
  if (bars_.empty()) {
    fail("its lowest staff has no barline");
  }
}

void SystemModel::collectBraces() {
  for (const ModelStaff& staff : staves_) {
    for (const Item& brace : staff.barlines) {
      const bool known = std::any_of(group_.braces.begin(), group_.braces.end(),
                                     [&](const auto& entry) { return entry.first == staff.instrument(); });
      if (brace[par::kind] < lowestBraceKind || staff.instrument() == 0 || known) {
        continue;
      }
      const auto kind = roundedTo16Bits(brace[par::braceKind]);
      if (!kind) {
        fail("the kind of a brace is no number of 16 bits");
      }
      group_.braces.emplace_back(staff.instrument(), kind.value_or(0));
    }
  }
}

void SystemModel::addBarlines() {
  for (ModelStaff& staff : staves_) {
    const float reach = group_.instruments.barlineReach(staff.instrument());
    for (std::size_t b = 1; b < bars_.size(); ++b) {
      Item barline(ItemType::barline, 0, bars_[b].position);
      barline[par::spannedStaves] = 1;
      barline[par::kind] = bars_[b].kind;
      barline[par::spanCode] = reach;
      barline[par::spanSize] = reach == 1 ? 5.0F : 0.0F;
      add(staff, barline);
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
