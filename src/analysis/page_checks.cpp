#include "analysis/page_checks.h"

#include <algorithm>
#include <bitset>
#include <cmath>
#include <limits>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "base/number.h"

namespace kiv {
namespace {

/// The staves and the cue markers of the page, each in table order.
struct PageRows {
  explicit PageRows(const ItemTable& table);

  std::vector<int> staves;
  std::vector<int> cues;
};

PageRows::PageRows(const ItemTable& table) : staves(staffRows(table)) {
  for (int i = 1; i <= table.itemCount(); ++i) {
    if (table.itemPar(i, par::type) == type::rest && table.itemPar(i, par::cuedInstrument) != 0) {
      cues.push_back(i);
    }
  }
}

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
  void startAfresh() {
    small_.reset();
    texts_.clear();
  }

  void take(float number, std::int16_t& duplicates, std::string& list) {
    if (!isNew(number)) {
      ++duplicates;
      list += generalNumber(number) + ",";
    }
  }

 private:
  static constexpr std::size_t endOfSmall = 1024;

  static bool isSmall(float number) { return number >= 0 && number < endOfSmall && number == std::floor(number); }

  bool isNew(float number) {
    if (isSmall(number)) {
      return isNewSmall(number);
    }
    const std::string text = generalNumber(number);
    const float whole = std::round(number);  // the text of 5.0000005 is that of 5
    return isSmall(whole) && generalNumber(whole) == text ? isNewSmall(whole) : texts_.insert(text).second;
  }

  bool isNewSmall(float number) {
    const bool known = small_[static_cast<std::size_t>(number)];
    small_.set(static_cast<std::size_t>(number));
    return !known;
  }

  std::bitset<endOfSmall> small_;  // whole numbers, which nearly all are
  std::unordered_set<std::string> texts_;
};

void findDuplicates(const PageRows& rows, const ItemTable& table, const PageSystems& systems, PageProblems& problems) {
  SystemList identifiers;
  SystemList staves;
  float system = 0;
  for (const int i : stavesBySystem(rows.staves, table, systems)) {
    if (table.itemPar(i, par::system) != system) {
      system = table.itemPar(i, par::system);
      identifiers.startAfresh();
      staves.startAfresh();
    }
    if (table.itemPar(i, par::instrument) != 0) {
      identifiers.take(table.itemPar(i, par::instrument), problems.dupIdCount, problems.duplicateIds);
    }
    staves.take(table.itemPar(i, par::staff), problems.dupStaffCount, problems.duplicateStaves);
  }
}

void countStaves(Host& host, const std::string& musFileName, const PageRows& rows, const ItemTable& table,
                 PageProblems& problems) {
  std::unordered_map<float, int> cues;
  for (const int i : rows.cues) {
    ++cues[table.itemPar(i, par::cuedInstrument)];
  }
  int recursiveCues = 0;
  for (const int i : rows.staves) {
    const float instrument = table.itemPar(i, par::instrument);
    if (instrument == 0) {
      ++problems.zeroIdCount;
    } else if (const auto cue = cues.find(instrument); cue != cues.end()) {
      recursiveCues += cue->second;
    }
    if (recursiveCues > std::numeric_limits<std::int16_t>::max()) {
      host.runTimeError(RunTimeError::overflow, musFileName + ", item " + std::to_string(i));
    }
  }
  problems.recursiveCueCount = static_cast<std::int16_t>(recursiveCues);
}

/// The instruments that play in the system that the row behind the page's last item names. That row holds what a longer
/// page has left there.
std::unordered_set<float> definedInstruments(const PageRows& rows, const ItemTable& table) {
  const float system = table.itemPar(table.itemCount() + 1, par::system);
  std::unordered_set<float> defined;
  for (const int i : rows.staves) {
    if (table.itemPar(i, par::system) == system) {
      defined.insert(table.itemPar(i, par::instrument));
    }
  }
  return defined;
}

void findUndefinedCues(Host& host, const std::string& musFileName, const PageRows& rows, const ItemTable& table,
                       PageProblems& problems) {
  if (rows.cues.empty()) {
    return;
  }
  if (table.itemCount() == itemLimit) {
    host.runTimeError(RunTimeError::subscriptOutOfRange, musFileName + ", item " + std::to_string(rows.cues.front()));
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
}

std::string withoutEnd(const std::string& list, std::size_t count) {
  return list.substr(0, list.size() - count);
}

}  // namespace

PageProblems checkPage(Host& host, const std::string& musFileName, const ItemTable& table, const PageSystems& systems) {
  PageProblems problems;
  const PageRows rows(table);
  findDuplicates(rows, table, systems, problems);
  countStaves(host, musFileName, rows, table, problems);
  findUndefinedCues(host, musFileName, rows, table, problems);
  return problems;
}

void showProblems(Host& host, const PageProblems& problems, bool multifile, bool allowZeroInstrId,
                  const std::string& musFileName) {
  const std::string where = (multifile ? " in multipage files. Top file is: " : " in file: ") + musFileName + "\r\n";
  const std::string end = "Results are unpredictable.";
  if (problems.dupIdCount >= 1) {
    host.inform("Duplicate instrument Id" + where + "InstrId(s): " + withoutEnd(problems.duplicateIds, 1) + "\r\n\r\n" +
                end);
  }
  if (problems.dupStaffCount >= 1) {
    host.inform("Duplicate staff number" + where + (multifile ? "Staff/staves(s): " : "Staff/staves: ") +
                withoutEnd(problems.duplicateStaves, 1) + "\r\n\r\n" + end);
  }
  if (problems.zeroIdCount >= 1 && !allowZeroInstrId) {
    host.inform("Zero instrId(s)" + where + "\r\n" + end);
  }
  if (problems.recursiveCueCount >= 1) {
    host.inform("Recursive cue(s)" + where + "\r\n" + end);
  }
  if (problems.undefinedCueCount >= 1) {
    const std::string list =
        multifile ? "" : "Cues found for undefined instrument(s): " + withoutEnd(problems.undefinedCues, 2) + "\r\n";
    host.inform("Reference to undefined instrId(s) in same system" + where + "\r\n" + list + end);
  }
}

}  // namespace kiv
