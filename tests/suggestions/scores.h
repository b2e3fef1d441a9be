#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "tests/suggestions/planned_group.h"
#include "tests/support/random.h"

namespace kiv::test {

/// Random choices of a generator of groups.
class Choices : public RandomGenerator {
 public:
  using RandomGenerator::RandomGenerator;

  /// A number from low to high.
  int between(int low, int high) { return low + static_cast<int>(below(static_cast<std::size_t>(high - low + 1))); }
  template <typename Value>
  const Value& oneOf(const std::vector<Value>& values) {
    return values[below(values.size())];
  }
  template <typename Value>
  void shuffle(std::vector<Value>& values) {
    for (std::size_t i = values.size(); i > 1; --i) {
      std::swap(values[i - 1], values[below(i)]);
    }
  }
};

/// Instruments of a score from the top down, without ids: families of instruments with the same clef, some of them in
/// several parts.
std::vector<PlannedInstrument> scoreOrder(Choices& choices, std::size_t count);

/// A slip of somebody who types a number: a digit wrong, added, doubled or left out, or two exchanged. Another number
/// than the one given, and not 0.
int mistyped(Choices& choices, int id);

}  // namespace kiv::test
