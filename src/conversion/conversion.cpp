#include "conversion/conversion.h"

#include <algorithm>

#include "conversion/barlines.h"
#include "conversion/insert_staff.h"
#include "conversion/set_staff_attributes.h"
#include "messages/conversion_messages.h"
#include "sort/sort_on_instrument.h"

namespace kiv {
namespace {

constexpr float lowestNumber = 1;

/// Numbers the staves from 1, of which this is the lowest number.
void numberFromOne(ItemTable& items, float lowest) {
  if (lowest == lowestNumber) {
    return;
  }
  for (int i = 1; i <= items.itemCount(); ++i) {
    items.itemPar(i, par::staff) = items.itemPar(i, par::staff) - lowest + 1;
  }
}

bool hasBarlineAt(const ItemTable& items, float position) {
  for (const int i : items.signRows()) {
    if (items.type(i) == ItemType::barline && items.itemPar(i, par::staff) == lowestNumber &&
        items.itemPar(i, par::position) == position) {
      return true;
    }
  }
  return false;
}

}  // namespace

Conversion::Conversion(Files& files, const ConversionTables& tables, RestStaves restStaves)
    : tables_(tables), report_(readReport(files)), pages_(files) {
  setInstrumentOrder(report_.instruments, tables_.order);
  if (restStaves == RestStaves::fitting) {
    learnGroup();
  }
}

/// Reads the whole group before the first system is converted.
void Conversion::learnGroup() {
  fitted_.emplace();
  for (int system = 1; system <= systemCount(); ++system) {
    const auto number = static_cast<std::int16_t>(system);
    const std::vector<StaffRecord> staves = stavesOf(report_, number);
    fitted_->learn(tables_.items, readSystem(staves, number));
    dropFinishedPages(staves, number);
  }
  fitted_->finish();
}

void Conversion::require(const RequiredInstrument& instrument) {
  OrderTable& order = tables_.order;
  if (order.find(instrument.instr) != 0) {
    return;
  }
  order.add(instrument.instr);
  OrderEntry& entry = order.entry(order.count());
  entry = {};  // an earlier conversion may have left another instrument here
  entry.instr = instrument.instr;
  entry.size = instrument.size;
  entry.lines = instrument.lines;
  entry.key = instrument.key;
  if (instrument.clef.isKnown() && tables_.firstClefs.find(instrument.instr) == nullptr) {
    tables_.firstClefs.add({instrument.instr, instrument.clef, instrument.clefHeight});
  }
}

/// Gives a system of a single staff the barline at its left edge that it may lack.
void Conversion::closeSingleStaff(int staff) {
  ItemTable& items = tables_.items;
  const float position = items.itemPar(staff, par::position);
  if (items.itemPar(staff, par::staff) == lowestNumber && !hasBarlineAt(items, position)) {
    const std::int16_t instr = wholePar(items, staff, par::instrument);
    items.store_item(staffBarline(tables_.order, instr, lowestNumber, {position, 0}));
  }
}

void Conversion::readStaves(const std::vector<StaffRecord>& staves) {
  ItemTable& items = tables_.items;
  items.clear();
  float lowest = 9999;
  for (const StaffRecord& staff : staves) {
    items.beginFile(staff.file);
    const std::int16_t itemsBefore = items.itemCount();
    readStaff(staff.staff, staff.newStaff, pages_, items);
    if (items.itemCount() > itemsBefore) {
      lowest = std::min(lowest, static_cast<float>(staff.newStaff));
    }
  }
  numberFromOne(items, lowest);
}

void Conversion::checkStaves(std::int16_t system) {
  int staves = 0;
  int last = 0;
  for (const int i : tables_.items.signRows()) {
    if (isStaff(tables_.items, i)) {
      ++staves;
      last = i;
    }
  }
  if (staves == 0) {
    endProgram(messages::noStaves(system));
  }
  if (staves == 1) {
    closeSingleStaff(last);
  }
}

void Conversion::countPresent() {
  OrderTable& order = tables_.order;
  for (int k = 1; k <= order.count(); ++k) {
    order.entry(k).present = 0;
  }
  for (const int i : tables_.items.signRows()) {
    if (!isStaff(tables_.items, i)) {
      continue;
    }
    const std::int16_t instr = wholePar(tables_.items, i, par::instrument);
    const int k = order.find(instr);
    if (k == 0) {
      endProgram(messages::instrumentNotInOrder(instr));
    }
    ++order.entry(k).present;
  }
}

/// Drops the files of which no later system needs a staff.
void Conversion::dropFinishedPages(const std::vector<StaffRecord>& staves, std::int16_t system) {
  for (const StaffRecord& staff : staves) {
    if (report_.lastUseOf(staff.file) <= system) {
      pages_.drop(staff.file);
    }
  }
}

/// Makes the item table hold the real staves. Returns the model of the barlines.
BarlineList Conversion::readSystem(const std::vector<StaffRecord>& staves, std::int16_t system) {
  readStaves(staves);
  checkStaves(system);
  setStaffAttributes(tables_.items, tables_.order);
  BarlineList barlines = collectBarlines(tables_.items);
  collectBraces(tables_.items, braces_);
  sortBarlines(barlines);
  return barlines;
}

void Conversion::addMissing(std::int16_t system, const BarlineList& barlines) {
  OrderTable& order = tables_.order;
  if (fitted_) {
    fitted_->addMissing(system, tables_.items, order, barlines);
    return;
  }
  for (int k = 1; k <= order.count(); ++k) {
    if (order.entry(k).present == 0) {
      insertStaff(tables_.items, order.entry(k).instr, order, tables_.firstClefs, barlines);
    }
  }
}

void Conversion::convertSystem(std::int16_t system) {
  const std::vector<StaffRecord> staves = stavesOf(report_, system);
  const BarlineList barlines = readSystem(staves, system);
  countPresent();
  addMissing(system, barlines);
  normalizeBarlines(tables_.items, tables_.order, barlines);
  dropFinishedPages(staves, system);
}

void Conversion::finishSystem() {
  sortOnInstrument(tables_.items);
  if (fitted_) {
    fitted_->addBraces(tables_.items);
  } else {
    outputBraces(tables_.items, braces_);
  }
}

void showInstrumentNumbers(ItemTable& items) {
  constexpr float leftOfStaff = 4;
  constexpr float textSize = 0.7F;
  for (const int i : items.signRows()) {
    if (!isStaff(items, i)) {
      continue;
    }
    Item number(ItemType::instrumentNumber, items.itemPar(i, par::staff),
                items.itemPar(i, par::position) - leftOfStaff);
    number[par::shownNumber] = items.itemPar(i, par::instrument);
    number[par::textSize] = textSize;
    items.store_item(number);
  }
}

}  // namespace kiv
