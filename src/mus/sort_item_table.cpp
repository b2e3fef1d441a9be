#include "mus/sort_item_table.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "mus/exch.h"

namespace kiv {
namespace {

bool hasNaN(const SortKey& key) {
  return std::isnan(key.first) || std::isnan(key.position) || std::isnan(key.par4);
}

const SortKey& keyOf(const std::vector<SortKey>& keys, std::int16_t row) {
  return keys[static_cast<std::size_t>(row - 1)];
}

void exchangeInPasses(Host& host, const std::vector<SortKey>& keys, std::vector<std::int16_t>& order) {
  bool exchanged = true;
  while (exchanged) {
    exchanged = false;
    for (std::size_t i = 1; i < order.size(); ++i) {
      if (outOfOrder(keyOf(keys, order[i - 1]), keyOf(keys, order[i]))) {
        exch(host, &order[i - 1], &order[i]);
        exchanged = true;
      }
    }
  }
}

}  // namespace

std::vector<std::int16_t> sortedRows(Host& host, const std::vector<SortKey>& keys) {
  std::vector<std::int16_t> order(keys.size());
  std::iota(order.begin(), order.end(), std::int16_t{1});
  if (std::any_of(keys.begin(), keys.end(), hasNaN)) {
    exchangeInPasses(host, keys, order);
    return order;
  }
  std::stable_sort(order.begin(), order.end(),
                   [&](std::int16_t a, std::int16_t b) { return outOfOrder(keyOf(keys, b), keyOf(keys, a)); });
  return order;
}

void sort_item_table(Host& host, ItemTable& table) {
  std::vector<SortKey> keys;
  keys.reserve(static_cast<std::size_t>(table.itemCount()));
  for (int i = 1; i <= table.itemCount(); ++i) {
    keys.push_back({table.itemPar(i, par::staff), table.itemPar(i, par::position), table.itemPar(i, par::height)});
  }
  table.reorder(sortedRows(host, keys));
}

}  // namespace kiv
