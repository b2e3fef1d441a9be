#include "bench/literal/system_staves.h"

#include "base/number.h"
#include "bench/literal/insert_staff.h"
#include "bench/literal/order_table.h"
#include "platform/line_reader.h"

namespace kiv::literal {
namespace {

void addStaff(Conversion& run, StaffList& list, std::string_view line) {
  ++list.count;
  list.instrId.resize(list.count);
  list.stavesUp.resize(list.count);
  list.staff.resize(list.count);
  list.file.resize(list.count);
  list.newStaff.resize(list.count);
  list.instrId[list.count] = wholeValue(run, getElt(line, ",INSTRID"), line);
  list.stavesUp[list.count] = wholeValue(run, getElt(line, ",STAVESUP"), line);
  list.staff[list.count] = wholeValue(run, getElt(line, ",STAFF"), line);
  list.file[list.count] = getElt(line, ",FILE");
  list.newStaff[list.count] = wholeValue(run, getElt(line, ",NEWSTAFF"), line);
}

void startAtStaffOne(ItemTable& items) {
  float smallest = 9999;
  for (int i = 1; i <= items.itemCount(); ++i) {
    if (items.itemPar(i, par::staff) < smallest) {
      smallest = items.itemPar(i, par::staff);
    }
  }
  if (smallest == 1) {
    return;
  }
  for (int i = 1; i <= items.itemCount(); ++i) {
    items.itemPar(i, par::staff) = items.itemPar(i, par::staff) - smallest + 1;
  }
}

bool hasLeftBarline(const ItemTable& items, float position) {
  for (int i = 1; i <= items.itemCount(); ++i) {
    if (isOfType(items, i, type::barline) && items.itemPar(i, par::staff) == 1 &&
        items.itemPar(i, par::position) == position) {
      return true;
    }
  }
  return false;
}

void closeSingleStaff(Conversion& run, int staffItem) {
  const float position = run.items.itemPar(staffItem, par::position);
  if (hasLeftBarline(run.items, position)) {
    return;
  }
  Item item = newItem(type::barline, 1, position);
  item.par[par::spannedStaves] = 1;
  item.par[par::spanCode] = setDetailBarline(run, whole(run, staffItem, par::instrument));
  if (item.par[par::spanCode] == 1) {
    item.par[par::spanSize] = 5;
  }
  run.items.store_item(run.host, item);
}

void checkStaves(Conversion& run, int system) {
  int staves = 0;
  int lastOnStaffOne = 0;
  for (int i = 1; i <= run.items.itemCount(); ++i) {
    if (isOfType(run.items, i, type::staff)) {
      ++staves;
      if (run.items.itemPar(i, par::staff) == 1) {
        lastOnStaffOne = i;
      }
    }
  }
  if (staves == 0) {
    run.host.fatal("No staves encountered on this page. System = " + std::to_string(system));
  }
  if (staves == 1 && lastOnStaffOne != 0) {
    closeSingleStaff(run, lastOnStaffOne);
  }
}

}  // namespace

StaffList stavesOfSystem(Conversion& run, int system) {
  StaffList list;
  auto report = run.host.openInput("KivSystem2.TXT");
  if (!report) {
    run.host.fatal("Failed to open file KivSystem2.TXT");
  }
  LineReader lines(std::move(report));
  while (const auto line = lines.next()) {
    if (line->starts_with('*') || line->find("SYSTEM=") == std::string_view::npos) {
      continue;
    }
    if (numericValue(getElt(*line, "SYSTEM")) == system) {
      addStaff(run, list, *line);
    }
  }
  return list;
}

void readSystem(Conversion& run, const StaffList& list, int system) {
  run.items.restart();
  for (std::size_t k = 1; k <= list.count; ++k) {
    run.musFileName = list.file[k];
    readStaff(run, list.staff[k], list.newStaff[k]);
  }
  startAtStaffOne(run.items);
  checkStaves(run, system);
}

}  // namespace kiv::literal
