#include "mus/sort_item_table.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <numeric>
#include <utility>

#include "mus/exch.h"

namespace kiv {
namespace {

using Rows = std::vector<std::int16_t>;

bool hasNaN(const SortKey& key) {
  return std::isnan(key.first) || std::isnan(key.position) || std::isnan(key.par4);
}

const SortKey& keyOf(const std::vector<SortKey>& keys, std::int16_t row) {
  return keys[static_cast<std::size_t>(row - 1)];
}

void exchangeInPasses(Host& host, const std::vector<SortKey>& keys, Rows& order) {
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

/// First keys that are whole and smaller than this, as those of all usual pages are, take the short way.
constexpr std::size_t endOfUsual = 1024;

bool isUsual(const SortKey& key) {
  return key.first >= 0 && key.first < endOfUsual && key.first == std::floor(key.first);
}

/// The rows by their usual first keys, downward; rows of one key as they stand.
void countInto(Rows& order, const std::vector<SortKey>& keys) {
  std::array<int, endOfUsual> next{};
  for (const SortKey& key : keys) {
    ++next[static_cast<std::size_t>(key.first)];
  }
  int start = 0;
  std::for_each(next.rbegin(), next.rend(), [&](int& place) { start += std::exchange(place, start); });
  for (std::size_t i = 0; i < keys.size(); ++i) {
    order[static_cast<std::size_t>(next[static_cast<std::size_t>(keys[i].first)]++)] = static_cast<std::int16_t>(i + 1);
  }
}

/// The end of the rows that have the first key of the row at start.
Rows::iterator endOfGroup(Rows::iterator start, Rows& order, const std::vector<SortKey>& keys) {
  const float first = keyOf(keys, *start).first;
  return std::find_if(start, order.end(), [&](std::int16_t row) { return keyOf(keys, row).first != first; });
}

}  // namespace

std::vector<std::int16_t> sortedRows(Host& host, const std::vector<SortKey>& keys) {
  std::vector<std::int16_t> order(keys.size());
  std::iota(order.begin(), order.end(), std::int16_t{1});
  if (std::any_of(keys.begin(), keys.end(), hasNaN)) {
    exchangeInPasses(host, keys, order);
    return order;
  }
  const auto isBefore = [&](std::int16_t a, std::int16_t b) { return outOfOrder(keyOf(keys, b), keyOf(keys, a)); };
  const bool usual = std::all_of(keys.begin(), keys.end(), isUsual);
  if (usual) {
    countInto(order, keys);
  }
  auto end = order.begin();
  for (auto start = end; start != order.end(); start = end) {
    end = usual ? endOfGroup(start, order, keys) : order.end();
    if (!std::is_sorted(start, end, isBefore)) {  // many staves are listed from left to right
      std::stable_sort(start, end, isBefore);
    }
  }
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
