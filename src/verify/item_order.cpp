#include "verify/item_order.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <utility>

namespace kiv::proof {
namespace {

bool isBefore(const OrderKey& a, const OrderKey& b) {
  if (a.first != b.first) {
    return a.first > b.first;
  }
  if (a.position != b.position) {
    return a.position < b.position;
  }
  return a.par4 < b.par4;
}

bool hasNaN(const OrderKey& key) {
  return std::isnan(key.first) || std::isnan(key.position) || std::isnan(key.par4);
}

bool exchangeNeighbors(const std::vector<OrderKey>& keys, std::vector<std::size_t>& order) {
  bool exchanged = false;
  for (std::size_t i = 0; i + 1 < order.size(); ++i) {
    if (isBefore(keys[order[i + 1]], keys[order[i]])) {
      std::swap(order[i], order[i + 1]);
      exchanged = true;
    }
  }
  return exchanged;
}

}  // namespace

std::vector<std::size_t> orderOf(const std::vector<OrderKey>& keys) {
  std::vector<std::size_t> order(keys.size());
  std::iota(order.begin(), order.end(), std::size_t{0});
  if (std::none_of(keys.begin(), keys.end(), hasNaN)) {
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return isBefore(keys[a], keys[b]); });
    return order;
  }
  while (exchangeNeighbors(keys, order)) {
  }
  return order;
}

}  // namespace kiv::proof
