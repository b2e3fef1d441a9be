#include <algorithm>
#include <cstdlib>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "base/exact_number.h"
#include "tests/properties/group_conversion.h"
#include "tests/properties/groups.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

// The same groups in every run, unless whoever runs the tests wants others.
[[maybe_unused]] const int seeded = ::setenv("RC_PARAMS", "seed=19940307 max_success=40", 0);

using Lines = std::multiset<std::string>;

std::string lineOf(const Item& item) {
  std::string line;
  for (int p = 1; p <= parameterCount; ++p) {
    const float value = item[p];
    line += value != 0 ? "P" + std::to_string(p) + "=" + exactNumber(value) + " " : "";
  }
  return line + "\"" + item.text + "\"";
}

/// Item i without its staff number; without P4 too, if it is a staff.
Item withoutStaff(const ItemTable& table, int i) {
  Item item = table.item(i);
  item[par::staff] = 0;
  if (isStaff(table, i)) {
    item[par::writtenAsZero] = 0;
  }
  return item;
}

/// All items of a staff but its barlines.
Lines itemsOf(const ItemTable& table, int staff) {
  Lines lines;
  for (int i = 1; i <= table.itemCount(); ++i) {
    if (table.itemPar(i, par::staff) == static_cast<float>(staff) && table.type(i) != ItemType::barline) {
      lines.insert(lineOf(withoutStaff(table, i)));
    }
  }
  return lines;
}

/// The items that show the instruments of a staff's staff items.
Lines numbersOf(const ItemTable& table, int staff) {
  Lines lines;
  for (int i = 1; i <= table.itemCount(); ++i) {
    if (isStaff(table, i) && table.itemPar(i, par::staff) == static_cast<float>(staff)) {
      Item number(ItemType::instrumentNumber, 0, table.itemPar(i, par::position) - 4);
      number[par::shownNumber] = table.itemPar(i, par::instrument);
      number[par::textSize] = 0.7F;
      lines.insert(lineOf(number));
    }
  }
  return lines;
}

/// The instruments of the staves 1, 2, 3 ... A staff without a staff item, or with several, makes it invalid.
std::vector<int> layoutOf(const ItemTable& table) {
  constexpr int invalid = -1;
  std::map<int, std::vector<int>> staves;
  for (int i = 1; i <= table.itemCount(); ++i) {
    auto& staff = staves[static_cast<int>(table.itemPar(i, par::staff))];
    if (isStaff(table, i)) {
      staff.push_back(static_cast<int>(table.itemPar(i, par::instrument)));
    }
  }
  std::vector<int> layout;
  for (const auto& [number, instruments] : staves) {
    const bool isNext = number == static_cast<int>(layout.size()) + 1;
    layout.push_back(isNext && instruments.size() == 1 ? instruments.front() : invalid);
  }
  return layout;
}

std::vector<int> allInstruments(const Group& group) {
  std::set<int, std::greater<>> instruments;
  for (const auto& system : group.systems) {
    for (const auto& [instrument, place] : system) {
      instruments.insert(instrument);
    }
  }
  return {instruments.begin(), instruments.end()};
}

/// The staff of an instrument in a result, counted from 1.
int staffOf(int instrument, const std::vector<int>& layout) {
  return static_cast<int>(std::find(layout.begin(), layout.end(), instrument) - layout.begin()) + 1;
}

using Bars = std::multiset<std::pair<float, float>>;  // position and kind

/// The barlines of a staff that span this number of staves, without braces and brackets.
Bars barlinesOf(const ItemTable& table, int staff, std::size_t spanned) {
  Bars bars;
  for (int i = 1; i <= table.itemCount(); ++i) {
    if (table.type(i) == ItemType::barline && table.itemPar(i, par::kind) < lowestBraceKind &&
        table.itemPar(i, par::staff) == static_cast<float>(staff) &&
        table.itemPar(i, par::spannedStaves) == static_cast<float>(spanned)) {
      bars.insert({table.itemPar(i, par::position), table.itemPar(i, par::kind)});
    }
  }
  return bars;
}

int bracesOf(const ItemTable& table, int staff) {
  int braces = 0;
  for (int i = 1; i <= table.itemCount(); ++i) {
    if (table.type(i) == ItemType::barline && table.itemPar(i, par::staff) == static_cast<float>(staff) &&
        table.itemPar(i, par::kind) >= lowestBraceKind) {
      ++braces;
    }
  }
  return braces;
}

/// The positions of the notes and rests of a staff.
std::multiset<float> beatsOf(const ItemTable& table, int staff) {
  std::multiset<float> positions;
  for (int i = 1; i <= table.itemCount(); ++i) {
    const bool isBeat = table.type(i) == ItemType::note || table.type(i) == ItemType::rest;
    if (isBeat && table.itemPar(i, par::staff) == static_cast<float>(staff)) {
      positions.insert(table.itemPar(i, par::position));
    }
  }
  return positions;
}

const PlacedStaff& topStaffOf(const std::map<int, PlacedStaff>& system) {
  return std::min_element(system.begin(), system.end(),
                          [](const auto& one, const auto& other) {
                            const PlacedStaff& a = one.second;
                            const PlacedStaff& b = other.second;
                            return std::pair(a.file, -a.staff) < std::pair(b.file, -b.staff);
                          })
      ->second;
}

RC_GTEST_PROP(ConversionProperty, ThereIsAResultForEverySystemWithAllInstrumentsInOneOrder, ()) {
  const auto group = *groups(1);
  GroupConversion conversion(group);
  RC_ASSERT(conversion.systems() == group.systems.size());
  RC_ASSERT(!conversion.hasResult(group.systems.size() + 1));
  for (std::size_t system = 1; system <= group.systems.size(); ++system) {
    RC_ASSERT(layoutOf(conversion.readResult(system)) == allInstruments(group));
  }
}

RC_GTEST_PROP(ConversionProperty, AStaffKeepsItsItemsAndGetsNothingButItsNumberAndBarlines, ()) {
  const auto group = *groups(2);
  GroupConversion conversion(group);
  const auto layout = allInstruments(group);
  for (std::size_t system = 0; system < group.systems.size(); ++system) {
    const ItemTable& result = conversion.readResult(system + 1);
    for (const auto& [instrument, place] : group.systems[system]) {
      const ItemTable& input = conversion.readInput(place.file);
      Lines expected = itemsOf(input, place.staff);
      expected.merge(numbersOf(input, place.staff));
      RC_ASSERT(itemsOf(result, staffOf(instrument, layout)) == expected);
    }
  }
}

RC_GTEST_PROP(ConversionProperty, AMissingInstrumentRestsUnderABeatOfTheTopStaffInEveryBar, ()) {
  const auto group = *groups(3);
  GroupConversion conversion(group);
  const auto layout = allInstruments(group);
  for (std::size_t system = 0; system < group.systems.size(); ++system) {
    const ItemTable& result = conversion.readResult(system + 1);
    const PlacedStaff& top = topStaffOf(group.systems[system]);
    const auto beats = beatsOf(conversion.readInput(top.file), top.staff);
    for (const int instrument : layout) {
      const int staff = staffOf(instrument, layout);
      if (group.systems[system].contains(instrument)) {
        continue;
      }
      const auto rests = beatsOf(result, staff);
      RC_ASSERT(rests.size() == barlinesOf(result, staff, 1).size());
      RC_ASSERT(std::all_of(rests.begin(), rests.end(), [&](float rest) { return beats.contains(rest); }));
    }
  }
}

RC_GTEST_PROP(ConversionProperty, EveryStaffOfAResultHasTheSameBarsAndOneBarlineHoldsThemTogether, ()) {
  const auto group = *groups(4);
  GroupConversion conversion(group);
  const std::size_t staves = allInstruments(group).size();
  RC_PRE(staves > 1);
  for (std::size_t system = 1; system <= group.systems.size(); ++system) {
    const ItemTable& result = conversion.readResult(system);
    RC_ASSERT(barlinesOf(result, 1, staves).size() == 1);
    for (std::size_t staff = 2; staff <= staves; ++staff) {
      RC_ASSERT(barlinesOf(result, static_cast<int>(staff), 1) == barlinesOf(result, 1, 1));
      RC_ASSERT(barlinesOf(result, static_cast<int>(staff), staves).empty());
    }
  }
}

RC_GTEST_PROP(ConversionProperty, AnInstrumentHasABraceFromTheFirstSystemOnInWhichItHadOne, ()) {
  const auto group = *groups(9);
  GroupConversion conversion(group);
  const auto layout = allInstruments(group);
  std::set<int> braced;
  for (std::size_t system = 0; system < group.systems.size(); ++system) {
    for (const auto& [instrument, place] : group.systems[system]) {
      if (instrument != 0 && bracesOf(conversion.readInput(place.file), place.staff) > 0) {
        braced.insert(instrument);
      }
    }
    const ItemTable& result = conversion.readResult(system + 1);
    for (const int instrument : layout) {
      RC_ASSERT(bracesOf(result, staffOf(instrument, layout)) == (braced.contains(instrument) ? 1 : 0));
    }
  }
}

RC_GTEST_PROP(ConversionProperty, AResultThatIsReadAndWrittenAgainIsTheSame, ()) {
  const auto group = *groups(5);
  GroupConversion conversion(group);
  for (std::size_t system = 1; system <= group.systems.size(); ++system) {
    RC_ASSERT(conversion.writtenAgain(system) == conversion.result(system));
  }
}

RC_GTEST_PROP(ConversionProperty, ConvertingTheResultsChangesNoLayout, ()) {
  const auto group = *groups(6);
  GroupConversion conversion(group);
  GroupConversion again(conversion, true);
  RC_ASSERT(again.systems() == conversion.systems());
  for (std::size_t system = 1; system <= group.systems.size(); ++system) {
    RC_ASSERT(layoutOf(again.readResult(system)) == layoutOf(conversion.readResult(system)));
  }
}

RC_GTEST_PROP(ConversionProperty, ConvertingThemOnceMoreChangesNothing, ()) {
  const auto group = *groups(7);
  const GroupConversion conversion(group);
  const GroupConversion again(conversion, false);
  const GroupConversion onceMore(again, false);
  for (std::size_t system = 1; system <= group.systems.size(); ++system) {
    RC_ASSERT(onceMore.result(system) == again.result(system));
  }
}

RC_GTEST_PROP(ConversionProperty, InputsAreNotTouched, ()) {
  const auto group = *groups(8);
  const GroupConversion conversion(group);
  for (const auto& [name, text] : group.pages) {
    RC_ASSERT(conversion.input(name) == page(text));
  }
}

}  // namespace
}  // namespace kiv::test
