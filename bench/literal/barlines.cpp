#include "bench/literal/barlines.h"

#include "bench/literal/order_table.h"
#include "mus/exch.h"

namespace kiv::literal {

void collectBarlines(Conversion& run) {
  BarlineList& list = run.barlines;
  list = BarlineList();
  for (int i = 1; i <= run.items.itemCount(); ++i) {
    if (isOfType(run.items, i, type::barline) && run.items.itemPar(i, par::staff) == 1 &&
        run.items.itemPar(i, par::kind) < lowestBraceKind) {
      ++list.count;
      list.position.resize(list.count);
      list.kind.resize(list.count);
      list.position[list.count] = run.items.itemPar(i, par::position);
      list.kind[list.count] = whole(run, i, par::kind);
    }
  }
}

void sortBarlines(Conversion& run) {
  BarlineList& list = run.barlines;
  bool swapped = true;
  while (swapped) {
    swapped = false;
    for (std::size_t j = 1; j + 1 <= list.count; ++j) {
      if (list.position[j] > list.position[j + 1]) {
        exch(run.host, &list.position[j], &list.position[j + 1]);
        exch(run.host, &list.kind[j], &list.kind[j + 1]);
        swapped = true;
      }
    }
  }
}

namespace {

void appendModel(Conversion& run, int staffItem) {
  const std::int16_t instr = whole(run, staffItem, par::instrument);
  for (std::size_t b = 2; b <= run.barlines.count; ++b) {
    Item item = newItem(type::barline, run.items.itemPar(staffItem, par::staff), run.barlines.position[b]);
    item.par[par::spannedStaves] = 1;
    item.par[par::kind] = run.barlines.kind[b];
    item.par[par::spanCode] = setDetailBarline(run, instr);
    if (item.par[par::spanCode] == 1) {
      item.par[par::spanSize] = 5;
    }
    run.items.store_item(run.host, item);
  }
}

void appendSystemBarline(Conversion& run, int staves) {
  if (run.barlines.count == 0) {
    run.host.runTimeError(RunTimeError::subscriptOutOfRange, run.musFileName);
  }
  Item item = newItem(type::barline, 1, run.barlines.position[1]);
  item.par[par::spannedStaves] = static_cast<float>(staves);
  item.par[par::kind] = run.barlines.kind[1];
  run.items.store_item(run.host, item);
}

}  // namespace

void normalizeBarlines(Conversion& run) {
  const int before = run.items.itemCount();
  for (int i = 1; i <= before; ++i) {
    if (isOfType(run.items, i, type::barline)) {
      run.items.itemPar(i, par::type) = type::deleted;
    }
  }
  int staves = 0;
  for (int i = 1; i <= before; ++i) {
    if (isOfType(run.items, i, type::staff)) {
      ++staves;
      appendModel(run, i);
    }
  }
  appendSystemBarline(run, staves);
}

}  // namespace kiv::literal
