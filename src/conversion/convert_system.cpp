#include "conversion/convert_system.h"

#include <algorithm>

#include "conversion/barlines.h"
#include "conversion/insert_staff.h"
#include "conversion/set_staff_attributes.h"

namespace kiv {
namespace {

constexpr float lowestNumber = 1;

void numberFromOne(ItemTable& items) {
  float smallest = 9999;
  for (int i = 1; i <= items.itemCount(); ++i) {
    smallest = std::min(smallest, items.itemPar(i, par::staff));
  }
  if (smallest == lowestNumber) {
    return;
  }
  for (int i = 1; i <= items.itemCount(); ++i) {
    items.itemPar(i, par::staff) = items.itemPar(i, par::staff) - smallest + 1;
  }
}

bool hasBarlineAt(const ItemTable& items, float position) {
  for (int i = 1; i <= items.itemCount(); ++i) {
    if (items.itemPar(i, par::type) == type::barline && items.itemPar(i, par::staff) == lowestNumber &&
        items.itemPar(i, par::position) == position) {
      return true;
    }
  }
  return false;
}

/// Gives a system of a single staff the barline at its left edge that it may lack.
void closeSingleStaff(const SystemPage& page, const OrderTable& order, int staff) {
  const float position = page.items.itemPar(staff, par::position);
  if (page.items.itemPar(staff, par::staff) == lowestNumber && !hasBarlineAt(page.items, position)) {
    const std::int16_t instr = page.whole(staff, par::instrument);
    page.append(staffBarline(order, instr, lowestNumber, {position, 0}));
  }
}

void readSystem(const SystemPage& page, const std::vector<StaffRecord>& staves, std::string& musFileName,
                KeptFiles& files) {
  page.items.restart();
  for (const StaffRecord& staff : staves) {
    musFileName = staff.file;
    readStaff(page, staff.staff, staff.newStaff, files);
  }
  numberFromOne(page.items);
}

void checkStaves(const SystemPage& page, std::int16_t system, const OrderTable& order) {
  int staves = 0;
  int last = 0;
  for (int i = 1; i <= page.items.itemCount(); ++i) {
    if (isStaff(page.items, i)) {
      ++staves;
      last = i;
    }
  }
  if (staves == 0) {
    page.host.fatal("No staves encountered on this page. System = " + std::to_string(system));
  }
  if (staves == 1) {
    closeSingleStaff(page, order, last);
  }
}

void countPresent(const SystemPage& page, OrderTable& order) {
  for (int k = 1; k <= order.count(); ++k) {
    order.entry(k).present = 0;
  }
  for (int i = 1; i <= page.items.itemCount(); ++i) {
    if (!isStaff(page.items, i)) {
      continue;
    }
    const std::int16_t instr = page.whole(i, par::instrument);
    const int k = order.find(instr);
    if (k == 0) {
      page.host.fatal("Serious logic error - Instrument not in order table: " + std::to_string(instr));
    }
    ++order.entry(k).present;
  }
}

}  // namespace

void convertSystem(Host& host, std::int16_t system, const std::vector<StaffRecord>& staves, std::string& musFileName,
                   ItemTable& items, OrderTable& order, BraceTable& braces, const FirstClefTable& firstClefs,
                   KeptFiles& files) {
  const SystemPage page{host, musFileName, items};
  readSystem(page, staves, musFileName, files);
  checkStaves(page, system, order);
  setStaffAttributes(items, order);
  BarlineList barlines = collectBarlines(page);
  collectBraces(page, braces);
  sortBarlines(host, barlines);
  countPresent(page, order);
  for (int k = 1; k <= order.count(); ++k) {
    if (order.entry(k).present == 0) {
      insertStaff(page, order.entry(k).instr, order, firstClefs, barlines);
    }
  }
  normalizeBarlines(page, order, barlines);
}

void showInstrumentNumbers(const SystemPage& page) {
  constexpr float leftOfStaff = 4;
  constexpr float textSize = 0.7F;
  const int before = page.items.itemCount();
  for (int i = 1; i <= before; ++i) {
    if (!isStaff(page.items, i)) {
      continue;
    }
    Item number = newItem(type::instrumentNumber, page.items.itemPar(i, par::staff),
                          page.items.itemPar(i, par::position) - leftOfStaff);
    number.par[par::shownNumber] = page.items.itemPar(i, par::instrument);
    number.par[par::textSize] = textSize;
    page.append(number);
  }
}

}  // namespace kiv
