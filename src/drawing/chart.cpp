#include "drawing/chart.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

#include "base/counted.h"
#include "input/file_names.h"

namespace kiv {
namespace {

/// A system is on the page of the system before it when it is in the same file and further down.
bool isOnSamePage(const std::vector<StaffRecord>& previous, const std::vector<StaffRecord>& staves) {
  return !previous.empty() && previous.back().file == staves.front().file &&
         staves.front().newStaff < previous.back().newStaff;
}

ChartPage pageOf(Machine& machine, const std::vector<StaffRecord>& staves, std::size_t system) {
  ChartPage page{withoutPath(machine, staves.front().file), 1, system};
  std::set<std::string> files = {staves.front().file};
  // The staves of file A are at the top, and its letter ends the name.
  std::size_t letters = dotOf(page.name);
  for (const StaffRecord& staff : staves) {
    if (!files.insert(staff.file).second) {
      continue;
    }
    const std::string name = withoutPath(machine, staff.file);
    if (const std::size_t dot = dotOf(name); dot > 0) {
      page.name.insert(letters++, 1, name[dot - 1]);
    }
    ++page.files;
  }
  return page;
}

/// The name part, without the characters that join it to the number.
std::string pieceOf(Machine& machine, const std::string& file) {
  std::string name = extractPartName(machine, file);
  const auto last = name.find_last_not_of("-_$");
  return name.substr(0, last == std::string::npos ? 0 : last + 1);
}

std::vector<Presence> cellsOf(const std::vector<StaffRecord>& staves, const std::vector<std::int16_t>& instruments,
                              bool allowZeroId) {
  std::map<std::int16_t, int> counts;
  for (const StaffRecord& staff : staves) {
    ++counts[staff.instrId];
  }
  std::vector<Presence> cells(instruments.size(), Presence::missing);
  for (std::size_t i = 0; i < instruments.size(); ++i) {
    const auto found = counts.find(instruments[i]);
    if (found == counts.end()) {
      continue;
    }
    if (instruments[i] == 0) {
      cells[i] = allowZeroId ? Presence::present : Presence::zeroId;
    } else {
      cells[i] = found->second > 1 ? Presence::duplicate : Presence::present;
    }
  }
  return cells;
}

/// Which of the staves a conversion moves: the fewest whose absence leaves identifiers that rise from the top down.
std::vector<bool> movedStaves(const std::vector<StaffRecord>& staves) {
  // The longest rising selection: ends[n] is the staff with the lowest identifier that ends one of n + 1 staves.
  std::vector<std::size_t> ends;
  std::vector<std::size_t> previous(staves.size(), staves.size());
  for (std::size_t i = 0; i < staves.size(); ++i) {
    const auto place = std::upper_bound(ends.begin(), ends.end(), staves[i].instrId,
                                        [&](int id, std::size_t end) { return id < staves[end].instrId; });
    previous[i] = place == ends.begin() ? staves.size() : *(place - 1);
    if (place == ends.end()) {
      ends.push_back(i);
    } else {
      *place = i;
    }
  }
  std::vector<bool> moved(staves.size(), true);
  for (std::size_t i = ends.empty() ? staves.size() : ends.back(); i < staves.size(); i = previous[i]) {
    moved[i] = false;
  }
  return moved;
}

/// The same for the instruments of the chart; empty when no staff is moved.
std::vector<bool> movedInstruments(const std::vector<StaffRecord>& staves,
                                   const std::vector<std::int16_t>& instruments) {
  const std::vector<bool> moved = movedStaves(staves);
  if (std::find(moved.begin(), moved.end(), true) == moved.end()) {
    return {};
  }
  std::vector<bool> result(instruments.size(), false);
  for (std::size_t i = 0; i < staves.size(); ++i) {
    const auto place = std::lower_bound(instruments.begin(), instruments.end(), staves[i].instrId);
    if (moved[i] && place != instruments.end() && *place == staves[i].instrId) {
      result[static_cast<std::size_t>(place - instruments.begin())] = true;
    }
  }
  return result;
}

}  // namespace

std::size_t dotOf(const std::string& name) {
  return std::min(name.find('.'), name.size());
}

std::size_t Chart::count(Presence presence) const {
  std::size_t count = 0;
  for (const ChartSystem& system : systems) {
    count += static_cast<std::size_t>(std::count(system.cells.begin(), system.cells.end(), presence));
  }
  return count;
}

std::size_t Chart::nameColumns() const {
  std::size_t columns = 0;
  for (const auto& [instrument, name] : names) {
    columns = std::max(columns, name.columns);
  }
  return columns;
}

bool Chart::hasMovedStaves() const {
  return std::any_of(systems.begin(), systems.end(), [](const ChartSystem& system) { return !system.moved.empty(); });
}

bool Chart::hasMultifilePages() const {
  return std::any_of(pages.begin(), pages.end(), [](const ChartPage& page) { return page.files > 1; });
}

std::string Chart::summary() const {
  return (piece.empty() ? "" : piece + ": ") + counts();
}

std::string Chart::counts() const {
  return counted(systems.size(), "system", "systems") + " on " + counted(pages.size(), "page", "pages") + ", " +
         counted(instruments.size(), "instrument", "instruments") + "; " +
         counted(count(Presence::missing), "rest staff", "rest staves") + " to be inserted";
}

std::string Chart::outOfOrder(std::size_t first, std::size_t end) const {
  constexpr std::size_t mostNamed = 12;
  std::string list;
  std::size_t found = 0;
  for (std::size_t i = first; i < end; ++i) {
    if (!systems[i].inOrder && found++ < mostNamed) {
      list += (list.empty() ? "" : ", ") + std::to_string(i + 1);
    }
  }
  return found > mostNamed ? list + " and " + std::to_string(found - mostNamed) + " more" : list;
}

Chart makeChart(Machine& machine, const ReportIndex& report, bool allowZeroId) {
  Chart chart;
  // The report lists instruments in order of appearance; a result has them sorted, the lowest identifier on top.
  chart.instruments = report.instruments;
  std::sort(chart.instruments.begin(), chart.instruments.end());
  std::vector<StaffRecord> previous;
  const int systems = report.systemCount();
  for (int system = 1; system <= systems; ++system) {
    std::vector<StaffRecord> staves = stavesOf(report, static_cast<std::int16_t>(system));
    if (!isOnSamePage(previous, staves)) {
      chart.pages.push_back(pageOf(machine, staves, chart.systems.size()));
    }
    std::vector<bool> moved = movedInstruments(staves, chart.instruments);
    const bool inOrder = moved.empty();
    chart.systems.push_back(
        {chart.pages.size() - 1, inOrder, cellsOf(staves, chart.instruments, allowZeroId), std::move(moved)});
    if (system == 1) {
      chart.piece = pieceOf(machine, staves.front().file);
    }
    previous = std::move(staves);
  }
  return chart;
}

const char* meaningOf(Presence presence) {
  switch (presence) {
    case Presence::present:
      return "staff";
    case Presence::missing:
      return "missing, gets a rest staff";
    case Presence::duplicate:
      return "several staves of one id";
    case Presence::zeroId:
      break;
  }
  return "staff without an id";
}

}  // namespace kiv
