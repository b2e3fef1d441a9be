#include "base/number_hash.h"

#include <array>
#include <cstdint>

#include <gtest/gtest.h>

namespace kiv {
namespace {

TEST(NumberHash, DependsOnTheNumbersAndTheirOrder) {
  EXPECT_EQ(NumberHash().add(1).add(2).value(), NumberHash().add(1).add(2).value());
  EXPECT_NE(NumberHash().add(1).add(2).value(), NumberHash().add(2).add(1).value());
  EXPECT_NE(NumberHash().add(1).add(2).value(), NumberHash().add(1).add(3).value());
  EXPECT_NE(NumberHash().add(-1).value(), NumberHash().add(1).value());
}

TEST(NumberHash, OfAllOfAListIsThatOfOneAfterTheOther) {
  const std::array<std::uint32_t, 3> numbers = {7, 0, 9};
  EXPECT_EQ(NumberHash().add(5).addAll(numbers).value(), NumberHash().add(5).add(7).add(0).add(9).value());
}

}  // namespace
}  // namespace kiv
