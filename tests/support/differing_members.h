#pragma once

#include <cstddef>
#include <vector>

#include <gtest/gtest.h>

namespace kiv::test {

/// Checks that a value equals its copy, and is unequal to each of the others, which differ from it in one member. Tests
/// that compare whole values see a wrong member only if the comparison has it.
template <typename Value>
void expectComparesEveryMember(const Value& value, const std::vector<Value>& others) {
  const Value copy = value;
  EXPECT_TRUE(value == copy);
  for (std::size_t i = 0; i < others.size(); ++i) {
    EXPECT_FALSE(value == others[i]) << "member " << i + 1;
    EXPECT_TRUE(others[i] == Value(others[i])) << "member " << i + 1;
  }
}

/// The value with one change.
template <typename Value, typename Change>
Value changed(Value value, Change change) {
  change(value);
  return value;
}

}  // namespace kiv::test
