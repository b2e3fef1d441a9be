#include "drawing/chart.h"

#include <algorithm>
#include <map>
#include <set>

#include "input/file_names.h"

namespace kiv {
namespace {

/// A system is on the page of the system before it when it is in the same file and further down.
bool isOnSamePage(const std::vector<StaffRecord>& previous, const std::vector<StaffRecord>& staves) {
  return !previous.empty() && previous.back().file == staves.front().file &&
         staves.front().newStaff < previous.back().newStaff;
}

std::size_t dotOf(const std::string& name) {
  return std::min(name.find('.'), name.size());
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

std::string counted(std::size_t count, const std::string& singular, const std::string& plural) {
  return std::to_string(count) + " " + (count == 1 ? singular : plural);
}

}  // namespace

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

std::string Chart::summary() const {
  return counted(systems.size(), "system", "systems") + " on " + counted(pages.size(), "page", "pages") + ", " +
         counted(instruments.size(), "instrument", "instruments") + "; " +
         counted(count(Presence::missing), "rest staff", "rest staves") + " to be inserted";
}

std::string Chart::outOfOrder() const {
  constexpr std::size_t mostNamed = 12;
  std::string list;
  std::size_t found = 0;
  for (std::size_t i = 0; i < systems.size(); ++i) {
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
    const bool inOrder = std::is_sorted(
        staves.begin(), staves.end(), [](const StaffRecord& a, const StaffRecord& b) { return a.instrId < b.instrId; });
    chart.systems.push_back({chart.pages.size() - 1, inOrder, cellsOf(staves, chart.instruments, allowZeroId)});
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
