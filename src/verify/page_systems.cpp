// The systems of a page: what the barlines at the left end of its staves hold together.

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>

#include "verify/numbers.h"
#include "verify/page_rows.h"

namespace kiv::proof {
namespace {

constexpr int highestNumber = 256;  // of the staves that are searched for systems
constexpr float highestBarline = 7;
constexpr std::size_t fullTable = 5000;  // rows

bool isStaff(const PageRow& row) {
  return row.item.type() == ItemType::staff;
}
bool isBarline(const PageRow& row) {
  return row.item.type() == ItemType::barline;
}
bool isCue(const PageRow& row) {
  return row.item.type() == ItemType::rest;
}

/// Raises count to the highest value of a parameter of the staves, as a whole number.
void raise(PageRows& page, int parameter, std::int16_t& count) {
  for (const PageRow& row : page.rows) {
    if (isStaff(row) && row.item[parameter] > static_cast<float>(count)) {
      const auto whole = roundedTo16Bits(row.item[parameter]);
      if (!whole) {
        page.fail(row.file, row.number, "has a P" + std::to_string(parameter) + " that 16 bits do not hold");
        return;
      }
      count = *whole;
    }
  }
}

/// Marks the barlines of a staff that stand at its left end, and those that are no barlines. Returns how many staves
/// the widest of them spans.
std::int16_t markBarlines(PageRows& page, const std::vector<PageRow*>& staves, const std::vector<PageRow*>& barlines) {
  std::int16_t span = 0;
  for (PageRow* barline : barlines) {
    const float position = barline->item[par::position];
    if (!(barline->item[par::kind] <= highestBarline)) {
      barline->item[par::mark] = -1;
    } else if (std::any_of(staves.begin(), staves.end(), [&](const PageRow* staff) {
                 return std::fabs(staff->item[par::position] - position) <= 1;
               })) {
      barline->item[par::mark] = 1;
    }
    if (barline->item[par::spannedStaves] > static_cast<float>(span)) {
      const auto whole = roundedTo16Bits(barline->item[par::spannedStaves]);
      if (!whole) {
        page.fail(barline->file, barline->number, "spans more staves than 16 bits hold");
        return 1;
      }
      span = *whole;
    }
  }
  return span == 0 ? std::int16_t{1} : span;
}

/// Marks the bottom staves: the lowest staff of all, and then always the lowest that the system below does not span.
void markBottomStaves(PageRows& page) {
  std::map<float, std::vector<PageRow*>> staves;
  std::map<float, std::vector<PageRow*>> barlines;
  for (PageRow& row : page.rows) {
    if ((isStaff(row) || isBarline(row)) && !std::isnan(row.item[par::staff])) {
      (isStaff(row) ? staves : barlines)[row.item[par::staff]].push_back(&row);
    }
  }
  for (int number = 1; number <= highestNumber && !page.failed(); ++number) {
    const auto found = staves.find(static_cast<float>(number));
    if (found == staves.end()) {
      continue;
    }
    const std::int16_t span = markBarlines(page, found->second, barlines[found->first]);
    for (PageRow* staff : found->second) {
      staff->item[par::stavesUp] = span;
      staff->item[par::mark] = 1;
    }
    number += span - 1;
  }
}

/// A page of several files is one system, which the barline at the left of its lowest staff holds together.
void joinFiles(const PageFiles& files, PageRows& page) {
  std::int16_t all = 0;
  raise(page, par::staff, all);
  bool isClosed = false;
  for (PageRow& row : page.rows) {
    const bool isLowest = row.item[par::staff] == 1;
    if (isStaff(row)) {
      row.item[par::stavesUp] = isLowest ? static_cast<float>(all) : 0.0F;
      row.item[par::mark] = isLowest ? row.item[par::mark] : 0.0F;
    } else if (isBarline(row) && row.item[par::mark] == 1) {
      row.item[par::spannedStaves] = isLowest ? row.item[par::spannedStaves] : 0.0F;
      isClosed = isClosed || isLowest;
    }
  }
  if (!isClosed) {
    page.fail(files.files.front(), 0, "is of a page whose lowest staff has no barline at its left end");
  }
}

/// Counts upward from the bottom of the page, and then gives the top system the lowest number. A staff that is below
/// all bottom staves keeps the P18 of its file.
void numberSystems(const PageFiles& files, std::int16_t& base, PageRows& page) {
  std::int16_t count = 0;
  for (std::size_t left = page.rows.size(); left > 0; --left) {
    PageRow& row = page.rows[left - 1];
    if (!isStaff(row)) {
      continue;
    }
    count = static_cast<std::int16_t>(count + (row.item[par::mark] == 1 ? 1 : 0));
    row.item[par::system] = count == 0 ? row.item[par::system] : static_cast<float>(count);
  }
  count = 0;
  raise(page, par::system, count);
  for (PageRow& row : page.rows) {
    if (isStaff(row)) {
      const float fromTop = static_cast<float>(count) - row.item[par::system] + 1;
      row.item[par::system] = static_cast<float>(base) + fromTop;
    }
  }
  const auto next = roundedTo16Bits(static_cast<double>(base) + count);
  if (!next) {
    page.fail(files.files.front(), 0, "has a system with a number that 16 bits do not hold");
  }
  base = next.value_or(base);
}

/// An analysis counts the cue markers that refer to the instruments of the page, and looks for the others.
void checkCues(PageRows& page) {
  std::map<float, int> cues;
  int references = 0;
  for (const PageRow& row : page.rows) {
    if (isCue(row)) {
      if (page.rows.size() == fullTable) {
        page.fail(row.file, row.number, "is a cue marker of a page with as many items as an analysis can hold");
      }
      if (!std::isnan(row.item[par::cuedInstrument])) {
        ++cues[row.item[par::cuedInstrument]];
      }
    }
  }
  for (const PageRow& row : page.rows) {
    const bool refersTo = isStaff(row) && !std::isnan(row.item[par::instrument]) && row.item[par::instrument] != 0;
    const auto known = refersTo ? cues.find(row.item[par::instrument]) : cues.end();
    references += known == cues.end() ? 0 : known->second;
    if (references > std::numeric_limits<std::int16_t>::max()) {
      page.fail(row.file, row.number, "is of an instrument with more cue markers than 16 bits count");
    }
  }
}

}  // namespace

void findSystems(const PageFiles& files, std::int16_t& base, PageRows& page) {
  markBottomStaves(page);
  if (files.isMultifile()) {
    joinFiles(files, page);
  }
  if (!page.failed()) {
    numberSystems(files, base, page);
    checkCues(page);
  }
}

}  // namespace kiv::proof
