#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "base/exact_number.h"
#include "messages/conversion_messages.h"
#include "sort/sort_on_instrument.h"
#include "tests/support/pages.h"
#include "tests/support/random.h"

namespace kiv::test {
namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

float& sortKeyOf(std::vector<float>& sortKey, int i) {
  return sortKey[static_cast<std::size_t>(i)];
}

/// The keys of the items from 1 on, and how many staves there are.
std::pair<std::vector<float>, int> keysOfStaves(const ItemTable& table) {
  std::vector<std::pair<long, float>> staffList;
  for (int i = 1; i <= table.itemCount(); ++i) {
    if (table.itemPar(i, 1) == 8) {
      staffList.emplace_back(std::lrint(table.itemPar(i, 2)), table.itemPar(i, 9));
    }
  }
  std::vector<float> sortKey(1);
  for (int i = 1; i <= table.itemCount(); ++i) {
    const long staff = std::lrint(table.itemPar(i, 2));
    const auto entry =
        std::find_if(staffList.begin(), staffList.end(), [&](const auto& pair) { return pair.first == staff; });
    if (entry == staffList.end()) {
      endProgram(messages::sortProblem());
    }
    sortKey.push_back(entry->second);
  }
  return {sortKey, static_cast<int>(staffList.size())};
}

bool mustChangePlaces(std::vector<float>& sortKey, const ItemTable& table, int i) {
  const float key = sortKeyOf(sortKey, i);
  const float nextKey = sortKeyOf(sortKey, i + 1);
  const auto above = [&](int p) { return table.itemPar(i, p); };
  const auto below = [&](int p) { return table.itemPar(i + 1, p); };
  return key < nextKey || (key == nextKey && above(3) > below(3)) ||
         (key == nextKey && above(3) == below(3) && above(4) > below(4));
}

void exchangeInPasses(std::vector<float>& sortKey, ItemTable& table) {
  int exchanges = 0;
  do {
    exchanges = 0;
    for (int i = 1; i < table.itemCount(); ++i) {
      if (mustChangePlaces(sortKey, table, i)) {
        std::swap(sortKeyOf(sortKey, i), sortKeyOf(sortKey, i + 1));
        for (int p = 1; p <= 20; ++p) {
          std::swap(table.itemPar(i, p), table.itemPar(i + 1, p));
        }
        std::swap(table.itemText(i), table.itemText(i + 1));
        ++exchanges;
      }
    }
  } while (exchanges > 0);
}

/// The sort that the table's order is defined by: the keys beside the items, and passes over neighbors until one of
/// them exchanges nothing.
void sortByExchanges(ItemTable& table) {
  auto [sortKey, staves] = keysOfStaves(table);
  exchangeInPasses(sortKey, table);
  int counter = 1;
  for (int i = 1; i <= table.itemCount(); ++i) {
    if (i > 1 && table.itemPar(i, 2) != table.itemPar(i - 1, 2)) {
      ++counter;
    }
    sortKeyOf(sortKey, i) = static_cast<float>(counter);
  }
  for (int i = 1; i <= table.itemCount(); ++i) {
    table.itemPar(i, 2) = sortKeyOf(sortKey, i);
  }
  for (int i = 1; i <= table.itemCount(); ++i) {
    if (table.itemPar(i, 1) == 14 && table.itemPar(i, 4) == static_cast<float>(staves)) {
      table.itemPar(i, 2) = 1;
      return;
    }
  }
  endProgram(messages::systemBarlineProblem());
}

using Choice = std::vector<float>;

/// A system of one to four staves and up to 25 other items, in any order. Some of them lack a staff or the barline.
std::vector<Item> randomSystem(RandomGenerator& random, const Choice& keys, const Choice& numbers) {
  const Choice staffNumbers = {1, 2, 3, 0.0F, -0.0F, 2.5F, -4, 1.25F};
  const Choice types = {1, 3, 14, 14, 16};
  const auto any = [&](const Choice& choice) { return choice[random.below(choice.size())]; };
  std::vector<Item> items;
  Choice staves;
  const std::size_t count = 1 + random.below(4);
  for (std::size_t n = 0; n < count; ++n) {
    staves.push_back(any(staffNumbers));
    items.push_back(itemOf({8, staves.back(), any(numbers), any(numbers), 0, 0, 0, 0, any(keys)}));
  }
  for (std::size_t n = random.below(26); n > 0; --n) {
    items.push_back(itemOf({any(types), any(staves), any(numbers), any(numbers)}));
  }
  if (!random.oneIn(8)) {
    items.push_back(itemOf({14, any(staves), any(numbers), static_cast<float>(count)}));
  }
  if (random.oneIn(8)) {
    items.push_back(itemOf({1, 77}));
  }
  for (std::size_t n = items.size(); n > 1; --n) {
    std::swap(items[n - 1], items[random.below(n)]);
  }
  return items;
}

/// P5 and the text hold the number of the row, P10 to P20 are different in each.
void fill(ItemTable& table, const std::vector<Item>& items) {
  table.clear();
  for (Item item : items) {
    const auto number = static_cast<float>(table.itemCount() + 1);
    item[5] = number;
    for (int p = 10; p <= 20; ++p) {
      item[p] = number * 100 + static_cast<float>(p);
    }
    item.text = "row " + exactNumber(number);
    table.store_item(item);
  }
}

std::string rowText(const ItemTable& table, int i) {
  std::string text = std::to_string(i);
  for (const float parameter : table.item(i).parameters()) {
    text += " " + exactNumber(parameter);
  }
  return text + " '" + table.itemText(i) + "'";
}

class SortedSystem : public ::testing::Test {
 protected:
  static constexpr int rowsLookedAt = 3;  // beyond the items

  void SetUp() override {
    // Rows left over from other tables.
    const std::vector<Item> old(60, itemOf({9, 9, 9, 9}));
    fill(sorted, old);
    fill(reference, old);
  }

  /// Both sorts end alike, and when they do not end the program, with the same table to the last bit.
  void expectSameAsExchanges(const std::vector<Item>& items) {
    FakeHost host;
    FakeHost referenceHost;
    fill(sorted, items);
    fill(reference, items);
    const auto end = endOf(host, [&] { sortOnInstrument(sorted); });
    ASSERT_EQ(end, endOf(referenceHost, [&] { sortByExchanges(reference); }));
    ASSERT_EQ(host.messages, referenceHost.messages);
    if (end) {
      ++ended;
      return;
    }
    for (int i = 1; i <= sorted.itemCount() + rowsLookedAt; ++i) {
      ASSERT_EQ(rowText(sorted, i), rowText(reference, i)) << "of " << items.size() << " rows";
    }
  }

  void expectSameAsExchanges(std::uint32_t seed, const Choice& keys, const Choice& numbers) {
    RandomGenerator random(seed);
    ended = 0;
    constexpr int rounds = 100;
    for (int round = 0; round < rounds; ++round) {
      ASSERT_NO_FATAL_FAILURE(expectSameAsExchanges(randomSystem(random, keys, numbers)))
          << "seed " << seed << ", round " << round;
    }
    EXPECT_GT(ended, 0) << "some systems are broken";
    EXPECT_LT(ended, rounds / 2) << "most are valid";
  }

  ItemTable sorted;
  ItemTable reference;
  int ended = 0;
};

TEST_F(SortedSystem, OfDifferentInstrumentsIsAsTheExchangesGiveIt) {
  expectSameAsExchanges(1, {10, 20, 30, 40, 50, 60, 70}, {1, 2, 3, 4, 5, 6, 7, 8, 9});
}

TEST_F(SortedSystem, OfManyEqualKeysIsAsTheExchangesGiveIt) {
  expectSameAsExchanges(2, {10, 20}, {1, 2, 3});
  expectSameAsExchanges(3, {10}, {1, 2, 3});
  expectSameAsExchanges(4, {10, 20}, {5});
  expectSameAsExchanges(5, {10}, {5});
}

TEST_F(SortedSystem, TreatsZerosOfEitherSignAsEqual) {
  expectSameAsExchanges(6, {0.0F, -0.0F}, {0.0F, -0.0F});
  expectSameAsExchanges(7, {0.0F, -0.0F, 1, -1}, {0.0F, -0.0F, 1, -1});
}

TEST_F(SortedSystem, OfInfinitiesAndFractionsIsAsTheExchangesGiveIt) {
  expectSameAsExchanges(8, {infinity, -infinity, 0, 1}, {infinity, -infinity, 0, 1});
  expectSameAsExchanges(9, {0.1F, 0.10000001F, 3E38F, 1E-45F}, {0.1F, 0.10000001F, 3E38F, 1E-45F});
}

TEST_F(SortedSystem, OfKeysThatAreNoNumberIsAsTheExchangesGiveIt) {
  expectSameAsExchanges(10, {notANumber, 10, 20}, {1, 2, 3, 4});
  expectSameAsExchanges(11, {notANumber}, {1, 2, 3, 4});
}

TEST_F(SortedSystem, OfPositionsThatAreNoNumberIsAsTheExchangesGiveIt) {
  expectSameAsExchanges(12, {10, 20}, {notANumber, 1, 2, 3, 4, 5, 6, 7, 8});
  expectSameAsExchanges(13, {10, 20, 30, notANumber}, {notANumber, -notANumber, infinity, 0.0F, -0.0F, 1});
}

TEST_F(SortedSystem, LeavesTheEmptyTableToItsBarlineProblem) {
  expectSameAsExchanges(std::vector<Item>{});
  EXPECT_EQ(ended, 1);
}

}  // namespace
}  // namespace kiv::test
