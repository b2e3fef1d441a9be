#include "mus/item_table.h"

#include <utility>

#include "mus/number.h"

namespace kiv {

void ItemTable::refuseItem(Host& host) {
  host.fatal("MUS file too big for operation. Hit OK to terminate.");
}

void ItemTable::reorder(const std::vector<std::int16_t>& order) {
  const auto source = [&](int i) { return int{order[static_cast<std::size_t>(i - 1)]}; };
  const auto put = [this](Item&& item, int i) {
    const float own = row(i).par[0];
    row(i) = std::move(item);
    row(i).par[0] = own;
  };
  std::vector<bool> placed(order.size() + 1);
  for (int start = 1; start <= static_cast<int>(order.size()); ++start) {
    if (placed[static_cast<std::size_t>(start)] || source(start) == start) {
      continue;
    }
    // Rows that only change places among themselves form a ring.
    Item first = std::move(row(start));
    int i = start;
    for (; source(i) != start; i = source(i)) {
      put(std::move(row(source(i))), i);
      placed[static_cast<std::size_t>(i)] = true;
    }
    put(std::move(first), i);
    placed[static_cast<std::size_t>(i)] = true;
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
