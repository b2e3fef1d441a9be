#include "verify/system_model.h"

#include <algorithm>
#include <cmath>
#include <set>

#include "base/number.h"

namespace kiv::proof {
namespace {

Item itemOf(float type, float position) {
  Item item;
  item.par[par::type] = type;
  item.par[par::position] = position;
  return item;
}

bool isBarline(const Item& item) {
  return item.par[par::type] == type::barline;
}

}  // namespace

void SystemModel::refuse(const std::string& reason) {
  if (trouble_.empty()) {
    trouble_ = reason;
  }
}

void SystemModel::add(ModelStaff& staff, const Item& item) {
  staff.items.push_back({item, {}, order_++});
}

void SystemModel::carry(const Record& record, const std::vector<PageItem>& items) {
  ModelStaff staff;
  staff.number = record.newStaff;
  int staffItems = 0;
  for (const PageItem& read : items) {
    if (isBarline(read.item)) {
      staff.barlines.push_back(read.item);
      continue;
    }
    if (read.item.par[par::type] == type::staff) {
      staff.staff = read.item;
      ++staffItems;
    }
    staff.items.push_back({read.item, {record.file, read.number}, order_++});
  }
  if (staffItems != 1) {
    refuse("staff " + std::to_string(record.staff) + " of " + record.file + " has " + std::to_string(staffItems) +
           " staff items");
  } else if (staff.instrument() < 0 || toInt16(staff.instrument()) != record.instrument) {
    refuse("staff " + std::to_string(record.staff) + " of " + record.file + " is of instrument " +
           generalNumber(staff.instrument()) + ", which the report calls " + std::to_string(record.instrument));
  }
  staves_.push_back(std::move(staff));
}

void SystemModel::complete(bool showNumbers) {
  numberFromOne();
  if (trouble_.empty()) {
    collectBars();
    run_.instruments.learn(staves_);
    collectBraces();
  }
  if (trouble_.empty()) {
    addMissing();
  }
  if (trouble_.empty()) {
    addBarlines();
  }
  if (trouble_.empty() && showNumbers) {
    addNumbers();
  }
}

void SystemModel::numberFromOne() {
  std::set<int> numbers;
  std::set<float> instruments;
  for (const ModelStaff& staff : staves_) {
    if (!numbers.insert(staff.number).second) {
      refuse("it has two staves with the number " + std::to_string(staff.number));
    }
    if (!instruments.insert(staff.instrument()).second) {
      refuse("it has two staves of instrument " + generalNumber(staff.instrument()));
    }
  }
  for (ModelStaff& staff : staves_) {
    staff.number -= *numbers.begin() - 1;
  }
}

void SystemModel::collectBars() {
  const auto lowest = std::find_if(staves_.begin(), staves_.end(), [](const auto& staff) { return staff.number == 1; });
  for (const Item& barline : lowest->barlines) {
    if (barline.par[par::kind] < lowestBraceKind) {
      const auto kind = toInt16(barline.par[par::kind]);
      if (!kind || std::isnan(barline.par[par::position])) {
        refuse("a barline of its lowest staff is of no kind, or stands nowhere");
        return;
      }
      bars_.push_back({barline.par[par::position], kind.value_or(0)});
    }
  }
  const float left = lowest->staff.par[par::position];
  const bool closed = std::any_of(lowest->barlines.begin(), lowest->barlines.end(),
                                  [&](const Item& barline) { return barline.par[par::position] == left; });
  if (staves_.size() == 1 && !closed) {
    bars_.push_back({left, 0});
  }
  std::stable_sort(bars_.begin(), bars_.end(), [](const Bar& a, const Bar& b) { return a.position < b.position; });
  if (bars_.empty()) {
    refuse("its lowest staff has no barline");
  }
}

void SystemModel::collectBraces() {
  for (const ModelStaff& staff : staves_) {
    for (const Item& brace : staff.barlines) {
      const bool known = std::any_of(run_.braces.begin(), run_.braces.end(),
                                     [&](const auto& entry) { return entry.first == staff.instrument(); });
      if (brace.par[par::kind] < lowestBraceKind || staff.instrument() == 0 || known) {
        continue;
      }
      const auto kind = toInt16(brace.par[par::braceKind]);
      if (!kind) {
        refuse("the kind of a brace is no number of 16 bits");
      }
      run_.braces.emplace_back(staff.instrument(), kind.value_or(0));
    }
  }
}

void SystemModel::addBarlines() {
  for (ModelStaff& staff : staves_) {
    const float reach = run_.instruments.barlineReach(staff.instrument());
    for (std::size_t b = 1; b < bars_.size(); ++b) {
      Item barline = itemOf(type::barline, bars_[b].position);
      barline.par[par::spannedStaves] = 1;
      barline.par[par::kind] = bars_[b].kind;
      barline.par[par::spanCode] = reach;
      barline.par[par::spanSize] = reach == 1 ? 5.0F : 0.0F;
      add(staff, barline);
    }
  }
  systemBarline_ = itemOf(type::barline, bars_.front().position);
  systemBarline_.par[par::spannedStaves] = static_cast<float>(staves_.size());
  systemBarline_.par[par::kind] = bars_.front().kind;
  systemBarlineOrder_ = order_++;
}

void SystemModel::addNumbers() {
  constexpr float leftOfStaff = 4;
  for (ModelStaff& staff : staves_) {
    Item number = itemOf(type::instrumentNumber, staff.staff.par[par::position] - leftOfStaff);
    number.par[par::shownNumber] = staff.instrument();
    number.par[par::textSize] = 0.7F;
    add(staff, number);
  }
}

}  // namespace kiv::proof
