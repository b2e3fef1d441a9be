#include "fuzz/support/expected_system.h"

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

namespace kiv::fuzz {
namespace {

constexpr std::size_t mostStaves = 32;  // that the writer writes

/// Whether it is a barline as long as its kind is no whole number, and a brace once the kind is rounded.
bool becomesBrace(const Item& item) {
  return isBarlineProper(item) && std::nearbyint(item[par::kind]) >= lowestBraceKind;
}

}  // namespace

ExpectedSystem expectedSystem(const std::vector<Record>& records, const std::set<std::int16_t>& instruments,
                              GroupInputs& inputs) {
  std::set<std::pair<std::string, std::int16_t>> sources;
  std::set<std::int16_t> numbers;
  std::set<float> present;
  std::set<std::int16_t> missing = instruments;
  ExpectedSystem system;
  for (const Record& record : records) {
    Items items = inputs.staff(record.file, record.staff);
    const auto staff = std::find_if(items.begin(), items.end(), isStaffItem);
    const bool isOnly = staff != items.end() && std::none_of(staff + 1, items.end(), isStaffItem);
    if (!isOnly || std::any_of(items.begin(), items.end(), becomesBrace) ||
        !sources.emplace(record.file, record.staff).second || !numbers.insert(record.newStaff).second ||
        !present.insert((*staff)[par::instrument]).second) {
      return {};
    }
    const float instrument = (*staff)[par::instrument];
    missing.erase(static_cast<std::int16_t>(std::lrint(instrument)));
    system.push_back({instrument, std::move(items)});
  }
  for (const std::int16_t instrument : missing) {
    system.push_back({static_cast<float>(instrument), std::nullopt});
  }
  if (system.size() > mostStaves) {
    return {};
  }
  std::sort(system.begin(), system.end(),
            [](const ExpectedStaff& one, const ExpectedStaff& other) { return one.instrument > other.instrument; });
  return system;
}

}  // namespace kiv::fuzz
