#include "mus/item_table.h"

#include <utility>

#include "mus/number.h"

namespace kiv {

void ItemTable::refuseItem(Host& host) {
  host.fatal("MUS file too big for operation. Hit OK to terminate.");
}

void ItemTable::reorder(const std::vector<std::int16_t>& order) {
  std::vector<Item> sorted;
  sorted.reserve(order.size());
  for (const std::int16_t i : order) {
    sorted.push_back(std::move(row(i)));
  }
  int next = 1;
  for (Item& item : sorted) {
    item.par[0] = row(next).par[0];
    row(next++) = std::move(item);
  }
}

std::int16_t wholePar(Host& host, const std::string& musFileName, const ItemTable& table, int i, int p) {
  const auto whole = toInt16(table.itemPar(i, p));
  if (!whole) {
    host.runTimeError(RunTimeError::overflow, musFileName + ", item " + std::to_string(i));
  }
  return *whole;
}

}  // namespace kiv
