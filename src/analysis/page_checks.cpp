#include "analysis/page_checks.h"

#include <algorithm>
#include <bitset>
#include <cmath>
#include <limits>
#include <optional>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "base/number.h"
#include "messages/run_time_errors.h"

namespace kiv {
namespace {

/// Those of the staves that belong to a system of the page, system by system, each in table order.
std::vector<int> stavesBySystem(const std::vector<int>& staves, const ItemTable& table, const PageSystems& systems) {
  std::vector<int> rows;
  rows.reserve(staves.size());
  for (const int i : staves) {
    const float system = table.itemPar(i, par::system);
    const bool ofPage = system >= static_cast<float>(systems.first) && system <= static_cast<float>(systems.last);
    if (ofPage && system == static_cast<float>(static_cast<int>(system))) {
      rows.push_back(i);
    }
  }
  const auto isBefore = [&](int a, int b) { return table.itemPar(a, par::system) < table.itemPar(b, par::system); };
  if (!std::is_sorted(rows.begin(), rows.end(), isBefore)) {
    std::stable_sort(rows.begin(), rows.end(), isBefore);
  }
  return rows;
}

/// The numbers met so far in one system, compared by their texts.
class SystemList {
 public:
  void clear() {
    small_.reset();
    texts_.clear();
  }

  /// Adds a number. False when it was there already.
  bool add(float number) {
    if (isSmall(number)) {
      return addSmall(number);
    }
    const std::string text = generalNumber(number);
    const float whole = std::round(number);  // the text of 5.0000005 is that of 5
    return isSmall(whole) && generalNumber(whole) == text ? addSmall(whole) : texts_.insert(text).second;
  }

 private:
  static constexpr std::size_t endOfSmall = 1024;

  static bool isSmall(float number) { return number >= 0 && number < endOfSmall && number == std::floor(number); }

  bool addSmall(float number) {
    const bool known = small_[static_cast<std::size_t>(number)];
    small_.set(static_cast<std::size_t>(number));
    return !known;
  }

  std::bitset<endOfSmall> small_;  // whole numbers, which nearly all are
  std::unordered_set<std::string> texts_;
};

/// The number of a staff's system; nullopt when it is no whole number of 16 bits.
std::optional<std::int16_t> systemOf(const ItemTable& table, int staff) {
  const float system = table.itemPar(staff, par::system);
  const auto whole = toInt16(system);
  return whole && static_cast<float>(*whole) == system ? whole : std::nullopt;
}

Location placeOfStaff(const ItemTable& table, int staff) {
  Location place = table.location(staff);
  place.instrument = table.itemPar(staff, par::instrument);
  place.system = systemOf(table, staff);
  return place;
}

void findDuplicates(const TableRows& rows, const ItemTable& table, const PageSystems& systems, PageProblems& problems) {
  SystemList identifiers;
  SystemList staves;
  float system = 0;
  for (const int i : stavesBySystem(rows.staves, table, systems)) {
    if (table.itemPar(i, par::system) != system) {
      system = table.itemPar(i, par::system);
      identifiers.clear();
      staves.clear();
    }
    const float identifier = table.itemPar(i, par::instrument);
    if (identifier != 0 && !identifiers.add(identifier)) {
      ++problems.dupIdCount;
      problems.duplicateIds += generalNumber(identifier) + ",";
      problems.dupIdPlaces.push_back(placeOfStaff(table, i));
    }
    if (!staves.add(table.itemPar(i, par::staff))) {
      ++problems.dupStaffCount;
      problems.duplicateStaves += generalNumber(table.itemPar(i, par::staff)) + ",";
      problems.dupStaffPlaces.push_back(placeOfStaff(table, i));
    }
  }
}

/// The places of cue markers. Their systems are those of their staves.
class CuePlaces {
 public:
  CuePlaces(const TableRows& rows, const ItemTable& table) : rows_(rows), table_(table) {}

  /// The cue markers that a message counts, each as often as repeatsOf says, in the order of the files.
  template <typename RepeatsOf>
  std::vector<Location> find(RepeatsOf repeatsOf) const {
    std::vector<int> cues = rows_.cues;
    table_.sortByOrigin(cues);
    std::vector<Location> places;
    for (const int cue : cues) {
      const float instrument = table_.itemPar(cue, par::cuedInstrument);
      const int repeats = repeatsOf(instrument);
      if (repeats > 0) {
        places.push_back(table_.location(cue));
        places.back().instrument = instrument;
        places.back().system = systemOfCue(cue);
        places.back().repeats = repeats;
      }
    }
    return places;
  }

 private:
  std::optional<std::int16_t> systemOfCue(int cue) const {
    for (const int staff : rows_.staves) {
      if (table_.itemPar(staff, par::staff) == table_.itemPar(cue, par::staff) && table_.haveOneFile(staff, cue)) {
        return systemOf(table_, staff);
      }
    }
    return std::nullopt;
  }

  const TableRows& rows_;
  const ItemTable& table_;
};

void countStaves(const TableRows& rows, const ItemTable& table, PageProblems& problems) {
  std::unordered_map<float, int> cues;
  for (const int i : rows.cues) {
    ++cues[table.itemPar(i, par::cuedInstrument)];
  }
  std::unordered_map<float, int> cuedStaves;
  int recursiveCues = 0;
  for (const int i : rows.staves) {
    const float instrument = table.itemPar(i, par::instrument);
    if (instrument == 0) {
      ++problems.zeroIdCount;
      problems.zeroIdPlaces.push_back(placeOfStaff(table, i));
    } else if (const auto cue = cues.find(instrument); cue != cues.end()) {
      recursiveCues += cue->second;
      ++cuedStaves[instrument];
    }
    if (recursiveCues > std::numeric_limits<std::int16_t>::max()) {
      endProgram(messages::overflow(table.location(i)));
    }
  }
  problems.recursiveCueCount = static_cast<std::int16_t>(recursiveCues);
  if (recursiveCues > 0) {
    problems.recursiveCuePlaces = CuePlaces(rows, table).find([&](float instrument) {
      const auto staves = cuedStaves.find(instrument);
      return staves == cuedStaves.end() ? 0 : staves->second;
    });
  }
}

/// The instruments that play in the system that the row after the page's last item names. That row holds what a longer
/// page has left there.
std::unordered_set<float> definedInstruments(const TableRows& rows, const ItemTable& table) {
  const float system = table.itemPar(table.itemCount() + 1, par::system);
  std::unordered_set<float> defined;
  for (const int i : rows.staves) {
    if (table.itemPar(i, par::system) == system) {
      defined.insert(table.itemPar(i, par::instrument));
    }
  }
  return defined;
}

void findUndefinedCues(const TableRows& rows, const ItemTable& table, PageProblems& problems) {
  if (rows.cues.empty()) {
    return;
  }
  if (table.itemCount() == itemLimit) {
    endProgram(messages::subscriptOutOfRange(table.location(rows.cues.front())));
  }
  const std::unordered_set<float> defined = definedInstruments(rows, table);
  for (const int i : rows.cues) {
    const float instrument = table.itemPar(i, par::cuedInstrument);
    if (!defined.contains(instrument)) {
      ++problems.undefinedCueCount;
      problems.undefinedCues +=
          generalNumber(instrument) + " in staff " + generalNumber(table.itemPar(i, par::staff)) + ", ";
    }
  }
  if (problems.undefinedCueCount > 0) {
    problems.undefinedCuePlaces =
        CuePlaces(rows, table).find([&](float instrument) { return defined.contains(instrument) ? 0 : 1; });
  }
}

std::string withoutEnd(const std::string& list, std::size_t count) {
  return list.substr(0, list.size() - count);
}

void show(User& user, Message message, const std::vector<Location>& places) {
  message.places = places;
  user.show(message);
}

}  // namespace

PageProblems checkPage(const ItemTable& table, const TableRows& rows, const PageSystems& systems) {
  PageProblems problems;
  findDuplicates(rows, table, systems, problems);
  countStaves(rows, table, problems);
  findUndefinedCues(rows, table, problems);
  return problems;
}

void showProblems(User& user, const PageProblems& problems, const messages::CheckedPage& page, bool allowZeroInstrId) {
  if (problems.dupIdCount >= 1) {
    show(user, messages::duplicateInstrumentIds(page, withoutEnd(problems.duplicateIds, 1)), problems.dupIdPlaces);
  }
  if (problems.dupStaffCount >= 1) {
    show(user, messages::duplicateStaffNumbers(page, withoutEnd(problems.duplicateStaves, 1)), problems.dupStaffPlaces);
  }
  if (problems.zeroIdCount >= 1 && !allowZeroInstrId) {
    show(user, messages::zeroInstrumentIds(page), problems.zeroIdPlaces);
  }
  if (problems.recursiveCueCount >= 1) {
    show(user, messages::recursiveCues(page), problems.recursiveCuePlaces);
  }
  if (problems.undefinedCueCount >= 1) {
    show(user, messages::undefinedCues(page, withoutEnd(problems.undefinedCues, 2)), problems.undefinedCuePlaces);
  }
}

}  // namespace kiv
