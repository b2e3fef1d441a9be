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
#include "mus/reader.h"
#include "mus/writer.h"
#include "shell/cmd_convert.h"
#include "shell/cmd_run.h"
#include "tests/properties/groups.h"
#include "tests/support/fake_host.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

// The same groups in every run, unless whoever runs the tests wants others.
[[maybe_unused]] const int seeded = ::setenv("RC_PARAMS", "seed=19940307 max_success=40", 0);

using Lines = std::multiset<std::string>;

std::string resultName(std::size_t system) {
  const std::string number = std::to_string(system);
  return "C:\\OUT\\WORK" + std::string(4 - number.size(), '0') + number + ".MUS";
}

/// What a press on Analyze and one on Convert make of a selection of pages.
class Conversion {
 public:
  explicit Conversion(const Group& group) {
    for (const auto& [name, text] : group.pages) {
      addInput(name, page(text));
    }
    run();
  }
  /// The conversion of all results of another.
  Conversion(const Conversion& before, bool showNumbers) {
    for (std::size_t system = 1; system <= before.systems(); ++system) {
      addInput("X" + std::to_string(100 + system) + ".MUS", before.result(system));
    }
    program_.panel.chkShowInstrNumber.checked = showNumbers;
    run();
  }

  std::size_t systems() const { return program_.systems.systemCount(); }
  /// The bytes of the page for a system, counted from 1.
  std::string result(std::size_t system) const { return host_.file(resultName(system)); }
  bool hasResult(std::size_t system) const { return host_.hasFile(resultName(system)); }
  /// The page for a system in a table that holds it until the next one is read.
  ItemTable& readResult(std::size_t system) {
    static ItemTable table;
    readFile(host_, resultName(system), table);
    return table;
  }
  /// The same for an input.
  const ItemTable& readInput(const std::string& name) {
    static ItemTable table;
    readFile(host_, folder_ + name, table);
    return table;
  }
  std::string writtenAgain(std::size_t system) { return encodePage(host_, resultName(system), readResult(system)); }
  std::string input(const std::string& name) const { return host_.file(folder_ + name); }

 private:
  void addInput(const std::string& name, const std::string& bytes) {
    host_.addFile(folder_ + name, bytes);
    names_ += folder_ + name + " 1\r\n";
  }

  void run() {
    host_.addFile("C:\\N.TXT", names_);
    program_.settings.namesFile = "C:\\N.TXT";
    program_.settings.commandLine = "CALLEDBY=KIV,FUNCTION=MAIN";
    press(cmdRun_Click);
    program_.panel.txtFirstResultFile.text = resultName(1);
    press(cmdConvert_Click);
  }
  void press(void (*button)(KivSystem&)) {
    // A group that qualifies as it stands ends the program in order.
    if (endOf([&] { button(program_); }).value_or(0) != 0) {
      RC_FAIL(host_.messages.back().text);
    }
  }
  const std::string folder_ = "C:\\M\\";
  FakeHost host_;
  KivSystem program_{host_};
  std::string names_;
};

std::string lineOf(const Item& item) {
  std::string line;
  for (int p = 1; p <= parameterCount; ++p) {
    const float value = item.par[static_cast<std::size_t>(p)];
    line += value != 0 ? "P" + std::to_string(p) + "=" + exactNumber(value) + " " : "";
  }
  return line + "\"" + item.text + "\"";
}

/// Item i without its staff number; without P4 too, if it is a staff.
Item withoutStaff(const ItemTable& table, int i) {
  Item item;
  for (int p = 1; p <= parameterCount; ++p) {
    const bool left = p != par::staff && !(isStaff(table, i) && p == par::writtenAsZero);
    item.par[static_cast<std::size_t>(p)] = left ? table.itemPar(i, p) : 0;
  }
  item.text = table.itemText(i);
  return item;
}

/// All items of a staff but its barlines.
Lines itemsOf(const ItemTable& table, int staff) {
  Lines lines;
  for (int i = 1; i <= table.itemCount(); ++i) {
    if (table.itemPar(i, par::staff) == static_cast<float>(staff) && table.itemPar(i, par::type) != type::barline) {
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
      Item number;
      number.par[par::type] = type::instrumentNumber;
      number.par[par::position] = table.itemPar(i, par::position) - 4;
      number.par[par::shownNumber] = table.itemPar(i, par::instrument);
      number.par[par::textSize] = 0.7F;
      lines.insert(lineOf(number));
    }
  }
  return lines;
}

/// The instruments of the staves 1, 2, 3 ... An item of a staff that has no staff item, or has several, spoils it.
std::vector<int> layoutOf(const ItemTable& table) {
  constexpr int spoilt = -1;
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
    layout.push_back(isNext && instruments.size() == 1 ? instruments.front() : spoilt);
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

/// The barlines of a staff that span so many staves; braces and brackets are none.
Bars barlinesOf(const ItemTable& table, int staff, std::size_t spanned) {
  Bars bars;
  for (int i = 1; i <= table.itemCount(); ++i) {
    if (table.itemPar(i, par::type) == type::barline && table.itemPar(i, par::kind) < lowestBraceKind &&
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
    if (table.itemPar(i, par::type) == type::barline && table.itemPar(i, par::staff) == static_cast<float>(staff) &&
        table.itemPar(i, par::kind) >= lowestBraceKind) {
      ++braces;
    }
  }
  return braces;
}

std::multiset<float> positionsOf(const ItemTable& table, int staff, const std::set<float>& types) {
  std::multiset<float> positions;
  for (int i = 1; i <= table.itemCount(); ++i) {
    if (table.itemPar(i, par::staff) == static_cast<float>(staff) && types.contains(table.itemPar(i, par::type))) {
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
  Conversion conversion(group);
  RC_ASSERT(conversion.systems() == group.systems.size());
  RC_ASSERT(!conversion.hasResult(group.systems.size() + 1));
  for (std::size_t system = 1; system <= group.systems.size(); ++system) {
    RC_ASSERT(layoutOf(conversion.readResult(system)) == allInstruments(group));
  }
}

RC_GTEST_PROP(ConversionProperty, AStaffKeepsItsItemsAndGetsNothingButItsNumberAndBarlines, ()) {
  const auto group = *groups(2);
  Conversion conversion(group);
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
  Conversion conversion(group);
  const auto layout = allInstruments(group);
  for (std::size_t system = 0; system < group.systems.size(); ++system) {
    const ItemTable& result = conversion.readResult(system + 1);
    const PlacedStaff& top = topStaffOf(group.systems[system]);
    const auto beats = positionsOf(conversion.readInput(top.file), top.staff, {type::note, type::rest});
    for (const int instrument : layout) {
      const int staff = staffOf(instrument, layout);
      if (group.systems[system].contains(instrument)) {
        continue;
      }
      const auto rests = positionsOf(result, staff, {type::note, type::rest});
      RC_ASSERT(rests.size() == barlinesOf(result, staff, 1).size());
      RC_ASSERT(std::all_of(rests.begin(), rests.end(), [&](float rest) { return beats.contains(rest); }));
    }
  }
}

RC_GTEST_PROP(ConversionProperty, EveryStaffOfAResultHasTheSameBarsAndOneBarlineHoldsThemTogether, ()) {
  const auto group = *groups(4);
  Conversion conversion(group);
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
  Conversion conversion(group);
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
  Conversion conversion(group);
  for (std::size_t system = 1; system <= group.systems.size(); ++system) {
    RC_ASSERT(conversion.writtenAgain(system) == conversion.result(system));
  }
}

RC_GTEST_PROP(ConversionProperty, ConvertingTheResultsChangesNoLayout, ()) {
  const auto group = *groups(6);
  Conversion conversion(group);
  Conversion again(conversion, true);
  RC_ASSERT(again.systems() == conversion.systems());
  for (std::size_t system = 1; system <= group.systems.size(); ++system) {
    RC_ASSERT(layoutOf(again.readResult(system)) == layoutOf(conversion.readResult(system)));
  }
}

RC_GTEST_PROP(ConversionProperty, ConvertingThemOnceMoreChangesNothing, ()) {
  const auto group = *groups(7);
  const Conversion conversion(group);
  const Conversion again(conversion, false);
  const Conversion onceMore(again, false);
  for (std::size_t system = 1; system <= group.systems.size(); ++system) {
    RC_ASSERT(onceMore.result(system) == again.result(system));
  }
}

RC_GTEST_PROP(ConversionProperty, InputsAreNotTouched, ()) {
  const auto group = *groups(8);
  const Conversion conversion(group);
  for (const auto& [name, text] : group.pages) {
    RC_ASSERT(conversion.input(name) == page(text));
  }
}

}  // namespace
}  // namespace kiv::test
