#include "conversion/set_staff_attributes.h"

#include <string>

#include <gtest/gtest.h>

#include "tests/conversion/set_staff_attributes_fixture.h"

namespace kiv::test {
namespace {

// --- size, lines, P11 ---

TEST_F(SetStaffAttributes, StaffGivesSizeLinesAndP11) {
  EXPECT_EQ(collected("staff 1 at 0 p4 9 size 0.5 p6 8 lines 5 p8 7 instrument 101 p10 6 p11 2 p12 4\n"),
            "101: size 1000.5 lines 5 par11 2");
}

TEST_F(SetStaffAttributes, SizeZeroIsStoredAs1000AndReadBackAsZero) {
  collect("staff 1 at 0 lines 1 instrument 101\n");
  EXPECT_EQ(of(101), "101: size 1000 lines 1");
  EXPECT_EQ(setDetailPar5(order, 101), 0);
}

TEST_F(SetStaffAttributes, FirstStaffOfTheInstrumentGivesThemForTheWholeRun) {
  collect("staff 2 at 0 size 1 instrument 101\nstaff 1 at 0 size 2 lines 5 instrument 101 p11 2\n");
  collect("staff 1 at 0 size 3 lines 4 instrument 101 p11 3\nstaff 2 at 0 size 4 lines 3 instrument 102\n");
  EXPECT_EQ(of(101), "101: size 1001") << "lines and P11 of 0 are known as well";
  EXPECT_EQ(of(102), "102: size 1004 lines 3");
  EXPECT_EQ(of(103), "103:");
}

TEST_F(SetStaffAttributes, SizeOfMinus1000CountsAsUnknown) {
  collect("staff 1 at 0 size -1000 lines 4 instrument 101 p11 3\n");
  EXPECT_EQ(of(101), "101: lines 4 par11 3");
  collect("staff 1 at 0 size -999 lines 5 instrument 101\nstaff 2 at 0 size 7 lines 6 instrument 101\n");
  EXPECT_EQ(of(101), "101: size 1 lines 5");
}

TEST_F(SetStaffAttributes, SizeBelowMinus1000IsKnown) {
  collect("staff 1 at 0 size -1001 lines 4 instrument 101\n");
  collect("staff 1 at 0 size 1 lines 5 instrument 101\n");
  EXPECT_EQ(of(101), "101: size -1 lines 4");
}

TEST_F(SetStaffAttributes, SizeThatIsNoNumberIsKnown) {
  collect("staff 1 at 0 size 0x7FC00000 lines 4 instrument 101\n");
  collect("staff 1 at 0 size 1 lines 5 instrument 101\n");
  EXPECT_EQ(of(101), "101: size 0x7FC00000 lines 4");
}

TEST_F(SetStaffAttributes, MarkerIsAddedInSinglePrecision) {
  collect("staff 1 at 0 size 0.7 instrument 101\nclef 1 at 2 kind 0.3\n");
  EXPECT_EQ(order.entry(1).size.stored(), 0.7F + 1000.0F);
  EXPECT_EQ(order.entry(1).clef.stored(), 0.3F + 1000.0F);
}

// --- clef, key, time ---

TEST_F(SetStaffAttributes, ClefKeyAndTimeOfTheStaffAreRemembered) {
  EXPECT_EQ(collected("staff 1 at 0 instrument 101\nclef 1 at 2 height -3 kind 2\nkeysignature 1 at 9 key 3 type 4\n"
                      "timesignature 1 at 12 upper 6 lower 8\n"),
            "101: size 1000 clef 1002 clefHeight -3 key 3 keyType 4 timeUp 6 timeDn 8");
}

TEST_F(SetStaffAttributes, ClefOfKindZeroIsStoredAs1000) {
  EXPECT_EQ(collected("staff 1 at 0 instrument 101\nclef 1 at 2\n"), "101: size 1000 clef 1000");
}

TEST_F(SetStaffAttributes, RightmostOfEachCountsWhereverItIsAmongTheItems) {
  EXPECT_EQ(collected("timesignature 1 at 90 upper 1 lower 2\nkeysignature 1 at 80 key 1 type 2\nclef 1 at 70 kind 1\n"
                      "clef 1 at 5 kind 2\nkeysignature 1 at 5 key 3 type 4\ntimesignature 1 at 5 upper 3 lower 4\n"
                      "staff 1 at 0 instrument 101\n"),
            "101: size 1000 clef 1001 key 1 keyType 2 timeUp 1 timeDn 2");
}

TEST_F(SetStaffAttributes, EachIsSearchedOnItsOwn) {
  EXPECT_EQ(collected("staff 1 at 0 instrument 101\nclef 1 at 70 kind 1\nkeysignature 1 at 30 key 1\n"
                      "timesignature 1 at -5 upper 3\n"),
            "101: size 1000 clef 1001 key 1 timeUp 3");
}

TEST_F(SetStaffAttributes, FirstOfSeveralAtOnePositionCounts) {
  EXPECT_EQ(collected("staff 1 at 0 instrument 101\nclef 1 at 9 kind 1\nclef 1 at 9 kind 2\nkeysignature 1 at 9 key 1\n"
                      "keysignature 1 at 9 key 2\ntimesignature 1 at 9 upper 1\ntimesignature 1 at 9 upper 2\n"),
            "101: size 1000 clef 1001 key 1 timeUp 1");
}

TEST_F(SetStaffAttributes, PositionMustBeGreaterThanMinus9999) {
  const std::string staff = "staff 1 at 0 instrument 101\n";
  for (const char* position : {"-9999", "-9999.001", "-10000", "0xFF800000", "0x7FC00000"}) {
    EXPECT_EQ(collected(staff + "clef 1 at " + position + " kind 1\nkeysignature 1 at " + position +
                        " key 1\ntimesignature 1 at " + position + " upper 1\n"),
              "101: size 1000")
        << position;
  }
  for (const char* position : {"-9998.999", "0x7F800000"}) {
    EXPECT_EQ(collected(staff + "clef 1 at " + position + " kind 1\nkeysignature 1 at " + position +
                        " key 1\ntimesignature 1 at " + position + " upper 1\n"),
              "101: size 1000 clef 1001 key 1 timeUp 1")
        << position;
  }
}

TEST_F(SetStaffAttributes, PositionThatIsNoNumberDoesNotHideTheOthers) {
  EXPECT_EQ(
      collected("staff 1 at 0 instrument 101\nclef 1 at 5 kind 1\nclef 1 at 0x7FC00000 kind 2\nclef 1 at 6 kind 3\n"),
      "101: size 1000 clef 1003");
}

TEST_F(SetStaffAttributes, ItemsOfOtherStavesDoNotCount) {
  collect(
      "staff 1 at 0 instrument 101\nstaff 2 at 0 instrument 102\nclef 2 at 90 kind 2\nclef 1 at 5 kind 1\n"
      "clef 1.5 at 95 kind 3\nkeysignature 2 at 5 key 7\ntimesignature 3 at 5 upper 3\nclef 0 at 5\n");
  EXPECT_EQ(of(101), "101: size 1000 clef 1001");
  EXPECT_EQ(of(102), "102: size 1000 clef 1002 key 7");
}

TEST_F(SetStaffAttributes, StaffZeroIsOneWhateverItsSign) {
  EXPECT_EQ(collected("staff -0 at 0 instrument 101\nclef 0 at 5 kind 1\n"), "101: size 1000 clef 1001");
}

TEST_F(SetStaffAttributes, OtherItemsDoNotCount) {
  EXPECT_EQ(collected("staff 1 at 0 instrument 101\nnote 1 at 90 height 4 p5 5\nrest 1 at 90 height 4 kind 5\n"
                      "barline 1 at 90 spans 4 kind 5\nitem 4 1 90 4 5 6\nitem 10 1 90 4 5 6\n"),
            "101: size 1000");
}

TEST_F(SetStaffAttributes, EverySystemOverwritesThem) {
  collect(
      "staff 1 at 0 instrument 101\nclef 1 at 90 height 5 kind 1\nkeysignature 1 at 90 key 3 type 2\n"
      "timesignature 1 at 90 upper 3 lower 4\n");
  collect("staff 2 at 0 instrument 101\nclef 2 at 2 kind 2\nkeysignature 2 at 4\ntimesignature 2 at 6 upper 98\n");
  EXPECT_EQ(of(101), "101: size 1000 clef 1002 timeUp 98") << "zeros too, and however far to the left";
}

TEST_F(SetStaffAttributes, SystemWithoutThemLeavesThem) {
  const std::string before = collected(
      "staff 1 at 0 instrument 101\nclef 1 at 90 height 5 kind 1\nkeysignature 1 at 90 key 3 type 2\n"
      "timesignature 1 at 90 upper 3 lower 4\n");
  collect(
      "staff 1 at 0 instrument 101\nstaff 2 at 0 instrument 102\nclef 2 at 2 kind 2\nkeysignature 2 at 4 key 1\n"
      "timesignature 2 at 6 upper 6 lower 8\n");
  EXPECT_EQ(of(101), before);
  collect("staff 1 at 0 instrument 101\nkeysignature 1 at 4 key 7\n");
  EXPECT_EQ(of(101), "101: size 1000 clef 1001 clefHeight 5 key 7 timeUp 3 timeDn 4") << "each of its own";
}

TEST_F(SetStaffAttributes, SystemWithoutTheInstrumentLeavesIt) {
  const std::string before = collected("staff 1 at 0 size 2 instrument 101\nclef 1 at 90 kind 1\n");
  collect("staff 1 at 0 size 3 instrument 102\nclef 1 at 95 kind 2\n");
  EXPECT_EQ(of(101), before);
}

// --- several staves ---

TEST_F(SetStaffAttributes, LaterOfTwoStavesOfAnInstrumentCountsForWhatItHas) {
  EXPECT_EQ(collected("staff 2 at 0 size 1 instrument 101\nstaff 1 at 0 size 2 instrument 101\nclef 1 at 2 kind 1\n"
                      "clef 2 at 90 kind 2\nkeysignature 2 at 9 key 5\n"),
            "101: size 1001 clef 1001 key 5");
}

TEST_F(SetStaffAttributes, StavesOfOneNumberHaveTheSameClef) {
  collect("staff 1 at 0 instrument 101\nstaff 1 at 0 instrument 102\nclef 1 at 2 kind 1\n");
  EXPECT_EQ(of(101), "101: size 1000 clef 1001");
  EXPECT_EQ(of(102), "102: size 1000 clef 1001");
}

TEST_F(SetStaffAttributes, StaffOfAnInstrumentWithoutAPositionGivesNothing) {
  collect(
      "staff 1 at 0 size 1 instrument 102\nstaff 2 at 0 size 2 instrument 7\nclef 2 at 2 kind 2\n"
      "staff 3 at 0 size 3 instrument -101\nclef 3 at 2 kind 3\nstaff 4 at 0 size 4 instrument 101.5\n"
      "clef 4 at 2 kind 4\nstaff 5 at 0 size 5 instrument 0x7FC00000\nstaff 6 at 0 size 6 instrument 1e9\n"
      "clef 6 at 9 kind 5\nstaff 7 at 0 size 7\n");
  EXPECT_EQ(of(101), "101:");
  EXPECT_EQ(of(102), "102: size 1001");
  EXPECT_EQ(of(103), "103:");
  EXPECT_TRUE(host.messages.empty());
}

TEST_F(SetStaffAttributes, HiddenStaffCounts) {
  EXPECT_EQ(collected("staff 1 at 0 size 1 lines -1 instrument 101\nclef 1 at 2 kind 1\n"),
            "101: size 1001 lines -1 clef 1001");
}

TEST_F(SetStaffAttributes, OnlyItemsOfExactlyTheTypeCount) {
  ItemTable items = tableOf(host,
                            "staff 1 at 0 instrument 101\nclef 1 at 2 kind 1\nkeysignature 1 at 2 key 1\n"
                            "timesignature 1 at 2 upper 1\nstaff 1 at 0 size 2 instrument 102\n");
  items.itemPar(2, par::type) = 3.25F;
  items.itemPar(3, par::type) = 17.25F;
  items.item(4).setType(ItemType::deleted);
  items.itemPar(5, par::type) = 8.25F;
  setStaffAttributes(items, order);
  EXPECT_EQ(of(101), "101: size 1000");
  EXPECT_EQ(of(102), "102:");
}

TEST_F(SetStaffAttributes, RowsBeyondTheTableDoNotCount) {
  ItemTable items = tableOf(host, "staff 1 at 0 instrument 101\nclef 1 at 2 kind 1\nstaff 2 at 0 instrument 102\n");
  items.clear();
  setStaffAttributes(items, order);
  EXPECT_EQ(of(101), "101:");
  items.store_item(itemOf({ItemType::staff.number(), 1, 0, 0, 0, 0, 0, 0, 101}));
  setStaffAttributes(items, order);
  EXPECT_EQ(of(101), "101: size 1000");
  EXPECT_EQ(of(102), "102:");
}

TEST_F(SetStaffAttributes, FullTableCountsUpToItsLastItem) {
  ItemTable items;
  for (int i = 1; i < itemLimit; ++i) {
    items.store_item(Item(ItemType::note, 1, 0));
  }
  items.item(1).setType(ItemType::staff);
  items.itemPar(1, par::instrument) = 101;
  ItemTable other = items;
  items.store_item(itemOf({ItemType::clef.number(), 1, 5, 0, 2}));
  setStaffAttributes(items, order);
  EXPECT_EQ(of(101), "101: size 1000 clef 1002");
  other.store_item(itemOf({ItemType::staff.number(), 1, 0, 0, 3, 0, 0, 0, 103}));
  setStaffAttributes(other, order);
  EXPECT_EQ(of(103), "103: size 1003");
}

TEST_F(SetStaffAttributes, PresenceIsLeftAlone) {
  order.entry(1).present = 3;
  collect("staff 1 at 0 instrument 101\n");
  EXPECT_EQ(of(101), "101: size 1000 present 3");
}

}  // namespace
}  // namespace kiv::test
