#include "messages/conversion_messages.h"
#include "mus/exch.h"
#include "tests/reference/conversion.h"
#include "tests/reference/output.h"

namespace kiv::reference {
namespace {

struct InstrumentStaves {
  std::size_t count = 0;
  Column<std::int16_t> staff;
  Column<float> key;
};

InstrumentStaves listStaves(const ItemTable& items) {
  InstrumentStaves list;
  for (int i = 1; i <= items.itemCount(); ++i) {
    if (isStaff(items, i)) {
      ++list.count;
      list.staff.growTo(list.count);
      list.key.growTo(list.count);
      list.staff[list.count] = whole(items, i, par::staff);
      list.key[list.count] = items.itemPar(i, par::instrument);
    }
  }
  return list;
}

float keyOf(const InstrumentStaves& list, std::int16_t staff) {
  for (std::size_t k = 1; k <= list.count; ++k) {
    if (list.staff[k] == staff) {
      return list.key[k];
    }
  }
  endProgram(messages::sortProblem());
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

void exchange(User& user, ItemTable& items, Column<float>& sortKey, int i) {
  exch(user, &sortKey[static_cast<std::size_t>(i)], &sortKey[static_cast<std::size_t>(i) + 1]);
  for (int p = 1; p <= parameterCount; ++p) {
    exch(user, &items.itemPar(i, p), &items.itemPar(i + 1, p));
  }
  exch(user, &items.itemText(i), &items.itemText(i + 1));
}

void bubbleSort(User& user, ItemTable& items, Column<float>& sortKey) {
  int swaps = 1;
  while (swaps != 0) {
    swaps = 0;
    for (int i = 1; i <= items.itemCount() - 1; ++i) {
      if (outOfOrder(items, sortKey, i)) {
        exchange(user, items, sortKey, i);
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

void moveSystemBarline(ItemTable& items, std::size_t staves) {
  for (int i = 1; i <= items.itemCount(); ++i) {
    if (items.type(i) == ItemType::barline && items.itemPar(i, par::spannedStaves) == static_cast<float>(staves)) {
      items.itemPar(i, par::staff) = 1;
      return;
    }
  }
  endProgram(messages::systemBarlineProblem());
}

}  // namespace

void sortOnInstrument(User& user, ItemTable& items) {
  const InstrumentStaves list = listStaves(items);
  const auto count = static_cast<std::size_t>(items.itemCount());
  Column<float> sortKey;
  sortKey.growTo(count > 0 ? count : 1);
  for (int i = 1; i <= items.itemCount(); ++i) {
    sortKey[static_cast<std::size_t>(i)] = keyOf(list, whole(items, i, par::staff));
  }
  bubbleSort(user, items, sortKey);
  renumberStaves(items, sortKey);
  moveSystemBarline(items, list.count);
}

}  // namespace kiv::reference
