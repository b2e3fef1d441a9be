#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "base/number.h"
#include "music/music_faults.h"
#include "tests/support/pages.h"

namespace kiv::test {
namespace {

/// The faults of a system of staff 2, which plays these items, and staff 1 with those rests: "1 from 0 to 50: words".
std::vector<std::string> faultsOf(const std::string& music, const std::string& rests) {
  FakeHost host;
  const ItemTable table = tableOf(host, "staff 2 at 0 lines 5 instrument 101\nclef 2 at 2\n" + music +
                                            "staff 1 at 0 lines 5 instrument 102\nclef 1 at 2\n" + rests +
                                            "barline 1 at 0 spans 2\nbarline 1 at 50 spans 2\n");
  std::vector<Item> items;
  for (int i = 1; i <= table.itemCount(); ++i) {
    items.push_back(table.item(i));
  }
  std::vector<std::string> lines;
  for (const PageFault& fault : findPageFaults(items, {1})) {
    lines.push_back(generalNumber(fault.place.staff) + " from " + generalNumber(fault.place.bar->first) + " to " +
                    generalNumber(fault.place.bar->second) + ": " + fault.words);
  }
  return lines;
}

using Lines = std::vector<std::string>;

TEST(PageFaults, AreRestsThatDoNotLastAsLongAsTheMusic) {
  EXPECT_EQ(faultsOf("note 2 at 20 duration 3\n", "rest 1 at 20 kind -2 duration 4\n"),
            Lines{"1 from 0 to 50: rest 4, music 3"});
  EXPECT_EQ(faultsOf("note 2 at 20 duration 3\n", "rest 1 at 20 kind -2 duration 3\n"), Lines{});
}

TEST(PageFaults, AreTwoRestsInABarAndNone) {
  EXPECT_EQ(faultsOf("note 2 at 20 duration 4\n", "rest 1 at 20 kind -2 duration 4\nrest 1 at 20 kind -2 duration 4\n"),
            Lines{"1 from 0 to 50: two rests"});
  EXPECT_EQ(faultsOf("note 2 at 20 duration 4\n", "rest 1 at 20 duration 4\nrest 1 at 20 duration 4\n"),
            Lines{"1 from 0 to 50: two rests"});
  EXPECT_EQ(faultsOf("note 2 at 20 duration 4\n", "rest 1 at 20 duration 2\nrest 1 at 30 duration 2\n"), Lines{});
  EXPECT_EQ(faultsOf("note 2 at 20 duration 4\n", ""), Lines{"1 from 0 to 50: no rest"});
}

TEST(PageFaults, OfAnEmptyBarAreKnownOnlyWithATime) {
  EXPECT_EQ(faultsOf("", "rest 1 at 20 kind -2 duration 3\n"), Lines{});
  EXPECT_EQ(faultsOf("timesignature 2 at 17 upper 2 lower 4\n",
                     "timesignature 1 at 17 upper 2 lower 4\nrest 1 at 20 kind -2 duration 3\n"),
            Lines{"1 from 0 to 50: rest 3, music 2"});
}

TEST(PageFaults, AreBracesAwayFromTheLeftEdge) {
  const std::string rest = "rest 1 at 20 kind -2 duration 4\n";
  EXPECT_EQ(faultsOf("note 2 at 20 duration 4\n", rest + "barline 1 at -9 spans 2 kind 8\n"),
            Lines{"1 from -9 to -9: brace away from the left edge"});
  EXPECT_EQ(faultsOf("note 2 at 20 duration 4\n", rest + "barline 1 at 0 spans 2 kind 8\n"), Lines{});
}

TEST(PageFaults, AreBracesAtTheEdgeOfARestStaffAlone) {
  FakeHost host;
  const ItemTable table =
      tableOf(host,
              "staff 2 at 0 lines 5 instrument 101\nclef 2 at 2\nrest 2 at 35 kind -2 duration 4\nbarline 2 at 50\n"
              "staff 1 at 20 lines 5 instrument 102\nclef 1 at 22\nnote 1 at 30 duration 4\nbarline 1 at 20 spans 2\n"
              "barline 1 at 0 spans 2 kind 8\nbarline 1 at 50\n");
  std::vector<Item> items;
  for (int i = 1; i <= table.itemCount(); ++i) {
    items.push_back(table.item(i));
  }
  const auto faults = findPageFaults(items, {2});
  ASSERT_EQ(faults.size(), 1U);
  EXPECT_EQ(faults[0].words, "brace away from the left edge");
}

TEST(PageFaults, NeedARestStaff) {
  EXPECT_TRUE(findPageFaults({itemOf({8, 1, 0}), itemOf({14, 1, 0}), itemOf({14, 1, 50})}, {}).empty());
}

}  // namespace
}  // namespace kiv::test
