#include "tests/reference/system_staves.h"

#include "messages/conversion_messages.h"
#include "messages/page_messages.h"
#include "messages/run_time_errors.h"
#include "tests/reference/page_reader.h"

namespace kiv::reference {
namespace {

/// Appends the items of one staff of the file that the table has begun last, under its new staff number.
void readStaff(Files& files, std::int16_t staff, std::int16_t newStaff, ItemTable& items) {
  const std::string bytes = readWhole(files, items.file()).value_or("");
  PageReader page(bytes);
  ReadStatus status = page.readItem();
  for (; status == ReadStatus::itemRead; status = page.readItem()) {
    if (page.current[par::staff] == static_cast<float>(staff)) {
      page.current[par::staff] = newStaff;
      items.newItem(static_cast<std::int16_t>(page.itemsInFile)) = page.current;
    }
  }
  if (status == ReadStatus::structuralError) {
    endProgram(messages::structuralError(items.file(), page.itemsInFile, files.currentFolder()));
  }
  if (status == ReadStatus::tooManyParameters) {
    endProgram(messages::subscriptOutOfRange({.file = items.file(), .item = page.itemsInFile}));
  }
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
    if (items.type(i) == ItemType::barline && items.itemPar(i, par::staff) == 1 &&
        items.itemPar(i, par::position) == position) {
      return true;
    }
  }
  return false;
}

void closeSingleStaff(Conversion& run, int staffItem) {
  const float position = run.items.itemPar(staffItem, par::position);
  if (!hasLeftBarline(run.items, position)) {
    appendStaffBarline(run, whole(run.items, staffItem, par::instrument), 1, position, 0);
  }
}

void checkStaves(Conversion& run, std::int16_t system) {
  int staves = 0;
  int lastOnStaffOne = 0;
  for (int i = 1; i <= run.items.itemCount(); ++i) {
    if (isStaff(run.items, i)) {
      ++staves;
      if (run.items.itemPar(i, par::staff) == 1) {
        lastOnStaffOne = i;
      }
    }
  }
  if (staves == 0) {
    endProgram(messages::noStaves(system));
  }
  if (staves == 1 && lastOnStaffOne != 0) {
    closeSingleStaff(run, lastOnStaffOne);
  }
}

}  // namespace

void readSystem(Conversion& run, const StaffList& list, std::int16_t system) {
  run.items.clear();
  for (std::size_t k = 1; k <= list.count; ++k) {
    run.items.beginFile(list.file[k]);
    readStaff(run.files, list.staff[k], list.newStaff[k], run.items);
  }
  startAtStaffOne(run.items);
  checkStaves(run, system);
}

}  // namespace kiv::reference
