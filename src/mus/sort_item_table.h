#pragma once

#include <cstdint>
#include <vector>

#include "mus/item_table.h"

namespace kiv {

/// What decides a row's place: the first key descending, then the position and P4 ascending.
struct SortKey {
  float first = 0;
  float position = 0;
  float par4 = 0;
};

/// True when x, standing just above y, must change places with it. Comparisons are exact; where a NaN meets them
/// they are false, and the rows stay.
inline bool outOfOrder(const SortKey& x, const SortKey& y) {
  if (x.first != y.first) {
    return x.first < y.first;
  }
  if (x.position != y.position) {
    return x.position > y.position;
  }
  return x.par4 > y.par4;
}

/// The rows (numbered from 1) in the order that exchanging adjacent rows in passes would give them, rows of equal keys
/// keeping theirs: O(n log n), and the passes themselves only where a NaN among the keys leaves no ordering. No more
/// rows than a table holds.
std::vector<std::int16_t> sortedRows(const std::vector<SortKey>& keys);

/// Sorts the table by staff number descending, then position and P4 ascending.
void sort_item_table(ItemTable& table);

}  // namespace kiv
