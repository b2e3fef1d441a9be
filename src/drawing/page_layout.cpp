#include "drawing/page_layout.h"

#include <algorithm>
#include <cmath>
#include <map>

#include "diagnostics/rest_staff.h"

namespace kiv {
namespace {

constexpr std::size_t staffLimit = 256;
constexpr float lowestPosition = -30;
constexpr float highestPosition = 400;
constexpr float lowestHeight = -24;
constexpr float highestHeight = 32;
constexpr double labelRoom = 12;  // page units left of the staves, for identifiers and braces
constexpr double stemSteps = 8;
constexpr double signRoom = 6;         // steps that a staff has to itself above and below, at least
constexpr double systemRoom = 8;       // more steps between systems
constexpr float leftBarlineReach = 1;  // a barline this near to a staff's left end stands there

float drawnPosition(float position) {
  return std::isnan(position) ? 0 : std::clamp(position, lowestPosition, highestPosition);
}

/// The heights that a staff's signs need, in steps from its bottom line.
struct Room {
  double top = 0;
  double bottom = 0;

  void reach(double highest, double lowest) {
    top = std::max(top, highest);
    bottom = std::min(bottom, lowest);
  }
};

Room roomOf(const PlacedStaff& staff) {
  Room room{staff.topLine() + signRoom, -signRoom};
  for (const Item& item : staff.items) {
    const double height = drawnHeight(item.par[par::height]);
    if (item.par[par::type] == type::note) {
      const bool stemUp = height < staff.middle();
      room.reach(height + (stemUp ? stemSteps : 2), height - (stemUp ? 2 : stemSteps));
    } else if (item.par[par::type] == type::rest) {
      room.reach(staff.middle() + height + 4, staff.middle() + height - 4);
    } else if (isTextType(item.par[par::type])) {
      room.reach(height + 4, height - 2);
    }
  }
  return room;
}

int linesOf(float lines) {
  if (lines == -1) {
    return 0;
  }
  // The numbers that barlines have codes for; any other staff is treated as one of five lines.
  return lines == 1 || lines == 2 || lines == 3 || lines == 4 || lines == 6 ? static_cast<int>(lines) : 5;
}

std::vector<PlacedStaff> stavesOf(std::span<const Item> items) {
  std::map<float, PlacedStaff> byNumber;
  for (const Item& item : items) {
    const float number = item.par[par::staff];
    if (item.par[par::type] == type::staff && !std::isnan(number) &&
        (byNumber.size() < staffLimit || byNumber.contains(number))) {
      PlacedStaff staff;
      staff.number = number;
      staff.instrument = item.par[par::instrument];
      staff.lines = linesOf(item.par[par::lines]);
      staff.position = drawnPosition(item.par[par::position]);
      byNumber.emplace(number, staff);
    }
  }
  std::vector<PlacedStaff> staves;
  staves.reserve(byNumber.size());
  for (auto& [number, staff] : byNumber) {
    staves.push_back(std::move(staff));
  }
  return staves;
}

void handOut(std::span<const Item> items, PageLayout& page) {
  for (const Item& item : items) {
    const float number = item.par[par::staff];
    const auto staff = std::lower_bound(page.staves.begin(), page.staves.end(), number,
                                        [](const PlacedStaff& s, float n) { return s.number < n; });
    if (staff == page.staves.end() || staff->number != number) {
      ++page.strayItems;
    } else if (item.par[par::type] != type::staff) {
      staff->items.push_back(item);
    }
  }
}

/// How many staves the barline at the staff's left end joins, itself included.
float spanOf(const PlacedStaff& staff) {
  float span = 1;
  for (const Item& item : staff.items) {
    if (item.par[par::type] == type::barline && item.par[par::kind] <= highestBarlineKind &&
        std::abs(item.par[par::position] - staff.position) <= leftBarlineReach) {
      span = std::max(span, item.par[par::spannedStaves]);
    }
  }
  return span;
}

void findSystems(PageLayout& page) {
  std::size_t system = 0;
  for (std::size_t i = 0; i < page.staves.size(); ++system) {
    const PlacedStaff* top = &page.upperEnd(page.staves[i], spanOf(page.staves[i]));
    while (i < page.staves.size() && page.staves[i].number <= top->number) {
      page.staves[i].system = system;
      ++i;
    }
  }
}

void findEnds(PageLayout& page) {
  std::map<std::size_t, double> ends;
  double first = 0;
  double last = 0;
  for (const PlacedStaff& staff : page.staves) {
    double& end = ends.emplace(staff.system, staff.position).first->second;
    first = std::min<double>(first, staff.position);
    for (const Item& item : staff.items) {
      const double position = drawnPosition(item.par[par::position]);
      // A sign needs the staff to go on behind it, a barline ends it.
      const double behind = item.par[par::type] == type::barline || isTextType(item.par[par::type]) ? 0 : 3;
      end = std::max(end, position + behind);
      first = std::min(first, position);
    }
    last = std::max(last, end);
  }
  page.firstPosition = first - labelRoom;
  page.width = (last - page.firstPosition) * measure::position + 2 * measure::margin;
  for (PlacedStaff& staff : page.staves) {
    staff.left = page.x(staff.position);
    staff.right = page.x(static_cast<float>(ends.at(staff.system)));
  }
}

void stack(PageLayout& page) {
  double y = measure::margin;
  for (std::size_t i = page.staves.size(); i-- > 0;) {
    PlacedStaff& staff = page.staves[i];
    const bool below = i + 1 < page.staves.size();
    const Room room = roomOf(staff);
    y += measure::step * (room.top + (below && page.staves[i + 1].system != staff.system ? systemRoom : 0));
    staff.bottom = y;
    y -= measure::step * room.bottom;
  }
  page.height = y + measure::margin;
}

}  // namespace

double drawnHeight(float height) {
  return std::isnan(height) ? 0 : std::clamp(height, lowestHeight, highestHeight);
}

double PageLayout::x(float position) const {
  return measure::margin + (drawnPosition(position) - firstPosition) * measure::position;
}

const PlacedStaff& PageLayout::upperEnd(const PlacedStaff& from, float spannedStaves) const {
  const PlacedStaff* end = &from;
  for (const PlacedStaff& staff : staves) {
    if (staff.number > end->number && staff.number <= from.number + spannedStaves - 1) {
      end = &staff;
    }
  }
  return *end;
}

PageLayout layOut(std::span<const Item> items) {
  PageLayout page;
  page.staves = stavesOf(items);
  handOut(items, page);
  for (PlacedStaff& staff : page.staves) {
    staff.made = isMadeRestStaff(staff.position, staff.items);
  }
  findSystems(page);
  findEnds(page);
  stack(page);
  return page;
}

}  // namespace kiv
