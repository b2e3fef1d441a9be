#include "drawing/page_layout.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

#include "diagnostics/rest_staff.h"
#include "drawing/note_value.h"

namespace kiv {
namespace {

constexpr std::size_t staffLimit = 256;
constexpr float lowestPosition = -30;
constexpr float highestPosition = 400;
constexpr float lowestHeight = -24;
constexpr float highestHeight = 32;
constexpr double labelWidth = 12;      // page units left of the staves, for identifiers and braces
constexpr double beyondStem = 1;       // steps that a slanting beam is above a stem, or another symbol
constexpr double staffMargin = 6;      // steps above and below a staff, at least
constexpr double systemGap = 8;        // more steps between systems
constexpr float leftBarlineReach = 1;  // a barline this near to a staff's left end counts as there

float drawnPosition(float position) {
  return std::isnan(position) ? 0 : std::clamp(position, lowestPosition, highestPosition);
}

/// How far the symbols of a staff reach, in steps from its bottom line.
struct Extent {
  double top = 0;
  double bottom = 0;

  void include(double highest, double lowest) {
    top = std::max(top, highest);
    bottom = std::min(bottom, lowest);
  }
};

Extent extentOf(const PlacedStaff& staff) {
  Extent extent{staff.topLine() + staffMargin, -staffMargin};
  for (const Item& item : staff.items) {
    const double height = drawnHeight(item[par::height]);
    if (item.type() == ItemType::note) {
      const bool stemUp = height < staff.middle();
      const int flags = noteValue(item[par::duration]).flags();
      const double length = stemSteps(flags) + beyondStem;
      // The stem of a beamed note may go either way.
      extent.include(height + (stemUp || flags > 0 ? length : 2), height - (!stemUp || flags > 0 ? length : 2));
    } else if (item.type() == ItemType::rest) {
      extent.include(staff.middle() + height + 4, staff.middle() + height - 4);
    } else if (item.type().hasText()) {
      extent.include(height + 4, height - 2);
    }
  }
  return extent;
}

int linesOf(float lines) {
  if (lines == -1) {
    return 0;
  }
  // The numbers of lines for which barlines have codes; any other staff is drawn with five lines.
  return lines == 1 || lines == 2 || lines == 3 || lines == 4 || lines == 6 ? static_cast<int>(lines) : 5;
}

std::vector<PlacedStaff> stavesOf(std::span<const Item> items) {
  std::map<float, PlacedStaff> byNumber;
  for (const Item& item : items) {
    const float number = item[par::staff];
    if (item.type() == ItemType::staff && !std::isnan(number) &&
        (byNumber.size() < staffLimit || byNumber.contains(number))) {
      PlacedStaff staff;
      staff.number = number;
      staff.instrument = item[par::instrument];
      staff.lines = linesOf(item[par::lines]);
      staff.position = drawnPosition(item[par::position]);
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

void assignItems(std::span<const Item> items, PageLayout& page) {
  auto staff = page.staves.end();
  for (const Item& item : items) {
    const float number = item[par::staff];
    if (staff == page.staves.end() || staff->number != number) {  // items of one staff mostly follow one another
      staff = std::lower_bound(page.staves.begin(), page.staves.end(), number,
                               [](const PlacedStaff& s, float n) { return s.number < n; });
    }
    if (staff == page.staves.end() || staff->number != number) {
      ++page.strayItems;
    } else if (item.type() != ItemType::staff) {
      staff->items.push_back(item);
    }
  }
}

/// How many staves the barline at the staff's left end joins, itself included.
float spanOf(const PlacedStaff& staff) {
  float span = 1;
  for (const Item& item : staff.items) {
    if (item.type() == ItemType::barline && item[par::kind] <= highestBarlineKind &&
        std::abs(item[par::position] - staff.position) <= leftBarlineReach) {
      span = std::max(span, item[par::spannedStaves]);
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

bool hasMusic(const PlacedStaff& staff) {
  return std::any_of(staff.items.begin(), staff.items.end(),
                     [](const Item& item) { return item.type() == ItemType::note || item.type() == ItemType::rest; });
}

/// Finds rest staves that only the music of other staves shows to be some.
void findBareStaves(PageLayout& page) {
  std::set<std::size_t> withMusic;
  for (const PlacedStaff& staff : page.staves) {
    if (hasMusic(staff)) {
      withMusic.insert(staff.system);
    }
  }
  for (PlacedStaff& staff : page.staves) {
    const bool isBare = withMusic.contains(staff.system) && isBareStaff(staff.position, staff.items);
    staff.isGenerated = staff.isGenerated || isBare;
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
      const double position = drawnPosition(item[par::position]);
      // The staff continues after a symbol; a barline ends it.
      const double after = item.type() == ItemType::barline || item.type().hasText() ? 0 : 3;
      end = std::max(end, position + after);
      first = std::min(first, position);
    }
    last = std::max(last, end);
  }
  page.firstPosition = first - labelWidth;
  page.width = (last - page.firstPosition) * measure::position + 2 * measure::margin;
  for (PlacedStaff& staff : page.staves) {
    staff.left = page.x(staff.position);
    staff.right = page.x(static_cast<float>(ends.at(staff.system)));
  }
}

void stack(PageLayout& page) {
  double y = measure::margin + measure::titleHeight;
  for (std::size_t i = page.staves.size(); i-- > 0;) {
    PlacedStaff& staff = page.staves[i];
    const bool below = i + 1 < page.staves.size();
    const Extent extent = extentOf(staff);
    if (!below || page.staves[i + 1].system != staff.system) {
      y += measure::labelHeight + (below ? measure::step * systemGap : 0);
      staff.label = y;
    }
    y += measure::step * extent.top;
    staff.bottom = y;
    y -= measure::step * extent.bottom;
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

std::vector<double> PageLayout::barlinesOf(const PlacedStaff& staff) const {
  std::vector<double> found;
  for (const PlacedStaff& from : staves) {
    if (from.number > staff.number) {
      continue;
    }
    for (const Item& item : from.items) {
      const bool reaches = &from == &staff || staff.number <= from.number + item[par::spannedStaves] - 1;
      if (item.type() == ItemType::barline && item[par::kind] <= highestBarlineKind && reaches &&
          drawnPosition(item[par::position]) > staff.position + leftBarlineReach) {
        found.push_back(x(item[par::position]));
      }
    }
  }
  std::sort(found.begin(), found.end());
  constexpr double together = 1.5 * measure::position;
  std::vector<double> barlines;
  for (const double barline : found) {
    if (barlines.empty() || barline - barlines.back() > together) {
      barlines.push_back(barline);
    }
  }
  return barlines;
}

PageLayout layOut(std::span<const Item> items) {
  PageLayout page;
  page.staves = stavesOf(items);
  assignItems(items, page);
  for (PlacedStaff& staff : page.staves) {
    staff.isGenerated = isGeneratedRestStaff(staff.position, staff.items);
  }
  findSystems(page);
  findBareStaves(page);
  findEnds(page);
  stack(page);
  return page;
}

}  // namespace kiv
