#include "bench/literal/output.h"
#include "mus/exch.h"

namespace kiv::literal {
namespace {

struct InstrumentStaves {
  std::size_t n = 0;
  Column<std::int16_t> staff;
  Column<float> key;
};

InstrumentStaves listStaves(Conversion& run) {
  InstrumentStaves list;
  for (int i = 1; i <= run.items.itemCount(); ++i) {
    if (isOfType(run.items, i, type::staff)) {
      ++list.n;
      list.staff.resize(list.n);
      list.key.resize(list.n);
      list.staff[list.n] = whole(run, i, par::staff);
      list.key[list.n] = run.items.itemPar(i, par::instrument);
    }
  }
  return list;
}

float keyOf(Conversion& run, const InstrumentStaves& list, std::int16_t staff) {
  for (std::size_t k = 1; k <= list.n; ++k) {
    if (list.staff[k] == staff) {
      return list.key[k];
    }
  }
  run.host.fatal("Sort problem");
}

bool outOfOrder(const ItemTable& items, const Column<float>& sortKey, int i) {
  const float key = sortKey[static_cast<std::size_t>(i)];
  const float nextKey = sortKey[static_cast<std::size_t>(i) + 1];
  if (key < nextKey) {
    return true;
  }
  if (key == nextKey && items.itemPar(i, par::position) > items.itemPar(i + 1, par::position)) {
    return true;
  }
  return key == nextKey && items.itemPar(i, par::position) == items.itemPar(i + 1, par::position) &&
         items.itemPar(i, par::height) > items.itemPar(i + 1, par::height);
}

void exchange(Conversion& run, Column<float>& sortKey, int i) {
  exch(run.host, &sortKey[static_cast<std::size_t>(i)], &sortKey[static_cast<std::size_t>(i) + 1]);
  for (int p = 1; p <= parameterCount; ++p) {
    exch(run.host, &run.items.itemPar(i, p), &run.items.itemPar(i + 1, p));
  }
  exch(run.host, &run.items.itemText(i), &run.items.itemText(i + 1));
}

void bubbleSort(Conversion& run, Column<float>& sortKey) {
  int swaps = 1;
  while (swaps != 0) {
    swaps = 0;
    for (int i = 1; i <= run.items.itemCount() - 1; ++i) {
      if (outOfOrder(run.items, sortKey, i)) {
        exchange(run, sortKey, i);
        ++swaps;
      }
    }
  }
}

void renumberStaves(ItemTable& items, Column<float>& sortKey) {
  float counter = 1;
  sortKey[1] = 1;
  for (int i = 1; i <= items.itemCount() - 1; ++i) {
    if (items.itemPar(i + 1, par::staff) != items.itemPar(i, par::staff)) {
      ++counter;
    }
    sortKey[static_cast<std::size_t>(i) + 1] = counter;
  }
  for (int i = 1; i <= items.itemCount(); ++i) {
    items.itemPar(i, par::staff) = sortKey[static_cast<std::size_t>(i)];
  }
}

void moveSystemBarline(Conversion& run, std::size_t staves) {
  for (int i = 1; i <= run.items.itemCount(); ++i) {
    if (isOfType(run.items, i, type::barline) &&
        run.items.itemPar(i, par::spannedStaves) == static_cast<float>(staves)) {
      run.items.itemPar(i, par::staff) = 1;
      return;
    }
  }
  run.host.fatal("System barline problem.");
}

}  // namespace

void sortOnInstrument(Conversion& run) {
  const InstrumentStaves list = listStaves(run);
  const auto count = static_cast<std::size_t>(run.items.itemCount());
  Column<float> sortKey;
  sortKey.resize(count > 0 ? count : 1);
  for (int i = 1; i <= run.items.itemCount(); ++i) {
    sortKey[static_cast<std::size_t>(i)] = keyOf(run, list, whole(run, i, par::staff));
  }
  bubbleSort(run, sortKey);
  renumberStaves(run.items, sortKey);
  moveSystemBarline(run, list.n);
}

}  // namespace kiv::literal
