#include "mus/sort_item_table.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <limits>

#include <gtest/gtest.h>

#include "base/exact_number.h"
#include "mus/exch.h"
#include "tests/support/pages.h"
#include "tests/support/random.h"

namespace kiv {
namespace {

using test::FakeHost;
using test::itemOf;
using test::RandomGenerator;

constexpr float infinity = std::numeric_limits<float>::infinity();
constexpr float notANumber = std::numeric_limits<float>::quiet_NaN();

bool mustChangePlaces(const ItemTable& table, int i) {
  const auto above = [&](int p) { return table.itemPar(i, p); };
  const auto below = [&](int p) { return table.itemPar(i + 1, p); };
  return above(2) < below(2) || (above(2) == below(2) && above(3) > below(3)) ||
         (above(2) == below(2) && above(3) == below(3) && above(4) > below(4));
}

/// The sort that the table's order is defined by: passes over neighbors until one of them exchanges nothing.
void sortByExchanges(User& user, ItemTable& table) {
  bool exchanged = true;
  while (exchanged) {
    exchanged = false;
    for (int i = 1; i < table.itemCount(); ++i) {
      if (mustChangePlaces(table, i)) {
        for (int p = 1; p <= 20; ++p) {
          exch(user, &table.itemPar(i, p), &table.itemPar(i + 1, p));
        }
        exch(user, &table.itemText(i), &table.itemText(i + 1));
        exchanged = true;
      }
    }
  }
}

/// P2, P3 and P4 of an item.
using Keys = std::array<float, 3>;

/// Rows with these keys. P5 and the text hold the number of the row, P6 to P20 are different in each.
void fill(ItemTable& table, const std::vector<Keys>& rows) {
  table.clear();
  for (const Keys& keys : rows) {
    const int row = table.itemCount() + 1;
    const auto number = static_cast<float>(row);
    Item item = itemOf({4, keys[0], keys[1], keys[2], number}, "row " + std::to_string(row));
    for (int p = 6; p <= 20; ++p) {
      item[p] = number * 100 + static_cast<float>(p);
    }
    table.newItem(static_cast<std::int16_t>(row)) = item;
  }
}

std::string rowText(const ItemTable& table, int i) {
  std::string text = std::to_string(i);
  for (const float parameter : table.item(i).parameters()) {
    text += " " + exactNumber(parameter);
  }
  return text + " '" + table.itemText(i) + "'\n";
}

class SortItemTable : public testing::Test {
 protected:
  static constexpr int rowsLookedAt = 3;  // beyond the items

  void SetUp() override {
    // Rows left over from other tables.
    const std::vector<Keys> old(150, Keys{9, 9, 9});
    fill(sorted_, old);
    fill(reference_, old);
  }

  /// Both sorts give the same table to the last bit, and leave the rows beyond it alone.
  void expectSameAsExchanges(const std::vector<Keys>& rows) {
    fill(sorted_, rows);
    fill(reference_, rows);
    sort_item_table(sorted_);
    sortByExchanges(host_, reference_);
    ASSERT_EQ(sorted_.itemCount(), static_cast<int>(rows.size()));
    for (int i = 1; i <= sorted_.itemCount() + rowsLookedAt; ++i) {
      ASSERT_EQ(rowText(sorted_, i), rowText(reference_, i)) << "of " << rows.size() << " rows";
    }
    EXPECT_EQ(host_.messages, std::vector<test::Message>{});
  }

  /// Rounds of tables of up to 40 rows whose keys come from the choice.
  void expectSameAsExchanges(std::uint32_t seed, const std::vector<float>& choice) {
    RandomGenerator random(seed);
    const auto any = [&] { return choice[random.below(choice.size())]; };
    for (int round = 0; round < 60; ++round) {
      std::vector<Keys> rows(random.below(41));
      std::generate(rows.begin(), rows.end(), [&] { return Keys{any(), any(), any()}; });
      ASSERT_NO_FATAL_FAILURE(expectSameAsExchanges(rows)) << "seed " << seed << ", round " << round;
    }
  }

  /// Every order of up to six rows with these keys.
  void expectSameInEveryOrder(const std::vector<Keys>& rows) {
    std::vector<std::size_t> order(rows.size());
    for (std::size_t n = 0; n < order.size(); ++n) {
      order[n] = n;
    }
    do {
      std::vector<Keys> ordered;
      for (const std::size_t n : order) {
        ordered.push_back(rows[n]);
      }
      ASSERT_NO_FATAL_FAILURE(expectSameAsExchanges(ordered));
    } while (std::next_permutation(order.begin(), order.end()));
  }

  FakeHost host_;
  ItemTable sorted_;
  ItemTable reference_;
};

TEST_F(SortItemTable, ItemsKeepTheirNumberInTheFile) {
  fill(sorted_, {{1, 30, 0}, {1, 10, 0}, {1, 20, 0}});
  sort_item_table(sorted_);
  const int numbers[] = {2, 3, 1};
  for (int i = 1; i <= 3; ++i) {
    EXPECT_EQ(sorted_.location(i).item, numbers[i - 1]);
    EXPECT_EQ(sorted_.itemPar(i, 5), static_cast<float>(numbers[i - 1]));
  }
}

TEST_F(SortItemTable, LeavesTheRowsBeyondTheItemsAlone) {
  fill(sorted_, {{5, 1, 1}, {6, 2, 2}, {7, 3, 3}, {8, 4, 4}});
  const std::string third = rowText(sorted_, 3);
  const std::string fourth = rowText(sorted_, 4);
  fill(sorted_, {{1, 1, 1}, {2, 2, 2}});
  sort_item_table(sorted_);
  EXPECT_EQ(sorted_.itemPar(1, 2), 2) << "the two items changed places";
  EXPECT_EQ(rowText(sorted_, 3), third);
  EXPECT_EQ(rowText(sorted_, 4), fourth);
}

// --- against the passes ---

TEST_F(SortItemTable, DoesNothingWithNoRowOrOne) {
  expectSameAsExchanges({});
  expectSameAsExchanges({{1, 2, 3}});
  expectSameAsExchanges({{notANumber, notANumber, notANumber}});
}

TEST_F(SortItemTable, OfManyEqualKeysIsAsTheExchangesGiveIt) {
  expectSameAsExchanges(1, {1, 2});
  expectSameAsExchanges(2, {1, 2, 3, 4, 5});
  expectSameAsExchanges(3, {7});
}

TEST_F(SortItemTable, OfFractionsAndLargeNumbersIsAsTheExchangesGiveIt) {
  expectSameAsExchanges(4, {0.1F, 0.10000001F, -5.5F, 3E38F, -3E38F, 1E-45F, 16777216.0F, 16777218.0F});
}

TEST_F(SortItemTable, OfHighStaffNumbersIsAsTheExchangesGiveIt) {
  expectSameAsExchanges(10, {1022, 1023});
  expectSameAsExchanges(11, {1022, 1023, 1024});
  expectSameAsExchanges(12, {0, 1023, 1025});
}

TEST_F(SortItemTable, TreatsZerosOfEitherSignAsEqual) {
  expectSameAsExchanges(5, {0.0F, -0.0F});
  expectSameAsExchanges(6, {0.0F, -0.0F, 1, -1});
}

TEST_F(SortItemTable, OfInfinitiesIsAsTheExchangesGiveIt) {
  expectSameAsExchanges(7, {infinity, -infinity, 0, 1});
}

TEST_F(SortItemTable, OfNotANumberAmongTheKeysIsAsTheExchangesGiveIt) {
  expectSameAsExchanges(8, {notANumber, 1, 2});
  expectSameAsExchanges(9, {notANumber, 1, 2, 3, 4, 5, 6, 7, 8, 9});
  expectSameAsExchanges(10, {notANumber, -notANumber, infinity, -infinity, 0.0F, -0.0F});
}

TEST_F(SortItemTable, OfOneNotANumberInAnyKeyAndRowIsAsTheExchangesGiveIt) {
  for (std::size_t key = 0; key < 3; ++key) {
    for (std::size_t row = 0; row < 20; ++row) {
      RandomGenerator random(static_cast<std::uint32_t>(key * 20 + row));
      std::vector<Keys> rows(20);
      for (Keys& keys : rows) {
        keys = {static_cast<float>(random.below(3)), static_cast<float>(random.below(3)),
                static_cast<float>(random.below(3))};
      }
      rows[row][key] = notANumber;
      ASSERT_NO_FATAL_FAILURE(expectSameAsExchanges(rows)) << "P" << key + 2 << " of row " << row + 1;
    }
  }
}

TEST_F(SortItemTable, OfEveryOrderOfAFewRowsIsAsTheExchangesGiveIt) {
  expectSameInEveryOrder({{1, 1, 1}, {1, 1, 1}, {1, 2, 1}, {2, 1, 1}, {2, 1, 2}});
  expectSameInEveryOrder({{1, 1, 1}, {notANumber, 1, 1}, {2, 1, 1}, {2, notANumber, 1}, {2, 1, notANumber}});
}

TEST_F(SortItemTable, OfSortedOrReversedRowsIsAsTheExchangesGiveIt) {
  std::vector<Keys> rows;
  for (int n = 0; n < 60; ++n) {
    rows.push_back({static_cast<float>(9 - n / 10), static_cast<float>(n % 10 / 2), static_cast<float>(n % 2)});
  }
  expectSameAsExchanges(rows);
  for (int i = 1; i <= 60; ++i) {
    ASSERT_EQ(sorted_.itemPar(i, 5), static_cast<float>(i)) << "sorted rows stay where they are";
  }
  std::reverse(rows.begin(), rows.end());
  expectSameAsExchanges(rows);
  for (int i = 1; i <= 60; ++i) {
    ASSERT_EQ(sorted_.itemPar(i, 5), static_cast<float>(61 - i));
  }
}

TEST_F(SortItemTable, OfStavesInOrderWithRowsAddedAtTheEndIsAsTheExchangesGiveIt) {
  RandomGenerator random(13);
  for (int group = 0; group < 20; ++group) {
    std::vector<Keys> rows;
    for (const float staff : {3.0F, 1.0F, 3.0F, 2.0F}) {  // staff 3 comes in two pieces
      for (int n = 0; n < 12; ++n) {
        rows.push_back({staff, static_cast<float>(n / 2), static_cast<float>(n % 2)});
      }
    }
    for (std::uint32_t added = random.below(12); added > 0; --added) {
      rows.push_back({static_cast<float>(random.below(4)), static_cast<float>(random.below(8)),
                      static_cast<float>(random.below(3))});
    }
    ASSERT_NO_FATAL_FAILURE(expectSameAsExchanges(rows)) << "group " << group;
  }
}

TEST_F(SortItemTable, OfAFullTableIsInOrderAndKeepsEqualRowsAsTheyCame) {
  RandomGenerator random(11);
  std::vector<Keys> rows(5000);
  for (Keys& keys : rows) {
    keys = {static_cast<float>(random.below(5)), static_cast<float>(random.below(50)),
            static_cast<float>(random.below(5))};
  }
  fill(sorted_, rows);
  sort_item_table(sorted_);
  std::vector<bool> seen(5001);
  for (int i = 1; i <= 5000; ++i) {
    seen[static_cast<std::size_t>(sorted_.itemPar(i, 5))] = true;
    if (i < 5000) {
      ASSERT_FALSE(mustChangePlaces(sorted_, i)) << "row " << i;
      const bool equal = sorted_.itemPar(i, 2) == sorted_.itemPar(i + 1, 2) &&
                         sorted_.itemPar(i, 3) == sorted_.itemPar(i + 1, 3) &&
                         sorted_.itemPar(i, 4) == sorted_.itemPar(i + 1, 4);
      ASSERT_TRUE(!equal || sorted_.itemPar(i, 5) < sorted_.itemPar(i + 1, 5)) << "row " << i;
    }
  }
  EXPECT_EQ(std::count(seen.begin(), seen.end(), true), 5000) << "every row is still there";
}

}  // namespace
}  // namespace kiv
