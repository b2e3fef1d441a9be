#include "mus/item_table.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/pages.h"

namespace kiv {
namespace {

using test::critical;
using test::endOf;
using test::FakeHost;
using test::itemOf;
using test::Message;

TEST(ItemTable, StoresAllTwentyParametersAndTheText) {
  ItemTable table;
  Item item;
  for (int p = 1; p <= 20; ++p) {
    item[p] = static_cast<float>(100 + p);
  }
  item.text = "a text";
  table.store_item(Item());
  table.store_item(item);
  EXPECT_EQ(table.itemCount(), 2);
  for (int p = 1; p <= 20; ++p) {
    EXPECT_EQ(table.itemPar(1, p), 0);
    EXPECT_EQ(table.itemPar(2, p), static_cast<float>(100 + p));
  }
  EXPECT_EQ(table.itemText(1), "");
  EXPECT_EQ(table.itemText(2), "a text");
}

TEST(ItemTable, KeepsItsRowsWhenItIsCleared) {
  ItemTable table;
  Item item;
  item[5] = 7;
  item.text = "kept";
  table.store_item(item);
  table.clear();
  EXPECT_EQ(table.itemCount(), 0);
  EXPECT_EQ(table.itemPar(1, 5), 7);
  EXPECT_EQ(table.itemText(1), "kept");
}

TEST(ItemTable, KeepsEveryRowWhileItFills) {
  ItemTable table;
  Item item;
  for (int n = 1; n <= 5000; ++n) {
    EXPECT_EQ(table.itemPar(n, 5), 0) << "the row after the last one";
    item[5] = static_cast<float>(n);
    item.text = std::to_string(n);
    table.store_item(item);
  }
  for (int n = 1; n <= 5000; ++n) {
    ASSERT_EQ(table.itemPar(n, 5), static_cast<float>(n));
    ASSERT_EQ(table.itemText(n), std::to_string(n));
  }
}

TEST(ItemTable, Holds5000ItemsAndEndsTheProgramOverTheNext) {
  FakeHost host;
  ItemTable table;
  table.beginFile("C:\\P.MUS");
  for (int n = 0; n < 5000; ++n) {
    table.store_item(Item());
  }
  EXPECT_EQ(endOf(host, [&] { table.store_item(Item()); }), 1);
  EXPECT_EQ(host.messages, std::vector<Message>{critical("MUS file too big for operation. Hit OK to terminate.")});
  EXPECT_EQ(host.shown.at(0).location, (Location{.file = "C:\\P.MUS"}));
  EXPECT_EQ(table.itemCount(), 5000);
}

// --- where the items come from ---

const std::string upperFile = "C:\\M\\X1A.MUS";
const std::string lowerFile = "C:\\M\\X1B.MUS";

class ItemOrigin : public testing::Test {
 protected:
  /// Items 3 and 5 of the lower file, then items 1 and 4 of the upper one.
  ItemOrigin() {
    add(lowerFile, 3);
    add(lowerFile, 5);
    add(upperFile, 1);
    add(upperFile, 4);
  }

  void add(const std::string& file, std::int16_t number) {
    table.beginFile(file);
    table.newItem(number) = itemOf({8, static_cast<float>(number)});
  }

  ItemTable table;
};

TEST_F(ItemOrigin, IsTheFileBegunLastAndTheNumberGiven) {
  EXPECT_EQ(table.location(1), (Location{.file = lowerFile, .item = 3}));
  EXPECT_EQ(table.location(2), (Location{.file = lowerFile, .item = 5}));
  EXPECT_EQ(table.location(3), (Location{.file = upperFile, .item = 1}));
  EXPECT_EQ(table.location(4), (Location{.file = upperFile, .item = 4}));
  EXPECT_EQ(table.file(), upperFile);
}

TEST_F(ItemOrigin, OfAnItemThatNoFileHasIsTheFileWithoutANumber) {
  table.store_item(Item());
  EXPECT_EQ(table.location(5), (Location{.file = upperFile}));
}

TEST_F(ItemOrigin, IsNothingBeforeAnyFileWasBegun) {
  ItemTable fresh;
  fresh.store_item(Item());
  EXPECT_EQ(fresh.file(), "");
  EXPECT_EQ(fresh.location(1), Location{});
}

TEST_F(ItemOrigin, StaysWithTheItemWhenRowsAreReordered) {
  table.reorder({4, 2, 1, 3});
  EXPECT_EQ(table.location(1), (Location{.file = upperFile, .item = 4}));
  EXPECT_EQ(table.location(2), (Location{.file = lowerFile, .item = 5}));
  EXPECT_EQ(table.location(3), (Location{.file = lowerFile, .item = 3}));
  EXPECT_EQ(table.location(4), (Location{.file = upperFile, .item = 1}));
  EXPECT_EQ(table.itemPar(1, 2), 4) << "as its parameters do";
}

TEST_F(ItemOrigin, IsForgottenWhenTheTableIsCleared) {
  table.clear();
  EXPECT_EQ(table.file(), "");
  add("C:\\M\\X2.MUS", 7);
  EXPECT_EQ(table.location(1), (Location{.file = "C:\\M\\X2.MUS", .item = 7}));
  EXPECT_EQ(table.file(), "C:\\M\\X2.MUS");
}

TEST_F(ItemOrigin, DistinguishesItemsOfOneFileFromThoseOfAnother) {
  EXPECT_TRUE(table.haveOneFile(1, 2));
  EXPECT_TRUE(table.haveOneFile(3, 4));
  EXPECT_FALSE(table.haveOneFile(2, 3));
}

TEST_F(ItemOrigin, SortsRowsByFileAndNumber) {
  table.reorder({4, 3, 2, 1});
  std::vector<int> rows = {1, 2, 3, 4};
  table.sortByOrigin(rows);
  EXPECT_EQ(rows, (std::vector<int>{4, 3, 2, 1}));
  std::vector<int> some = {1, 4, 2};
  table.sortByOrigin(some);
  EXPECT_EQ(some, (std::vector<int>{4, 2, 1}));
}

TEST_F(ItemOrigin, OrdersFilesAsTheyWereBegunAndNotByName) {
  std::vector<int> rows = {3, 1};
  table.sortByOrigin(rows);
  EXPECT_EQ(rows, (std::vector<int>{1, 3})) << "X1B was begun before X1A";
}

TEST_F(ItemOrigin, LeavesRowsOfEqualOriginInTheirOrder) {
  table.store_item(itemOf({8, 50}));
  table.store_item(itemOf({8, 60}));
  std::vector<int> rows = {6, 5, 4};
  table.sortByOrigin(rows);
  EXPECT_EQ(rows, (std::vector<int>{6, 5, 4})) << "an item without a number comes first in its file";
}

// --- rows ---

TEST_F(ItemOrigin, NamesAParameterThatSixteenBitsDoNotHold) {
  FakeHost host;
  table.itemPar(2, 2) = 40000;
  table.reorder({3, 4, 1, 2});
  EXPECT_EQ(endOf(host, [&] { wholePar(table, 4, 2); }), 1);
  EXPECT_EQ(host.messages, std::vector{critical("Run-time error: Overflow\r\nC:\\M\\X1B.MUS, item 5")});
  EXPECT_EQ(host.shown.at(0).location, (Location{.file = lowerFile, .item = 5}));
}

TEST(WholePar, IsRoundedHalvesToEven) {
  ItemTable table;
  table.store_item(itemOf({8, 2.5F, 3.5F, -0.6F}));
  EXPECT_EQ(wholePar(table, 1, 2), 2);
  EXPECT_EQ(wholePar(table, 1, 3), 4);
  EXPECT_EQ(wholePar(table, 1, 4), -1);
}

// --- signs ---

using Rows = std::vector<std::int16_t>;

/// A staff, a note, a rest, a barline, and an item of an unnamed type.
class SignRows : public testing::Test {
 protected:
  SignRows() {
    for (const float type : {8.0F, 1.0F, 2.0F, 14.0F, 1.5F}) {
      table.store_item(itemOf({type, 1}));
    }
  }

  ItemTable table;
};

TEST_F(SignRows, AreThoseOfAllItemsButNotesAndRests) {
  EXPECT_EQ(table.signRows(), (Rows{1, 4, 5}));
}

TEST_F(SignRows, FollowItemsThatAreAdded) {
  EXPECT_EQ(table.signRows().size(), 3U);
  table.store_item(itemOf({1, 1}));
  table.store_item(itemOf({17, 1}));
  EXPECT_EQ(table.signRows(), (Rows{1, 4, 5, 7}));
}

TEST_F(SignRows, MayBeGoneThroughWhileItemsAreAdded) {
  std::vector<int> rows;
  for (const int row : table.signRows()) {
    rows.push_back(row);
    table.store_item(itemOf({14, 2}));
  }
  EXPECT_EQ(rows, (std::vector<int>{1, 4, 5}));
}

TEST_F(SignRows, FollowTheOrderOfTheRows) {
  EXPECT_EQ(table.signRows().size(), 3U);
  table.reorder({2, 4, 3, 1, 5});
  EXPECT_EQ(table.signRows(), (Rows{2, 4, 5}));
}

TEST_F(SignRows, FollowTheOrderOfRowsOfWhichSomeOrNoneWereListed) {
  table.reorder({2, 4, 3, 1, 5});
  EXPECT_EQ(table.signRows(), (Rows{2, 4, 5}));
  table.store_item(itemOf({17, 1}));
  table.reorder({6, 5, 4, 3, 2, 1});
  EXPECT_EQ(table.signRows(), (Rows{1, 2, 3, 5}));
}

TEST_F(SignRows, StayWhenASignIsDeleted) {
  EXPECT_EQ(table.signRows().size(), 3U);
  table.item(4).setType(ItemType::deleted);
  EXPECT_EQ(table.signRows(), (Rows{1, 4, 5}));
}

TEST_F(SignRows, AreNoneOfATableThatWasCleared) {
  EXPECT_EQ(table.signRows().size(), 3U);
  table.clear();
  EXPECT_EQ(table.signRows(), Rows());
  table.store_item(itemOf({1, 1}));
  table.store_item(itemOf({8, 1}));
  EXPECT_EQ(table.signRows(), Rows{2});
}

TEST(StaffRows, AreThoseOfStaffItemsInTableOrder) {
  ItemTable table;
  for (const float type : {8.0F, 1.0F, 8.5F, 8.0F, 999.0F}) {
    table.store_item(itemOf({type, 1}));
  }
  EXPECT_EQ(staffRows(table), (std::vector<int>{1, 4}));
  EXPECT_TRUE(isStaff(table, 1));
  EXPECT_FALSE(isStaff(table, 3));
}

}  // namespace
}  // namespace kiv
