#pragma once

#include <algorithm>
#include <cstddef>
#include <functional>
#include <vector>

namespace kiv {

/// Different values that are kept of one kind; more are no music any more, and would take long to compare.
inline constexpr std::size_t mostDistinct = 100;

/// Appends a value that is not there yet, unless there are very many. One that equals nothing, not even itself, is left
/// out.
template <typename Value>
void addDistinct(std::vector<Value>& values, const Value& value) {
  const bool equalsItself = std::equal_to<Value>{}(value, value);
  if (equalsItself && values.size() < mostDistinct && std::find(values.begin(), values.end(), value) == values.end()) {
    values.push_back(value);
  }
}

}  // namespace kiv
