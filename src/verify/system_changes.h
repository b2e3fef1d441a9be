#pragma once

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <vector>

// What was recorded only of the systems in which it is other than before. A record has the index of its system; they
// are in the order of their systems.
namespace kiv::proof {

/// The first record of a system or one after it.
template <typename Record>
auto firstFrom(const std::vector<Record>& records, std::size_t system) {
  return std::lower_bound(records.begin(), records.end(), system,
                          [](const Record& record, std::size_t other) { return record.system < other; });
}

/// The last record before a system, else the first; null when there is none.
template <typename Record>
const Record* lastBefore(const std::vector<Record>& records, std::size_t system) {
  const auto later = firstFrom(records, system);
  if (later != records.begin()) {
    return &*std::prev(later);
  }
  return records.empty() ? nullptr : &records.front();
}

}  // namespace kiv::proof
