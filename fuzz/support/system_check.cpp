#include "fuzz/support/system_check.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "fuzz/support/expect.h"

namespace kiv::fuzz {
namespace {

/// The item that shows the instrument at a staff.
Item numberAt(const Item& staff) {
  Item number(ItemType::instrumentNumber, 0, staff[par::position] - 4);
  number[par::shownNumber] = staff[par::instrument];
  number[par::textSize] = 0.7F;
  return number;
}

/// A staff of the input has all its items but the barlines, and nothing new but its number.
void checkKept(const Items& input, Items result, bool showsNumber) {
  Items expected;
  for (const Item& item : input) {
    if (item.type() != ItemType::barline) {
      expected.push_back(asReadAgain(item));
    }
    if (item.type() == ItemType::staff && showsNumber) {
      expected.push_back(numberAt(item));
    }
  }
  std::sort(expected.begin(), expected.end(), isBefore);
  std::sort(result.begin(), result.end(), isBefore);
  expect(std::equal(expected.begin(), expected.end(), result.begin(), result.end(), sameItem),
         "a staff keeps its items and gets nothing but its number");
}

/// A generated staff has a staff item, a clef, at most one key signature, and a rest in every bar.
void checkGenerated(float instrument, const Items& result, std::size_t bars, bool showsNumber) {
  const auto count = [&](ItemType type) {
    return static_cast<std::size_t>(
        std::count_if(result.begin(), result.end(), [type](const Item& item) { return item.type() == type; }));
  };
  const std::size_t keys = count(ItemType::keySignature);
  expect(count(ItemType::staff) == 1 && count(ItemType::clef) == 1 && keys <= 1, "a new staff begins as a staff does");
  expect(count(ItemType::rest) == bars, "a new staff rests in every bar");
  expect(count(ItemType::instrumentNumber) == (showsNumber ? 1U : 0U), "a new staff shows its number");
  const std::size_t known = 2 + keys + bars + count(ItemType::timeSignature) + (showsNumber ? 1 : 0);
  expect(result.size() == known, "a new staff has nothing else");
  const auto staff = std::find_if(result.begin(), result.end(), isStaffItem);
  expect((*staff)[par::instrument] == instrument && (*staff)[par::mark] == 0, "a new staff is its instrument's");
}

using Bars = std::vector<std::pair<float, float>>;  // position and kind

bool sameBars(const Bars& one, const Bars& other) {
  return std::equal(one.begin(), one.end(), other.begin(), other.end(), [](const auto& a, const auto& b) {
    return sameNumber(a.first, b.first) && sameNumber(a.second, b.second);
  });
}

/// Every staff has the same barlines in the same order, and the first one the system's in addition. Where there is but
/// one staff, that is one more of its own kind.
Bars checkBars(const std::vector<Items>& staves) {
  std::vector<Bars> own(staves.size());
  std::size_t systemBarlines = 0;
  for (std::size_t s = 0; s < staves.size(); ++s) {
    for (const Item& item : staves[s]) {
      if (!isBarlineProper(item)) {
        continue;
      }
      if (item[par::spannedStaves] == 1) {
        own[s].emplace_back(item[par::position], item[par::kind]);
      } else {
        const bool spansAll = s == 0 && item[par::spannedStaves] == static_cast<float>(staves.size());
        expect(spansAll, "a barline spans one staff or all of them");
        ++systemBarlines;
      }
    }
  }
  expect(systemBarlines == (staves.size() == 1 ? 0U : 1U), "one barline holds the system together");
  for (const Bars& bars : own) {
    expect(sameBars(bars, own.front()), "all staves have the same bars");
  }
  if (staves.size() == 1) {
    expect(!own.front().empty(), "a single staff has the barline at its left");
    own.front().pop_back();
  }
  return own.front();
}

}  // namespace

void checkSystem(const ExpectedSystem& system, const Items& result, bool showsNumbers) {
  std::vector<Items> staves(system.size());
  for (const Item& item : result) {
    const float staff = item[par::staff];
    expect(staff >= 1 && staff <= static_cast<float>(system.size()), "a result has the staves of its system alone");
    staves[static_cast<std::size_t>(staff) - 1].push_back(item);
    staves[static_cast<std::size_t>(staff) - 1].back()[par::staff] = 0;
  }
  const Bars bars = checkBars(staves);
  for (std::size_t s = 0; s < system.size(); ++s) {
    std::erase_if(staves[s], [](const Item& item) { return item.type() == ItemType::barline; });
    if (system[s].items) {
      checkKept(*system[s].items, std::move(staves[s]), showsNumbers);
    } else {
      checkGenerated(system[s].instrument, staves[s], bars.size(), showsNumbers);
    }
  }
}

}  // namespace kiv::fuzz
