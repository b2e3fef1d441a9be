#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "mus/sort_item_table.h"
#include "tests/support/pages.h"

namespace kiv {
namespace {

using test::asText;
using test::FakeHost;
using test::tableOf;

std::string sortedText(std::string_view page) {
  FakeHost host;
  ItemTable table = tableOf(host, page);
  sort_item_table(table);
  return asText(table);
}

TEST(ItemOrder, RunsFromTheHighestStaffDown) {
  EXPECT_EQ(sortedText("note 1 at 10\nnote 3 at 10\nnote 2 at 10\nnote 3 at 20\nnote 1 at 5\n"),
            "note 3 at 10\nnote 3 at 20\nnote 2 at 10\nnote 1 at 5\nnote 1 at 10\n");
}

TEST(ItemOrder, RunsFromLeftToRightWithinAStaff) {
  EXPECT_EQ(sortedText("note 1 at 100\nclef 1 at 50\n"), "clef 1 at 50\nnote 1 at 100\n");
}

TEST(ItemOrder, RunsUpwardsInP4AtOnePosition) {
  EXPECT_EQ(sortedText("note 1 at 50 height 7\nnote 1 at 50 height -2\nnote 1 at 50 height 3\n"),
            "note 1 at 50 height -2\nnote 1 at 50 height 3\nnote 1 at 50 height 7\n");
}

TEST(ItemOrder, KeepsItemsOfEqualKeysAsTheyCameWhateverTheirType) {
  EXPECT_EQ(sortedText("timesignature 1 at 50 p4 1\nnote 1 at 50\n"
                       "barline 2 at 50\nclef 1 at 50 height 1\nrest 1 at 50\nbarline 1 at 50\n"
                       ""),
            "barline 2 at 50\nnote 1 at 50\nrest 1 at 50\nbarline 1 at 50\ntimesignature 1 at 50 p4 1\n"
            "clef 1 at 50 height 1\n");
}

TEST(ItemOrder, MovesTheTextsToo) {
  EXPECT_EQ(sortedText("countedtext 1 at 9 \"first\"\nnote 2 at 5\ncountedtext 1 at 3 \"second\"\n"),
            "note 2 at 5\n"
            "countedtext 1 at 3 characters 6 \"second\"\n"
            "countedtext 1 at 9 characters 5 \"first\"\n");
}

TEST(ItemOrder, ComparesExactly) {
  EXPECT_EQ(sortedText("note 1 at 0.10000001\nnote 1 at 0.1\nnote 1.0000001 at 7\n"),
            "note 1.0000001 at 7\nnote 1 at 0.1\nnote 1 at 0.10000001\n");
}

}  // namespace
}  // namespace kiv
