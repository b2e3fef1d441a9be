#include "tests/reference/barlines.h"

#include "messages/run_time_errors.h"
#include "mus/exch.h"

namespace kiv::reference {

void collectBarlines(Conversion& run) {
  BarlineList& list = run.barlines;
  list = BarlineList();
  for (int i = 1; i <= run.items.itemCount(); ++i) {
    if (run.items.type(i) == ItemType::barline && run.items.itemPar(i, par::staff) == 1 &&
        run.items.itemPar(i, par::kind) < lowestBraceKind) {
      ++list.count;
      list.position.growTo(list.count);
      list.kind.growTo(list.count);
      list.position[list.count] = run.items.itemPar(i, par::position);
      list.kind[list.count] = whole(run.items, i, par::kind);
    }
  }
}

void sortBarlines(BarlineList& list) {
  bool swapped = true;
  while (swapped) {
    swapped = false;
    for (std::size_t j = 1; j + 1 <= list.count; ++j) {
      if (list.position[j] > list.position[j + 1]) {
        exch(list.position[j], list.position[j + 1]);
        exch(list.kind[j], list.kind[j + 1]);
        swapped = true;
      }
    }
  }
}

namespace {

void appendModel(Conversion& run, int staffItem) {
  const std::int16_t instr = whole(run.items, staffItem, par::instrument);
  for (std::size_t b = 2; b <= run.barlines.count; ++b) {
    appendStaffBarline(run, instr, run.items.itemPar(staffItem, par::staff), run.barlines.position[b],
                       run.barlines.kind[b]);
  }
}

void appendSystemBarline(Conversion& run, int staves) {
  if (run.barlines.count == 0) {
    endProgram(messages::subscriptOutOfRange({.file = run.items.file()}));
  }
  Item item(ItemType::barline, 1, run.barlines.position[1]);
  item[par::spannedStaves] = static_cast<float>(staves);
  item[par::kind] = run.barlines.kind[1];
  run.items.store_item(item);
}

}  // namespace

void normalizeBarlines(Conversion& run) {
  const int before = run.items.itemCount();
  for (int i = 1; i <= before; ++i) {
    if (run.items.type(i) == ItemType::barline) {
      run.items.item(i).setType(ItemType::deleted);
    }
  }
  int staves = 0;
  for (int i = 1; i <= before; ++i) {
    if (isStaff(run.items, i)) {
      ++staves;
      appendModel(run, i);
    }
  }
  appendSystemBarline(run, staves);
}

}  // namespace kiv::reference
