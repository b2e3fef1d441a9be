#include "fuzz/support/conversion_check.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "analysis/report.h"
#include "analysis/verdict.h"
#include "base/number.h"
#include "fuzz/support/expect.h"
#include "fuzz/support/items.h"
#include "fuzz/support/report_view.h"
#include "mus/page_walker.h"
#include "mus/reader.h"
#include "mus/writer.h"

namespace kiv::fuzz {
namespace {

constexpr std::size_t mostStaves = 32;  // that the writer writes
constexpr float hidden = -1;

using Items = std::vector<Item>;

float par(const Item& item, int p) {
  return item.par[static_cast<std::size_t>(p)];
}

bool isA(const Item& item, float type) {
  return par(item, par::type) == type;
}

bool isBarlineProper(const Item& item) {
  return isA(item, type::barline) && par(item, par::kind) < lowestBraceKind;
}

/// Whether it is a barline as long as its kind is no whole number, and a brace from then on.
bool becomesBrace(const Item& item) {
  return isBarlineProper(item) && std::nearbyint(par(item, par::kind)) >= lowestBraceKind;
}

/// The decoded input files, each decoded when it is first asked for.
class Inputs {
 public:
  explicit Inputs(const Group& group) : group_(group), decoded_(group.files.size()) {}

  /// Whether the writer can write all items of a staff so that they can be read.
  bool isReadableAgain(const std::string& file, std::int16_t staff) {
    const Items& items = all(file);
    return std::all_of(items.begin(), items.end(), [staff](const Item& item) {
      return par(item, par::staff) != static_cast<float>(staff) || fuzz::isReadableAgain(item);
    });
  }

  /// The items of a staff, without its number.
  Items staff(const std::string& file, std::int16_t staff) {
    Items items;
    for (const Item& item : all(file)) {
      if (par(item, par::staff) == static_cast<float>(staff)) {
        items.push_back(item);
        items.back().par[par::staff] = 0;
      }
    }
    return items;
  }

 private:
  const Items& all(const std::string& name) {
    for (std::size_t i = 0; i < group_.files.size(); ++i) {
      if (group_.files[i].name == name) {
        if (!decoded_[i]) {
          decoded_[i] = itemsOf(group_.files[i].bytes);
          expect(decoded_[i].has_value(), "a conversion in good order has read only whole pages");
        }
        return *decoded_[i];
      }
    }
    expect(false, "the report names files of the group");
    return *decoded_.front();
  }

  const Group& group_;
  std::vector<std::optional<Items>> decoded_;
};

/// One staff of a result: what is to be found on it.
struct ExpectedStaff {
  float instrument = 0;
  std::optional<Items> items;  ///< of the input, without staff numbers; none of a staff that was made
};

using ExpectedSystem = std::vector<ExpectedStaff>;

/// The staves of a system in the order of its result, the highest instrument first. An empty system is one of which no
/// more is promised than that it can be read, because of one of these:
/// - two records name one staff, or are to become one;
/// - on a staff of the report there is no staff item in its file, or several;
/// - two staves are of one instrument;
/// - a barline becomes a brace;
/// - there are more staves than the writer writes.
ExpectedSystem expectedSystem(const std::vector<Record>& records, const std::set<std::int16_t>& instruments,
                              Inputs& inputs) {
  std::set<std::pair<std::string, std::int16_t>> places;
  std::set<std::int16_t> numbers;
  std::set<float> present;
  std::set<std::int16_t> missing = instruments;
  ExpectedSystem system;
  for (const Record& record : records) {
    Items items = inputs.staff(record.file, record.staff);
    const auto staff =
        std::find_if(items.begin(), items.end(), [](const Item& item) { return isA(item, type::staff); });
    const bool isOnly = staff != items.end() &&
                        std::none_of(staff + 1, items.end(), [](const Item& item) { return isA(item, type::staff); });
    if (!isOnly || std::any_of(items.begin(), items.end(), becomesBrace) ||
        !places.emplace(record.file, record.staff).second || !numbers.insert(record.newStaff).second ||
        !present.insert(par(*staff, par::instrument)).second) {
      return {};
    }
    const float instrument = par(*staff, par::instrument);
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

/// The item that shows the instrument at a staff.
Item numberAt(const Item& staff) {
  Item number;
  number.par[par::type] = type::instrumentNumber;
  number.par[par::position] = par(staff, par::position) - 4;
  number.par[par::shownNumber] = par(staff, par::instrument);
  number.par[par::textSize] = 0.7F;
  return number;
}

/// A staff of the input has all its items but the barlines, and nothing new but its number.
void checkKept(const Items& input, Items result, bool showsNumber) {
  Items expected;
  for (const Item& item : input) {
    if (!isA(item, type::barline)) {
      expected.push_back(asReadAgain(item));
    }
    if (isA(item, type::staff) && showsNumber) {
      expected.push_back(numberAt(item));
    }
  }
  std::sort(expected.begin(), expected.end(), isBefore);
  std::sort(result.begin(), result.end(), isBefore);
  expect(std::equal(expected.begin(), expected.end(), result.begin(), result.end(), sameItem),
         "a staff keeps its items and gets nothing but its number");
}

/// A staff that was made has a staff item, a clef, at most one key signature, and a rest in every bar.
void checkMade(float instrument, const Items& result, std::size_t bars, bool showsNumber) {
  const auto count = [&](float type) {
    return static_cast<std::size_t>(
        std::count_if(result.begin(), result.end(), [type](const Item& item) { return isA(item, type); }));
  };
  const std::size_t keys = count(type::keySignature);
  expect(count(type::staff) == 1 && count(type::clef) == 1 && keys <= 1, "a new staff is begun as a staff is");
  expect(count(type::rest) == bars, "a new staff rests in every bar");
  expect(count(type::instrumentNumber) == (showsNumber ? 1U : 0U), "a new staff shows its number");
  const std::size_t known = 2 + keys + bars + count(type::timeSignature) + (showsNumber ? 1 : 0);
  expect(result.size() == known, "a new staff has nothing else");
  const auto staff =
      std::find_if(result.begin(), result.end(), [](const Item& item) { return isA(item, type::staff); });
  expect(par(*staff, par::instrument) == instrument && par(*staff, par::mark) == 0, "a new staff is its instrument's");
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
      if (par(item, par::spannedStaves) == 1) {
        own[s].emplace_back(par(item, par::position), par(item, par::kind));
      } else {
        const bool spansAll = s == 0 && par(item, par::spannedStaves) == static_cast<float>(staves.size());
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

void checkSystem(const ExpectedSystem& system, const Items& result, bool showsNumbers) {
  std::vector<Items> staves(system.size());
  for (const Item& item : result) {
    const float staff = par(item, par::staff);
    expect(staff >= 1 && staff <= static_cast<float>(system.size()), "a result has the staves of its system alone");
    staves[static_cast<std::size_t>(staff) - 1].push_back(item);
    staves[static_cast<std::size_t>(staff) - 1].back().par[par::staff] = 0;
  }
  const Bars bars = checkBars(staves);
  for (std::size_t s = 0; s < system.size(); ++s) {
    std::erase_if(staves[s], [](const Item& item) { return isA(item, type::barline); });
    if (system[s].items) {
      checkKept(*system[s].items, std::move(staves[s]), showsNumbers);
    } else {
      checkMade(system[s].instrument, staves[s], bars.size(), showsNumbers);
    }
  }
}

/// A result that is read and written again is the same.
void checkWrittenAgain(MemoryHost& host, const std::string& name) {
  static ItemTable table;
  readFile(host, name, table);
  expect(encodePage(host, name, table) == *host.find(name), "a result that is read and written again is the same");
}

/// Whether the result can be read: a counted text of no characters makes it unreadable.
bool canBeRead(const std::vector<Record>& records, Inputs& inputs) {
  return std::all_of(records.begin(), records.end(),
                     [&](const Record& record) { return inputs.isReadableAgain(record.file, record.staff); });
}

}  // namespace

std::string resultName(const Group& group, int system) {
  const std::string number = std::to_string(system);
  return (group.besideInput ? "C:\\M\\WORK" : "C:\\OUT\\WORK") + std::string(4 - number.size(), '0') + number + ".MUS";
}

void checkAnalysis(const MemoryHost& host, const Group& group) {
  const std::vector<Record> records = recordsOf(*host.find(reportFile));
  std::size_t staves = 0;
  for (const Group::File& file : group.files) {
    PageWalker page(file.bytes);
    ReadStatus status = page.findItem();
    for (; status == ReadStatus::itemRead; status = page.findItem()) {
      staves += page.type() == type::staff && page.par(par::lines) != hidden ? 1U : 0U;
    }
    expect(status == ReadStatus::endOfItems, "an analysis in good order has read only whole pages");
  }
  expect(records.size() == staves, "the report has a record for every staff that is not hidden");
  std::map<std::int16_t, std::string> layouts;
  for (const Record& record : records) {
    // A staff below the lowest system keeps what its file says, so that its system need not be whole in the report.
    layouts[toInt16(record.system).value()] += std::to_string(record.instrId) + ",";
  }
  const bool consistent = std::all_of(layouts.begin(), layouts.end(),
                                      [&](const auto& layout) { return layout.second == layouts.begin()->second; });
  expect(host.find(verdictFile)->starts_with(consistent ? "CONSISTENCY=YES\r\n" : "CONSISTENCY=NO\r\n"),
         "the verdict is that of the report");
}

int checkConversion(MemoryHost& host, const Group& group) {
  for (const Group::File& file : group.files) {
    const std::string* content = host.find(file.name);
    expect(content != nullptr && *content == file.bytes, "inputs are not touched");
  }
  const std::vector<Record> records = recordsOf(*host.find(reportFile));
  const auto systems = systemsOf(records);
  std::set<std::int16_t> instruments;
  for (const Record& record : records) {
    instruments.insert(record.instrId);
  }
  Inputs inputs(group);
  const int count = static_cast<int>(systems.size());
  for (int number = 1; number <= count; ++number) {
    const std::vector<Record>& system = systems[static_cast<std::size_t>(number - 1)];
    const std::string* result = host.find(resultName(group, number));
    expect(result != nullptr, "there is a result for every system");
    if (!canBeRead(system, inputs)) {
      continue;
    }
    const auto items = itemsOf(*result);
    expect(items.has_value(), "a result can be read");
    checkWrittenAgain(host, resultName(group, number));
    const ExpectedSystem expected = expectedSystem(system, instruments, inputs);
    if (!expected.empty()) {
      checkSystem(expected, *items, !group.hideNumbers);
    }
  }
  expect(host.find(resultName(group, count + 1)) == nullptr, "there is no result without a system");
  return count;
}

bool qualify(const MemoryHost& host, const Group& group, int results) {
  std::vector<float> first;
  for (int number = 1; number <= results; ++number) {
    const auto items = itemsOf(*host.find(resultName(group, number)));
    if (!items) {
      return false;
    }
    std::map<float, float> staves;  // number and instrument
    float widest = 1;
    for (const Item& item : *items) {
      const bool isNew =
          !isA(item, type::staff) || staves.emplace(par(item, par::staff), par(item, par::instrument)).second;
      if (!isNew || (isA(item, type::staff) && par(item, par::lines) == hidden)) {
        return false;
      }
      if (isA(item, type::barline) && par(item, par::staff) == 1) {
        widest = std::max(widest, par(item, par::spannedStaves));
      }
    }
    std::vector<float> layout;
    for (const auto& [staff, instrument] : staves) {
      layout.push_back(instrument);
      if (staff != static_cast<float>(layout.size())) {
        return false;
      }
    }
    first = number == 1 ? layout : first;
    if (layout != first || widest != static_cast<float>(layout.size())) {
      return false;
    }
  }
  return results > 0;
}

}  // namespace kiv::fuzz
