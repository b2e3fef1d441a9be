#pragma once

#include <cstddef>
#include <vector>

namespace kiv::proof {

/// What decides where an item comes: the first key descending, then the position and P4 ascending.
struct OrderKey {
  float first = 0;
  float position = 0;
  float par4 = 0;
};

/// The indices of the keys in their order; equal keys keep theirs. Where a NaN leaves the order open, it is the one
/// that exchanging neighbors gives, in passes over all of them until nothing is left to exchange.
std::vector<std::size_t> orderOf(const std::vector<OrderKey>& keys);

}  // namespace kiv::proof
