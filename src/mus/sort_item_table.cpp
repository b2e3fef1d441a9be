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

void exchangeInPasses(const std::vector<SortKey>& keys, Rows& order) {
  bool exchanged = true;
  while (exchanged) {
    exchanged = false;
    for (std::size_t i = 1; i < order.size(); ++i) {
      if (outOfOrder(keyOf(keys, order[i - 1]), keyOf(keys, order[i]))) {
        exch(order[i - 1], order[i]);
        exchanged = true;
      }
    }
  }
}

/// First keys that are whole and smaller than this take the fast path.
constexpr std::size_t endOfSmall = 1024;

bool isSmallWhole(const SortKey& key) {
  return key.first >= 0 && key.first < endOfSmall && key.first == static_cast<float>(static_cast<int>(key.first)) &&
         !std::isunordered(key.position, key.par4);
}

/// The rows by their small whole first keys, descending; rows with equal keys keep their order.
void countInto(Rows& order, const std::vector<SortKey>& keys) {
  const auto rank = [](const SortKey& key) { return static_cast<std::size_t>(key.first); };
  std::array<int, endOfSmall> next{};
  std::size_t highest = 0;
  for (const SortKey& key : keys) {
    highest = std::max(highest, rank(key));
    ++next[rank(key)];
  }
  int start = 0;
  for (std::size_t i = highest + 1; i > 0; --i) {
    start += std::exchange(next[i - 1], start);
  }
  std::int16_t row = 0;
  for (const SortKey& key : keys) {
    order[static_cast<std::size_t>(next[rank(key)]++)] = ++row;
  }
}

}  // namespace

std::vector<std::int16_t> sortedRows(const std::vector<SortKey>& keys) {
  Rows order(keys.size());
  const auto isBefore = [&](std::int16_t a, std::int16_t b) { return outOfOrder(keyOf(keys, b), keyOf(keys, a)); };
  const auto isHigher = [&](std::int16_t a, std::int16_t b) { return keyOf(keys, a).first > keyOf(keys, b).first; };
  if (std::all_of(keys.begin(), keys.end(), isSmallWhole)) {
    countInto(order, keys);
    // Many staves are listed from left to right already.
    for (auto row = order.begin(); (row = std::is_sorted_until(row, order.end(), isBefore)) != order.end();) {
      const auto [start, end] = std::equal_range(order.begin(), order.end(), *row, isHigher);
      // What a conversion has added to a staff is at its end.
      std::stable_sort(row, end, isBefore);
      std::inplace_merge(start, row, end, isBefore);
      row = end;
    }
    return order;
  }
  std::iota(order.begin(), order.end(), std::int16_t{1});
  if (std::any_of(keys.begin(), keys.end(), hasNaN)) {
    exchangeInPasses(keys, order);
  } else {
    std::stable_sort(order.begin(), order.end(), isBefore);
  }
  return order;
}

void sort_item_table(ItemTable& table) {
  std::vector<SortKey> keys;
  keys.reserve(static_cast<std::size_t>(table.itemCount()));
  for (int i = 1; i <= table.itemCount(); ++i) {
    keys.push_back({table.itemPar(i, par::staff), table.itemPar(i, par::position), table.itemPar(i, par::height)});
  }
  table.reorder(sortedRows(keys));
}

}  // namespace kiv
