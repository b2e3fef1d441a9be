#include "base/hash_index.h"

#include <algorithm>
#include <stdexcept>
#include <vector>

#include <gtest/gtest.h>

#include "base/shared_lists.h"

namespace kiv {
namespace {

/// Numbers that are kept under their hashes, and an owner that can fail to keep one.
class HashIndexTest : public ::testing::Test {
 protected:
  std::uint32_t add(int number) {
    return index.findOrAdd(
        hashOf(number), [&](std::uint32_t n) { return numbers[n] == number; },
        [this](std::uint32_t n) { return canGrow ? hashOf(numbers[n]) : throw std::runtime_error("grow"); },
        [&] {
          if (!canKeep) {
            throw std::runtime_error("keep");
          }
          numbers.push_back(number);
        });
  }
  std::optional<std::uint32_t> find(int number) const {
    return index.find(hashOf(number), [&](std::uint32_t n) { return numbers[n] == number; });
  }
  static std::size_t hashOf(int number) { return static_cast<std::size_t>(number % 5); }

  HashIndex index;
  std::vector<int> numbers;
  bool canGrow = true;
  bool canKeep = true;
};

TEST_F(HashIndexTest, ThingsOfOneHashAreTakenApart) {
  for (std::uint32_t round = 0; round < 2; ++round) {
    for (int number = 0; number < 100; ++number) {
      EXPECT_EQ(add(number * 3), static_cast<std::uint32_t>(number));
    }
  }
  EXPECT_EQ(numbers.size(), 100U);
  EXPECT_EQ(find(297), 99U);
  EXPECT_EQ(find(298), std::nullopt);
}

TEST_F(HashIndexTest, WhatTheOwnerCannotKeepIsNotAdded) {
  add(10);
  canKeep = false;
  EXPECT_THROW(add(20), std::runtime_error);
  EXPECT_EQ(add(10), 0U);
  EXPECT_EQ(find(20), std::nullopt);
  canKeep = true;
  EXPECT_EQ(add(30), 1U);
  EXPECT_EQ(add(20), 2U);
}

TEST_F(HashIndexTest, AnIndexThatCannotGrowIsAsBefore) {
  canGrow = false;
  int failures = 0;
  for (int number = 0; number < 100; ++number) {
    try {
      add(number);
    } catch (const std::runtime_error&) {
      ++failures;
    }
  }
  EXPECT_GT(failures, 0);
  const std::vector<int> kept = numbers;
  ASSERT_FALSE(kept.empty());
  canGrow = true;
  for (int number = 0; number < 100; ++number) {
    add(number);
  }
  EXPECT_EQ(numbers.size(), 100U);
  for (std::uint32_t n = 0; n < numbers.size(); ++n) {
    EXPECT_EQ(find(numbers[n]), n);
  }
  EXPECT_TRUE(std::equal(kept.begin(), kept.end(), numbers.begin()));
}

/// A hash that fails once it has been asked for this often.
struct FailingHash {
  static inline int left = 0;

  std::size_t operator()(char letter) const {
    if (left-- == 0) {
      throw std::runtime_error("hash");
    }
    return static_cast<std::size_t>(letter);
  }
};

TEST(SharedListsThatFail, StillHaveOneNumberForEqualLists) {
  constexpr int letters = 40;
  for (int calls = 0; calls < 200; ++calls) {
    SharedLists<char, FailingHash> lists;
    const auto listOf = [&] {
      std::vector<std::uint32_t> numbers{lists.emptyList};
      for (int i = 0; i < letters; ++i) {
        numbers.push_back(lists.append(numbers.back(), static_cast<char>('0' + i)));
      }
      return numbers;
    };
    FailingHash::left = calls;
    try {
      listOf();
    } catch (const std::runtime_error&) {
      EXPECT_LT(FailingHash::left, 0);
    }
    FailingHash::left = -1;
    const std::vector<std::uint32_t> numbers = listOf();
    EXPECT_EQ(listOf(), numbers) << calls;
    EXPECT_EQ(lists.elements(numbers.back()).size(), static_cast<std::size_t>(letters)) << calls;
  }
}

}  // namespace
}  // namespace kiv
