#include "mus/item_table.h"

#include <utility>

namespace kiv {

void ItemTable::store_item(Host& host, const Item& item) {
  if (itemCount_ == itemLimit) {
    host.fatal("MUS file too big for operation. Hit OK to terminate.");
  }
  ++itemCount_;
  row(itemCount_) = item;
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

}  // namespace kiv
